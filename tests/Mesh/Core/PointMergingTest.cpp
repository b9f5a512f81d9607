#include "Mesh/Core/PointMerging.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

namespace KM {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

using Points = std::vector<TPoint<double>>;

int NodeOf(PointIndexSet& merger, const TPoint<double>& p) { return merger.NodeOf(p, PointIndexSet::Hash(p)); }

TEST(PointMerger, GivesOneNodeToEqualPoints) {
    Points points;
    PointIndexSet merger(points, 0);
    EXPECT_EQ(NodeOf(merger, {1, 2, 3}), 0);
    EXPECT_EQ(NodeOf(merger, {1, 2, 4}), 1);
    EXPECT_EQ(NodeOf(merger, {1, 2, 3}), 0);
    EXPECT_EQ(points.size(), 2u);
}

TEST(PointMerger, SeparatesPointsThatDifferInTheLastBit) {
    Points points;
    PointIndexSet merger(points, 0);
    EXPECT_EQ(NodeOf(merger, {1, 1, 1}), 0);
    EXPECT_EQ(NodeOf(merger, {std::nextafter(1.0, 2.0), 1, 1}), 1);
    EXPECT_EQ(NodeOf(merger, {1, std::nextafter(1.0, 2.0), 1}), 2);
    EXPECT_EQ(NodeOf(merger, {1, 1, std::nextafter(1.0, 2.0)}), 3);
}

TEST(PointMerger, KeepsTheEarliestZero) {
    Points points;
    PointIndexSet merger(points, 0);
    EXPECT_EQ(NodeOf(merger, {-0.0, 0.0, -0.0}), 0);
    EXPECT_EQ(NodeOf(merger, {0.0, -0.0, 0.0}), 0);
    EXPECT_TRUE(std::signbit(points[0].X) && !std::signbit(points[0].Y) && std::signbit(points[0].Z));
}

TEST(PointMerger, TakesInfinitiesAsNumbers) {
    Points points;
    PointIndexSet merger(points, 0);
    EXPECT_EQ(NodeOf(merger, {infinity, 0, 0}), 0);
    EXPECT_EQ(NodeOf(merger, {-infinity, 0, 0}), 1);
    EXPECT_EQ(NodeOf(merger, {infinity, 0, 0}), 0);
}

TEST(PointMerger, NeverMergesWhatIsNotANumber) {
    Points points;
    PointIndexSet merger(points, 0);
    EXPECT_EQ(NodeOf(merger, {notANumber, 0, 0}), 0);
    EXPECT_EQ(NodeOf(merger, {notANumber, 0, 0}), 1);
    EXPECT_EQ(NodeOf(merger, {0, 0, notANumber}), 2);
    EXPECT_EQ(NodeOf(merger, {0, 0, 0}), 3);
}

TEST(PointMerger, IsQuickForManyPointsThatAreNotNumbers) {
    Points points;
    PointIndexSet merger(points, 0);
    for (int i = 0; i < 200000; ++i) ASSERT_EQ(NodeOf(merger, {notANumber, 1, 2}), i);
}

TEST(PointMerger, LeavesEarlierPointsAlone) {
    Points points{{1, 2, 3}};
    PointIndexSet merger(points, 0);
    EXPECT_EQ(NodeOf(merger, {1, 2, 3}), 1);
}

// Coordinates of drawings are round: few bits at the upper end.
TEST(PointMerger, SpreadsRoundCoordinates) {
    std::set<std::uint32_t> upperBits;
    for (int x = 0; x < 16; ++x)
        for (int y = 0; y < 16; ++y)
            for (int z = 0; z < 16; ++z) upperBits.insert(PointIndexSet::Hash(TPoint<double>(x, y, 0.25 * z)) >> 16);
    // 4096 values in 65536 boxes: a perfect shuffle fills about 3970 of them.
    EXPECT_GT(upperBits.size(), 3800u);
}

TEST(PointMerger, GrowsWithoutForgetting) {
    Points points;
    PointIndexSet merger(points, 0);
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 5000; ++i) ASSERT_EQ(NodeOf(merger, {i % 17 + 0.5, i / 17 + 0.5, 0}), i);
}

}  // namespace
}  // namespace KM
