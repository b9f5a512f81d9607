#include "Mesh/Core/EdgesMap.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <utility>

#include "Mesh/Core/PlainBuild.h"

namespace KM {
using namespace Test;

namespace {

TEST(EdgesMap, FindsOnlyTheEdgeThatRunsTheOtherWay) {
    EdgesMap map;
    map.AddEdge(7, 1, 2);
    EXPECT_EQ(map.UseEdge(1, 2), -1);
    EXPECT_EQ(map.UseEdge(2, 1), 7);
}

TEST(EdgesMap, GivesEachEdgeOnce) {
    EdgesMap map(4);
    map.AddEdge(7, 1, 2);
    EXPECT_EQ(map.UseEdge(2, 1), 7);
    EXPECT_EQ(map.UseEdge(2, 1), -1);
}

TEST(EdgesMap, GivesTheEdgeThatHasWaitedLongest) {
    EdgesMap map;
    for (const int e : {5, 3, 9}) map.AddEdge(e, 0, 1);
    EXPECT_EQ(map.UseEdge(1, 0), 5);
    map.AddEdge(4, 0, 1);
    EXPECT_EQ(map.UseEdge(1, 0), 3);
    EXPECT_EQ(map.UseEdge(1, 0), 9);
    EXPECT_EQ(map.UseEdge(1, 0), 4);
    EXPECT_EQ(map.UseEdge(1, 0), -1);
}

TEST(EdgesMap, IsEmptyAtFirstWhateverTheCount) {
    for (const int count : {INT_MIN, -1, 0, 1, 1000}) {
        SCOPED_TRACE(count);
        EdgesMap map(count);
        EXPECT_EQ(map.UseEdge(0, 1), -1);
    }
}

TEST(EdgesMap, TakesAnyIndex) {
    EdgesMap map(1);
    map.AddEdge(1, INT_MAX, 0);
    map.AddEdge(2, 0, INT_MAX);
    map.AddEdge(3, -5, INT_MAX - 1);
    EXPECT_EQ(map.UseEdge(INT_MAX, 0), 2);
    EXPECT_EQ(map.UseEdge(0, INT_MAX), 1);
    EXPECT_EQ(map.UseEdge(INT_MAX - 1, -5), 3);
}

TEST(EdgesMap, CopiesAndMovesWithItsEdges) {
    EdgesMap map;
    map.AddEdge(7, 1, 2);
    EdgesMap copy = map;
    EXPECT_EQ(map.UseEdge(2, 1), 7);
    EdgesMap moved = std::move(copy);
    EXPECT_EQ(moved.UseEdge(2, 1), 7);
    map = moved;
    EXPECT_EQ(map.UseEdge(2, 1), -1);
}

TEST(EdgesMap, ServesAgainAfterItsEdgesWereMovedAway) {
    EdgesMap map;
    map.AddEdge(7, 1, 2);
    map.UseEdge(2, 1);
    const EdgesMap moved = std::move(map);
    map.AddEdge(8, 3, 4);
    map.AddEdge(9, 3, 4);
    EXPECT_EQ(map.UseEdge(4, 3), 8);
    EXPECT_EQ(map.UseEdge(4, 3), 9);
}

TEST(EdgesMap, DoesWhatBucketsInOrderDo) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        EdgesMap map(static_cast<int>(random() % 4));
        Plain::EdgesMap plain;
        const unsigned long nodes = 2 + random() % 40;
        for (int step = 0; step < 1000; ++step) {
            const int a = static_cast<int>(random() % nodes);
            const int b = static_cast<int>(random() % nodes);
            if (random() % 2 == 0) {
                map.AddEdge(step, a, b);
                plain.AddEdge(step, a, b);
            } else {
                ASSERT_EQ(map.UseEdge(a, b), plain.UseEdge(a, b)) << "step " << step;
            }
        }
    }
}

// A scan of the edges at a node would need 10^10 steps here.
TEST(EdgesMap, IsQuickWhereAllEdgesMeet) {
    EdgesMap map;
    constexpr int count = 100000;
    for (int i = 1; i <= count; ++i) map.AddEdge(i, i, 0);
    for (int i = count; i >= 1; --i) ASSERT_EQ(map.UseEdge(0, i), i);
    for (int i = 1; i <= count; ++i) map.AddEdge(i, 1, 2);
    for (int i = 1; i <= count; ++i) ASSERT_EQ(map.UseEdge(2, 1), i);
}

}  // namespace
}  // namespace KM
