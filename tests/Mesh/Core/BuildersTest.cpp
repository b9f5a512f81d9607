#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <random>

#include "Mesh/Core/Construction.h"
#include "Mesh/Core/PlainBuild.h"
#include "Support/DumpCapture.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {
using namespace Test;

namespace {

const char* const nonExistent = "PIN.AddEdge: Can't create edge between non-existent nodes";

const std::vector<TPoint<double>> corners{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0.5, 0.5, 1}};

PIN Built(const std::vector<int>& triples) {
    PIN mesh;
    AddTriangles_3(mesh, corners, triples);
    ExpectCompact(mesh);
    return mesh;
}

/// Few nodes, coordinates that often coincide, repeated and reversed facets, in no order.
Test::IndexedFacets Crowded(unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&](unsigned limit) { return static_cast<int>(random() % limit); };
    const double coordinates[] = {0.0, -0.0, 1.0, 2.5, -3.0, 1e300, std::numeric_limits<double>::infinity()};
    IndexedFacets facets;
    const unsigned nodes = 3 + static_cast<unsigned>(below(60));
    const unsigned kinds = 1 + static_cast<unsigned>(below(7));
    for (unsigned i = 0; i < nodes; ++i)
        facets.points.push_back({coordinates[below(kinds)], coordinates[below(kinds)], static_cast<double>(below(4))});
    for (int count = below(300); count > 0; --count) {
        int a = below(nodes), b = below(nodes), c = below(nodes);
        if (facets.triples.size() >= 3 && below(4) == 0) {
            const std::size_t at = 3 * (random() % (facets.triples.size() / 3));
            a = facets.triples[at], b = facets.triples[at + 1], c = facets.triples[at + 2];
            if (below(2) == 0) std::swap(b, c);
        }
        facets.triples.insert(facets.triples.end(), {a, b, c});
    }
    return facets;
}

std::vector<std::vector<TPoint<double>>> AsFacets(const Soup& soup) {
    std::vector<std::vector<TPoint<double>>> facets;
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3)
        facets.push_back({soup[i], soup[i + 1], soup[i + 2], {9, 9, 9}});
    return facets;
}

std::vector<std::vector<int>> AsFacets(const std::vector<int>& triples) {
    std::vector<std::vector<int>> facets;
    for (std::size_t i = 0; i + 2 < triples.size(); i += 3)
        facets.push_back({triples[i], triples[i + 1], triples[i + 2], 4});
    return facets;
}

std::vector<float> Floats(const std::vector<TPoint<double>>& points) {
    std::vector<float> xyz;
    for (const auto& p : points)
        for (const double c : {p.X, p.Y, p.Z}) xyz.push_back(c > 1e38 && c < 1e301 ? 1e38f : static_cast<float>(c));
    return xyz;
}

SPIN DisplayMesh(const std::vector<TPoint<double>>& points, std::vector<int> triples) {
    std::vector<float> xyz = Floats(points);
    SPIN mesh;
    AddTrianglesSPIN(mesh, 0, xyz.data(), static_cast<int>(triples.size() / 3), triples.data());
    return mesh;
}

void ExpectAllLikePlain(const IndexedFacets& facets) {
    const Soup soup = facets.AsSoup();
    PIN merged, one, two;
    Plain::BuildMerged(merged, soup);
    AddTriangles_1(one, soup);
    AddTriangles_2(two, AsFacets(soup));
    EXPECT_TRUE(SameRecords(one, merged));
    EXPECT_TRUE(SameRecords(two, merged));

    PIN indexed, three, four;
    Plain::BuildIndexed(indexed, facets.points, facets.triples);
    AddTriangles_3(three, facets.points, facets.triples);
    AddTriangles_4(four, facets.points, AsFacets(facets.triples));
    EXPECT_TRUE(SameRecords(three, indexed));
    EXPECT_TRUE(SameRecords(four, indexed));

    const std::vector<float> xyz = Floats(facets.points);
    std::vector<TPoint<float>> floatSoup;
    for (const int i : facets.triples) floatSoup.push_back({xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]});
    SPIN plainDisplay;
    Plain::BuildMerged(plainDisplay, floatSoup);
    EXPECT_TRUE(SameRecords(DisplayMesh(facets.points, facets.triples), plainDisplay));
    ExpectCompact(one);
    ExpectCompact(three);
}

TEST(Builders, DoWhatThePlainRulesDoOnCrowdedFacets) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectAllLikePlain(Crowded(seed));
        if (HasFailure()) break;
    }
}

TEST(Builders, DoWhatThePlainRulesDoOnSurfaces) {
    ExpectAllLikePlain(SphereFacets(12));
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectAllLikePlain(Shuffled(GridFacets(9), seed));
        ExpectAllLikePlain(Shuffled(SphereFacets(6), seed));
        ExpectAllLikePlain(RandomFacets(seed, 500));
    }
}

/// A mesh that holds records already: some twins run the same way, `p2e` has another length, nodes are unused.
PIN WithClashingTwins(unsigned seed) {
    std::mt19937 random(seed);
    PIN mesh = RandomMesh(seed, 20);
    for (int k = 0; k < 20 && !mesh.edges.empty(); ++k) {
        const int a = static_cast<int>(random() % mesh.edges.size());
        const int b = static_cast<int>(random() % mesh.edges.size());
        if (a == b || mesh.edges[a].TE != -1 || mesh.edges[b].TE != -1) continue;
        mesh.edges[a].TE = b;
        mesh.edges[b].TE = a;
    }
    mesh.points.insert(mesh.points.end(), 2, TPoint<double>(1, 0, 0));
    mesh.p2e.resize(random() % (mesh.points.size() + 3), -1);
    return mesh;
}

TEST(Builders, DoWhatThePlainRulesDoToAMeshThatHoldsRecords) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const IndexedFacets facets = Crowded(seed);
        const PIN before = WithClashingTwins(seed);
        PIN merged = before, one = before, two = before, indexed = before, three = before, four = before;
        Plain::BuildMerged(merged, facets.AsSoup());
        AddTriangles_1(one, facets.AsSoup());
        AddTriangles_2(two, AsFacets(facets.AsSoup()));
        ASSERT_TRUE(SameRecords(one, merged) && SameRecords(two, merged));
        Plain::BuildIndexed(indexed, facets.points, facets.triples);
        AddTriangles_3(three, facets.points, facets.triples);
        AddTriangles_4(four, facets.points, AsFacets(facets.triples));
        ASSERT_TRUE(SameRecords(three, indexed) && SameRecords(four, indexed));
    }
}

// The edges at node 0 are far more than a bucket that is scanned; each facet stands there twice and once reversed.
TEST(Builders, DoWhatThePlainRulesDoRoundACrowdedNode) {
    IndexedFacets fan;
    for (int i = 0; i <= 100; ++i) fan.points.push_back({std::cos(i), std::sin(i), i == 0 ? 1.0 : 0.0});
    for (int i = 1; i <= 100; ++i)
        for (int k = 0; k < 3; ++k) {
            const int next = i % 100 + 1;
            fan.triples.insert(fan.triples.end(), {0, k == 1 ? next : i, k == 1 ? i : next});
        }
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectAllLikePlain(Shuffled(fan, seed));
    }
}

TEST(Builders, AreQuickRoundOneNode) {
    constexpr int count = 200000;
    IndexedFacets fan;
    fan.points.push_back({0, 0, 1});
    for (int i = 1; i <= count; ++i) {
        fan.points.push_back({1.0 * i, 0, 0});
        fan.triples.insert(fan.triples.end(), {0, i, i % count + 1});
    }
    PIN mesh;
    AddTriangles_3(mesh, fan.points, fan.triples);
    EXPECT_EQ(OrphanCount(mesh), count);
}

TEST(Builders, OfAnEmptyInputLeaveAnEmptyMesh) {
    PIN mesh;
    AddTriangles_1(mesh, {});
    AddTriangles_2(mesh, {});
    AddTriangles_3(mesh, {}, {});
    AddTriangles_4(mesh, {}, {});
    EXPECT_TRUE(SameRecords(mesh, PIN()));
}

TEST(Builders, OfAnEmptyInputCompactTheMesh) {
    PIN mesh = UnitSquare();
    mesh.points.push_back({5, 5, 5});
    mesh.p2e.push_back(-1);
    AddTriangles_1(mesh, {});
    EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
}

TEST(Builders, OneTriangleHasThreeOrphansAndItsOwnEdgeAtEachNode) {
    const PIN mesh = Built({0, 1, 2});
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{1, -1, 0}, {2, -1, 1}, {0, -1, 2}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2}));
}

TEST(Builders, TwoTrianglesInOppositeDirectionsShareATwinPair) {
    const PIN mesh = Built({0, 1, 2, 0, 2, 3});
    EXPECT_EQ(mesh.points.size(), 4u);
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{1, -1, 0}, {2, -1, 1}, {0, 3, 2}, {4, 2, 0}, {5, -1, 2}, {3, -1, 3}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{3, 1, 4, 5}));
}

TEST(Builders, TwoTrianglesInTheSameDirectionStayOpen) {
    const PIN mesh = Built({0, 1, 2, 3, 2, 0});
    EXPECT_EQ(mesh.points.size(), 4u);
    EXPECT_EQ(mesh.edges.size(), 6u);
    EXPECT_EQ(OrphanCount(mesh), 6);
    EXPECT_EQ(mesh.edges[3].P0, 3);  // and neither is turned
}

TEST(Builders, ThreeTrianglesOnOneEdgePairTheFirstTwo) {
    const PIN mesh = Built({0, 1, 2, 1, 0, 3, 0, 1, 4});
    EXPECT_EQ(mesh.edges[0].TE, 3);
    EXPECT_EQ(mesh.edges[3].TE, 0);
    EXPECT_EQ(mesh.edges[6].TE, -1);
    EXPECT_EQ(OrphanCount(mesh), 7);
}

TEST(Builders, FurtherFacetsOnAnEdgePairOffInTheirOrder) {
    // a-b, a-b, b-a, b-a: the first with the third, the second with the fourth.
    const PIN mesh = Built({0, 1, 2, 0, 1, 3, 1, 0, 4, 1, 0, 2});
    EXPECT_EQ(mesh.edges[0].TE, 6);
    EXPECT_EQ(mesh.edges[3].TE, 9);
}

TEST(Builders, DuplicateFacetIsASecondOpenSheet) {
    const PIN mesh = Built({0, 1, 2, 0, 1, 2});
    EXPECT_EQ(mesh.points.size(), 3u);
    EXPECT_EQ(OrphanCount(mesh), 6);
}

TEST(Builders, FacetAndItsReverseCloseUp) {
    const PIN mesh = Built({0, 1, 2, 2, 1, 0});
    EXPECT_EQ(OrphanCount(mesh), 0);
    EXPECT_EQ(EulerCharacteristic(mesh), 2);
}

TEST(Builders, NodeTouchedByTwoFansStaysOneNode) {
    const PIN mesh = Built({0, 1, 2, 0, 3, 4});
    EXPECT_EQ(mesh.points.size(), 5u);
    EXPECT_EQ(mesh.p2e[0], 3);
}

TEST(Builders, DropFacetsWithEqualNodes) {
    const PIN mesh = Built({0, 0, 1, 0, 1, 2, 1, 2, 1, 2, 2, 2});
    EXPECT_EQ(mesh.edges.size(), 3u);
    EXPECT_EQ(mesh.points.size(), 3u);
    PIN merged;
    AddTriangles_1(merged, {{0, 0, 0}, {1, 0, 0}, {-0.0, 0, 0}});
    EXPECT_TRUE(SameRecords(merged, PIN()));
}

TEST(Builders, LeaveOutAnIncompleteTriangle) {
    EXPECT_TRUE(SameRecords(Built({0, 1, 2, 3}), Built({0, 1, 2})));
    PIN mesh;
    AddTriangles_1(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {7, 7, 7}, {8, 8, 8}});
    EXPECT_EQ(mesh.points.size(), 3u);
    AddTriangles_2(mesh, {{}, {{0, 0, 0}, {1, 0, 0}}});
    AddTriangles_4(mesh, corners, {{}, {0, 1}, {1}});
    EXPECT_EQ(mesh.edges.size(), 3u);
}

TEST(AddTriangles_1, NumbersNodesByFirstOccurrence) {
    PIN mesh;
    AddTriangles_1(mesh, {corners[2], corners[3], corners[0], corners[2], corners[0], corners[1]});
    EXPECT_EQ(mesh.points, (std::vector{corners[2], corners[3], corners[0], corners[1]}));
}

TEST(AddTriangles_1, AppendsWithoutJoiningWhatWasThere) {
    PIN mesh;
    AddTriangles_1(mesh, {corners[0], corners[1], corners[2]});
    AddTriangles_1(mesh, {corners[2], corners[1], corners[0]});
    EXPECT_EQ(mesh.points.size(), 6u);
    EXPECT_EQ(OrphanCount(mesh), 6);
    ExpectCompact(mesh);
}

TEST(AddTriangles_1, TakesThePointsOfTheMeshItself) {
    PIN mesh = RightTriangle();
    AddTriangles_1(mesh, mesh.points);
    EXPECT_EQ(mesh.edges.size(), 6u);
    EXPECT_EQ(mesh.points.size(), 6u);
}

TEST(AddTriangles_1, MakesANodeOfEachPointThatIsNotANumber) {
    const TPoint<double> hole(std::numeric_limits<double>::quiet_NaN(), 0, 0);
    PIN mesh;
    AddTriangles_1(mesh, {hole, corners[0], corners[1], hole, corners[1], corners[0]});
    EXPECT_EQ(mesh.points.size(), 4u);
    EXPECT_EQ(OrphanCount(mesh), 4);
}

TEST(AddTriangles_3, LetsTheLastNodeTakeThePlaceOfAnUnusedOne) {
    const PIN mesh = Built({0, 2, 4});
    EXPECT_EQ(mesh.points, (std::vector{corners[0], corners[4], corners[2]}));
    EXPECT_EQ(mesh.edges[2].P0, 1);
}

TEST(AddTriangles_3, ReplacesEarlierPointsAndKeepsEarlierEdges) {
    PIN mesh = Built({0, 1, 2});
    AddTriangles_3(mesh, corners, {2, 1, 0});
    EXPECT_EQ(mesh.points.size(), 3u);
    EXPECT_EQ(mesh.edges.size(), 6u);
    EXPECT_EQ(OrphanCount(mesh), 6);
}

TEST(AddTriangles_3, TakesVectorsOfTheMeshItself) {
    PIN mesh = RightTriangle();
    AddTriangles_3(mesh, mesh.points, mesh.p2e);
    EXPECT_EQ(mesh.edges.size(), 6u);
    EXPECT_EQ(mesh.points.size(), 3u);
}

TEST(AddTriangles_3, DropsAFacetWithANegativeIndexAndSaysSo) {
    for (const std::vector<int>& bad : {std::vector{-1, 1, 2}, {0, -1, 2}, {0, 1, INT_MIN}}) {
        DumpCapture dump;
        std::vector<int> triples{0, 1, 2};
        triples.insert(triples.end(), bad.begin(), bad.end());
        triples.insert(triples.end(), {0, 2, 3});
        EXPECT_TRUE(SameRecords(Built(triples), Built({0, 1, 2, 0, 2, 3})));
        EXPECT_EQ(dump.Text(), nonExistent);
        PIN four;
        AddTriangles_4(four, corners, AsFacets(triples));
        EXPECT_TRUE(SameRecords(four, Built({0, 1, 2, 0, 2, 3})));
        EXPECT_EQ(dump.Count(nonExistent), 2);
    }
}

TEST(AddTriangles_3, SaysNothingAboutAFacetThatIsDegenerateAnyway) {
    DumpCapture dump;
    Built({-1, -1, 2});
    EXPECT_EQ(dump.Text(), "");
}

TEST(AddTriangles_3, DropsAFacetBeyondTheNodesAndOrphansItsNeighbours) {
    for (const int beyond : {5, 1000, INT_MAX}) {
        SCOPED_TRACE(beyond);
        const PIN mesh = Built({0, 1, 2, 2, 1, beyond, beyond, 1, 3, 0, 2, 3});
        PIN expected;
        Plain::BuildIndexed(expected, corners, {0, 1, 2, 2, 1, 5, 5, 1, 3, 0, 2, 3});
        EXPECT_TRUE(SameRecords(mesh, expected));
        EXPECT_EQ(mesh.edges.size(), 6u);
    }
}

TEST(AddTriangles_3, MatchesThePlainRulesWithStrayIndices) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        std::vector<int> triples;
        for (int i = 0; i < 90; ++i) triples.push_back(static_cast<int>(random() % 24) - 2);
        const std::vector<TPoint<double>> nodes(16);
        PIN mesh, expected;
        AddTriangles_3(mesh, nodes, triples);
        Plain::BuildIndexed(expected, nodes, triples);
        ASSERT_TRUE(SameRecords(mesh, expected));
    }
}

TEST(AddTrianglesSPIN, NumbersNodesByFirstUseAndLeavesUnusedPointsOut) {
    const SPIN mesh = DisplayMesh(corners, {4, 2, 0});
    EXPECT_EQ(mesh.points, (std::vector<TPoint<float>>{{0.5f, 0.5f, 1}, {1, 1, 0}, {0, 0, 0}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2}));
}

TEST(AddTrianglesSPIN, MergesDifferentIndicesOfEqualPoints) {
    const SPIN mesh = DisplayMesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {-0.0, 0, 0}, {1, 1, 0}}, {0, 1, 2, 1, 3, 4});
    EXPECT_EQ(mesh.points.size(), 4u);
    EXPECT_EQ(mesh.edges[0].TE, 5 - 2);
}

TEST(AddTrianglesSPIN, AddsNothingWithoutInput) {
    float xyz[9] = {};
    int triples[3] = {0, 1, 2};
    SPIN mesh;
    AddTrianglesSPIN(mesh, 3, nullptr, 1, triples);
    AddTrianglesSPIN(mesh, 3, xyz, 1, nullptr);
    AddTrianglesSPIN(mesh, 3, xyz, 0, triples);
    AddTrianglesSPIN(mesh, 3, xyz, -1, triples);
    AddTrianglesSPIN(mesh, 3, xyz, INT_MIN, triples);
    EXPECT_TRUE(SameRecords(mesh, SPIN()));
}

TEST(AddTrianglesSPIN, DropsAFacetWithANegativeIndexAndSaysSo) {
    DumpCapture dump;
    const SPIN mesh = DisplayMesh(corners, {-1, 1, 2, 0, 1, 2, 0, -7, INT_MIN, 0, 2, 3, 4, 4, -1});
    EXPECT_TRUE(SameRecords(mesh, DisplayMesh(corners, {0, 1, 2, 0, 2, 3})));
    EXPECT_EQ(dump.Count(nonExistent), 3);
}

}  // namespace
}  // namespace KM
