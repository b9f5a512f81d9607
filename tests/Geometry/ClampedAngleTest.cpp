#include "Geometry/ClampedAngle.h"

#include <gtest/gtest.h>

#include "Support/Numbers.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;

TEST(ClampedAngle, IsHeldOffZeroAndPi) {
    const double least = std::acos(0.99999999);
    EXPECT_EQ(ClampedAngle(P(1, 2, 3), P(1, 2, 3), IsZero), least);
    EXPECT_EQ(ClampedAngle(P(1, 2, 3), P(-2, -4, -6), IsZero), std::acos(-0.99999999));
    EXPECT_EQ(ClampedAngle(P(1, 0, 0), P(0, 5, 0), IsZero), std::numbers::pi / 2.0);
}

TEST(ClampedAngle, LeavesTheLimitToTheCaller) {
    const auto hasNoDirection = [](double length) { return length <= 1.0; };
    for (const P& v : {P(1, 0, 0), P(0, 0.5, 0)}) {
        EXPECT_EQ(ClampedAngle(P(2, 2, 0), v, hasNoDirection), 0.0);
        EXPECT_EQ(ClampedAngle(v, P(-2, -2, 0), hasNoDirection), std::numbers::pi);
    }
    EXPECT_EQ(ClampedAngle(P(0, 0, 0.5), P(2, 0, 0), hasNoDirection), std::numbers::pi);
    EXPECT_DOUBLE_EQ(ClampedAngle(P(2, 2, 0), P(1.5, 0, 0), hasNoDirection), std::numbers::pi / 4.0);
}

TEST(ClampedAngle, LeavesWhatIsNoNumberToTheCaller) {
    EXPECT_TRUE(std::isnan(ClampedAngle(P(NaN, 0, 0), P(1, 0, 0), IsZero)));
    EXPECT_EQ(ClampedAngle(P(NaN, 0, 0), P(1, 0, 0), [](double length) { return !(length > 1.0); }), std::numbers::pi);
}

}  // namespace
}  // namespace KM
