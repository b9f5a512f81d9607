#include "Geometry/Planar.h"

#include <gtest/gtest.h>

namespace KM {
namespace {

using P = TPoint<double>;

constexpr double Pi = std::numbers::pi;

constexpr double Infinity = std::numeric_limits<double>::infinity();
constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

TEST(EmptyBox, MeetsNoneAndAddsNothing) {
    const PlaneBox box{-1, -2, 3, 4};
    EXPECT_FALSE(EmptyBox.Meets(box));
    EXPECT_FALSE(box.Meets(EmptyBox));
    const PlaneBox sum = Union(EmptyBox, box);
    EXPECT_EQ(sum.minX, -1);
    EXPECT_EQ(sum.minY, -2);
    EXPECT_EQ(sum.maxX, 3);
    EXPECT_EQ(sum.maxY, 4);
}

TEST(IsWithin, TakesTheBoundAndRefusesWhatIsNoNumber) {
    EXPECT_TRUE(IsWithin(P(2, -2, Infinity), 2.0));
    EXPECT_FALSE(IsWithin(P(2.5, 0, 0), 2.0));
    EXPECT_FALSE(IsWithin(P(0, -2.5, 0), 2.0));
    EXPECT_FALSE(IsWithin(P(NaN, 0, 0), 2.0));
    EXPECT_FALSE(IsWithin(P(0, NaN, 0), Infinity));
}

TEST(DirectionInXY, CountsCounterClockwiseFromX) {
    const P from(3, 4, 5);
    EXPECT_EQ(DirectionInXY(from, P(9, 4, 0)), 0.0);
    EXPECT_EQ(DirectionInXY(from, P(3, 9, 0)), Pi / 2);
    EXPECT_EQ(DirectionInXY(from, P(-9, 4, 0)), Pi);
    EXPECT_EQ(DirectionInXY(from, P(3, -9, 0)), 1.5 * Pi);
    EXPECT_EQ(DirectionInXY(from, P(3, 4, 9)), 0.0);
}

TEST(DirectionInXY, ReachesTheFullTurnByRounding) { EXPECT_EQ(DirectionInXY(P(0, 0, 0), P(1, -1e-30, 0)), 2 * Pi); }

TEST(WayRound, CountsCounterClockwise) {
    EXPECT_EQ(WayRound(1.0, 1.5), 0.5);
    EXPECT_EQ(WayRound(1.5, 1.0), 2 * Pi - 0.5);
    EXPECT_EQ(WayRound(2.0, 2.0), 0.0);
    EXPECT_EQ(WayRound(0.0, 2 * Pi), 0.0);
    EXPECT_EQ(WayRound(2 * Pi, 0.0), 0.0);
}

}  // namespace
}  // namespace KM
