#include "Facet/FlatMesh.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <vector>

#include "KmHost.h"
#include "KmTools.h"
#include "Mesh/Core/Construction.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

/// A point whose coordinates all change when they are rounded to float.
const TPoint<double> Unround(0.1, 1.0 + 1e-9, -1e10 / 3);

double Rounded(double value) { return static_cast<double>(static_cast<float>(value)); }

/// An array that the library handed out.
struct HostFree {
    void operator()(float* block) const { KM::Host::Free(&block); }
};
using HostFloats = std::unique_ptr<float[], HostFree>;

/// What an output holds before a call, to see whether it was written.
constexpr int UntouchedCount = -123;
float untouchedFloat = 0.0F;
float* const UntouchedArray = &untouchedFloat;

/// The calls of the allocator that fail are seen by the calls of one test only.
class FlatMesh : public testing::Test {
protected:
    ~FlatMesh() override { KmHostFailNever(); }
    static void FailNextAllocation() { KmHostFailAfter(KM_HOST_MEM_ALLOC, 0); }
};

struct Stream {
    int code = -1;
    int count = UntouchedCount;
    HostFloats floats;

    std::vector<float> AsVector() const { return std::vector<float>(floats.get(), floats.get() + count); }
};

Stream FloatStream(PIN& mesh, int withPoints) {
    Stream stream;
    float* array = nullptr;
    stream.code = PINGetFloatArray(&mesh, withPoints, &stream.count, &array);
    stream.floats.reset(array);
    return stream;
}

struct Vertices {
    int code = -1;
    double box[6] = {};
    int count = UntouchedCount;
    HostFloats floats;
};

Vertices VerticesOf(PIN& mesh) {
    Vertices vertices;
    float* array = nullptr;
    vertices.code = PINMkVTRIVTXs(&mesh, 0, vertices.box, &vertices.count, &array);
    vertices.floats.reset(array);
    return vertices;
}

PIN PointsOnly(std::vector<TPoint<double>> points) {
    PIN mesh;
    mesh.p2e.assign(points.size(), -1);
    mesh.points = std::move(points);
    return mesh;
}

//  2
//  | \      one triangle of three orphans, and a dead record behind it; p2e is shorter than points, as it may be
//  0 - 1
PIN TriangleAndDeadRecord() {
    PIN mesh;
    mesh.points = {{0.5, 0, 0}, {0.1, -2, 0}, {0, 1, 3}};
    mesh.edges = {{1, -1, 0}, {2, -1, 1}, {0, -1, 2}, {-1, 7, 2}};
    mesh.p2e = {0, -1};
    return mesh;
}

TEST(KmPinInit, SetsTheFourVariablesWhateverItIsGiven) {
    KgApplDbgFileDesc = nullptr;
    KgApplDbgGroup = 1;
    KgApplDbgLevel = 2;
    KgApplFacetDecimate = 3;
    EXPECT_EQ(KmPinInit(std::numeric_limits<int>::min(), std::numeric_limits<int>::max()), 0);
    EXPECT_EQ(KgApplDbgFileDesc, stderr);
    EXPECT_EQ(KgApplDbgGroup, 0);
    EXPECT_EQ(KgApplDbgLevel, 0);
    EXPECT_EQ(KgApplFacetDecimate, 0);
}

TEST(KmPinInit, CalledAgainWipesTheSwitchThatTheHostSet) {
    EXPECT_EQ(KmPinInit(0, 0), 0);
    KgApplFacetDecimate = 1;
    EXPECT_EQ(KmPinInit(0, 0), 0);
    EXPECT_EQ(KgApplFacetDecimate, 0);
}

TEST(FlatNames, AreFoundByAPlainSymbolLookUp) {
    const char* const names[] = {"KmPinInit",      "PINCreate",        "SPINCreate",          "PINDestroy",
                                 "SPINDestroy",    "PINExtractPoints", "PINGetFloatArray",    "PINGetPointIdx",
                                 "PINMkVTRIVTXs",  "PINTolForLod",     "AddTrianglesSPIN",    "KgApplDbgFileDesc",
                                 "KgApplDbgGroup", "KgApplDbgLevel",   "KgApplFacetDecimate", "PINToHier",
                                 "KmHierStripMk",  "KmHierStripAdd",   "KmHierStripFree"};
    for (const char* name : names) EXPECT_NE(dlsym(RTLD_DEFAULT, name), nullptr) << name;
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "PINTolForLod"), reinterpret_cast<void*>(&PINTolForLod));
}

TEST_F(FlatMesh, CreateGivesAnEmptyMeshOfItsOwn) {
    PIN* const mesh = PINCreate();
    PIN* const other = PINCreate();
    ASSERT_NE(mesh, nullptr);
    EXPECT_NE(mesh, other);
    EXPECT_TRUE(mesh->points.empty() && mesh->edges.empty() && mesh->p2e.empty());
    PINDestroy(mesh);
    PINDestroy(other);
}

TEST_F(FlatMesh, SinglePrecisionCreateGivesAnEmptyMesh) {
    SPIN* const mesh = SPINCreate();
    ASSERT_NE(mesh, nullptr);
    EXPECT_TRUE(mesh->points.empty() && mesh->edges.empty() && mesh->p2e.empty());
    SPINDestroy(mesh);
}

TEST_F(FlatMesh, DestroyIgnoresNull) {
    PINDestroy(nullptr);
    SPINDestroy(nullptr);
}

// PINExtractPoints

TEST_F(FlatMesh, ExtractPointsGivesThePointsAsTheyAre) {
    SPIN mesh;
    mesh.points = {{1.5F, -0.0F, 3e38F}, {0.1F, std::numeric_limits<float>::infinity(), 1e-45F}};
    int count = UntouchedCount;
    float* points = nullptr;
    ASSERT_EQ(PINExtractPoints(&mesh, &count, &points), 0);
    const HostFloats owner(points);
    ASSERT_EQ(count, 2);
    EXPECT_EQ(std::memcmp(points, mesh.points.data(), 6 * sizeof(float)), 0);
}

TEST_F(FlatMesh, ExtractPointsOfAnEmptyMeshGivesABlockOfNone) {
    SPIN mesh;
    int count = UntouchedCount;
    float* points = nullptr;
    ASSERT_EQ(PINExtractPoints(&mesh, &count, &points), 0);
    const HostFloats owner(points);
    EXPECT_EQ(count, 0);
    EXPECT_NE(points, nullptr);
}

TEST_F(FlatMesh, ExtractPointsWithoutMemoryGivesOneAndNullAndTheCount) {
    SPIN mesh;
    mesh.points.resize(5);
    int count = UntouchedCount;
    float* points = UntouchedArray;
    FailNextAllocation();
    EXPECT_EQ(PINExtractPoints(&mesh, &count, &points), 1);
    EXPECT_EQ(points, nullptr);
    EXPECT_EQ(count, 5);
}

TEST_F(FlatMesh, ExtractPointsRefusesNullWithoutWriting) {
    SPIN mesh;
    mesh.points.resize(1);
    int count = UntouchedCount;
    float* points = UntouchedArray;
    EXPECT_EQ(PINExtractPoints(nullptr, &count, &points), 1);
    EXPECT_EQ(PINExtractPoints(&mesh, nullptr, &points), 1);
    EXPECT_EQ(PINExtractPoints(&mesh, &count, nullptr), 1);
    EXPECT_EQ(count, UntouchedCount);
    EXPECT_EQ(points, UntouchedArray);
}

// PINGetFloatArray

TEST_F(FlatMesh, FloatStreamWithPointsIsTheWholeMesh) {
    PIN mesh = TriangleAndDeadRecord();
    const Stream stream = FloatStream(mesh, 1);
    ASSERT_EQ(stream.code, 0);
    const std::vector<float> expected = {4,  2,  3,  // edges, p2e entries, points
                                         1,  -1, 0, 2,
                                         -1, 1,  0, -1,
                                         2,  -1, 7, 2,  // NE, TE, P0
                                         0,  -1,        // p2e
                                         .5, 0,  0, static_cast<float>(0.1),
                                         -2, 0,  0, 1,
                                         3};
    EXPECT_EQ(stream.AsVector(), expected);
}

TEST_F(FlatMesh, FloatStreamWithoutPointsStillCountsThem) {
    PIN mesh = TriangleAndDeadRecord();
    const Stream stream = FloatStream(mesh, 0);
    ASSERT_EQ(stream.code, 0);
    EXPECT_EQ(stream.count, 3 + 3 * 4 + 2);
    const std::vector<float> expected = {4, 2, 3, 1, -1, 0, 2, -1, 1, 0, -1, 2, -1, 7, 2, 0, -1};
    EXPECT_EQ(stream.AsVector(), expected);
}

TEST_F(FlatMesh, FloatStreamOfAnotherFlagHasRoomForThePoints) {
    PIN mesh = TriangleAndDeadRecord();
    const std::vector<float> head = FloatStream(mesh, 0).AsVector();
    for (const int withPoints : {2, -1, std::numeric_limits<int>::min()}) {
        SCOPED_TRACE(testing::Message() << "withPoints " << withPoints);
        const Stream stream = FloatStream(mesh, withPoints);
        ASSERT_EQ(stream.code, 0);
        ASSERT_EQ(stream.count, static_cast<int>(head.size()) + 3 * 3);
        EXPECT_TRUE(std::equal(head.begin(), head.end(), stream.floats.get()));
        for (std::size_t i = head.size(); i < static_cast<std::size_t>(stream.count); ++i) stream.floats[i] = 0.0F;
    }
}

TEST_F(FlatMesh, FloatStreamOfAnEmptyMeshIsThreeZeros) {
    PIN mesh;
    for (const int withPoints : {0, 1, 2}) EXPECT_EQ(FloatStream(mesh, withPoints).AsVector(), std::vector<float>(3));
}

TEST_F(FlatMesh, FloatStreamHoldsBackTheMeshItCameFrom) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = KM::Test::RandomMesh(seed, 60);
        const Stream stream = FloatStream(mesh, 1);
        ASSERT_EQ(stream.code, 0);
        const float* at = stream.floats.get();
        ASSERT_EQ(*at++, static_cast<float>(mesh.edges.size()));
        ASSERT_EQ(*at++, static_cast<float>(mesh.p2e.size()));
        ASSERT_EQ(*at++, static_cast<float>(mesh.points.size()));
        for (const Edge& edge : mesh.edges) {
            const Edge read{static_cast<int>(at[0]), static_cast<int>(at[1]), static_cast<int>(at[2])};
            EXPECT_EQ(read, edge);
            at += 3;
        }
        for (const int edge : mesh.p2e) EXPECT_EQ(static_cast<int>(*at++), edge);
        for (const TPoint<double>& point : mesh.points)
            for (const double coordinate : {point.X, point.Y, point.Z})
                EXPECT_EQ(*at++, static_cast<float>(coordinate));
        EXPECT_EQ(at - stream.floats.get(), stream.count);
    }
}

TEST_F(FlatMesh, FloatStreamRoundsLargeIntegersToTheNearestFloat) {
    PIN mesh;
    mesh.edges = {{16777217, 16777219, std::numeric_limits<int>::max()}};
    const std::vector<float> stream = FloatStream(mesh, 0).AsVector();
    EXPECT_EQ(stream, (std::vector<float>{1, 0, 0, 16777216, 16777220, 2147483648.0F}));
}

TEST_F(FlatMesh, FloatStreamTakesCoordinatesThatAreNoNumbersOrTooLarge) {
    PIN mesh = PointsOnly({{NaN, Infinity, -Infinity}, {1e300, -1e300, 1e-300}});
    const Stream stream = FloatStream(mesh, 1);
    ASSERT_EQ(stream.code, 0);
    const float* const xyz = stream.floats.get() + 5;
    EXPECT_TRUE(std::isnan(xyz[0]));
    EXPECT_EQ(xyz[1], static_cast<float>(Infinity));
    EXPECT_EQ(xyz[2], static_cast<float>(-Infinity));
    EXPECT_EQ(xyz[3], static_cast<float>(Infinity));
    EXPECT_EQ(xyz[4], static_cast<float>(-Infinity));
    EXPECT_EQ(xyz[5], 0.0F);
}

TEST_F(FlatMesh, FloatStreamWithoutMemoryGivesTheCodeAndWritesNothing) {
    PIN mesh = TriangleAndDeadRecord();
    int count = UntouchedCount;
    float* array = UntouchedArray;
    FailNextAllocation();
    EXPECT_EQ(PINGetFloatArray(&mesh, 1, &count, &array), KM_HOST_INJECTED_FAILURE);
    EXPECT_EQ(count, UntouchedCount);
    EXPECT_EQ(array, UntouchedArray);
}

TEST_F(FlatMesh, FloatStreamRefusesNullWithoutWriting) {
    PIN mesh = TriangleAndDeadRecord();
    int count = UntouchedCount;
    float* array = UntouchedArray;
    EXPECT_EQ(PINGetFloatArray(nullptr, 1, &count, &array), 1);
    EXPECT_EQ(PINGetFloatArray(&mesh, 1, nullptr, &array), 1);
    EXPECT_EQ(PINGetFloatArray(&mesh, 1, &count, nullptr), 1);
    EXPECT_EQ(count, UntouchedCount);
    EXPECT_EQ(array, UntouchedArray);
}

// PINGetPointIdx

TEST_F(FlatMesh, PointIndexIsTheFirstNodeNearEnoughNotTheNearest) {
    PIN mesh = PointsOnly({{10, 0, 0}, {1, 0, 0}, {0, 0, 0}});
    int index = UntouchedCount;
    EXPECT_EQ(PINGetPointIdx(&mesh, 1.5, 0, 0, 0, &index), 0);
    EXPECT_EQ(index, 1);
    EXPECT_EQ(PINGetPointIdx(&mesh, Infinity, 0, 0, 0, &index), 0);
    EXPECT_EQ(index, 0);
}

TEST_F(FlatMesh, PointIndexComparesTheSquareAndStrictly) {
    PIN mesh = PointsOnly({{1, 2, 2}});
    int index = UntouchedCount;
    EXPECT_EQ(PINGetPointIdx(&mesh, 9.0, 0, 0, 0, &index), 1);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(PINGetPointIdx(&mesh, std::nextafter(9.0, 10.0), 0, 0, 0, &index), 0);
    EXPECT_EQ(index, 0);
}

TEST_F(FlatMesh, PointIndexWithToleranceZeroOrBelowFindsNothing) {
    PIN mesh = PointsOnly({{1, 2, 3}});
    for (const double tolerance : {0.0, -0.0, -1.0, -Infinity, NaN}) {
        SCOPED_TRACE(testing::Message() << "tolerance " << tolerance);
        int index = UntouchedCount;
        EXPECT_EQ(PINGetPointIdx(&mesh, tolerance, 1, 2, 3, &index), 1);
        EXPECT_EQ(index, -1);
    }
}

TEST_F(FlatMesh, PointIndexInAnEmptyMeshIsNone) {
    PIN mesh;
    int index = UntouchedCount;
    EXPECT_EQ(PINGetPointIdx(&mesh, 1.0, 0, 0, 0, &index), 1);
    EXPECT_EQ(index, -1);
}

TEST_F(FlatMesh, PointIndexFindsDeadNodesTooAndPassesOverNaN) {
    PIN mesh = PointsOnly({{NaN, 0, 0}, {Infinity, 0, 0}, {0, 0, 0}});
    int index = UntouchedCount;
    EXPECT_EQ(PINGetPointIdx(&mesh, 1.0, 0, 0, 0, &index), 0);
    EXPECT_EQ(index, 2);
    EXPECT_EQ(PINGetPointIdx(&mesh, Infinity, NaN, 0, 0, &index), 1);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(PINGetPointIdx(&mesh, Infinity, Infinity, 0, 0, &index), 1);
    EXPECT_EQ(index, -1);
}

TEST_F(FlatMesh, PointIndexOfNullIsNotFound) {
    PIN mesh = PointsOnly({{0, 0, 0}});
    int index = UntouchedCount;
    EXPECT_EQ(PINGetPointIdx(nullptr, 1.0, 0, 0, 0, &index), 1);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(PINGetPointIdx(&mesh, 1.0, 0, 0, 0, nullptr), 1);
}

TEST_F(FlatMesh, PointIndexAgreesWithAPlainScan) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> coordinate(-1.0, 1.0);
        const auto point = [&] { return TPoint<double>(coordinate(random), coordinate(random), coordinate(random)); };
        std::vector<TPoint<double>> points(40);
        for (TPoint<double>& p : points) p = point();
        PIN mesh = PointsOnly(points);
        const TPoint<double> q = point();

        int expected = -1;
        for (int i = 39; i >= 0; --i) {
            const double dx = points[i].X - q.X, dy = points[i].Y - q.Y, dz = points[i].Z - q.Z;
            if (dx * dx + dy * dy + dz * dz < 0.3) expected = i;
        }
        int index = UntouchedCount;
        EXPECT_EQ(PINGetPointIdx(&mesh, 0.3, q.X, q.Y, q.Z, &index), expected == -1 ? 1 : 0);
        EXPECT_EQ(index, expected);
    }
}

// PINMkVTRIVTXs

TEST_F(FlatMesh, VerticesAreThePointsRoundedToFloat) {
    PIN mesh = PointsOnly({Unround, {1, 2, 3}});
    const Vertices vertices = VerticesOf(mesh);
    ASSERT_EQ(vertices.code, 0);
    ASSERT_EQ(vertices.count, 2);
    const float expected[6] = {
        static_cast<float>(Unround.X), static_cast<float>(Unround.Y), static_cast<float>(Unround.Z), 1, 2, 3};
    EXPECT_TRUE(std::equal(expected, expected + 6, vertices.floats.get()));
}

TEST_F(FlatMesh, BoxOfASinglePointIsThatPointRoundedToFloat) {
    ASSERT_NE(Rounded(Unround.X), Unround.X);
    ASSERT_NE(Rounded(Unround.Y), Unround.Y);
    ASSERT_NE(Rounded(Unround.Z), Unround.Z);
    PIN mesh = PointsOnly({Unround});
    const Vertices vertices = VerticesOf(mesh);
    ASSERT_EQ(vertices.code, 0);
    const double at[3] = {Rounded(Unround.X), Rounded(Unround.Y), Rounded(Unround.Z)};
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(vertices.box[2 * k], at[k]);
        EXPECT_EQ(vertices.box[2 * k + 1], at[k]);
    }
}

TEST_F(FlatMesh, BoxIsRoundedAtEachLevelOfOptimisation) {
    // The floats nearest to 0.1, 0.2 and 0.3, written out, since a compiler that drops the rounding would drop it here,
    // too.
    PIN mesh = PointsOnly({{0.1, 0.2, 0.3}});
    const Vertices vertices = VerticesOf(mesh);
    const double expected[6] = {0.100000001490116119384765625, 0.100000001490116119384765625,
                                0.20000000298023223876953125,  0.20000000298023223876953125,
                                0.300000011920928955078125,    0.300000011920928955078125};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(vertices.box[i], expected[i]) << i;
}

TEST_F(FlatMesh, BoxTakesTheLaterPointsInFull) {
    // The same point twice: on each axis the box runs from the rounded to the full coordinate.
    PIN mesh = PointsOnly({Unround, Unround});
    const Vertices vertices = VerticesOf(mesh);
    ASSERT_EQ(vertices.code, 0);
    const double full[3] = {Unround.X, Unround.Y, Unround.Z};
    for (int k = 0; k < 3; ++k) {
        EXPECT_EQ(vertices.box[2 * k], std::min(Rounded(full[k]), full[k]));
        EXPECT_EQ(vertices.box[2 * k + 1], std::max(Rounded(full[k]), full[k]));
    }
}

TEST_F(FlatMesh, BoxOfAnEmptyMeshIsTheEmptyBox) {
    double empty[6];
    KmBndBoxInit(3, empty);
    PIN mesh;
    const Vertices vertices = VerticesOf(mesh);
    ASSERT_EQ(vertices.code, 0);
    EXPECT_EQ(vertices.count, 0);
    EXPECT_NE(vertices.floats.get(), nullptr);
    EXPECT_TRUE(std::equal(empty, empty + 6, vertices.box));
}

TEST_F(FlatMesh, BoxIsThatOfAPlainPass) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> coordinate(-1e3, 1e3);
        std::vector<TPoint<double>> points(30);
        for (TPoint<double>& p : points) p = {coordinate(random), coordinate(random), coordinate(random)};
        PIN mesh = PointsOnly(points);
        const Vertices vertices = VerticesOf(mesh);
        ASSERT_EQ(vertices.code, 0);

        points[0] = {Rounded(points[0].X), Rounded(points[0].Y), Rounded(points[0].Z)};
        const auto byX = [](const auto& a, const auto& b) { return a.X < b.X; };
        const auto byZ = [](const auto& a, const auto& b) { return a.Z < b.Z; };
        EXPECT_EQ(vertices.box[0], std::min_element(points.begin(), points.end(), byX)->X);
        EXPECT_EQ(vertices.box[1], std::max_element(points.begin(), points.end(), byX)->X);
        EXPECT_EQ(vertices.box[4], std::min_element(points.begin(), points.end(), byZ)->Z);
        EXPECT_EQ(vertices.box[5], std::max_element(points.begin(), points.end(), byZ)->Z);
    }
}

TEST_F(FlatMesh, VerticesOfPointsThatAreNoNumbersOrTooLarge) {
    PIN mesh = PointsOnly({{1e300, NaN, 0}, {NaN, 0, Infinity}});
    const Vertices vertices = VerticesOf(mesh);
    ASSERT_EQ(vertices.code, 0);
    EXPECT_EQ(vertices.floats[0], static_cast<float>(Infinity));
    EXPECT_TRUE(std::isnan(vertices.floats[1]));
    EXPECT_TRUE(std::isnan(vertices.floats[3]));
    EXPECT_EQ(vertices.box[0], Infinity);
    EXPECT_EQ(vertices.box[1], Infinity);
    EXPECT_TRUE(std::isnan(vertices.box[2]));
    EXPECT_EQ(vertices.box[4], 0.0);
    EXPECT_EQ(vertices.box[5], Infinity);
}

TEST_F(FlatMesh, VerticesWithoutMemoryGiveTheCodeAndWriteNothing) {
    PIN mesh = PointsOnly({{1, 2, 3}});
    double box[6] = {9, 9, 9, 9, 9, 9};
    int count = UntouchedCount;
    float* array = UntouchedArray;
    FailNextAllocation();
    EXPECT_EQ(PINMkVTRIVTXs(&mesh, 0, box, &count, &array), KM_HOST_INJECTED_FAILURE);
    for (const double bound : box) EXPECT_EQ(bound, 9.0);
    EXPECT_EQ(count, UntouchedCount);
    EXPECT_EQ(array, UntouchedArray);
}

TEST_F(FlatMesh, VerticesRefuseNullWithoutWriting) {
    PIN mesh = PointsOnly({{1, 2, 3}});
    double box[6] = {9, 9, 9, 9, 9, 9};
    int count = UntouchedCount;
    float* array = UntouchedArray;
    EXPECT_EQ(PINMkVTRIVTXs(nullptr, 0, box, &count, &array), 1);
    EXPECT_EQ(PINMkVTRIVTXs(&mesh, 0, nullptr, &count, &array), 1);
    EXPECT_EQ(PINMkVTRIVTXs(&mesh, 0, box, nullptr, &array), 1);
    EXPECT_EQ(PINMkVTRIVTXs(&mesh, 0, box, &count, nullptr), 1);
    for (const double bound : box) EXPECT_EQ(bound, 9.0);
    EXPECT_EQ(count, UntouchedCount);
    EXPECT_EQ(array, UntouchedArray);
}

// PINTolForLod

TEST(PINTolForLod, IsTheEdgeOfATriangleOfAUniformGrid) {
    // 4 by 8 units: 16 triangles lie on a grid of step 1 over 8 square units, and so on.
    const struct {
        double box[6];
        int triangles;
        double tolerance;
    } known[] = {
        {{0, 4, 0, 8, 0, 2}, 16, 1.0},  {{0, 4, 0, 8, 0, 2}, 64, 0.5},
        {{0, 4, 0, 8, 0, 2}, 1, 4.0},   {{0, 2, -4, 4, 1, 5}, 16, 1.0},  // the two largest are Y and Z
        {{-8, 0, 3, 5, 1, 5}, 16, 1.0},                                  // X and Z
        {{0, 4, 0, 8, 7, 7}, 16, 1.0},                                   // flat in one axis
        {{1, 5, 1, 5, 1, 5}, 8, 1.0},                                    // a cube
    };
    for (const auto& k : known) {
        double box[6];
        std::copy_n(k.box, 6, box);
        EXPECT_EQ(PINTolForLod(k.triangles, box), k.tolerance) << k.triangles << " triangles";
    }
}

TEST(PINTolForLod, KeepsTheFormOfItsExpression) {
    double box[6] = {0, 1, 0, 3, 0, 0.5};
    for (const int triangles : {1, 3, 7, 1000, 12345})
        EXPECT_EQ(PINTolForLod(triangles, box), 1.0 / std::sqrt(2 * triangles / 3.0)) << triangles;
}

TEST(PINTolForLod, OfABoxWithAtMostOneExtentIsZero) {
    double line[6] = {0, 5, 1, 1, 2, 2};
    EXPECT_EQ(PINTolForLod(10, line), 0.0);
    double point[6] = {1, 1, 1, 1, 2, 2};
    EXPECT_EQ(PINTolForLod(10, point), 0.0);
}

TEST(PINTolForLod, TakesCountsWhoseDoubleExceedsAnInt) {
    double box[6] = {0, 1, 0, 1, 0, 1};
    EXPECT_EQ(PINTolForLod(1 << 30, box), 1.0 / std::sqrt(2147483648.0));
    EXPECT_EQ(PINTolForLod(std::numeric_limits<int>::max(), box), 1.0 / std::sqrt(4294967294.0));
}

TEST(PINTolForLod, HasNoSpecialCases) {
    double box[6] = {0, 1, 0, 1, 0, 1};
    EXPECT_EQ(PINTolForLod(0, box), Infinity);
    EXPECT_TRUE(std::isnan(PINTolForLod(-1, box)));
    double line[6] = {0, 5, 1, 1, 2, 2};
    EXPECT_TRUE(std::isnan(PINTolForLod(0, line)));
    double endless[6] = {-Infinity, Infinity, 0, 1, 0, 1};
    EXPECT_EQ(PINTolForLod(8, endless), Infinity);
    EXPECT_TRUE(std::isnan(PINTolForLod(8, nullptr)));
}

TEST(PINTolForLod, OfAnExtentThatIsNoNumberIsNone) {
    for (int bound = 0; bound < 6; ++bound) {
        double box[6] = {0, 1, 0, 1, 0, 1};
        box[bound] = NaN;
        EXPECT_TRUE(std::isnan(PINTolForLod(8, box))) << "bound " << bound;
    }
}

}  // namespace
}  // namespace KM
