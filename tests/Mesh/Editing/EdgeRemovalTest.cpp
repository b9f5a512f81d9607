#include "Mesh/Editing/EdgeRemoval.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Core/Loops.h"
#include "Mesh/Editing/PlainEdits.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {
using namespace Test;

namespace {

using P = TPoint<double>;
using Edges = std::vector<Edge>;
using Indices = std::vector<int>;
using Triangles = std::vector<std::array<int, 3>>;

const P Corpse(-1e20, -1e20, -1e20);

void CompactAll(PIN& mesh) {
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
}

TEST(RemoveEdge, OfAnOrphanKillsItsTriangle) {
    PIN mesh = RightTriangle();
    RemoveEdge(mesh, 0, P(0.5, 0, 0));
    EXPECT_EQ(mesh.edges, (Edges(3)));
    EXPECT_EQ(mesh.points, (std::vector<P>{P(0.5, 0, 0), Corpse, P(0, 1, 0)}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 1, 2}));
}

//  6 - 7 - 8
//  | \ | \ |     Grid(2): triangles (a, a + 1, above) and (a + 1, above + 1, above)
//  3 - 4 - 5
//  | \ | \ |
//  0 - 1 - 2
TEST(RemoveEdge, BetweenTwoTrianglesJoinsTheEdgesBeyond) {
    PIN mesh = Grid(2);
    int e = 0;
    while (mesh.edges[e].P0 != 4 || mesh.edges[mesh.edges[e].NE].P0 != 5) ++e;
    const int pt = mesh.edges[PrevEdge(mesh, e)].TE;  // that of the other side does not exist: 2-5 is boundary
    RemoveEdge(mesh, e, P(1.5, 1, 0));
    EXPECT_EQ(mesh.points[4], P(1.5, 1, 0));
    EXPECT_EQ(mesh.points[5], Corpse);
    EXPECT_EQ(mesh.p2e[4], pt);
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 1, 3}, {1, 2, 4}, {1, 4, 3}, {3, 4, 6}, {4, 7, 6}, {4, 8, 7}}));
    CompactAll(mesh);
    EXPECT_EQ(mesh.points.size(), 8u);
    EXPECT_EQ(EulerCharacteristic(mesh), 1);
    ExpectCompact(mesh);
}

TEST(RemoveEdge, ShortensLongerLoops) {
    PIN mesh;
    mesh.points.resize(6);
    mesh.p2e = AddPolygon(mesh, {0, 1, 2, 3}, {-1, -1, -1, -1});
    AddPolygon(mesh, {1, 0, 4, 5}, {0, -1, -1, -1});
    mesh.p2e.insert(mesh.p2e.end(), {6, 7});
    RemoveEdge(mesh, 0, P(1, 2, 3));
    EXPECT_EQ(mesh.edges, (Edges{{}, {2, -1, 0}, {3, -1, 2}, {1, -1, 3}, {}, {6, -1, 0}, {7, -1, 4}, {5, -1, 5}}));
    EXPECT_EQ(mesh.p2e, (Indices{5, 1, 2, 3, 6, 7}));
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 2, 3}, {0, 4, 5}}));
}

TEST(RemoveEdge, LeavesEmptyNodeEdgesEmpty) {
    PIN mesh = Sphere(2);
    mesh.p2e.clear();
    RemoveEdge(mesh, 0, P());
    EXPECT_TRUE(mesh.p2e.empty());
    CompactAll(mesh);
    EXPECT_EQ(EulerCharacteristic(mesh), 2);
    ExpectCompact(mesh);
}

TEST(RemoveEdge, TakesAPositionOutOfTheMesh) {
    PIN mesh = Sphere(2);
    const int keep = mesh.edges[0].P0;
    const int gone = mesh.edges[mesh.edges[0].NE].P0;
    const P there = mesh.points[gone];
    RemoveEdge(mesh, 0, mesh.points[gone]);
    EXPECT_EQ(mesh.points[keep], there);
}

TEST(RemoveEdge, RefusesWhatIsNoEdge) {
    PIN before = UnitSquare();
    before.edges[0].NE = before.edges[0].P0 = -1;
    for (const int e : {-1, -2, INT_MIN, INT_MAX, 6, 0, 1, 5}) {
        PIN mesh = before;
        RemoveEdge(mesh, e, P(9, 9, 9));
        EXPECT_TRUE(SameRecords(mesh, before)) << e;
    }
}

TEST(RemoveEdge, RefusesATwinNextToItselfOnTheLoop) {
    PIN before;  // a square with a spike: 0 runs to the tip and 1 comes back
    before.points.resize(4);
    before.p2e = {0, 1, 3, -1};
    before.edges = {{1, 1, 0}, {2, 0, 1}, {3, -1, 0}, {0, -1, 2}};
    for (const int e : {0, 1}) {
        PIN mesh = before;
        RemoveEdge(mesh, e, P());
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(RemoveEdge, OfALoopOfTwoLeavesALoopOfOne) {
    PIN mesh;
    mesh.points.resize(2);
    mesh.p2e = AddPolygon(mesh, {0, 1}, {-1, -1});
    RemoveEdge(mesh, 0, P());
    EXPECT_EQ(mesh.edges, (Edges{{}, {1, -1, 0}}));
    RemoveEdge(mesh, 1, P());
    EXPECT_EQ(mesh.edges, Edges(2));
}

TEST(RemoveEdge, IsLikeThePlainFormEvenWhereTheSurfaceFolds) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        PIN before = seed % 4 == 0   ? RandomMesh(seed, 30)
                     : seed % 4 == 1 ? Dissolved(Sphere(2), seed, 8)
                     : seed % 4 == 2 ? Grid(3)
                                     : Sphere(1 + static_cast<int>(seed % 2));
        if (seed % 5 == 0) before.p2e.clear();
        for (int e = 0; e < static_cast<int>(before.edges.size()); ++e) {
            const Edge edge = before.edges[e];
            if (edge.NE == -1 || edge.NE == edge.TE || (edge.TE != -1 && before.edges[edge.TE].NE == e)) continue;
            PIN mesh = before, plain = before;
            RemoveEdge(mesh, e, P(seed, e, 0));
            Plain::RemoveEdge(plain, e, P(seed, e, 0));
            ASSERT_TRUE(SameRecords(mesh, plain)) << "seed " << seed << " edge " << e;
        }
    }
}

TEST(RemoveEdge, AgainAndAgainNeverLeavesTheVectors) {
    // Collapses that fold the surface, one upon the other, without compaction.
    for (unsigned seed = 0; seed < 60; ++seed) {
        PIN mesh = seed % 2 == 0 ? Sphere(3) : RandomMesh(seed, 60);
        std::mt19937 random(seed);
        const std::size_t edges = mesh.edges.size();
        for (int i = 0; i < 400; ++i) RemoveEdge(mesh, static_cast<int>(random() % edges), P(i, 0, 0));
        EXPECT_EQ(mesh.edges.size(), edges);
        for (const Edge& e : mesh.edges) ASSERT_TRUE(e.NE < static_cast<int>(edges) && e.TE < static_cast<int>(edges));
        CompactAll(mesh);
    }
}

}  // namespace
}  // namespace KM
