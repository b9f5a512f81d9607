#include "Facet/CollapseQueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace KM {
namespace {

std::vector<int> Emptied(CollapseQueue& queue, int bucket) {
    std::vector<int> edges;
    for (int e = queue.Oldest(bucket); e != -1; e = queue.Oldest(bucket)) {
        edges.push_back(e);
        queue.Remove(e);
    }
    return edges;
}

TEST(CollapseQueue, ThresholdsAreSquaresOnAGrowingScale) {
    const std::vector<double> tolerances{0.5, 2.0, -1.0};
    const CollapseQueue queue(0, tolerances);
    const double second = 1.3 * 1.3;
    const double third = second * 1.3;
    ASSERT_EQ(queue.BucketCount(), 4);
    EXPECT_EQ(queue.Threshold(0), (0.5 * 1.3) * (0.5 * 1.3));
    EXPECT_EQ(queue.Threshold(1), (2.0 * second) * (2.0 * second));
    EXPECT_EQ(queue.Threshold(2), third * third);
    EXPECT_EQ(queue.Threshold(3), 1e30);
}

TEST(CollapseQueue, NothingWaitsAtFirst) {
    const CollapseQueue queue(5, std::vector<double>{1.0});
    EXPECT_EQ(queue.Oldest(0), -1);
    EXPECT_EQ(queue.Oldest(1), -1);
}

TEST(CollapseQueue, CostsBelowAThresholdGoIntoItsBucket) {
    CollapseQueue queue(6, std::vector<double>{1.0, 10.0});
    const double costs[] = {
        0.0, queue.Threshold(0), 100.0, queue.Threshold(1), 1e40, std::numeric_limits<double>::quiet_NaN()};
    for (int e = 0; e < 6; ++e) queue.Move(e, costs[e]);
    EXPECT_EQ(Emptied(queue, 0), std::vector<int>{0});
    EXPECT_EQ(Emptied(queue, 1), (std::vector<int>{1, 2}));
    EXPECT_EQ(Emptied(queue, 2), (std::vector<int>{3, 4, 5}));
}

TEST(CollapseQueue, NothingIsBelowAThresholdOfZero) {
    CollapseQueue queue(1, std::vector<double>{0.0, 1.0});
    queue.Move(0, 0.0);
    EXPECT_EQ(queue.Oldest(0), -1);
    EXPECT_EQ(queue.Oldest(1), 0);
}

TEST(CollapseQueue, UnsortedThresholdsTakeTheFirstThatIsLarger) {
    CollapseQueue queue(2, std::vector<double>{10.0, 0.1, 100.0});
    queue.Move(0, 1e-4);
    queue.Move(1, 1000.0);
    EXPECT_EQ(queue.Oldest(0), 0);
    EXPECT_EQ(queue.Oldest(1), -1);
    EXPECT_EQ(queue.Oldest(2), 1);
}

TEST(CollapseQueue, KeepsTheOrderOfComingAndThePlaceOfThoseThatStay) {
    CollapseQueue queue(5, std::vector<double>{1.0, 10.0});
    for (const int e : {3, 1, 4, 0}) queue.Move(e, 0.5);
    queue.Move(1, 0.7);   // stays
    queue.Move(3, 50.0);  // leaves, and comes back as the last one
    queue.Move(3, 0.5);
    queue.Remove(4);
    queue.Remove(4);
    EXPECT_EQ(Emptied(queue, 0), (std::vector<int>{1, 0, 3}));
}

TEST(CollapseQueue, TheFourthRefusalAddsThePenalty) {
    CollapseQueue queue(1, std::vector<double>{1.0, 10.0});
    queue.SetCost(0, 0.25);
    queue.Move(0, 0.25);
    for (int i = 0; i < 3; ++i) {
        queue.Refuse(0);
        EXPECT_EQ(queue.Cost(0), 0.25);
        EXPECT_EQ(queue.Oldest(0), 0);
    }
    queue.Refuse(0);
    EXPECT_EQ(queue.Cost(0), 0.25 + 1e15);
    EXPECT_EQ(queue.Oldest(0), -1);
    EXPECT_EQ(queue.Oldest(2), 0);
}

TEST(CollapseQueue, MovingForgetsTheRefusalsAlsoWithinABucket) {
    CollapseQueue queue(1, std::vector<double>{1.0});
    queue.Move(0, 0.0);
    for (int i = 0; i < 3; ++i) queue.Refuse(0);
    queue.Move(0, 0.0);
    queue.Refuse(0);
    EXPECT_EQ(queue.Cost(0), 0.0);
}

TEST(CollapseQueue, ARefusedEdgeGoesBehindTheOthers) {
    CollapseQueue queue(3, std::vector<double>{1.0});
    for (const int e : {0, 1, 2}) queue.Move(e, 0.0);
    queue.Refuse(0);
    EXPECT_EQ(Emptied(queue, 0), (std::vector<int>{1, 2, 0}));
}

/// 40 edges that share a bucket, some of them refused before.
CollapseQueue StandingQueue(unsigned seed, double tolerance) {
    std::mt19937 random(seed);
    CollapseQueue queue(40, std::vector<double>{1.0, tolerance, 10.0 * tolerance});
    for (int e = 0; e < 40; ++e) {
        queue.SetCost(e, 10.0 + static_cast<double>(random()) * (e % 3 == 0 ? 1e5 : 0.37));
        queue.Move(e, queue.Cost(e));
    }
    for (int i = static_cast<int>(random() % 100); i > 0 && queue.Oldest(1) != -1; --i) queue.Refuse(queue.Oldest(1));
    return queue;
}

void ExpectAtOnceIsOneByOne(const CollapseQueue& queue, int bucket) {
    CollapseQueue oneByOne = queue;
    CollapseQueue atOnce = queue;
    for (int e = oneByOne.Oldest(bucket); e != -1; e = oneByOne.Oldest(bucket)) oneByOne.Refuse(e);
    ASSERT_TRUE(atOnce.RefuseAll(bucket));
    for (int e = 0; e < 40; ++e) EXPECT_EQ(atOnce.Cost(e), oneByOne.Cost(e)) << "edge " << e;
    for (int other = 0; other < queue.BucketCount(); ++other) EXPECT_EQ(Emptied(atOnce, other), Emptied(oneByOne, other));
}

TEST(CollapseQueue, RefusingAllAtOnceIsRefusingOneByOne) {
    const double tolerances[] = {1e6, 3e7, 1e8, 4e8, 2e9};
    for (unsigned seed = 0; seed < 30; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectAtOnceIsOneByOne(StandingQueue(seed, tolerances[seed % 5]), 1);
    }
}

TEST(CollapseQueue, RefusingAllAtOnceRoundsEachSum) {
    // From 2^68 on a penalty is no multiple of the last bit, and exactly there it is a tie.
    for (const int power : {50, 60, 66, 67, 68, 69, 70, 75, 90, 99}) {
        SCOPED_TRACE(testing::Message() << "round 2 to the " << power);
        const double boundary = std::ldexp(1.0, power);
        CollapseQueue queue(40, std::vector<double>{std::sqrt(boundary + 2e18) / 1.3});
        std::mt19937 random(power);
        for (int e = 0; e < 40; ++e) {
            queue.SetCost(e, std::max(0.1, boundary - 5e8 * static_cast<double>(random())));
            queue.Move(e, queue.Cost(e));
        }
        ExpectAtOnceIsOneByOne(queue, 0);
    }
}

TEST(CollapseQueue, RefusingAllTakesNoTimeAcrossManyPowers) {
    CollapseQueue queue(2, std::vector<double>{7e14});
    queue.Move(0, 0.0);
    ASSERT_TRUE(queue.RefuseAll(0));
    EXPECT_EQ(queue.Oldest(0), -1);
    EXPECT_EQ(queue.Oldest(1), 0);
    EXPECT_GE(queue.Cost(0), queue.Threshold(0));
    EXPECT_LT(queue.Cost(0), queue.Threshold(0) + 2.0 * CollapseQueue::Penalty);
}

TEST(CollapseQueue, RefusingAllGivesUpWhereItWouldTakeForEver) {
    for (const double tolerance : {1e15, std::numeric_limits<double>::infinity()}) {
        CollapseQueue queue(1, std::vector<double>{tolerance});
        queue.Move(0, 5.0);
        EXPECT_FALSE(queue.RefuseAll(0));
        EXPECT_FALSE(queue.RefuseAll(1));
        EXPECT_EQ(queue.Oldest(0), 0);
        EXPECT_EQ(queue.Cost(0), 0.0);
    }
}

TEST(CollapseQueue, NothingLeavesTheLastBucketByRefusals) {
    CollapseQueue queue(1, std::vector<double>{1.0});
    queue.SetCost(0, 5.0);
    queue.Move(0, 5.0);
    EXPECT_FALSE(queue.RefuseAll(1));
    EXPECT_EQ(queue.Oldest(1), 0);
    EXPECT_EQ(queue.Cost(0), 5.0);
}

}  // namespace
}  // namespace KM
