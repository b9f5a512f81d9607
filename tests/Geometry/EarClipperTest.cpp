#include "Geometry/EarClipper.h"

#include <gtest/gtest.h>

#include <vector>

namespace KM {
namespace {

using P = TPoint<double>;
using Polygon = std::vector<P>;
using Triangles = std::vector<std::vector<int>>;

Triangles Ears(const Polygon& polygon, bool isReversed = false) {
    Triangles triangles;
    ClipEars(polygon, isReversed, triangles);
    return triangles;
}

const Polygon Square{P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(0, 1, 0)};

TEST(ClipEars, CutsTheFirstFreeCornerAndStaysThere) { EXPECT_EQ(Ears(Square), (Triangles{{0, 1, 2}, {0, 2, 3}})); }

TEST(ClipEars, NamesPointsByTheirPlacesInAReversedPolygon) {
    const Polygon clockwise(Square.rbegin(), Square.rend());
    EXPECT_EQ(Ears(clockwise, true), (Triangles{{3, 2, 1}, {3, 1, 0}}));
}

TEST(ClipEars, LeavesAnOutlineThatTurnsRightAlone) {
    EXPECT_EQ(Ears(Polygon(Square.rbegin(), Square.rend())), Triangles());
}

TEST(ClipEars, PassesOverACornerThatAPointBlocks) {
    EXPECT_EQ(Ears({P(0, 0, 0), P(4, 0, 0), P(4, 4, 0), P(3, 1, 0)}), (Triangles{{1, 2, 3}, {1, 3, 0}}));
}

TEST(ClipEars, CutsStraightCornersFirst) {
    const Triangles triangles = Ears({P(0, 0, 0), P(2, 0, 0), P(2, 1, 0), P(2, 2, 0), P(0, 2, 0)});
    ASSERT_EQ(triangles.size(), 3u);
    EXPECT_EQ(triangles[0], (std::vector<int>{1, 2, 3}));
}

TEST(ClipEars, ComesBackToACornerWhenItsBlockerIsGone) {
    // The tooth 3 blocks the corner at 1, and is cut off itself later: nothing may remain.
    const Polygon comb{P(0, 0, 0), P(8, 0, 0), P(8, 8, 0), P(6, 2, 0), P(4, 8, 0), P(2, 2, 0), P(0, 8, 0)};
    EXPECT_EQ(Ears(comb).size(), comb.size() - 2);
}

TEST(ClipEars, GivesTheSameWhereCoordinatesAreTooLargeForItsTree) {
    // Powers of two change no bit of a product but its exponent.
    Polygon small{P(0, 0, 0), P(4, 0, 0), P(4, 4, 0), P(3, 1, 0)};
    Polygon wild = small;
    for (P& p : wild) p = p * 0x1p505;
    EXPECT_EQ(Ears(wild), Ears(small));
}

TEST(ClipEars, AddsToWhatTheListHolds) {
    Triangles triangles{{7, 8, 9}};
    ClipEars(Square, false, triangles);
    EXPECT_EQ(triangles, (Triangles{{7, 8, 9}, {0, 1, 2}, {0, 2, 3}}));
}

}  // namespace
}  // namespace KM
