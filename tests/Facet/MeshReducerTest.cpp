#include "Facet/MeshReducer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "Facet/HostileFacets.h"
#include "Facet/LevelsOfDetail.h"
#include "Facet/PlainLevels.h"
#include "Facet/StreamReader.h"
#include "Mesh/Core/Construction.h"
#include "Support/MeshChecks.h"
#include "Support/Strips.h"

namespace KM {
namespace {

using namespace KM::Test;
using P = TPoint<double>;
constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

int TriangleCount(const PIN& mesh) { return static_cast<int>(TrianglesOf(mesh).size()); }

std::vector<std::array<int, 3>> TrianglesOfLevel(const KsLod& lod) {
    return ReadLevels(PlainStream({lod})).at(0).triangles;
}

/// The links of the alive records, without `p2e`, which reducing does not maintain.
std::string FirstBrokenLink(PIN mesh) {
    mesh.p2e.assign(mesh.points.size(), -1);
    return FirstUnsoundness(mesh);
}

void ExpectAsThePlainRule(const IndexedFacets& facets, const std::vector<double>& tolerances) {
    PIN expected = PlainFacetMesh(facets);
    PIN mesh = expected;
    const std::vector<KsLod> plain = PlainDecimatedLods(expected, tolerances);
    std::vector<KsLod> lods;
    int words = 0;
    for (const KsLod& lod : plain) words += lod.size;
    EXPECT_EQ(BuildDecimatedLods(mesh, static_cast<int>(tolerances.size()), tolerances.data(), lods), words);
    EXPECT_TRUE(SameRecords(mesh, expected));
    EXPECT_EQ(PlainStream(lods), PlainStream(plain));
}

TEST(MeshReducer, IsThePlainRuleOnHostileMeshes) {
    for (unsigned seed = 0; seed < 1500; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const IndexedFacets facets = HostileFacets(seed);
        double size = 0.0;
        for (const P& p : facets.points)
            if (std::fabs(p.X) < 1e6) size = std::max(size, std::fabs(p.X));
        ExpectAsThePlainRule(facets, HostileTolerances(seed, size > 0.0 ? size : 1.0));
    }
}

TEST(MeshReducer, IsThePlainRuleOnLargerMeshes) {
    for (const int n : {20, 40}) {
        SCOPED_TRACE(testing::Message() << "n " << n);
        ExpectAsThePlainRule(BumpySphereFacets(n), {0.01, 0.1, 0.5, 2.0, 40.0});
        ExpectAsThePlainRule(Shuffled(BumpySphereFacets(n), 3), {0.3, 0.1, 2.0});
        ExpectAsThePlainRule(GridFacets(n), {1e-9, 0.0, 0.5, 3.0});
    }
}

TEST(MeshReducer, IsThePlainRuleWherePenaltiesTakeManyRounds) {
    // Thresholds far above the penalty: a refused edge comes back thousands of times before it leaves.
    for (const double tolerance : {3e7, 1e8, 1e9}) {
        SCOPED_TRACE(testing::Message() << "tolerance " << tolerance);
        ExpectAsThePlainRule(SphereFacets(2), {tolerance, 2 * tolerance});
        ExpectAsThePlainRule(GridFacets(3), {0.1, tolerance, 3 * tolerance});
    }
}

TEST(MeshReducer, EndsForAnyTolerance) {
    const std::vector<std::vector<double>> lists{{Infinity},       {NaN},           {1e15},
                                                 {1e200, 1e300},   {NaN, 1.0, NaN}, {-Infinity},
                                                 {0.0, 1e12, 5.0}, {1e10},          {1e14, 1e16}};
    for (const std::vector<double>& tolerances : lists)
        for (unsigned seed = 0; seed < 60; ++seed) {
            SCOPED_TRACE(testing::Message() << "first tolerance " << tolerances[0] << " seed " << seed);
            PIN mesh = PlainFacetMesh(HostileFacets(seed));
            std::vector<KsLod> lods;
            BuildDecimatedLods(mesh, static_cast<int>(tolerances.size()), tolerances.data(), lods);
            ASSERT_EQ(lods.size(), tolerances.size());
            EXPECT_EQ(TrianglesOfLevel(lods.back()), TrianglesOf(mesh));
        }
}

/// All that `BuildWatchedLods` told.
struct Told {
    std::vector<double> shares;
    std::vector<KsLod> lods;
    int words = 0;
};

Told Watched(PIN& mesh, const std::vector<double>& tolerances) {
    Told told;
    told.words = BuildWatchedLods(mesh, static_cast<int>(tolerances.size()), tolerances.data(), told.lods,
                                  [&told](double share) { told.shares.push_back(share); });
    return told;
}

TEST(WatchedLods, AreTheSameAndTellWhatHasGone) {
    const std::vector<double> tolerances{0.01, 0.1, 2.0};
    for (const int n : {2, 20, 60}) {
        SCOPED_TRACE(testing::Message() << "n " << n);
        PIN mesh = BumpySphere(n);
        PIN plain = mesh;
        const Told told = Watched(mesh, tolerances);
        std::vector<KsLod> lods;
        EXPECT_EQ(BuildDecimatedLods(plain, 3, tolerances.data(), lods), told.words);
        EXPECT_TRUE(SameRecords(mesh, plain));
        EXPECT_EQ(PlainStream(told.lods), PlainStream(lods));
        EXPECT_TRUE(std::is_sorted(told.shares.begin(), told.shares.end()));
        EXPECT_EQ(told.shares.front(), 0.0);
        EXPECT_LE(told.shares.back(), 1.0);
        // At each stage, and often within: a collapse is a step at least.
        const int gone = 8 * n * n - TriangleCount(mesh);
        EXPECT_GE(told.shares.size(), 3u + static_cast<unsigned>(gone / 2 / 4096));
    }
}

TEST(WatchedLods, CanBeStoppedAnywhere) {
    const std::vector<double> tolerances{0.0, 0.01, 0.1, 2.0};
    PIN whole = BumpySphere(60);
    const std::size_t times = Watched(whole, tolerances).shares.size();
    ASSERT_GE(times, 6u);
    for (std::size_t stop = 1; stop <= times; ++stop) {
        SCOPED_TRACE(testing::Message() << "stop " << stop);
        PIN mesh = BumpySphere(60);
        std::vector<KsLod> lods;
        std::size_t count = 0;
        const auto watch = [&](double) {
            if (++count == stop) throw stop;
        };
        EXPECT_THROW(BuildWatchedLods(mesh, 4, tolerances.data(), lods, watch), std::size_t);
        EXPECT_LT(lods.size(), 4u);
        EXPECT_EQ(FirstBrokenLink(mesh), "");
        EXPECT_EQ(EulerCharacteristic(mesh), 2);
        for (const KsLod& lod : lods) EXPECT_GT(lod.size, 3);
    }
}

TEST(WatchedLods, RefuseWhatTheOthersRefuse) {
    PIN mesh = BumpySphere(2);
    std::vector<KsLod> lods;
    EXPECT_EQ(BuildWatchedLods(mesh, -1, nullptr, lods, [](double) { FAIL(); }), 0);
    EXPECT_EQ(BuildWatchedLods(mesh, 1, nullptr, lods, nullptr), 0);
    PIN nothing;
    const double tolerance = 1.0;
    EXPECT_EQ(BuildWatchedLods(nothing, 1, &tolerance, lods, [](double share) { EXPECT_EQ(share, 1.0); }), 3);
}

TEST(MeshReducer, EachLevelIsTheMeshAtItsStage) {
    const std::vector<double> tolerances{0.02, 0.2, 1.0, 5.0};
    PIN whole = BumpySphere(12);
    std::vector<KsLod> lods;
    BuildDecimatedLods(whole, 4, tolerances.data(), lods);
    PIN mesh = BumpySphere(12);
    MeshReducer reducer(mesh, tolerances);
    int before = TriangleCount(mesh) + 1;
    for (int level = 0; level < 4; ++level) {
        SCOPED_TRACE(testing::Message() << "level " << level);
        reducer.RunStage(level);
        EXPECT_EQ(TrianglesOfLevel(lods[level]), TrianglesOf(mesh));
        EXPECT_EQ(lods[level].tolerance, tolerances[level]);
        EXPECT_EQ(OrphanCount(mesh), 0);
        EXPECT_EQ(FirstBrokenLink(mesh), "");
        EXPECT_EQ(EulerCharacteristic(mesh), 2);
        EXPECT_LT(TriangleCount(mesh), before);
        before = TriangleCount(mesh);
    }
    EXPECT_TRUE(SameRecords(mesh, whole));
}

TEST(MeshReducer, MovesNoPointAndKeepsP2e) {
    PIN mesh = BumpySphere(6);
    const PIN before = mesh;
    const double tolerance = 3.0;
    std::vector<KsLod> lods;
    BuildDecimatedLods(mesh, 1, &tolerance, lods);
    EXPECT_EQ(mesh.points, before.points);
    EXPECT_EQ(mesh.p2e, before.p2e);
    EXPECT_EQ(mesh.edges.size(), before.edges.size());
    EXPECT_LT(TriangleCount(mesh), TriangleCount(before));
}

TEST(MeshReducer, LeavesTheTwinsOfDeadRecordsAlone) {
    PIN mesh = BumpySphere(6);
    const double tolerance = 3.0;
    std::vector<KsLod> lods;
    BuildDecimatedLods(mesh, 1, &tolerance, lods);
    bool hasTwin = false;
    for (const Edge& e : mesh.edges) {
        if (e.NE != -1) continue;
        EXPECT_EQ(e.P0, -1);
        hasTwin = hasTwin || e.TE != -1;
    }
    EXPECT_TRUE(hasTwin);
}

TEST(MeshReducer, KeepsTheOutlineOfAFlatSheet) {
    const double tolerance = 0.1;
    PIN mesh = PlainFacetMesh(GridFacets(10));
    std::vector<KsLod> lods;
    BuildDecimatedLods(mesh, 1, &tolerance, lods);
    EXPECT_EQ(FirstBrokenLink(mesh), "");
    double area = 0.0;
    bool corner[4] = {};
    for (const auto& t : TrianglesOf(mesh)) {
        const P n = Cross(mesh.points[t[1]] - mesh.points[t[0]], mesh.points[t[2]] - mesh.points[t[0]]);
        EXPECT_GT(n.Z, 0.0);
        area += 0.5 * n.Z;
        for (const int node : t)
            for (int k = 0; k < 4; ++k) corner[k] |= mesh.points[node] == P(k & 1 ? 10 : 0, k & 2 ? 10 : 0, 0);
    }
    EXPECT_DOUBLE_EQ(area, 100.0);
    EXPECT_TRUE(corner[0] && corner[1] && corner[2] && corner[3]);
    EXPECT_LT(TriangleCount(mesh), 100);
}

TEST(MeshReducer, AnEmptyMeshHasAnEmptyLevelForEachTolerance) {
    const double tolerances[] = {1.0, 2.0, 3.0};
    PIN mesh;
    std::vector<KsLod> lods;
    EXPECT_EQ(BuildDecimatedLods(mesh, 3, tolerances, lods), 9);
    ASSERT_EQ(lods.size(), 3u);
    for (const KsLod& lod : lods) EXPECT_EQ(lod.size, 3);
    EXPECT_EQ(PlainStream(lods), (std::vector<std::int32_t>{100000, 3, 0}));
}

TEST(MeshReducer, AnIsolatedTriangleStaysBelowItsCost) {
    const double tolerance = 1.0;
    PIN mesh = RightTriangle();
    std::vector<KsLod> lods;
    EXPECT_EQ(BuildDecimatedLods(mesh, 1, &tolerance, lods), 7);
    EXPECT_EQ(lods[0].strips.size(), 1u);
    EXPECT_EQ(lods[0].strips[0].nodes.size(), 3u);
    // Moving a corner by 1 across a boundary plane of weight 10000 costs 5000 or 10000: above 64 squared.
    const double large = 100.0;
    EXPECT_EQ(BuildDecimatedLods(mesh, 1, &large, lods), 3);
    EXPECT_EQ(TriangleCount(mesh), 0);
}

TEST(MeshReducer, TiesKeepTheEdgesOfACubeOut) {
    // All half-edges on a flat face cost 0 both ways, and along the cube's edges as well: nothing waits at first.
    const double tolerance = 0.1;
    PIN mesh = Cube();
    const PIN before = mesh;
    std::vector<KsLod> lods;
    BuildDecimatedLods(mesh, 1, &tolerance, lods);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(MeshReducer, NothingCollapsesAtAFirstToleranceOfZero) {
    const double tolerances[] = {0.0, 1.0};
    PIN mesh = PlainFacetMesh(GridFacets(4));
    std::vector<KsLod> lods;
    BuildDecimatedLods(mesh, 2, tolerances, lods);
    EXPECT_EQ(TrianglesOfLevel(lods[0]).size(), 32u);
    EXPECT_LT(TrianglesOfLevel(lods[1]).size(), 32u);
}

TEST(BuildDecimatedLods, RefusesBrokenMeshesUntouched) {
    const auto breakings = {+[](Edge& e) { e.NE = -1; }, +[](Edge& e) { e.NE = 1000; }, +[](Edge& e) { e.NE = 4; },
                            +[](Edge& e) { e.TE = -2; }, +[](Edge& e) { e.TE = 1000; }, +[](Edge& e) { e.TE = 5; },
                            +[](Edge& e) { e.P0 = -1; }, +[](Edge& e) { e.P0 = 1000; }, +[](Edge& e) { e = Edge(); },
                            +[](Edge& e) { e.NE = 0; }};
    const double tolerance = 1.0;
    int which = 0;
    for (const auto breaking : breakings) {
        SCOPED_TRACE(testing::Message() << "breaking " << which++);
        PIN mesh = UnitSquare();
        breaking(mesh.edges[0]);
        const PIN before = mesh;
        std::vector<KsLod> lods(1);
        EXPECT_EQ(BuildDecimatedLods(mesh, 1, &tolerance, lods), 0);
        EXPECT_EQ(lods.size(), 1u);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(BuildDecimatedLods, RefusesLoopsThatAreNoTriangles) {
    PIN mesh;
    for (int i = 0; i < 4; ++i) AddPoint(mesh, P(i & 1, i / 2, 0));
    AddPolygon(mesh, {0, 1, 3, 2}, {-1, -1, -1, -1});
    const double tolerance = 1.0;
    std::vector<KsLod> lods;
    EXPECT_EQ(BuildDecimatedLods(mesh, 1, &tolerance, lods), 0);
    EXPECT_TRUE(lods.empty());
}

TEST(BuildDecimatedLods, RefusesBadTolerances) {
    const double tolerance = 1.0;
    PIN mesh = UnitSquare();
    std::vector<KsLod> lods;
    EXPECT_EQ(BuildDecimatedLods(mesh, -1, &tolerance, lods), 0);
    EXPECT_EQ(BuildDecimatedLods(mesh, 1, nullptr, lods), 0);
    EXPECT_EQ(BuildDecimatedLods(mesh, 0, nullptr, lods), 0);
    EXPECT_TRUE(lods.empty());
}

TEST(BuildSingleLod, IsTheWholeMesh) {
    const double tolerance = 0.25;
    PIN mesh = BumpySphere(4);
    const PIN before = mesh;
    std::vector<KsLod> lods;
    const int words = BuildSingleLod(mesh, &tolerance, lods);
    ASSERT_EQ(lods.size(), 1u);
    EXPECT_EQ(words, lods[0].size);
    EXPECT_EQ(lods[0].tolerance, 0.25);
    EXPECT_EQ(static_cast<int>(PlainStream(lods).size()), words);
    EXPECT_EQ(TrianglesOfLevel(lods[0]), TrianglesOf(before));
    EXPECT_TRUE(SameRecords(mesh, before));
    EXPECT_EQ(BuildSingleLod(mesh, nullptr, lods), 0);
    EXPECT_EQ(lods.size(), 1u);
}

}  // namespace
}  // namespace KM
