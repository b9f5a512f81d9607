#include "Geometry/NodeTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <vector>

#include "Support/Numbers.h"

namespace KM {
namespace {

TEST(NodeTable, CountsPairsAndTriplesInAnyOrder) {
    NodeTable table;
    table.Add(NodeTable::Pair(7, 3));
    table.Add(NodeTable::Triple(5, 9, 2));
    EXPECT_EQ(table.Count(NodeTable::Pair(3, 7)), 1);
    EXPECT_EQ(table.Count(NodeTable::Pair(7, 7)), 0);
    for (const auto& t : {NodeTable::Triple(2, 5, 9), NodeTable::Triple(9, 5, 2), NodeTable::Triple(2, 9, 5)})
        EXPECT_EQ(table.Count(t), 1);
    EXPECT_EQ(table.Count(NodeTable::Pair(2, 5)), 0);
}

TEST(NodeTable, CountsAsAMapDoes) {
    NodeTable table;
    std::map<std::vector<int>, int> plain;
    KM::Test::Numbers random(1);
    for (int i = 0; i < 20000; ++i) {
        std::vector<int> nodes(2 + static_cast<std::size_t>(i % 2));
        for (int& node : nodes) node = random.Below(60);
        const NodeTable::Key key =
            nodes.size() == 2 ? NodeTable::Pair(nodes[0], nodes[1]) : NodeTable::Triple(nodes[0], nodes[1], nodes[2]);
        std::sort(nodes.begin(), nodes.end());
        ASSERT_EQ(table.Count(key), plain[nodes]);
        table.Add(key);
        ASSERT_EQ(table.Count(key), ++plain[nodes]);
    }
}

}  // namespace
}  // namespace KM
