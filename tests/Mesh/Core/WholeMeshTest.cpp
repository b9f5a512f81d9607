#include "Mesh/Core/WholeMesh.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Fans.h"
#include "Mesh/Core/Loops.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;
using Triangles = std::vector<std::array<int, 3>>;

PIN Compacted(PIN mesh) {
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    return mesh;
}

PIN RandomPolygons(unsigned seed) { return Dissolved(RandomMesh(seed, 60), seed, 40); }

Triangles TurnedRound(Triangles triangles) {
    for (auto& t : triangles) std::swap(t[1], t[2]);  // begun at the lowest node before and after
    std::sort(triangles.begin(), triangles.end());
    return triangles;
}

Triangles Shifted(Triangles triangles, int by) {
    for (auto& t : triangles)
        for (int& node : t) node += by;
    return triangles;
}

double VolumeOf(const PIN& mesh) {
    double six = 0.0;
    for (const auto& t : TrianglesOf(mesh)) six += Dot(mesh.points[t[0]], Cross(mesh.points[t[1]], mesh.points[t[2]]));
    return six / 6.0;
}

TEST(Reverse, RelinksOneTriangle) {
    PIN mesh = RightTriangle();
    Reverse(mesh);
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{2, -1, 1}, {0, -1, 2}, {1, -1, 0}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{2, 0, 1}));
}

TEST(Reverse, KeepsTwinsAndLeavesASoundMesh) {
    PIN mesh = UnitSquare();
    Reverse(mesh);
    ExpectCompact(mesh);
    EXPECT_EQ(mesh.edges[1].TE, 5);
    EXPECT_EQ(mesh.edges[5].TE, 1);
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 3, 1}, {1, 3, 2}}));
}

TEST(Reverse, TurnsEveryTriangle) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = RandomMesh(seed, 60);
        const Triangles expected = TurnedRound(TrianglesOf(mesh));
        Reverse(mesh);
        ExpectCompact(mesh);
        EXPECT_EQ(TrianglesOf(mesh), expected);
    }
}

TEST(Reverse, TurnsASolidInsideOut) {
    PIN mesh = Cube();
    EXPECT_EQ(VolumeOf(mesh), 1.0);
    Reverse(mesh);
    EXPECT_EQ(VolumeOf(mesh), -1.0);
}

TEST(Reverse, TurnsLoopsOfAnyLength) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN before = Compacted(RandomPolygons(seed));
        PIN mesh = before;
        Reverse(mesh);
        ExpectCompact(mesh);
        for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
            EXPECT_EQ(mesh.edges[e].NE, PrevEdge(before, e));
            EXPECT_EQ(mesh.edges[e].TE, before.edges[e].TE);
            EXPECT_EQ(mesh.edges[e].P0, before.edges[before.edges[e].NE].P0);
        }
    }
}

// A loop that comes to a node twice writes its `p2e` twice; the edge that stands earlier in the loop is written last.
TEST(Reverse, WritesP2EFromTheEndOfTheLoop) {
    PIN mesh;
    mesh.points.resize(3);
    mesh.edges = {{1, -1, 0}, {2, -1, 1}, {3, -1, 0}, {0, -1, 2}};
    mesh.p2e = {0, 1, 3};
    ExpectSound(mesh);
    Reverse(mesh);
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{3, -1, 1}, {0, -1, 0}, {1, -1, 2}, {2, -1, 0}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{1, 0, 2}));
}

TEST(Reverse, ServesLoopsOfOneAndTwoEdges) {
    PIN mesh;
    mesh.points.resize(3);
    mesh.edges = {{0, -1, 0}, {2, -1, 1}, {1, -1, 2}};
    mesh.p2e = {0, 1, 2};
    Reverse(mesh);
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{0, -1, 0}, {2, -1, 2}, {1, -1, 1}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 2, 1}));
}

TEST(Reverse, TwiceRestoresTheRecords) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN before = seed % 2 == 0 ? RandomMesh(seed, 60) : RandomPolygons(seed);
        PIN mesh = before;
        Reverse(mesh);
        Reverse(mesh);
        EXPECT_EQ(mesh.edges, before.edges);
        EXPECT_EQ(mesh.points, before.points);
        ExpectSound(mesh);
    }
}

TEST(Reverse, LeavesDeadRecordsAsTheyAre) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        const PIN before = RandomPolygons(seed);
        PIN mesh = before;
        Reverse(mesh);
        ExpectSound(mesh);
        for (std::size_t e = 0; e < mesh.edges.size(); ++e)
            EXPECT_TRUE(before.edges[e].NE != -1 || mesh.edges[e] == before.edges[e]) << e;
    }
}

TEST(Reverse, KeepsTheLengthOfAShortP2E) {
    PIN mesh = UnitSquare();
    mesh.p2e.clear();
    Reverse(mesh);
    EXPECT_TRUE(mesh.p2e.empty());
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 3, 1}, {1, 3, 2}}));
    mesh.p2e.resize(2);
    Reverse(mesh);
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 3}));
}

TEST(Reverse, OfAnEmptyMeshChangesNothing) {
    PIN mesh;
    Reverse(mesh);
    EXPECT_TRUE(SameRecords(mesh, PIN()));
}

TEST(Reverse, LeavesLoopsThatDoNotComeBackAsTheyAre) {
    PIN mesh = RightTriangle();
    mesh.edges[2].NE = 1;
    const PIN before = mesh;
    Reverse(mesh);
    EXPECT_EQ(mesh.edges, before.edges);
}

TEST(Reverse, EndsOnBrokenLinks) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        PIN mesh = WithBrokenLinks(RandomPolygons(seed), seed);
        const PIN before = mesh;
        Reverse(mesh);
        EXPECT_EQ(mesh.edges.size(), before.edges.size());
        EXPECT_EQ(mesh.p2e.size(), before.p2e.size());
        EXPECT_EQ(mesh.points, before.points);
    }
}

TEST(Append, OfAnEmptyMeshChangesNothing) {
    const PIN before = Cube();
    PIN mesh = before;
    Append(mesh, PIN());
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(Append, ToAnEmptyMeshIsACopy) {
    PIN mesh;
    Append(mesh, Cube());
    EXPECT_TRUE(SameRecords(mesh, Cube()));
}

TEST(Append, ShiftsEveryIndex) {
    PIN mesh = RightTriangle();
    Append(mesh, UnitSquare());
    EXPECT_EQ(
        mesh.edges,
        (std::vector<Edge>{
            {1, -1, 0}, {2, -1, 1}, {0, -1, 2}, {4, -1, 3}, {5, 8, 4}, {3, -1, 6}, {7, -1, 4}, {8, -1, 5}, {6, 4, 6}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2, 3, 6, 7, 8}));
    EXPECT_EQ(mesh.points[5], UnitSquare().points[2]);
}

TEST(Append, JoinsNothing) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN other = RandomMesh(seed, 50);
        PIN mesh = RandomMesh(seed + 1, 50);
        Triangles expected = TrianglesOf(mesh);
        const Triangles appended = Shifted(TrianglesOf(other), static_cast<int>(mesh.points.size()));
        expected.insert(expected.end(), appended.begin(), appended.end());
        const int orphans = OrphanCount(mesh) + OrphanCount(other);
        Append(mesh, other);
        ExpectCompact(mesh);
        EXPECT_EQ(TrianglesOf(mesh), expected);
        EXPECT_EQ(OrphanCount(mesh), orphans);
    }
}

TEST(Append, ToACopyOfItselfGivesTwoComponents) {
    PIN copied = Sphere(4);
    Append(copied, Sphere(4));
    ExpectCompact(copied);
    EXPECT_EQ(EulerCharacteristic(copied), 4);

    PIN itself = Sphere(4);
    Append(itself, itself);
    EXPECT_TRUE(SameRecords(itself, copied));
}

// What is not compacted is shifted all the same: a dead record comes to name a neighbour, a dead node an edge.
TEST(Append, MakesNoExceptionForTheDead) {
    PIN other;
    other.points.resize(2);
    other.edges = {{-1, -1, -1}};
    other.p2e = {-1, -1};
    PIN mesh = RightTriangle();
    Append(mesh, other);
    EXPECT_EQ(mesh.edges[3], (Edge{2, -1, 2}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2, 2, 2}));
}

TEST(Append, AppendsEachVectorAtItsOwnEnd) {
    PIN mesh = RightTriangle();
    mesh.p2e.clear();
    Append(mesh, RightTriangle());
    EXPECT_EQ(mesh.p2e, (std::vector<int>{3, 4, 5}));
    EXPECT_EQ(mesh.points.size(), 6u);
}

TEST(Append, SurvivesBrokenLinks) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        PIN mesh = WithBrokenLinks(Cube(), seed);
        Append(mesh, WithBrokenLinks(Cube(), seed + 1000));
        EXPECT_EQ(mesh.edges.size(), 72u);
    }
}

TEST(CompactQuick, DropsDeadRecordsFromTheEndsOnly) {
    PIN mesh = Cube();
    const PIN before = mesh;
    mesh.points.resize(11);
    mesh.p2e.resize(11, -1);
    mesh.edges.resize(40);
    CompactQuick(mesh);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(CompactQuick, FillsNoGap) {
    PIN mesh = UnitSquare();
    mesh.p2e[0] = -1;
    mesh.edges[0] = {-1, 4, 7};
    const PIN before = mesh;
    CompactQuick(mesh);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(CompactQuick, WithAnEmptyP2ELeavesThePoints) {
    PIN mesh = UnitSquare();
    mesh.p2e.clear();
    mesh.edges.push_back({});
    CompactQuick(mesh);
    EXPECT_EQ(mesh.points.size(), 4u);
    EXPECT_EQ(mesh.edges.size(), 6u);
}

TEST(CompactQuick, TakesARecordForDeadByItsNE) {
    PIN mesh = RightTriangle();
    mesh.edges.push_back({-1, 2, 1});  // its twin carries no meaning any more
    CompactQuick(mesh);
    EXPECT_TRUE(SameRecords(mesh, RightTriangle()));
}

TEST(CompactQuick, OfADeadMeshLeavesNothing) {
    PIN mesh;
    mesh.points.resize(2);
    mesh.p2e = {-1, -1, -1};
    mesh.edges.resize(3);
    CompactQuick(mesh);
    EXPECT_TRUE(SameRecords(mesh, PIN()));
    CompactQuick(mesh);
    EXPECT_TRUE(SameRecords(mesh, PIN()));
}

}  // namespace
}  // namespace KM
