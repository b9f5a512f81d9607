#include "Mesh/Editing/EdgeSwap.h"

#include <gtest/gtest.h>

#include <climits>

#include "Mesh/Core/Construction.h"
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

TEST(SwapEdge, TurnsToTheOtherDiagonal) {
    PIN mesh = UnitSquare();
    SwapEdge(mesh, 1);
    EXPECT_EQ(mesh.edges, (Edges{{3, -1, 0}, {0, 5, 2}, {5, -1, 3}, {1, -1, 1}, {2, -1, 2}, {4, 1, 0}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 3, 4, 2}));
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 1, 2}, {0, 2, 3}}));
    ExpectCompact(mesh);
}

TEST(SwapEdge, TwiceGivesTheSameTrianglesWithTheEdgeTheOtherWay) {
    PIN mesh = UnitSquare();
    SwapEdge(mesh, 1);
    SwapEdge(mesh, 1);
    EXPECT_EQ(TrianglesOf(mesh), TrianglesOf(UnitSquare()));
    EXPECT_EQ(mesh.edges[1].P0, 3);
    EXPECT_EQ(mesh.edges[5].P0, 1);
    SwapEdge(mesh, 1);
    SwapEdge(mesh, 1);
    EXPECT_EQ(mesh.edges, UnitSquare().edges);
}

TEST(SwapEdge, LeavesEmptyNodeEdgesEmpty) {
    PIN mesh = UnitSquare();
    mesh.p2e.clear();
    SwapEdge(mesh, 5);
    EXPECT_TRUE(mesh.p2e.empty());
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 1, 2}, {0, 2, 3}}));
}

TEST(SwapEdge, OfAnOrphanOrOfNoEdgeDoesNothing) {
    PIN before = UnitSquare();
    before.edges[4].NE = -1;  // so that 3 and 5 do not come round either
    for (const int e : {0, 1, 2, 3, 4, 5, 6, -1, -2, INT_MIN, INT_MAX}) {
        SCOPED_TRACE(e);
        PIN mesh = before;
        SwapEdge(mesh, e);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(SwapEdge, NeedsTwoDifferentTriangles) {
    PIN square;
    square.points.resize(4);
    square.p2e.resize(4, -1);
    AddPolygon(square, {0, 1, 2, 3}, {-1, -1, -1, -1});
    AddPolygon(square, {1, 0, 3}, {0, -1, -1});
    PIN cone;
    cone.points.resize(3);
    cone.p2e.resize(3, -1);
    AddPolygon(cone, {0, 1, 0}, {-1, -1, -1});
    cone.edges[0].TE = 1;
    cone.edges[1].TE = 0;
    for (const PIN& before : {square, cone})
        for (int e = 0; e < static_cast<int>(before.edges.size()); ++e) {
            PIN mesh = before;
            SwapEdge(mesh, e);
            EXPECT_TRUE(SameRecords(mesh, before)) << e;
        }
}

TEST(SwapEdge, IsLikeThePlainFormOnAllMeshes) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        const PIN before = seed % 2 == 0 ? RandomMesh(seed, 30) : Sphere(2);
        for (int e = 0; e < static_cast<int>(before.edges.size()); ++e) {
            PIN mesh = before, plain = before;
            SwapEdge(mesh, e);
            Plain::SwapEdge(plain, e);
            ASSERT_TRUE(SameRecords(mesh, plain)) << "seed " << seed << " edge " << e;
            ASSERT_EQ(FirstUnsoundness(mesh), "") << "seed " << seed << " edge " << e;
        }
    }
}

}  // namespace
}  // namespace KM
