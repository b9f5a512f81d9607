#include <gtest/gtest.h>

#include <array>
#include <limits>

#include "KmTools.h"

namespace {

using Box = std::array<double, 6>;
using Point = std::array<double, 3>;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

Box EmptyBox() {
    Box box{};
    KmBndBoxInit(3, box.data());
    return box;
}

Box BoxOf(std::initializer_list<Point> points) {
    Box box = EmptyBox();
    for (const Point& p : points) EXPECT_EQ(KmBndBoxGrowPnt(3, box.data(), p.data(), box.data()), 0);
    return box;
}

TEST(KmBndBoxInit, TurnsTheBoxInsideOut) { EXPECT_EQ(EmptyBox(), (Box{1e20, -1e20, 1e20, -1e20, 1e20, -1e20})); }

TEST(KmBndBoxInit, WritesAsManyDimensionsAsAsked) {
    Box box{};
    EXPECT_EQ(KmBndBoxInit(2, box.data()), 0);
    EXPECT_EQ(box, (Box{1e20, -1e20, 1e20, -1e20, 0, 0}));
}

TEST(KmBndBoxGrowPnt, HoldsEachPoint) {
    EXPECT_EQ(BoxOf({{1, 2, 3}}), (Box{1, 1, 2, 2, 3, 3}));
    EXPECT_EQ(BoxOf({{1, 2, 3}, {-1, 5, 3}}), (Box{-1, 1, 2, 5, 3, 3}));
    EXPECT_EQ(BoxOf({{1, 2, 3}, {-1, 5, 3}, {0, 3, 3}}), (Box{-1, 1, 2, 5, 3, 3}));
}

TEST(KmBndBoxGrowPnt, LeavesTheInputAloneWhenTheOutputIsAnother) {
    const Box box{0, 1, 0, 1, 0, 1};
    const Point p{2, -2, 0.5};
    Box grown{};
    EXPECT_EQ(KmBndBoxGrowPnt(3, box.data(), p.data(), grown.data()), 0);
    EXPECT_EQ(grown, (Box{0, 2, -2, 1, 0, 1}));
}

TEST(KmBndBoxGrowPnt, TakesNoNoticeOfWhatIsNotANumber) {
    EXPECT_EQ(BoxOf({{1, 2, 3}, {NaN, 4, NaN}}), (Box{1, 1, 2, 4, 3, 3}));
    EXPECT_EQ(BoxOf({{NaN, NaN, NaN}}), EmptyBox());
}

TEST(KmBndBoxGrowPnt, ReachesBeyondTheBoundsOfTheEmptyBox) {
    EXPECT_EQ(BoxOf({{1e21, -1e21, Infinity}}), (Box{1e21, 1e21, -1e21, -1e21, Infinity, Infinity}));
}

TEST(KmBndBox, RefusesNullAndNoDimensions) {
    Box box{1, 2, 3, 4, 5, 6};
    const Box before = box;
    const Point p{9, 9, 9};
    EXPECT_NE(KmBndBoxInit(0, box.data()), 0);
    EXPECT_NE(KmBndBoxInit(3, nullptr), 0);
    EXPECT_NE(KmBndBoxGrowPnt(-1, box.data(), p.data(), box.data()), 0);
    EXPECT_NE(KmBndBoxGrowPnt(3, nullptr, p.data(), box.data()), 0);
    EXPECT_NE(KmBndBoxGrowPnt(3, box.data(), nullptr, box.data()), 0);
    EXPECT_NE(KmBndBoxGrowPnt(3, box.data(), p.data(), nullptr), 0);
    EXPECT_EQ(box, before);
}

}  // namespace
