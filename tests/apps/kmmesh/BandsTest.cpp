#include "Bands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace KM::Tool {
namespace {

using Doubles = std::vector<double>;
using Pieces = std::vector<BandPiece>;

const Bands Three{{0, 1, 2, 3}, "height", "not reached", {}};
const double None = INFINITY;

Pieces Cut(const ValuedTriangle& triangle) {
    Pieces pieces;
    CutByBands(triangle, Three, pieces);
    return pieces;
}

/// A right triangle of area 0.5 in the plane.
ValuedTriangle WithValues(double a, double b, double c) { return {{{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}}, {a, b, c}}; }

TEST(Bands, FindTheBandOfAValue) {
    EXPECT_EQ(Three.Count(), 3u);
    for (const auto& [value, band] : {std::pair{-5.0, 0u}, {0.0, 0u}, {0.9, 0u}, {1.0, 1u}, {2.0, 2u}, {9.0, 2u}})
        EXPECT_EQ(Three.BandOf(value), band) << value;
    EXPECT_EQ(Three.NameOf(1), "1 .. 2");
    EXPECT_EQ(Three.NameOf(3), "not reached");
}

TEST(Bands, HaveRoundLimits) {
    EXPECT_EQ(RoundLimits(10, 10), (Doubles{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    EXPECT_EQ(RoundLimits(9.2, 4), (Doubles{0, 2.5, 5, 7.5, 10}));
    EXPECT_EQ(RoundLimits(700, 4), (Doubles{0, 200, 400, 600, 800}));
    EXPECT_EQ(RoundLimits(0, 4), (Doubles{0, 1}));
    for (const double highest : {1e-9, 0.3, 7.0, 12345.0, 1e15})
        for (const int count : {1, 2, 7, 10, 40}) {
            const Doubles limits = RoundLimits(highest, count);
            EXPECT_LE(limits.size(), static_cast<std::size_t>(count) + 2) << highest;
            EXPECT_GE(limits.back(), highest);
        }
}

TEST(CutByBands, LeavesATriangleOfOneBandWhole) {
    const Pieces pieces = Cut(WithValues(1.5, 1.5, 1.5));
    ASSERT_EQ(pieces.size(), 1u);
    EXPECT_EQ(pieces[0].band, 1u);
    EXPECT_EQ(pieces[0].count, 3u);
    EXPECT_EQ(Cut(WithValues(0, None, 0))[0].band, 3u);
    EXPECT_EQ(Cut(WithValues(NAN, 0, 0))[0].band, 3u);
}

TEST(CutByBands, CutsAlongTheLimits) {
    const Pieces pieces = Cut(WithValues(0, 2, 0));
    ASSERT_EQ(pieces.size(), 2u);  // the corner at 2 has no area in the third band
    EXPECT_EQ(pieces[0].count, 4u);
    EXPECT_EQ(pieces[1].count, 3u);
    EXPECT_EQ(pieces[1].corners[0], TPoint<double>(0.5, 0, 0));
}

TEST(AreasOf, AddUpToTheWhole) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> values(-1, 4);
    ValuedTriangles triangles;
    for (int i = 0; i < 1000; ++i) triangles.push_back(WithValues(values(random), values(random), values(random)));
    triangles.push_back(WithValues(0, 0, None));
    const Doubles areas = AreasOf(triangles, Three);
    ASSERT_EQ(areas.size(), 4u);
    EXPECT_NEAR(areas[0] + areas[1] + areas[2], 500.0, 1e-9);
    EXPECT_EQ(areas[3], 0.5);
}

TEST(Histogram, HasALineForEachBand) {
    EXPECT_EQ(Histogram({6, 0, 3, 0}, Three),
              "  height                      area   share\n"
              "  0 .. 1                         6   66.7 %  ################################\n"
              "  1 .. 2                         0    0.0 %\n"
              "  2 .. 3                         3   33.3 %  ################\n");
    EXPECT_NE(Histogram({6, 0, 3, 1}, Three).find("  not reached "), std::string::npos);
    EXPECT_NE(Histogram({None, 1, 0, 0}, Three).find(" inf    0.0 %\n"), std::string::npos);
    EXPECT_NE(Histogram({0, 0, 0, 0}, Three).find("  0.0 %\n"), std::string::npos);
}

}  // namespace
}  // namespace KM::Tool
