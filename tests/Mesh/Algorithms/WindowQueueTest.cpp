#include "Mesh/Algorithms/WindowQueue.h"

#include <gtest/gtest.h>

#include <vector>

namespace KM::Test {
namespace {

/// Keys, detours, edges and positions in this order, as far as the tolerance tells them apart.
const GeodesicWindow Ordered[] = {
    {0.5, 1.0, 1.0, 2.0, 0.0, 1, 9},        {0.6, 1.0, 1.0 + 5e-9, 2.0, 0.0, 1, 9}, {0.4, 1.0, 0.5, 2.0, 0.5, 1, 2},
    {0.0, 1.0, 2.0, 0.5 - 5e-9, 0.5, 1, 3}, {0.0, 1.0, 1.5, 3.0, 0.0, 1, 0},
};

TEST(WindowQueue, NearestComesFirst) {
    WindowQueue queue;
    for (const int slot : {3, 1, 4, 0, 2}) queue.Push(Ordered[slot], slot);
    std::vector<int> order;
    while (!queue.IsEmpty()) order.push_back(queue.Pop());
    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
}

TEST(WindowQueue, EquivalentWindowsStandInItOnce) {
    WindowQueue queue;
    GeodesicWindow w = Ordered[0];
    queue.Push(w, 0);
    w.d0 += 5e-9;
    w.b1 = 3.0;
    queue.Push(w, 1);
    EXPECT_EQ(queue.Size(), 1u);
    EXPECT_TRUE(queue.Remove(w, 1)) << "goes by its place in the order, not by its slot";
    EXPECT_TRUE(queue.IsEmpty());
    EXPECT_FALSE(queue.Remove(w, 1));
}

TEST(WindowQueue, VisitsAll) {
    WindowQueue queue;
    for (int slot = 0; slot < 5; ++slot) queue.Push(Ordered[slot], slot);
    int sum = 0;
    queue.ForEach([&](const QueuedWindow& queued) { sum += queued.slot; });
    EXPECT_EQ(sum, 10);
}

}  // namespace
}  // namespace KM::Test
