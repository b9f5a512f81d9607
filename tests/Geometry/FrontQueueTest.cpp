#include "Geometry/FrontQueue.h"

#include <gtest/gtest.h>

#include <vector>

namespace KM {
namespace {

std::vector<int> NodesInOrder(FrontQueue& queue, int deadEdge) {
    std::vector<int> nodes;
    while (const FrontCandidate* first = queue.First([&](int edge) { return edge != deadEdge; })) {
        nodes.push_back(first->node);
        queue.EraseFirst();
    }
    return nodes;
}

TEST(FrontQueue, GivesTheCheapestAndOfEqualsTheFirst) {
    FrontQueue queue(10);
    queue.Add(2.0, 1, 0, 0);
    queue.Add(1.0, 2, 0, 0);
    queue.Add(2.0, 3, 0, 0);
    queue.Add(2.0, 4, 0, 0);
    queue.Add(0.5, 5, 0, 0);
    EXPECT_EQ(NodesInOrder(queue, -1), (std::vector<int>{5, 2, 1, 3, 4}));
}

TEST(FrontQueue, PassesOverWhatWasDropped) {
    FrontQueue queue(10);
    queue.Add(1.0, 1, 0, 0);
    queue.Add(2.0, 2, 7, 0);
    queue.Add(3.0, 3, 0, 0);
    queue.DropNode(1);
    queue.Add(4.0, 1, 0, 0);  // after the drop it counts again
    EXPECT_EQ(NodesInOrder(queue, 7), (std::vector<int>{3, 1}));
}

}  // namespace
}  // namespace KM
