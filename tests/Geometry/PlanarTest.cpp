#include "Geometry/Planar.h"

#include <gtest/gtest.h>

namespace KM {
namespace {

using P = TPoint<double>;

constexpr double Pi = std::numbers::pi;

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
