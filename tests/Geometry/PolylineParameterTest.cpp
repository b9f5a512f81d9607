#include "Geometry/PolylineParameter.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "Support/HostilePoints.h"
#include "Support/Polygons.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;
using Polyline = std::vector<P>;

const Polyline Square{P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(0, 1, 0), P(0, 0, 0)};
const Polyline Open{P(0, 0, 0), P(1, 0, 0), P(1, 3, 0)};

void ExpectPlace(const ParametricPoint& place, std::uint32_t segment, double t) {
    EXPECT_EQ(place.path, 0u);
    EXPECT_EQ(place.segment, segment);
    EXPECT_NEAR(place.t, t, 1e-12);
}

TEST(T2NT, GoesByLength) {
    const T2NT places(Open, false);
    ExpectPlace(places(0.125), 0, 0.5);
    ExpectPlace(places(0.25), 1, 0.0);
    ExpectPlace(places(0.625), 1, 0.5);
    ExpectPlace(places(0.125), 0, 0.5);  // and back
}

TEST(T2NT, MeasuresHeightsIn3DOnly) {
    const Polyline steep{P(0, 0, 0), P(1, 0, 0), P(2, 0, 100)};
    ExpectPlace(T2NT(steep, false)(0.5), 1, 0.0);
    EXPECT_EQ(T2NT(steep, true)(0.5).segment, 1u);
    EXPECT_NEAR(T2NT(steep, true)(0.5).t, 0.495, 1e-3);
}

TEST(T2NT, HoldsAnOpenPolylineOffItsEnds) {
    const T2NT places(Open, false);
    ExpectPlace(places(0.0), 0, 4e-8);
    EXPECT_GT(places(-5.0).t, 0.0);
    ExpectPlace(places(1.0), 1, 1.0 - 1e-8 * 4 / 3);
    EXPECT_LT(places(7.0).t, 1.0);
}

TEST(T2NT, GoesRoundAClosedPolyline) {
    const T2NT places(Square, false);
    ExpectPlace(places(0.375), 1, 0.5);
    EXPECT_EQ(places(1.25), places(0.25));
    EXPECT_EQ(places(-0.25), places(0.75));
    EXPECT_EQ(places(-10.25), (places(0.75)));
    EXPECT_EQ(places(0.0), (ParametricPoint{0, 0, 0.0}));
    EXPECT_EQ(places(3.0), (ParametricPoint{0, 0, 0.0}));
    EXPECT_EQ(places(0.999999995), (ParametricPoint{0, 3, 1.0}));
    EXPECT_EQ(places(0.000000005), (ParametricPoint{0, 0, 0.0}));
}

TEST(T2NT, FindsNothingWithoutLength) {
    const ParametricPoint nothing;
    const Polyline none;
    const Polyline one{P(1, 2, 3)};
    const Polyline same(4, P(1, 2, 3));
    const Polyline upright{P(0, 0, 0), P(0, 0, 9)};
    for (const Polyline* polyline : {&none, &one, &same, &upright}) EXPECT_EQ(T2NT(*polyline, false)(0.5), nothing);
    EXPECT_NEAR(T2NT(upright, true)(0.5).t, 0.5, 1e-12);
}

TEST(T2NT, PassesOverSegmentsWithoutLength) {
    const Polyline polyline{P(0, 0, 0), P(0, 0, 0), P(1, 0, 0), P(1, 0, 0), P(2, 0, 0), P(2, 0, 0)};
    const T2NT places(polyline, false);
    ExpectPlace(places(0.25), 1, 0.5);
    ExpectPlace(places(0.75), 3, 0.5);
    ExpectPlace(places(0.25), 1, 0.5);
    EXPECT_EQ(places(1.0).segment, 3u);
}

TEST(T2NT, GivesTheSamePlaceWhicheverWayItCame) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const Polyline polyline = RandomOutline(4 * seed, 30);
        HostilePoints random(seed);
        const T2NT walked(polyline, seed % 2 == 0);
        for (int i = 0; i < 100; ++i) {
            const double t = random.Between(0.0, 1.0);
            const ParametricPoint fresh = T2NT(polyline, seed % 2 == 0)(t);
            const ParametricPoint place = walked(t);
            EXPECT_NEAR(place.segment + place.t, fresh.segment + fresh.t, 1e-9);
        }
    }
}

TEST(T2NT, StaysOnThePolylineWhateverItIsGiven) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Polyline polyline = RandomOutline(seed, static_cast<int>(seed % 9));
        if (seed % 3 == 0 && !polyline.empty()) polyline.push_back(P(polyline[0]));
        const T2NT places(polyline, seed % 2 == 0);
        for (const double t : {0.5, NaN, Infinity, -Infinity, 1e300, -1e300, 0.1, 0.9, -0.0}) {
            const ParametricPoint place = places(t);
            EXPECT_EQ(place.path, 0u);
            EXPECT_LT(place.segment, std::max<std::size_t>(polyline.size(), 2) - 1);
        }
    }
}

}  // namespace
}  // namespace KM
