#include "Numbers.h"

#include <gtest/gtest.h>

#include "Failure.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

TEST(NumbersOf, ReadsCommasAndBlanks) {
    EXPECT_EQ(NumbersOf("1, -2.5 3e2"), (std::vector{1.0, -2.5, 300.0}));
    EXPECT_EQ(NumbersOf(" 7,"), std::vector{7.0});
}

TEST(NumbersOf, RefusesAllElse) {
    for (const char* text : {"", " , ", "x", "1x", "nan", "inf", "1e999", "0x10", "+1", "1;2"}) {
        SCOPED_TRACE(text);
        EXPECT_THROW(NumbersOf(text), Failure);
    }
}

TEST(PointOf, TakesThreeNumbers) {
    EXPECT_EQ(PointOf("1,2,3"), Point(1, 2, 3));
    EXPECT_EQ(PointOf("-1 0 1e3"), Point(-1, 0, 1000));
    for (const char* text : {"", "1,2", "1,2,3,4", "1,2,z"}) EXPECT_THROW(PointOf(text), Failure) << text;
}

TEST(DirectionOf, HasUnitLength) {
    EXPECT_EQ(DirectionOf("x"), Point(1, 0, 0));
    EXPECT_EQ(DirectionOf("-y"), Point(0, -1, 0));
    EXPECT_EQ(DirectionOf("z"), Point(0, 0, 1));
    EXPECT_EQ(DirectionOf("0,3,4"), Point(0, 0.6, 0.8));
    EXPECT_EQ(DirectionOf("0,-1e-300,0"), Point(0, -1, 0));
    EXPECT_EQ(DirectionOf("1e300,0,0"), Point(1, 0, 0));
    for (const char* text : {"", "-", "--z", "Z", "xy", "0,0,0", "1,2", "inf,0,0"})
        EXPECT_THROW(DirectionOf(text), Failure) << text;
}

TEST(AxesOf, AddsUpLetters) {
    EXPECT_EQ(AxesOf("x"), 1);
    EXPECT_EQ(AxesOf("Zy"), 6);
    EXPECT_EQ(AxesOf("xyzx"), 7);
    for (const char* text : {"", "w", "x y", "x,y"}) EXPECT_THROW(AxesOf(text), Failure) << text;
}

TEST(PlacesOf, TellsNodesFromPoints) {
    const std::vector<Place> places = PlacesOf("12  10,0,2.5 0");
    ASSERT_EQ(places.size(), 3u);
    EXPECT_EQ(places[0].node, 12);
    EXPECT_EQ(places[1].node, -1);
    EXPECT_EQ(places[1].point, Point(10, 0, 2.5));
    EXPECT_EQ(places[2].node, 0);
    for (const char* text : {"", " ", "-1", "1.5", "x", "1,2", "99999999999", "1,2,3,4"})
        EXPECT_THROW(PlacesOf(text), Failure) << text;
}

}  // namespace
}  // namespace KM::Tool
