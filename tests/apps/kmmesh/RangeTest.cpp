#include "Range.h"

#include <gtest/gtest.h>

namespace KM::Tool {
namespace {

constexpr double Infinite = std::numeric_limits<double>::infinity();

TEST(Range, TakesAllFiniteNumbersUnlessTold) {
    EXPECT_EQ(Range{}.FaultOf(-1e300), "");
    EXPECT_EQ(Range{}.FaultOf(Infinite), "inf is no finite number");
    EXPECT_EQ(Range{}.FaultOf(std::numeric_limits<double>::quiet_NaN()), "nan is no finite number");
}

TEST(Range, TakesItsEnds) {
    const Range range{1, 100};
    EXPECT_EQ(range.FaultOf(1), "");
    EXPECT_EQ(range.FaultOf(100), "");
    EXPECT_EQ(range.FaultOf(0.5), "0.5 is not from 1 to 100");
    EXPECT_EQ(range.FaultOf(101), "101 is not from 1 to 100");
}

TEST(Range, CanLeaveItsEndsOut) {
    const Range range{0, 90, false};
    EXPECT_EQ(range.FaultOf(1e-300), "");
    EXPECT_EQ(range.FaultOf(0), "0 is not between 0 and 90");
    EXPECT_EQ(range.FaultOf(90), "90 is not between 0 and 90");
}

TEST(Range, MayHaveOneEnd) {
    EXPECT_EQ(Range{-1}.FaultOf(1e300), "");
    EXPECT_EQ(Range{-1}.FaultOf(-2), "-2 is less than -1");
    EXPECT_EQ((Range{0, Infinite, false}.FaultOf(0)), "0 is not more than 0");
    EXPECT_EQ((Range{-Infinite, 5}.FaultOf(6)), "6 is more than 5");
    EXPECT_EQ((Range{-Infinite, 5, false}.FaultOf(5)), "5 is not less than 5");
}

}  // namespace
}  // namespace KM::Tool
