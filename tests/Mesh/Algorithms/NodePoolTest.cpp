#include "Mesh/Algorithms/NodePool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>

#include "Support/Numbers.h"

namespace KM::Test {
namespace {

TEST(NodePool, GivenBackServesNext) {
    NodePool pool;
    void* const first = pool.Take(64);
    void* const second = pool.Take(64);
    EXPECT_NE(first, second);
    std::memset(first, 0xFF, 64);
    pool.GiveBack(first);
    EXPECT_EQ(pool.Take(64), first);
}

TEST(NodePool, KeepsATreeOverManyBlocks) {
    NodePool pool;
    std::set<int, std::less<>, PoolAllocator<int>> tree{PoolAllocator<int>(pool)};
    std::set<int> plain;
    Numbers numbers(1);
    for (int i = 0; i < 20000; ++i) {
        const int key = numbers.Below(3000);
        if (numbers.Below(3) == 0) {
            EXPECT_EQ(tree.erase(key), plain.erase(key));
        } else {
            EXPECT_EQ(tree.insert(key).second, plain.insert(key).second);
        }
    }
    EXPECT_TRUE(std::equal(tree.begin(), tree.end(), plain.begin(), plain.end()));
}

}  // namespace
}  // namespace KM::Test
