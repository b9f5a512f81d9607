#include "Mesh/Editing/PointRemoval.h"

#include <gtest/gtest.h>

#include <climits>

#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Editing/PlainEdits.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {
using namespace Test;

namespace {

using P = TPoint<double>;
using Edges = std::vector<Edge>;
using Triangles = std::vector<std::array<int, 3>>;

// UnitSquare(): 0 runs 0-1, 1 runs 1-3, 2 runs 3-0; 3 runs 1-2, 4 runs 2-3, 5 runs 3-1. Edges 1 and 5 are twins.
// BowTie(): the triangles of edges 0-2 and 3-5 meet at node 1, with nothing else in common.

TEST(RemovePoint, LeavesDeadRecordsAndNoNodeEdges) {
    PIN mesh = UnitSquare();
    RemovePoint(mesh, 0, true);
    EXPECT_EQ(mesh.edges, (Edges{{}, {}, {}, {4, -1, 1}, {5, -1, 2}, {3, -1, 3}}));
    EXPECT_TRUE(mesh.p2e.empty());
    EXPECT_EQ(mesh.points.size(), 4u);
}

TEST(RemovePoint, DropsDeadEdgesAtTheEndButNoNodes) {
    PIN mesh = UnitSquare();
    RemovePoint(mesh, 2, true);
    EXPECT_EQ(mesh.edges, (Edges{{1, -1, 0}, {2, -1, 1}, {0, -1, 3}}));
    EXPECT_EQ(mesh.points.size(), 4u);
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    EXPECT_EQ(mesh.points.size(), 3u);
    ExpectCompact(mesh);
}

TEST(RemovePoint, ScanningFindsAllFans) {
    PIN mesh = BowTie();
    RemovePoint(mesh, 1, true);
    EXPECT_TRUE(mesh.edges.empty());
}

TEST(RemovePoint, WithoutScanningFollowsOneFan) {
    PIN mesh = BowTie();
    RemovePoint(mesh, 1, false);
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 1, 2}}));
    EXPECT_TRUE(mesh.p2e.empty());
}

TEST(RemovePoint, WithoutScanningGoesForwardOnly) {
    // The fan of node 1 is edge 1, then edge 3; p2e names 3.
    PIN mesh = UnitSquare();
    RemovePoint(mesh, 1, false);
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 1, 3}}));
    mesh = UnitSquare();
    mesh.p2e[1] = 1;
    RemovePoint(mesh, 1, false);
    EXPECT_TRUE(mesh.edges.empty());
}

TEST(RemovePoint, OfAClosedFanTakesAllOfIt) {
    for (const bool scanAll : {false, true}) {
        PIN mesh = Sphere(2);
        const std::size_t valence = Plain::Fan(mesh, mesh.p2e[0]).size();
        RemovePoint(mesh, 0, scanAll);
        EXPECT_EQ(TrianglesOf(mesh).size(), 32 - valence);
        EXPECT_EQ(OrphanCount(mesh), static_cast<int>(valence));
        EXPECT_EQ(EulerCharacteristic(mesh), 1);
    }
}

TEST(RemovePoint, AgainNeedsAScan) {
    PIN mesh = Sphere(2);
    RemovePoint(mesh, 0, false);
    const PIN before = mesh;
    RemovePoint(mesh, 1, false);
    EXPECT_TRUE(SameRecords(mesh, before));
    RemovePoint(mesh, 1, true);
    EXPECT_LT(TrianglesOf(mesh).size(), TrianglesOf(before).size());
}

TEST(RemovePoint, OfADeadNodeDropsTheDeadEnd) {
    for (const bool scanAll : {false, true}) {
        PIN mesh = RightTriangle();
        AddPoint(mesh, P());
        RemovePoint(mesh, 3, scanAll);
        EXPECT_TRUE(SameRecords(mesh, RightTriangle()));
    }
}

TEST(RemovePoint, RefusesANodeThatDoesNotExist) {
    for (const bool scanAll : {false, true})
        for (const int node : {-1, 4, INT_MIN, INT_MAX}) {
            PIN before = UnitSquare();
            before.edges.push_back({});  // which no call may drop
            before.edges.push_back({0, -1, node});
            PIN mesh = before;
            RemovePoint(mesh, node, scanAll);
            EXPECT_TRUE(SameRecords(mesh, before));
        }
}

TEST(RemovePoint, IsLikeThePlainFormOnAllMeshes) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        const PIN before = seed % 3 == 0   ? RandomMesh(seed, 40)
                           : seed % 3 == 1 ? Dissolved(Sphere(2), seed, 10)
                                           : Grid(3);
        for (int n = 0; n < static_cast<int>(before.points.size()); ++n)
            for (const bool scanAll : {false, true}) {
                PIN mesh = before, plain = before;
                RemovePoint(mesh, n, scanAll);
                Plain::RemovePoint(plain, n, scanAll);
                ASSERT_TRUE(SameRecords(mesh, plain)) << "seed " << seed << " node " << n;
                VisitorOf<PIN> nobody;
                Compact(mesh, nobody);
                ASSERT_EQ(FirstUncompactness(mesh), "") << "seed " << seed << " node " << n;
            }
    }
}

TEST(DeleteLoop, MakesOrphansOfItsTwins) {
    PIN mesh = UnitSquare();
    DeleteLoop(mesh, 5);
    EXPECT_EQ(mesh.edges, (Edges{{1, -1, 0}, {2, -1, 1}, {0, -1, 3}, {}, {}, {}}));
    EXPECT_TRUE(mesh.p2e.empty());
}

TEST(DeleteLoop, RefusesWhatIsNoEdge) {
    PIN before = UnitSquare();
    before.edges[0].NE = -1;
    for (const int e : {-1, 0, 6, INT_MIN, INT_MAX}) {
        PIN mesh = before;
        DeleteLoop(mesh, e);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

}  // namespace
}  // namespace KM
