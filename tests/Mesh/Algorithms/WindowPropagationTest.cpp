#include "Mesh/Algorithms/WindowPropagation.h"

#include <gtest/gtest.h>

#include "Mesh/Core/Fans.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"
#include "WindowCover.h"

namespace KM::Test {
namespace {

//  3 - 2
//  | \ |    light from node 0 falls on the diagonal and goes on to the edges 1-2 and 2-3
//  0 - 1
TEST(WindowPropagation, CrossesATriangle) {
    const PIN mesh = UnitSquare();
    const SurfaceEdges surface(mesh);
    WindowLists lists(surface);
    const int inner = EdgeOfSEVertices(mesh, 1, 3);
    const int c = surface.Canonical(inner);
    const double diagonal = std::sqrt(2.0);
    const GeodesicWindow light{0.0, diagonal, 1.0, 1.0, 0.0, static_cast<std::int8_t>(c == inner ? 1 : -1), c};
    PropagateWindow(surface, light, lists);

    const int right = EdgeOfSEVertices(mesh, 1, 2);
    const auto atRight = lists.DistancesAt(right);
    ASSERT_TRUE(atRight);
    EXPECT_NEAR(atRight->atStart, 1.0, 1e-15);
    EXPECT_NEAR(atRight->atEnd, diagonal, 1e-15);
    const auto atTop = lists.DistancesAt(EdgeOfSEVertices(mesh, 2, 3));
    ASSERT_TRUE(atTop);
    EXPECT_NEAR(atTop->atStart, diagonal, 1e-15);
    EXPECT_NEAR(atTop->atEnd, 1.0, 1e-15);
    EXPECT_EQ(FaultOfLists(lists, surface), "");

    const GeodesicWindow arrived = lists.TakeNearest();
    EXPECT_EQ(arrived.sigma, 0.0);
    EXPECT_EQ(arrived.tau, 1) << "the source lies on the side of the face";
    WindowLists nothing(surface);
    PropagateWindow(surface, arrived, nothing);
    EXPECT_FALSE(nothing.HasQueued()) << "there is a border";
}

TEST(WindowPropagation, SourceOnTheEndOfItsWindowLightsTheWholeFace) {
    const PIN mesh = UnitSquare();
    const SurfaceEdges surface(mesh);
    const int inner = EdgeOfSEVertices(mesh, 1, 3);
    const int c = surface.Canonical(inner);
    const std::int8_t tau = c == inner ? 1 : -1;
    const double half = std::sqrt(0.5);
    for (const bool isAtBegin : {true, false}) {
        WindowLists lists(surface);
        const GeodesicWindow left{0.0, half, half, 0.0, 2.0, tau, c};
        const GeodesicWindow right{half, 2.0 * half, 0.0, half, 2.0, tau, c};
        PropagateWindow(surface, isAtBegin ? right : left, lists);
        for (const int e : {EdgeOfSEVertices(mesh, 1, 2), EdgeOfSEVertices(mesh, 2, 3)}) {
            const auto distances = lists.DistancesAt(e);
            ASSERT_TRUE(distances);
            EXPECT_NEAR(distances->atStart, 2.0 + half, 1e-15);
            EXPECT_NEAR(distances->atEnd, 2.0 + half, 1e-15);
        }
    }
}

//  2           light from the far right reaches edge 0-2 only; edge 2-1 lies in the shadow of its corner 1
//  | \         .
//  0 - 1 ------ s
TEST(WindowPropagation, ShadowedEdgeIsLitFromItsCorner) {
    PIN pair;
    pair.points = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0.5, -1, 0}};
    // 0-1-2 above the edge 0-1, 1-0-3 below it.
    pair.edges = {{1, 3, 0}, {2, -1, 1}, {0, -1, 2}, {4, 0, 1}, {5, -1, 0}, {3, -1, 3}};
    pair.p2e = {0, 1, 2, 5};
    const SurfaceEdges surface(pair);
    WindowLists lists(surface);
    const FlatPoint source{3.0, -0.2};
    const GeodesicWindow light{0.5, 1.0, DistanceFrom(source, 0.5), DistanceFrom(source, 1.0), 0.0, -1, 0};
    PropagateWindow(surface, light, lists);

    const auto atShadow = lists.DistancesAt(1);
    ASSERT_TRUE(atShadow);
    const double toCorner = Length(source - FlatPoint{1.0, 0.0});
    EXPECT_NEAR(atShadow->atStart, toCorner, 1e-12);
    EXPECT_NEAR(atShadow->atEnd, toCorner + std::sqrt(2.0), 1e-12);
    EXPECT_EQ(FaultOfLists(lists, surface), "");
    // The rest of the other edge, up to the apex where it starts, has its light from the corner as well.
    const auto atOther = lists.DistancesAt(2);
    ASSERT_TRUE(atOther);
    EXPECT_NEAR(atOther->atStart, atShadow->atEnd, 1e-12);
    EXPECT_GT(lists.At(lists.First(2)).sigma, 0.0);
}

void SeedAllTriangles(const PIN& mesh, const SurfaceEdges& surface, int source, WindowLists& lists) {
    for (const int e : AllStartingEdges(mesh, source)) {
        const int c = surface.Canonical(mesh.edges[e].NE);
        const double d0 = Length(surface.Start(c) - mesh.points[source]);
        const double d1 = Length(surface.End(c) - mesh.points[source]);
        const auto tau = static_cast<std::int8_t>(c == mesh.edges[e].NE ? 1 : -1);
        lists.InsertWindow({0.0, surface.Length(c), d0, d1, 0.0, tau, c}, true);
    }
}

PIN Rough(PIN mesh, unsigned seed, double by) {
    Numbers numbers(seed);
    for (auto& p : mesh.points) p += numbers.PointBetween(-by, by);
    return mesh;
}

TEST(WindowPropagation, ListsCoverTheirEdgesAfterEachStep) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = Rough(seed % 2 == 0 ? Grid(4) : Sphere(3), seed, 0.3);
        const SurfaceEdges surface(mesh);
        WindowLists lists(surface);
        SeedAllTriangles(mesh, surface, static_cast<int>(seed), lists);
        while (lists.HasQueued()) {
            PropagateWindow(surface, lists.TakeNearest(), lists);
            ASSERT_EQ(FaultOfLists(lists, surface), "");
        }
    }
}

TEST(WindowPropagation, SettlingChangesNoBit) {
    int settled = 0;
    for (unsigned seed = 0; seed < 30; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = Rough(seed % 2 == 0 ? Grid(8) : Sphere(4), seed, 0.1 * (seed % 4));
        const SurfaceEdges surface(mesh);
        WindowLists kept(surface);
        WindowLists thrifty(surface);
        SeedAllTriangles(mesh, surface, 0, kept);
        SeedAllTriangles(mesh, surface, 0, thrifty);
        while (kept.HasQueued()) PropagateWindow(surface, kept.TakeNearest(), kept);
        for (int step = 0; thrifty.HasQueued(); ++step) {
            PropagateWindow(surface, thrifty.TakeNearest(), thrifty);
            if (step % 10 == 0) thrifty.Settle();
        }
        for (int e = 0; e < static_cast<int>(surface.Count()); ++e) {
            if (surface.Canonical(e) != e) continue;
            settled += thrifty.IsSettled(e);
            const auto expected = kept.DistancesAt(e);
            const auto actual = thrifty.DistancesAt(e);
            ASSERT_EQ(expected.has_value(), actual.has_value());
            if (!expected) continue;
            EXPECT_TRUE(SameBits(expected->atStart, actual->atStart)) << "edge " << e;
            EXPECT_TRUE(SameBits(expected->atEnd, actual->atEnd)) << "edge " << e;
        }
    }
    EXPECT_GT(settled, 1000);
}

}  // namespace
}  // namespace KM::Test
