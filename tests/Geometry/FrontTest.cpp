#include "Geometry/Front.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace KM {
namespace {

using P = TPoint<double>;

/// A front over points, with the surface that it makes.
struct Growth {
    Growth(std::vector<P> thePoints, std::vector<std::vector<int>> theNeighbours)
        : points(std::move(thePoints)), neighbours(std::move(theNeighbours)) {}

    void From(int node) {
        Progress::Auto progress("Front");
        front.GrowFrom(node, progress);
    }

    std::vector<P> points;
    std::vector<std::vector<int>> neighbours;
    std::vector<int> triangles;
    Front front{triangles, points, neighbours};
};

const std::vector<P> Tetrahedron{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(0, 0, 1)};
const std::vector<std::vector<int>> AllOthers{{1, 2, 3}, {0, 2, 3}, {0, 1, 3}, {0, 1, 2}};

TEST(Front, GrowsRoundASolidFromTheFirstTwoNeighbours) {
    Growth growth(Tetrahedron, AllOthers);
    growth.From(0);
    ASSERT_EQ(growth.triangles.size(), 12u);
    EXPECT_EQ(std::vector<int>(growth.triangles.begin(), growth.triangles.begin() + 3), (std::vector<int>{0, 1, 2}));
    for (int node = 0; node < 4; ++node) EXPECT_TRUE(growth.front.IsUsed(node)) << node;
}

TEST(Front, DoesNotJoinAUsedNodeThatItDoesNotHold) {
    Growth growth(Tetrahedron, AllOthers);
    growth.front.Use(3);
    growth.From(0);
    EXPECT_EQ(growth.triangles, (std::vector<int>{0, 1, 2}));
}

TEST(Front, GrowsEachSurfaceByItself) {
    Growth growth({P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(9, 0, 0), P(8, 0, 0), P(9, 1, 0)},
                  {{1, 2}, {0, 2}, {0, 1}, {4, 5}, {3, 5}, {3, 4}});
    growth.From(0);
    EXPECT_EQ(growth.triangles, (std::vector<int>{0, 1, 2}));
    EXPECT_FALSE(growth.front.IsUsed(3));
    growth.From(3);
    EXPECT_EQ(growth.triangles, (std::vector<int>{0, 1, 2, 3, 4, 5}));
}

TEST(Front, NeedsTwoNeighboursToStart) {
    const Growth growth(Tetrahedron, {{1, 2}, {0}, {}});
    EXPECT_TRUE(growth.front.HasNeighbours(0));
    EXPECT_FALSE(growth.front.HasNeighbours(1));
    EXPECT_FALSE(growth.front.HasNeighbours(2));
    EXPECT_FALSE(growth.front.HasNeighbours(3));  // the table is too short
}

TEST(Front, StartsNothingWithNodesThatAreNoTriangle) {
    for (const std::vector<int>& first : {std::vector<int>{1, 4}, {-1, 1}, {1, 1}, {0, 1}}) {
        Growth growth(Tetrahedron, {first, {}, {}, {}});
        growth.From(0);
        EXPECT_TRUE(growth.triangles.empty());
        EXPECT_FALSE(growth.front.IsUsed(0));
    }
}

TEST(Front, JoinsWhatCostsTheLeast) {
    // Node 3 makes a small triangle on the edge 1 - 2, node 4 a large one.
    Growth growth({P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(1, 1, 0), P(50, 50, 0)}, {{1, 2}, {3, 4}, {}, {}, {}});
    growth.From(0);
    ASSERT_GE(growth.triangles.size(), 6u);
    EXPECT_EQ(std::count(growth.triangles.begin() + 3, growth.triangles.begin() + 6, 3), 1);
    EXPECT_EQ(std::count(growth.triangles.begin() + 3, growth.triangles.begin() + 6, 4), 0);
}

}  // namespace
}  // namespace KM
