#include "Mesh/Editing/AddedTriangles.h"

#include <gtest/gtest.h>

#include <climits>

#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Core/Loops.h"
#include "Mesh/Editing/PlainEdits.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {
using namespace Test;

namespace {

using Edges = std::vector<Edge>;
using Indices = std::vector<int>;
using Triangles = std::vector<std::array<int, 3>>;

// UnitSquare(): 0 runs 0-1, 1 runs 1-3, 2 runs 3-0; 3 runs 1-2, 4 runs 2-3, 5 runs 3-1. Edges 1 and 5 are twins.

TEST(AddTriangleOrphanEdge, AppendsThreeEdges) {
    PIN mesh = RightTriangle();
    AddPoint(mesh, {1, -1, 0});
    EXPECT_EQ(AddTriangleOrphanEdge(mesh, 0, 3), 3);
    EXPECT_EQ(mesh.edges, (Edges{{1, 3, 0}, {2, -1, 1}, {0, -1, 2}, {4, 0, 1}, {5, -1, 0}, {3, -1, 3}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 1, 2, 5}));
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 1, 2}, {0, 3, 1}}));
    ExpectCompact(mesh);
}

TEST(AddTriangleOrphanEdge, RefusesWhatDoesNotExistOrIsNoOrphan) {
    PIN before = UnitSquare();
    before.edges[3].NE = -1;
    const struct {
        int e, node;
    } refused[] = {{1, 0}, {3, 0}, {-1, 0}, {6, 0}, {INT_MIN, 0}, {0, -1}, {0, 4}, {0, INT_MAX}};
    for (const auto& r : refused) {
        SCOPED_TRACE(testing::Message() << "edge " << r.e << " node " << r.node);
        PIN mesh = before;
        EXPECT_EQ(AddTriangleOrphanEdge(mesh, r.e, r.node), -1);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(AddTriangleWith2Edges, ClosesTheCorner) {
    PIN mesh = UnitSquare();
    EXPECT_EQ(AddTriangleWith2Edges(mesh, 0, 3), 8);
    EXPECT_EQ(
        mesh.edges,
        (Edges{{1, 7, 0}, {2, 5, 1}, {0, -1, 3}, {4, 6, 1}, {5, -1, 2}, {3, 1, 3}, {7, 3, 2}, {8, 0, 1}, {6, -1, 0}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 6, 8, 5}));  // entries 1 and 2 name edges that start elsewhere
    RebuildNodeEdges(mesh);
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 1, 3}, {0, 2, 1}, {1, 2, 3}}));
    EXPECT_EQ(mesh.edges[8].P0, 0);
    ExpectCompact(mesh);
}

TEST(AddTriangleWith2Edges, RefusesAllButTwoOrphansInARow) {
    PIN before = UnitSquare();
    const struct {
        int e1, e2;
    } refused[] = {{3, 0}, {0, 4}, {0, 0}, {1, 4}, {0, 1}, {0, 6}, {-1, 3}, {0, -1}, {INT_MIN, INT_MAX}};
    for (const auto& r : refused) {
        SCOPED_TRACE(testing::Message() << "edges " << r.e1 << " and " << r.e2);
        PIN mesh = before;
        EXPECT_EQ(AddTriangleWith2Edges(mesh, r.e1, r.e2), -1);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
    before.edges[4].NE = INT_MAX;  // nobody knows where 4 ends
    PIN mesh = before;
    EXPECT_EQ(AddTriangleWith2Edges(mesh, 3, 4), -1);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(AddedTriangles, AreLikeThePlainForm) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        const PIN before = seed % 2 == 0 ? RandomMesh(seed, 30) : Grid(3);
        for (int e = 0; e < static_cast<int>(before.edges.size()); ++e) {
            if (before.edges[e].TE != -1) continue;
            SCOPED_TRACE(testing::Message() << "seed " << seed << " edge " << e);
            PIN mesh = before, plain = before;
            ASSERT_EQ(AddTriangleOrphanEdge(mesh, e, 0), Plain::AddTriangleOrphanEdge(plain, e, 0));
            ASSERT_TRUE(SameRecords(mesh, plain));
            mesh = plain = before;
            const int next = OrphanLoop(before, e)[1];
            ASSERT_EQ(AddTriangleWith2Edges(mesh, e, next), Plain::AddTriangleWith2Edges(plain, e, next));
            ASSERT_TRUE(SameRecords(mesh, plain));
            RebuildNodeEdges(mesh);
            ASSERT_EQ(FirstUnsoundness(mesh), "");
        }
    }
}

}  // namespace
}  // namespace KM
