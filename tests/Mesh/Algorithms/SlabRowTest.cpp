#include "Mesh/Algorithms/SlabRow.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <utility>

#include "Support/Numbers.h"

namespace KM {
namespace {

using namespace Test;

std::size_t FirstByLooking(const SlabRow& row, std::size_t count, double level) {
    std::size_t i = 0;
    while (i < count && level > row[i].hi) ++i;
    return i;
}

TEST(SlabRow, DividesAnExtentEvenly) {
    const SlabRow row(-2.0, 8.0, 4, 0.5);
    for (std::size_t i = 0; i < 4; ++i) {
        const double share = 2.0 * static_cast<double>(i) - 2.0;
        EXPECT_EQ(row[i].lo, share - 0.5);
        EXPECT_EQ(row[i].hi, share + 2.5);
    }
    EXPECT_TRUE(std::isnan(row[4].lo) && std::isnan(row[4].hi));
}

TEST(SlabRow, FindsTheFirstSlabThatReaches) {
    const SlabRow row(0.0, 4.0, 4, 0.0);
    const std::pair<double, std::size_t> cases[] = {{-9.0, 0}, {0.0, 0},  {0.5, 0},      {1.0, 0},      {1.5, 1},
                                                    {2.0, 1},  {4.0, 3},  {4.5, 4},      {1e300, 4},    {-1e300, 0},
                                                    {NaN, 0},  {-NaN, 0}, {Infinity, 4}, {-Infinity, 0}};
    for (const auto& [level, first] : cases) EXPECT_EQ(row.FirstReaching(level), first) << level;
}

TEST(SlabRow, WithoutSlabsHasNoneThatReaches) {
    for (const double level : {0.0, -1e300, 1e300, NaN, Infinity, -Infinity}) {
        EXPECT_EQ(SlabRow().FirstReaching(level), 0u);
        EXPECT_EQ(SlabRow(1.0, 2.0, -3, 0.0).FirstReaching(level), 0u);
        EXPECT_EQ(SlabRow(1.0, 2.0, INT_MIN, 0.0).FirstReaching(level), 0u);
    }
}

TEST(SlabRow, FindsWhatALookAtEachFinds) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        const int count = 1 + next.Below(200);
        const double min = seed % 2 == 0 ? next.Between(-9.0, 9.0) : next.Hostile();
        const double extents[] = {0.0, 1e-300, 1e-15, 1.0, 1e300, next.Between(0.0, 9.0)};
        const double overlaps[] = {0.0, 0.1, -0.1, 1e30, -1e30, Infinity};
        const double extent = extents[next.Below(6)];
        const SlabRow row(std::isfinite(min) ? min : 0.0, extent, count, overlaps[next.Below(6)]);
        for (int i = 0; i < 50; ++i) {
            // Levels on the limits, beside them, and anywhere.
            const double limit = row[static_cast<std::size_t>(next.Below(count))].hi;
            const double levels[] = {limit, std::nextafter(limit, Infinity), std::nextafter(limit, -Infinity),
                                     next.Between(min, min + extent), next.Hostile()};
            for (const double level : levels)
                ASSERT_EQ(row.FirstReaching(level), FirstByLooking(row, static_cast<std::size_t>(count), level))
                    << level;
        }
    }
}

// Without any finite coordinate a file has the box that nothing has grown, which is less than empty.
TEST(SlabRow, TakesAnEmptyBox) {
    const SlabRow row(1e20, -2e20, 5, 0.0);
    EXPECT_EQ(row.FirstReaching(-Infinity), 0u);
    EXPECT_EQ(row.FirstReaching(Infinity), 5u);
    EXPECT_EQ(row.FirstReaching(NaN), 0u);
}

}  // namespace
}  // namespace KM
