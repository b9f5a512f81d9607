#include "Mesh/Algorithms/LowestScore.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "Support/Numbers.h"

namespace KM {
namespace {

using namespace Test;

TEST(LowestScore, OfNoPlacesIsNone) {
    LowestScore scores;
    EXPECT_EQ(scores.Find(), -1);
    for (const std::size_t count : {0u, 1u, 5u}) {
        scores.Reset(count);
        EXPECT_EQ(scores.Find(), -1) << count;
    }
}

TEST(LowestScore, OfEqualOnesTheFirstIsFound) {
    LowestScore scores;
    scores.Reset(6);
    for (const std::size_t place : {5u, 1u, 4u, 3u}) scores.Set(place, 2.0);
    EXPECT_EQ(scores.Find(), 1);
    scores.Set(1, 2.5);
    EXPECT_EQ(scores.Find(), 3);
    scores.Set(5, 1.0);
    EXPECT_EQ(scores.Find(), 5);
}

TEST(LowestScore, WhatIsNoScoreIsNeverFound) {
    LowestScore scores;
    scores.Reset(3);
    for (const double none : {LowestScore::None, 1e300, Infinity, NaN}) {
        scores.Set(1, 1.0);
        EXPECT_EQ(scores.Find(), 1);
        scores.Set(1, none);
        EXPECT_EQ(scores.Find(), -1) << none;
    }
    scores.Set(2, 0.99e20);
    EXPECT_EQ(scores.Find(), 2);
}

TEST(LowestScore, ResetForgetsAll) {
    LowestScore scores;
    scores.Reset(9);
    scores.Set(7, 1.0);
    scores.Reset(9);
    EXPECT_EQ(scores.Find(), -1);
    scores.Reset(2);
    scores.Set(0, 3.0);
    EXPECT_EQ(scores.Find(), 0);
}

TEST(LowestScore, AgreesWithASearchFromTheFront) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const int count = 1 + numbers.Below(70);
        LowestScore scores;
        scores.Reset(static_cast<std::size_t>(count));
        std::vector<double> plain(static_cast<std::size_t>(count), LowestScore::None);
        for (int step = 0; step < 300; ++step) {
            const int place = numbers.Below(count);
            plain[place] = numbers.Below(4) == 0 ? LowestScore::None : numbers.Below(6);
            scores.Set(static_cast<std::size_t>(place), plain[place]);
            const auto lowest = std::min_element(plain.begin(), plain.end());
            ASSERT_EQ(scores.Find(), *lowest == LowestScore::None ? -1 : lowest - plain.begin());
        }
    }
}

}  // namespace
}  // namespace KM
