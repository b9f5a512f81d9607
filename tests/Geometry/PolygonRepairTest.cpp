#include "Geometry/PolygonRepair.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Geometry/PlainPolygons.h"
#include "Geometry/Polygons.h"
#include "Support/HostilePoints.h"
#include "Support/Polygons.h"

namespace KM {
namespace {

using namespace PointsUtils;
using namespace Test;
using P = TPoint<double>;
using Polygon = std::vector<P>;

void ExpectAsPlain(const Polygon& polygon) {
    Polygon result;
    Polygon plain;
    ASSERT_EQ(MakePolygonNonSelfIntersecting(polygon, result), PlainMakePolygonNonSelfIntersecting(polygon, plain));
    ASSERT_EQ(result.size(), plain.size());
    for (std::size_t i = 0; i < plain.size(); ++i) ASSERT_TRUE(SameBits(result[i], plain[i])) << "point " << i;
}

TEST(MakePolygonNonSelfIntersecting, ClosesASimplePolygon) {
    const Polygon square{P(0, 0, 1), P(1, 0, 2), P(1, 1, 3), P(0, 1, 4)};
    Polygon result{P(9, 9, 9)};
    EXPECT_FALSE(MakePolygonNonSelfIntersecting(square, result));
    EXPECT_EQ(result, (Polygon{P(0, 0, 1), P(1, 0, 2), P(1, 1, 3), P(0, 1, 4), P(0, 0, 1)}));
}

TEST(MakePolygonNonSelfIntersecting, KeepsTheFirstLoopOfABowTie) {
    Polygon result;
    EXPECT_TRUE(MakePolygonNonSelfIntersecting({P(0, 0, 0), P(4, 2, 0), P(4, 0, 4), P(0, 2, 8)}, result));
    // The crossing lies on the later segment, in Z as well.
    EXPECT_EQ(result, (Polygon{P(0, 0, 0), P(2, 1, 6), P(0, 2, 8), P(0, 0, 0)}));
}

// The end of the closing segment is moved up by 2e-7 in X and Y, where it stands on the first segment: that is a crossing.
TEST(MakePolygonNonSelfIntersecting, CutsEverythingWhereTheClosingSegmentMeetsTheFirst) {
    Polygon result;
    EXPECT_TRUE(MakePolygonNonSelfIntersecting({P(0, 0, 0), P(2, 2, 0), P(2, 0, 4), P(0, 2, 8)}, result));
    EXPECT_EQ(result, Polygon(3, P(0, 0, 0)));
}

TEST(MakePolygonNonSelfIntersecting, TakesShortListsAsTheyAre) {
    Polygon result{P(9, 9, 9)};
    EXPECT_FALSE(MakePolygonNonSelfIntersecting({}, result));
    EXPECT_TRUE(result.empty());
    EXPECT_FALSE(MakePolygonNonSelfIntersecting({P(1, 2, 3)}, result));
    EXPECT_EQ(result, (Polygon{P(1, 2, 3), P(1, 2, 3)}));
}

TEST(MakePolygonNonSelfIntersecting, CanReplaceItsInput) {
    Polygon polygon{P(0, 0, 0), P(4, 2, 0), P(4, 0, 0), P(0, 2, 0)};
    EXPECT_TRUE(MakePolygonNonSelfIntersecting(polygon, polygon));
    EXPECT_EQ(polygon.size(), 4u);
}

TEST(MakePolygonNonSelfIntersecting, IsThePlainRuleOnRandomPoints) {
    for (unsigned seed = 0; seed < 6000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectAsPlain(RandomOutline(seed, static_cast<int>(seed % 61)));
        if (HasFatalFailure()) return;
    }
}

TEST(MakePolygonNonSelfIntersecting, IsThePlainRuleOnOutlinesOfParts) {
    for (int size = 1; size < 40; ++size) {
        SCOPED_TRACE(testing::Message() << "size " << size);
        for (const Polygon& polygon :
             {Circle(7 * size), Spiral(12 * size, 1 + size / 4), SpikyStar(5 * size), Digitised(10 * size, 1.0),
              Digitised(10 * size, 0.1), Comb(2 * size), KeyHoles(1 + size / 12, 0.0), ThereAndBack(9 * size),
              StarShaped(static_cast<unsigned>(size), 9 * size)}) {
            ExpectAsPlain(polygon);
            ExpectAsPlain(Reversed(polygon));
            if (HasFatalFailure()) return;
        }
    }
}

// Crossings at all angles and steps, so that much is cut off and grown again.
TEST(MakePolygonNonSelfIntersecting, IsThePlainRuleOnRandomWalks) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        HostilePoints random(seed);
        const double scale = seed % 3 == 0 ? 1e-5 : seed % 3 == 1 ? 1.0 : 1e9;
        P at;
        Polygon walk;
        for (int i = 0; i < 200; ++i) {
            at += P{random.Between(-1.0, 1.5), random.Between(-1.0, 1.0), random.Between(-1.0, 1.0)} * scale;
            walk.push_back(at);
        }
        ExpectAsPlain(walk);
        if (HasFatalFailure()) return;
    }
}

// Nearly parallel passes of all distances round the margin within which the outline moves common ends.
TEST(MakePolygonNonSelfIntersecting, IsThePlainRuleOnWhatNearlyTouches) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        HostilePoints random(seed);
        const double gap = std::pow(10.0, -static_cast<double>(3 + seed % 13));
        const double scale = std::pow(10.0, static_cast<double>(seed % 7) - 2.0);
        Polygon passes;
        for (int i = 0; i < 30; ++i) {
            const double x = random.Below(2) == 0 ? static_cast<double>(i % 2) : random.Between(0.0, 1.0);
            passes.push_back(P(x, x * 0.3 + gap * random.Between(-1.0, 1.0), 0.0) * scale);
        }
        ExpectAsPlain(passes);
        if (HasFatalFailure()) return;
    }
}

// Long passes in one slanted direction, as of hatching, with some that cross all of them, far from the origin and near.
TEST(MakePolygonNonSelfIntersecting, IsThePlainRuleOnSlantedHatching) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        HostilePoints random(seed);
        const double angle = random.Between(-4.0, 4.0);
        const P along(std::cos(angle), std::sin(angle), 0.1);
        const P across(-along.Y, along.X, 0.2);
        const double gap = std::pow(10.0, static_cast<double>(seed % 7) - 6.0);
        const P origin = P(1e8, -1e7, 0.0) * static_cast<double>(seed % 3);
        Polygon hatching;
        for (int i = 0; i < 200; ++i) {
            const double reach = random.Below(20) == 0 ? random.Between(0.0, 100.0) : i * gap;
            hatching.push_back(origin + along * ((i / 2 % 2 == i % 2) ? 0.0 : 1000.0) + across * reach);
        }
        ExpectAsPlain(hatching);
        if (HasFatalFailure()) return;
    }
}

TEST(MakePolygonNonSelfIntersecting, EndsOnLongInput) {
    Polygon result;
    EXPECT_FALSE(MakePolygonNonSelfIntersecting(Polygon(100000, P(1, 2, 3)), result));
    EXPECT_EQ(result.size(), 100001u);
    EXPECT_FALSE(MakePolygonNonSelfIntersecting(Polygon(100000, P(NaN, 2, 3)), result));
    EXPECT_FALSE(MakePolygonNonSelfIntersecting(Polygon(100000, P(Infinity, -Infinity, Infinity)), result));
    EXPECT_FALSE(MakePolygonNonSelfIntersecting(SpikyStar(100000), result));
    EXPECT_EQ(result.size(), 100001u);
    EXPECT_FALSE(MakePolygonNonSelfIntersecting(Comb(20000), result));
    EXPECT_EQ(result.size(), 80003u);
}

TEST(AdjustConvexPolygonVertices, PullsCornersBackAlongTheirSides) {
    Polygon result{P(9, 9, 9)};
    AdjustConvexPolygonVertices({P(0, 0, 0), P(4, 0, 8), P(4, 4, 0), P(0, 4, 0)}, result, 0.25);
    EXPECT_EQ(result, (Polygon{P(3, 0, 6), P(4, 3, 2), P(1, 4, 0), P(0, 1, 0)}));
}

TEST(AdjustConvexPolygonVertices, LeavesCornersThatTurnRight) {
    Polygon result;
    AdjustConvexPolygonVertices({P(0, 0, 0), P(4, 0, 0), P(1, 1, 5), P(0, 4, 0)}, result, 0.5);
    EXPECT_EQ(result, (Polygon{P(2, 0, 0), P(1, 1, 5), P(0.5, 2.5, 2.5), P(0, 2, 0)}));
}

TEST(AdjustConvexPolygonVertices, TakesShortListsAndItsOwnInput) {
    Polygon polygon;
    AdjustConvexPolygonVertices(polygon, polygon, 0.5);
    EXPECT_TRUE(polygon.empty());
    polygon = {P(1, 2, 3)};
    AdjustConvexPolygonVertices(polygon, polygon, 0.5);
    EXPECT_EQ(polygon, Polygon{P(1, 2, 3)});
    // A straight corner counts as convex; one that is not a number stays.
    polygon = {P(0, 0, 0), P(2, 0, 0)};
    AdjustConvexPolygonVertices(polygon, polygon, 0.5);
    EXPECT_EQ(polygon, (Polygon{P(1, 0, 0), P(1, 0, 0)}));
    polygon = {P(NaN, 0, 0), P(2, 0, 0), P(0, 2, 0)};
    Polygon result;
    AdjustConvexPolygonVertices(polygon, result, 0.5);
    EXPECT_EQ(result[0], P(2, 0, 0));
}

}  // namespace
}  // namespace KM
