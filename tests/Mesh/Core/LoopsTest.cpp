#include "Mesh/Core/Loops.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <set>

#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;
using Ints = std::vector<int>;

const Ints NoEdges;

int EdgeCount(const PIN& mesh) { return static_cast<int>(mesh.edges.size()); }

/// Indices that name no alive edge of the mesh; its record 0 must be dead.
Ints NoAliveEdges(const PIN& mesh) { return {-1, -2, INT_MIN, EdgeCount(mesh), INT_MAX, 0}; }

PIN WithFirstRecordDead(PIN mesh) {
    mesh.edges[0] = {-1, 3, 0};
    return mesh;
}

/// `count` edges in one loop, all orphans, on the regular polygon of radius 1.
PIN OnePolygon(int count) {
    Soup points;
    for (int i = 0; i < count; ++i) {
        const double angle = 6.283185307179586 * i / count;
        points.push_back(TPoint<double>(std::cos(angle), std::sin(angle), 0.0));
    }
    return OneLoop(points);
}

/// Edges 0, 1, 2 are a tail that runs into the circle 3, 4, 5, 6: following `NE` from the tail never comes back to it.
PIN TailIntoCircle() {
    PIN mesh = OnePolygon(7);
    mesh.edges[6].NE = 3;
    return mesh;
}

/// The edge whose `NE` is `edge`, by a scan of all.
int ScanForPrevious(const PIN& mesh, int edge) {
    for (int e = 0; e < EdgeCount(mesh); ++e)
        if (mesh.edges[e].NE == edge) return e;
    return -1;
}

PIN RandomPolygons(unsigned seed) { return Dissolved(RandomMesh(seed, 60), seed, 40); }

TEST(PrevEdge, OfATriangleIsTheThirdEdge) {
    const PIN mesh = RightTriangle();
    EXPECT_EQ(PrevEdge(mesh, 0), 2);
    EXPECT_EQ(PrevEdge(mesh, 1), 0);
    EXPECT_EQ(PrevEdge(mesh, 2), 1);
}

TEST(PrevEdge, WalksRoundLoopsOfAnyLength) {
    for (const int count : {1, 2, 3, 4, 5, 17}) {
        const PIN mesh = OnePolygon(count);
        for (int e = 0; e < count; ++e) EXPECT_EQ(PrevEdge(mesh, e), (e + count - 1) % count) << count << " edges";
    }
}

TEST(PrevEdge, AgreesWithAScanOnRandomPolygons) {
    int longLoops = 0;
    for (unsigned seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = RandomPolygons(seed);
        ExpectSound(mesh);
        longLoops += static_cast<int>(CollectNonTriangularLoops(mesh).size());
        for (int e = 0; e < EdgeCount(mesh); ++e)
            ASSERT_EQ(PrevEdge(mesh, e), mesh.edges[e].NE != -1 ? ScanForPrevious(mesh, e) : -1);
    }
    EXPECT_GT(longLoops, 50);
}

TEST(PrevEdge, OfNoAliveEdgeIsMinusOne) {
    const PIN mesh = WithFirstRecordDead(Cube());
    for (const int e : NoAliveEdges(mesh)) EXPECT_EQ(PrevEdge(mesh, e), -1) << e;
    EXPECT_EQ(PrevEdge(PIN(), 0), -1);
}

// A walk over as many links as there are edges, for each dead one, would take minutes here.
TEST(PrevEdge, OfADeadEdgeTakesNoWalk) {
    PIN mesh;
    mesh.edges.resize(300000);
    for (int e = 0; e < EdgeCount(mesh); ++e) ASSERT_EQ(PrevEdge(mesh, e), -1);
}

TEST(PrevEdge, EndsWhereTheLoopDoesNotComeBack) {
    const PIN mesh = TailIntoCircle();
    EXPECT_EQ(PrevEdge(mesh, 0), -1);
    EXPECT_EQ(PrevEdge(mesh, 1), -1);
    EXPECT_EQ(PrevEdge(mesh, 4), 3);
}

TEST(PrevEdge, ServesTheSinglePrecisionMesh) {
    SPIN mesh;
    mesh.edges = {{1, -1, 0}, {2, -1, 1}, {0, -1, 2}};
    EXPECT_EQ(PrevEdge(mesh, 0), 2);
}

TEST(Loop, BeginsWithTheEdgeAndFollowsNE) {
    EXPECT_EQ(Loop(RightTriangle(), 1), (Ints{1, 2, 0}));
    EXPECT_EQ(Loop(OnePolygon(5), 3), (Ints{3, 4, 0, 1, 2}));
    EXPECT_EQ(Loop(OnePolygon(2), 1), (Ints{1, 0}));
    EXPECT_EQ(Loop(OnePolygon(1), 0), Ints{0});
}

TEST(Loop, OfNoAliveEdgeIsEmpty) {
    const PIN mesh = WithFirstRecordDead(Cube());
    for (const int e : NoAliveEdges(mesh)) EXPECT_EQ(Loop(mesh, e), NoEdges) << e;
    EXPECT_EQ(Loop(PIN(), 0), NoEdges);
}

TEST(Loop, ThatDoesNotComeBackIsEmpty) {
    EXPECT_EQ(Loop(TailIntoCircle(), 0), NoEdges);
    EXPECT_EQ(Loop(WithFirstRecordDead(RightTriangle()), 1), NoEdges);
}

TEST(OrphanLoop, OfOneTriangleIsItsLoop) {
    EXPECT_EQ(OrphanLoop(RightTriangle(), 0), (Ints{0, 1, 2}));
    EXPECT_EQ(OrphanLoop(RightTriangle(), 2), (Ints{2, 0, 1}));
}

//  3 -4- 2
//  2 \   3     edges of the border of the square: 0, 3, 4, 2; the pair 1, 5 lies inside
//  0 -0- 1
TEST(OrphanLoop, TurnsThroughTheFanAtEachNode) {
    EXPECT_EQ(OrphanLoop(UnitSquare(), 0), (Ints{0, 3, 4, 2}));
    EXPECT_EQ(OrphanLoop(UnitSquare(), 4), (Ints{4, 2, 0, 3}));
}

TEST(OrphanLoop, ServesLoopsOfOneAndTwoEdges) {
    EXPECT_EQ(OrphanLoop(OnePolygon(1), 0), Ints{0});
    EXPECT_EQ(OrphanLoop(OnePolygon(2), 1), (Ints{1, 0}));
}

TEST(OrphanLoop, AtANodeWithTwoFansStaysOnItsOwnFan) {
    const PIN mesh = BowTie();
    EXPECT_EQ(OrphanLoop(mesh, 0), (Ints{0, 1, 2}));
    EXPECT_EQ(OrphanLoop(mesh, 4), (Ints{4, 5, 3}));
}

TEST(OrphanLoop, OfAnEdgeThatIsNoOrphanIsEmpty) {
    EXPECT_EQ(OrphanLoop(UnitSquare(), 1), NoEdges);
    const PIN mesh = WithFirstRecordDead(Grid(2));
    for (const int e : NoAliveEdges(mesh)) EXPECT_EQ(OrphanLoop(mesh, e), NoEdges) << e;
}

TEST(OrphanLoop, ThatDoesNotComeBackIsEmpty) {
    EXPECT_EQ(OrphanLoop(TailIntoCircle(), 0), NoEdges);
    EXPECT_EQ(OrphanLoop(TailIntoCircle(), 5), (Ints{5, 6, 3, 4}));
    PIN twinOfItself = RightTriangle();
    twinOfItself.edges[1].TE = 1;  // turns back over itself for ever
    twinOfItself.edges[1].NE = 1;
    EXPECT_EQ(OrphanLoop(twinOfItself, 0), NoEdges);
}

TEST(AllOrphanLoops, OfAClosedMeshIsEmpty) {
    EXPECT_TRUE(AllOrphanLoops(Cube()).empty());
    EXPECT_TRUE(AllOrphanLoops(PIN()).empty());
}

TEST(AllOrphanLoops, OfOneTriangleIsOneListOfThreeEdges) {
    EXPECT_EQ(AllOrphanLoops(RightTriangle()), (std::vector<Ints>{{0, 1, 2}}));
}

TEST(AllOrphanLoops, FindsTheRimsOfAHole) {
    IndexedFacets grid = GridFacets(3);
    // The two triangles of the square in the middle, number 4 of 9.
    grid.triples.erase(grid.triples.begin() + 24, grid.triples.begin() + 30);
    const PIN mesh = FromFacets(grid);
    const std::vector<Ints> loops = AllOrphanLoops(mesh);
    ASSERT_EQ(loops.size(), 2u);
    EXPECT_EQ(loops[0].size(), 12u);
    EXPECT_EQ(loops[1].size(), 4u);
    EXPECT_EQ(LoopLength(mesh, loops[0]), 12.0);
    EXPECT_EQ(LoopLength(mesh, loops[1]), 4.0);
}

TEST(AllOrphanLoops, CoversEachOrphanOnceInOrderOfTheLowest) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = seed % 2 == 0 ? RandomMesh(seed, 40) : RandomPolygons(seed);
        std::set<int> covered;
        int lowestBefore = -1;
        for (const Ints& loop : AllOrphanLoops(mesh)) {
            EXPECT_EQ(loop, OrphanLoop(mesh, loop.front()));
            EXPECT_EQ(loop.front(), *std::min_element(loop.begin(), loop.end()));
            EXPECT_GT(loop.front(), lowestBefore);
            lowestBefore = loop.front();
            for (std::size_t i = 0; i < loop.size(); ++i) {
                EXPECT_TRUE(covered.insert(loop[i]).second) << "twice: " << loop[i];
                const int following = loop[(i + 1) % loop.size()];
                EXPECT_EQ(mesh.edges[mesh.edges[loop[i]].NE].P0, mesh.edges[following].P0);
            }
        }
        EXPECT_EQ(static_cast<int>(covered.size()), OrphanCount(mesh));
    }
}

TEST(AllOrphanLoops, LeavesOutWhatDoesNotComeBack) {
    PIN mesh = TailIntoCircle();
    mesh.edges.push_back({7, -1, 0});
    EXPECT_EQ(AllOrphanLoops(mesh), (std::vector<Ints>{{7}}));
}

TEST(AreOnSameLoop, HoldsForTwoEdgesOfOneTriangleOnly) {
    const PIN mesh = UnitSquare();
    EXPECT_TRUE(AreOnSameLoop(mesh, 0, 1));
    EXPECT_TRUE(AreOnSameLoop(mesh, 0, 2));
    EXPECT_TRUE(AreOnSameLoop(mesh, 2, 0));
    EXPECT_FALSE(AreOnSameLoop(mesh, 0, 3));
    EXPECT_FALSE(AreOnSameLoop(mesh, 1, 5));
}

TEST(AreOnSameLoop, DoesNotHoldForAnEdgeAndItself) {
    const PIN mesh = UnitSquare();
    for (int e = 0; e < 6; ++e) EXPECT_FALSE(AreOnSameLoop(mesh, e, e));
    EXPECT_FALSE(AreOnSameLoop(OnePolygon(1), 0, 0));
}

TEST(AreOnSameLoop, DoesNotHoldForWhatIsNoAliveEdge) {
    const PIN mesh = WithFirstRecordDead(Cube());
    for (const int e : NoAliveEdges(mesh)) {
        EXPECT_FALSE(AreOnSameLoop(mesh, e, 5)) << e;
        EXPECT_FALSE(AreOnSameLoop(mesh, 5, e)) << e;
    }
    EXPECT_FALSE(AreOnSameLoop(PIN(), 0, 0));
}

TEST(AreOnSameLoop, EndsWhereTheLoopDoesNotComeBack) { EXPECT_FALSE(AreOnSameLoop(TailIntoCircle(), 1, 0)); }

TEST(CollectNonTriangularLoops, IsEmptyOnTriangles) {
    EXPECT_EQ(CollectNonTriangularLoops(Cube()), NoEdges);
    EXPECT_EQ(CollectNonTriangularLoops(PIN()), NoEdges);
}

TEST(CollectNonTriangularLoops, NamesTheLowestEdgeOfEachLoop) {
    EXPECT_EQ(CollectNonTriangularLoops(OnePolygon(5)), Ints{0});
    EXPECT_EQ(CollectNonTriangularLoops(OnePolygon(2)), Ints{0});
    for (unsigned seed = 0; seed < 30; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = RandomPolygons(seed);
        Ints expected;
        for (int e = 0; e < EdgeCount(mesh); ++e) {
            const Ints loop = Loop(mesh, e);
            if (!loop.empty() && loop.size() != 3 && *std::min_element(loop.begin(), loop.end()) == e)
                expected.push_back(e);
        }
        EXPECT_EQ(CollectNonTriangularLoops(mesh), expected);
    }
}

TEST(CollectNonTriangularLoops, TakesALoopOfOneEdgeForATriangle) {
    // Three steps along `NE` lead back to the edge, and that is all that tells a triangle.
    EXPECT_EQ(CollectNonTriangularLoops(OnePolygon(1)), NoEdges);
}

TEST(EdgeLength, IsTheDistanceOfTheEnds) {
    const PIN mesh = RightTriangle();
    EXPECT_EQ(EdgeLength(mesh, 0), 1.0);
    EXPECT_EQ(EdgeLength(mesh, 1), std::sqrt(2.0));
    EXPECT_EQ(EdgeLength(mesh, 2), 1.0);
}

TEST(EdgeLength, OfTwinsIsTheSame) {
    const PIN mesh = Sphere(5);
    for (int e = 0; e < EdgeCount(mesh); ++e) EXPECT_EQ(EdgeLength(mesh, e), EdgeLength(mesh, mesh.edges[e].TE));
}

TEST(EdgeLength, OfNoAliveEdgeIsZero) {
    PIN mesh = WithFirstRecordDead(Cube());
    for (const int e : NoAliveEdges(mesh)) EXPECT_EQ(EdgeLength(mesh, e), 0.0) << e;
    EXPECT_EQ(EdgeLength(PIN(), 0), 0.0);
    mesh.edges[5].P0 = 8;
    EXPECT_EQ(EdgeLength(mesh, 5), 0.0);
    EXPECT_EQ(EdgeLength(mesh, 4), 0.0);  // ends where 5 starts
}

TEST(LoopLength, OfNoEdgesIsZero) { EXPECT_EQ(LoopLength(Cube(), {}), 0.0); }

TEST(LoopLength, AddsInTheOrderOfTheEdges) {
    PIN mesh = OnePolygon(3);
    mesh.points = {TPoint<double>(0, 0, 0), TPoint<double>(1e16, 0, 0), TPoint<double>(1e16, 1, 0)};
    // 1e16 swallows the 1 that is added behind it.
    EXPECT_EQ(LoopLength(mesh, {1, 1, 0}), 1e16 + 2.0);
    EXPECT_EQ(LoopLength(mesh, {0, 1, 1}), 1e16);
}

TEST(LoopLength, LeavesOutWhatIsNoEdge) { EXPECT_EQ(LoopLength(RightTriangle(), {-1, 0, 99}), 1.0); }

TEST(Loops, EndOnBrokenLinks) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = WithBrokenLinks(RandomPolygons(seed), seed);
        const std::size_t most = mesh.edges.size();
        EXPECT_LE(AllOrphanLoops(mesh).size(), most);
        EXPECT_LE(CollectNonTriangularLoops(mesh).size(), most);
        for (int e = -2; e < EdgeCount(mesh) + 2; ++e) {
            EXPECT_LE(Loop(mesh, e).size(), most);
            EXPECT_LE(OrphanLoop(mesh, e).size(), most);
            EXPECT_GE(EdgeLength(mesh, e), 0.0);
            const int previous = PrevEdge(mesh, e);
            EXPECT_TRUE(previous == -1 || mesh.edges[previous].NE == e);
            EXPECT_TRUE(!AreOnSameLoop(mesh, e, 3) || mesh.edges[3].NE != -1);
        }
    }
}

}  // namespace
}  // namespace KM
