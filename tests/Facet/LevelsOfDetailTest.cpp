#include "Facet/LevelsOfDetail.h"

#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>

#include "Facet/FlatMesh.h"
#include "Facet/HostileFacets.h"
#include "Facet/PlainLevels.h"
#include "Facet/StreamReader.h"
#include "KmHost.h"
#include "Support/MeshChecks.h"
#include "Utils/U_Debug/Exceptions.h"

namespace KM {
namespace {

using namespace KM::Test;

class KmTriDecimateTest : public testing::Test {
protected:
    KmTriDecimateTest() { KmPinInit(0, 0); }
    ~KmTriDecimateTest() override { KgApplFacetDecimate = 0; }
};
using KmTriDecimateDeathTest = KmTriDecimateTest;

KsLodsTRI Decimate(const IndexedFacets& facets, std::span<const double> tolerances) {
    const std::vector<KsEvent> events = EventsOf(facets);
    const std::vector<KsShadingfacet> records = RecordsOf(facets);
    return KmTriDecimate(static_cast<int>(events.size()), events.data(), static_cast<int>(records.size()),
                         records.data(), tolerances);
}

void ExpectNothing(const KsLodsTRI& result) {
    EXPECT_EQ(result.lodCount, 0);
    EXPECT_EQ(result.size, 0);
    EXPECT_EQ(result.data, nullptr);
}

TEST_F(KmTriDecimateTest, WithoutReductionIsTheWholeSurfaceUnderTheFirstTolerance) {
    const IndexedFacets facets = BumpySphereFacets(5);
    const std::vector<double> tolerances{0.5, 100.0};
    const OwnedStream stream(Decimate(facets, tolerances));
    const std::vector<ReadLevel> levels = ReadLevels(stream.Words());
    ASSERT_EQ(levels.size(), 1u);
    EXPECT_EQ(levels[0].toleranceWord, 50000);
    EXPECT_EQ(levels[0].triangles, TrianglesOf(PlainFacetMesh(facets)));
}

TEST_F(KmTriDecimateTest, WithReductionIsThePlainStream) {
    KgApplFacetDecimate = 1;
    const IndexedFacets facets = BumpySphereFacets(8);
    const std::vector<double> tolerances{0.05, 0.5, 2.0};
    PIN mesh = PlainFacetMesh(facets);
    const std::vector<KsLod> plain = PlainDecimatedLods(mesh, tolerances);
    const OwnedStream stream(Decimate(facets, tolerances));
    EXPECT_EQ(stream.Words(), PlainStream(plain));
    EXPECT_EQ(stream->size, plain[0].size + plain[1].size + plain[2].size);
}

TEST_F(KmTriDecimateTest, LeavesOutLevelsThatReduceNothing) {
    KgApplFacetDecimate = -7;
    const OwnedStream stream(Decimate(BumpySphereFacets(5), std::vector<double>{1e-9, 1e-8, 1e-8, 3.0}));
    EXPECT_EQ(stream->lodCount, 2);
    const std::vector<ReadLevel> levels = ReadLevels(stream.Words());
    EXPECT_EQ(levels[0].toleranceWord, 0);
    EXPECT_EQ(levels[1].toleranceWord, 300000);
}

TEST_F(KmTriDecimateTest, WithoutFacetsHasOneEmptyLevel) {
    KgApplFacetDecimate = 1;
    const OwnedStream stream(KmTriDecimate(0, nullptr, 0, nullptr, std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(stream->lodCount, 1);
    EXPECT_EQ(stream->size, 6);
    EXPECT_EQ(stream.Words(), (std::vector<std::int32_t>{100000, 3, 0}));
}

TEST_F(KmTriDecimateTest, WithReductionAndWithoutTolerancesHasNoLevel) {
    KgApplFacetDecimate = 1;
    const OwnedStream stream(Decimate(CubeFacets(), {}));
    EXPECT_EQ(stream->lodCount, 0);
    EXPECT_EQ(stream->size, 0);
    EXPECT_NE(stream->data, nullptr);
}

TEST_F(KmTriDecimateTest, AnswersBadRecordsWithNothing) {
    const std::vector<double> tolerances{1.0};
    const KsEvent events[3] = {};
    const KsShadingfacet facet{{0, 1, 2}, 0};
    const KsShadingfacet beyond{{0, 1, 3}, 0};
    for (const int decimate : {0, 1}) {
        KgApplFacetDecimate = decimate;
        ExpectNothing(KmTriDecimate(3, events, 1, &beyond, tolerances));
        ExpectNothing(KmTriDecimate(3, nullptr, 1, &facet, tolerances));
        ExpectNothing(KmTriDecimate(3, events, 1, nullptr, tolerances));
        ExpectNothing(KmTriDecimate(-3, events, 1, &facet, tolerances));
        ExpectNothing(KmTriDecimate(3, events, -1, &facet, tolerances));
    }
}

TEST_F(KmTriDecimateTest, AnswersCoordinatesThatAreNoNumbersWithNothing) {
    KgApplFacetDecimate = 1;
    constexpr double infinity = std::numeric_limits<double>::infinity();
    for (const double bad : {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity})
        for (double TPoint<double>::*coordinate : {&TPoint<double>::X, &TPoint<double>::Y, &TPoint<double>::Z}) {
            IndexedFacets facets = CubeFacets();
            facets.points[5].*coordinate = bad;
            ExpectNothing(Decimate(facets, std::vector<double>{1.0}));
        }
}

TEST_F(KmTriDecimateTest, PassesOverCoordinatesThatItDoesNotNeed) {
    IndexedFacets facets = CubeFacets();
    const std::vector<double> tolerances{0.01};
    const OwnedStream whole(Decimate(facets, tolerances));
    facets.points.emplace_back(std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0);
    KgApplFacetDecimate = 1;
    EXPECT_EQ(OwnedStream(Decimate(facets, tolerances)).Words(), whole.Words());
    KgApplFacetDecimate = 0;
    facets.points[5].X = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(OwnedStream(Decimate(facets, tolerances)).Words(), whole.Words());
}

TEST_F(KmTriDecimateTest, AnswersAnyExceptionWithNothing) {
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    ExpectNothing(Decimate(CubeFacets(), std::vector<double>{1.0}));
    EXPECT_EQ(KmHostFailNever(), 0);
}

TEST_F(KmTriDecimateDeathTest, EndsTheProcessWithoutToleranceAndReduction) {
    EXPECT_DEATH(Decimate(CubeFacets(), {}), "KmTriDecimate: no tolerance");
}

struct StripsCall {
    int levels;
    int size = -5;
    int* data = nullptr;
};

TEST(PINMkVTRISTRIPs, GivesTheLevelsThatWereWritten) {
    double tolerances[] = {1e-9, 1e-8, 2.0};
    PIN mesh = PlainFacetMesh(BumpySphereFacets(6));
    PIN expected = mesh;
    const std::vector<KsLod> plain = PlainDecimatedLods(expected, {1e-9, 1e-8, 2.0});
    StripsCall call{3};
    EXPECT_EQ(PINMkVTRISTRIPs(&mesh, 1, &call.levels, tolerances, &call.size, &call.data), 0);
    const OwnedStream stream({call.levels, call.size, call.data});
    EXPECT_EQ(call.levels, 2);
    EXPECT_EQ(call.size, plain[0].size + plain[1].size + plain[2].size);
    EXPECT_EQ(stream.Words(), PlainStream(plain));
    EXPECT_TRUE(SameRecords(mesh, expected));
}

TEST(PINMkVTRISTRIPs, WithoutReductionLeavesTheMeshAlone) {
    double tolerances[] = {0.75};
    PIN mesh = Cube();
    const PIN before = mesh;
    for (const int levels : {1, 5, 0, -1}) {
        StripsCall call{levels};
        EXPECT_EQ(PINMkVTRISTRIPs(&mesh, 0, &call.levels, tolerances, &call.size, &call.data), 0);
        const OwnedStream stream({call.levels, call.size, call.data});
        EXPECT_EQ(call.levels, 1);
        EXPECT_EQ(ReadLevels(stream.Words()).at(0).triangles, TrianglesOf(before));
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(PINMkVTRISTRIPs, RefusesNullWithNothingWritten) {
    double tolerances[] = {1.0};
    PIN mesh = Cube();
    StripsCall call{1};
    EXPECT_EQ(PINMkVTRISTRIPs(nullptr, 1, &call.levels, tolerances, &call.size, &call.data), 1);
    EXPECT_EQ(PINMkVTRISTRIPs(&mesh, 1, nullptr, tolerances, &call.size, &call.data), 1);
    EXPECT_EQ(PINMkVTRISTRIPs(&mesh, 1, &call.levels, tolerances, nullptr, &call.data), 1);
    EXPECT_EQ(PINMkVTRISTRIPs(&mesh, 1, &call.levels, tolerances, &call.size, nullptr), 1);
    EXPECT_EQ(PINMkVTRISTRIPs(&mesh, 0, &call.levels, nullptr, &call.size, &call.data), 1);
    EXPECT_EQ(call.levels, 1);
    EXPECT_EQ(call.size, -5);
    EXPECT_EQ(call.data, nullptr);
}

TEST(PINMkVTRISTRIPs, GivesNoLevelForABrokenMesh) {
    double tolerances[] = {1.0};
    PIN mesh = Cube();
    mesh.edges[3].NE = -1;
    StripsCall call{1};
    EXPECT_EQ(PINMkVTRISTRIPs(&mesh, 1, &call.levels, tolerances, &call.size, &call.data), 0);
    const OwnedStream stream({call.levels, call.size, call.data});
    EXPECT_EQ(call.levels, 0);
    EXPECT_EQ(call.size, 0);
}

TEST(PINMkVTRISTRIPs, LetsExceptionsPass) {
    double tolerances[] = {1.0};
    PIN mesh = Cube();
    StripsCall call{134217728};
    EXPECT_THROW(PINMkVTRISTRIPs(&mesh, 0, &call.levels, tolerances, &call.size, &call.data), std::length_error);
    EXPECT_THROW(PINMkVTRISTRIPs(&mesh, 1, &call.levels, tolerances, &call.size, &call.data), std::length_error);
    call.levels = 1;
    KmHostFailAfter(KM_HOST_MEM_ALLOC, 0);
    EXPECT_THROW(PINMkVTRISTRIPs(&mesh, 1, &call.levels, tolerances, &call.size, &call.data), KmException);
    EXPECT_EQ(KmHostFailNever(), 0);
}

TEST(PINMkVTRISTRIPsDeathTest, EndsTheProcessOnABrokenContract) {
    double tolerances[] = {1.0};
    PIN mesh = Cube();
    StripsCall call{-1};
    EXPECT_DEATH(PINMkVTRISTRIPs(&mesh, 1, &call.levels, tolerances, &call.size, &call.data),
                 "PINMkVTRISTRIPs: the number");
    call.levels = 1;
    EXPECT_DEATH(PINMkVTRISTRIPs(&mesh, 1, &call.levels, nullptr, &call.size, &call.data),
                 "PINMkVTRISTRIPs: tolerances");
}

}  // namespace
}  // namespace KM
