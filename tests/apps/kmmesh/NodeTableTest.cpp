#include "NodeTable.h"

#include <gtest/gtest.h>

namespace KM::Tool {
namespace {

TEST(NodeTable, HasALineForEachNode) {
    NodeTable table("a.stl: 1 triangle\n  and more\n", "u v");
    table.Add(0, {1, -0.0, 0.1f}, {-1.5, 1.0 / 3.0});
    table.Add(12, {1e30, 2, 3}, {});
    EXPECT_EQ(table.Text(),
              "# a.stl: 1 triangle\n"
              "#   and more\n"
              "# node x y z u v\n"
              "0 1 0 0.100000001 -1.5 0.333333333\n"
              "12 1e+30 2 3\n");
}

}  // namespace
}  // namespace KM::Tool
