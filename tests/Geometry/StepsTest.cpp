#include "Geometry/Steps.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Support/Numbers.h"

namespace KM {
namespace {

using Test::Infinity;
using Test::NaN;
using Test::Numbers;
using Test::SameBits;
using Levels = std::vector<double>;

Levels Created(Levels levels, double step, double minGap, double from, double to) {
    Steps::CreateLevels(levels, step, minGap, from, to);
    return levels;
}

/// The rule, line by line. An end of a gap is what is in the list; the formula only leads there.
Levels PlainLevels(const Levels& levels, double step, double minGap, double from, double to) {
    Levels list;
    for (const double level : levels)
        if (from < level && level < to) list.push_back(level);
    list.push_back(from);
    list.push_back(to);
    std::sort(list.begin(), list.end());
    std::reverse(list.begin(), list.end());
    Levels thin;
    for (const double level : list)
        if (thin.empty() || thin.back() - level >= minGap) thin.push_back(level);
    Levels filled;
    filled.push_back(thin[0]);
    for (std::size_t i = 1; i < thin.size(); ++i) {
        const double gap = thin[i - 1] - thin[i];
        const int n = static_cast<int>((gap - 0.001) / step + 1.0);
        for (int k = 1; k <= n; ++k) {
            const double part = static_cast<double>(k) / static_cast<double>(n);
            filled.push_back(k == n ? thin[i] : thin[i - 1] + part * (thin[i] - thin[i - 1]));
        }
    }
    if (filled.size() > 1) filled.erase(filled.begin());
    return filled;
}

TEST(CreateLevels, RunsDownFromBelowTheTop) {
    EXPECT_EQ(Created({}, 1, 0.01, 0, 3), (Levels{2, 1, 0}));
    EXPECT_EQ(Created({}, 2, 0.01, 0, 3), (Levels{1.5, 0}));
    EXPECT_EQ(Created({}, 10, 0.01, 0, 3), Levels{0});
}

TEST(CreateLevels, KeepsGivenLevelsBetweenTheEnds) {
    EXPECT_EQ(Created({2.5, 7, -1, 0, 3, 1}, 1, 0.01, 0, 3), (Levels{2.5, 1.75, 1, 0}));
}

TEST(CreateLevels, GivesNoLevelMoreForATraceOfAGap) {
    EXPECT_EQ(Created({}, 1, 0.01, 0, 3.0009).size(), 3u);
    EXPECT_EQ(Created({}, 1, 0.01, 0, 3.0011).size(), 4u);
}

TEST(CreateLevels, KeepsTheUpperOfCloseLevels) {
    EXPECT_EQ(Created({2, 1.95}, 10, 0.1, 0, 3), (Levels{2, 0}));
    EXPECT_EQ(Created({0.05}, 10, 0.1, 0, 3), Levels{0.05});  // the lower end goes, too
    EXPECT_EQ(Created({2, 1.75}, 10, 0.25, 0, 3), (Levels{2, 1.75, 0}));
    EXPECT_EQ(Created({2, 2, 2}, 10, 0.1, 0, 3), (Levels{2, 0}));
}

TEST(CreateLevels, HasTheTopAloneWhereNothingElseIs) {
    EXPECT_EQ(Created({}, 1, 0.01, 3, 3), Levels{3});
    EXPECT_EQ(Created({}, 1, 5, 0, 3), Levels{3});
    EXPECT_EQ(Created({}, 1, NaN, 0, 3), Levels{3});
    EXPECT_EQ(Created({1}, -1, 0.01, 0, 3), Levels{3});
}

TEST(CreateLevels, TakesTheEndsEitherWayRound) { EXPECT_EQ(Created({1.5}, 1, 0.01, 3, 0), (Levels{2, 1, 0})); }

TEST(CreateLevels, LeavesOutTheEndOfAGapTooSmallForAStep) {
    EXPECT_EQ(Created({2.0, 1.9995}, 10, 0.0, 0, 3), (Levels{2, 0}));
    EXPECT_EQ(Created({2.0, 1.9995}, -10, 0.0, 0, 3), Levels{1.9995});
}

TEST(CreateLevels, ReachesGivenLevelsExactly) {
    EXPECT_EQ(Created({}, 10, 0.01, 0.1, 3), Levels{0.1});
    EXPECT_NE(3 + 1.0 * (0.1 - 3), 0.1);  // else the line above says nothing
}

TEST(CreateLevels, LeavesLevelsAloneThatCannotBeLaidOut) {
    const Levels levels{5, 1, 2};
    EXPECT_EQ(Created(levels, 1, 0.01, NaN, 3), levels);
    EXPECT_EQ(Created(levels, 1, 0.01, 0, NaN), levels);
    EXPECT_EQ(Created(levels, NaN, 0.01, 0, 3), levels);
    EXPECT_EQ(Created(levels, 0, 0.01, 0, 3), levels);
    EXPECT_EQ(Created(levels, 1e-9, 0.01, 0, 3), levels);
    EXPECT_EQ(Created(levels, 1, 0.01, -Infinity, 3), levels);
    EXPECT_EQ(Created(levels, 1, 0.01, 0, Infinity), levels);
    EXPECT_EQ(Created(levels, Infinity, 0.01, -Infinity, Infinity), levels);
}

TEST(CreateLevels, DropsLevelsThatAreNoNumbers) {
    EXPECT_EQ(Created({NaN, Infinity, -Infinity, 1}, 10, 0.01, 0, 3), (Levels{1, 0}));
}

TEST(CreateLevels, TakesAnInfiniteStepForNone) { EXPECT_EQ(Created({1}, Infinity, 0.01, 0, 3), (Levels{1, 0})); }

TEST(CreateLevels, DescendsInStepsThatAreSmallEnough) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        Levels levels;
        for (int i = numbers.Below(6); i > 0; --i) levels.push_back(numbers.Between(-1.0, 11.0));
        const double step = numbers.Between(0.05, 3.0);
        const Levels created = Created(levels, step, 0.01, 0.0, 10.0);
        double above = 10.0;
        for (const double level : created) {
            EXPECT_LT(level, above);
            EXPECT_LE(above - level, step + 0.001 + 1e-12);
            above = level;
        }
        EXPECT_LT(created.back(), 0.01);

        const Levels expected = PlainLevels(levels, step, 0.01, 0.0, 10.0);
        ASSERT_EQ(created.size(), expected.size());
        for (std::size_t i = 0; i < created.size(); ++i) EXPECT_TRUE(SameBits(created[i], expected[i])) << i;
    }
}

}  // namespace
}  // namespace KM
