#include "Mesh/Core/TwinPairing.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "Mesh/Core/PlainBuild.h"

namespace KM {
namespace {

using namespace Test;

/// Triangles without twins, three nodes each.
std::vector<Edge> Loose(const std::vector<int>& nodes) {
    std::vector<Edge> edges;
    for (int e = 0; e < static_cast<int>(nodes.size()); ++e)
        edges.push_back({e % 3 == 2 ? e - 2 : e + 1, -1, nodes[e]});
    return edges;
}

std::vector<int> Twins(const std::vector<Edge>& edges) {
    std::vector<int> twins;
    for (const Edge& edge : edges) twins.push_back(edge.TE);
    return twins;
}

std::vector<int> TwinsOf(const std::vector<int>& nodes, std::size_t first, std::size_t nodeCount) {
    std::vector<Edge> edges = Loose(nodes);
    PairTwins(edges, first, nodeCount);
    return Twins(edges);
}

/// Random triangles of three different nodes.
std::vector<int> RandomTriangles(unsigned seed, int count, unsigned nodes) {
    std::mt19937 random(seed);
    std::vector<int> corners;
    while (static_cast<int>(corners.size()) < 3 * count) {
        const int a = static_cast<int>(random() % nodes);
        const int b = static_cast<int>(random() % nodes);
        const int c = static_cast<int>(random() % nodes);
        if (a != b && b != c && c != a) corners.insert(corners.end(), {a, b, c});
    }
    return corners;
}

TEST(PairTwins, PairsEdgesThatRunASegmentInOppositeDirections) {
    EXPECT_EQ(TwinsOf({0, 1, 2, 2, 1, 3}, 0, 4), (std::vector<int>{-1, 3, -1, 1, -1, -1}));
    EXPECT_EQ(TwinsOf({0, 1, 2, 1, 2, 3}, 0, 4), std::vector<int>(6, -1));
}

TEST(PairTwins, PairsTheFirstWithTheFirstAndLeavesTheRest) {
    // 0 - 1 three times upward, twice downward.
    EXPECT_EQ(TwinsOf({0, 1, 2, 0, 1, 3, 1, 0, 4, 0, 1, 5, 1, 0, 6}, 0, 7),
              (std::vector<int>{6, -1, -1, 12, -1, -1, 0, -1, -1, -1, -1, -1, 3, -1, -1}));
}

TEST(PairTwins, LeavesWhatIsThereBeforeAlone) {
    // The edge from 1 to 2 that is there comes first, and yet the other one gets the twin.
    EXPECT_EQ(TwinsOf({0, 1, 2, 2, 1, 3, 3, 1, 2}, 3, 4), (std::vector<int>{-1, -1, -1, 7, 6, 8, 4, 3, 5}));
    EXPECT_EQ(TwinsOf({0, 1, 2, 2, 1, 3, 0, 3, 1}, 3, 4), (std::vector<int>{-1, -1, -1, -1, 7, -1, -1, 4, -1}));
    EXPECT_EQ(TwinsOf({0, 1, 2}, 3, 3), std::vector<int>(3, -1));
}

TEST(PairTwins, LeavesEdgesAtNodesThatDoNotExistAlone) {
    EXPECT_EQ(TwinsOf({0, 1, 2, 2, 1, 3}, 0, 2), std::vector<int>(6, -1));
    EXPECT_EQ(TwinsOf({0, 1, 9, 1, 0, 9}, 0, 2), (std::vector<int>{3, -1, -1, 0, -1, -1}));
}

TEST(PairTwins, IsThePlainRuleWhereManyEdgesMeet) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        // From segments that are used once to nodes with hundreds of edges.
        const unsigned nodes = 4 + 3 * seed;
        const std::vector<int> corners = RandomTriangles(seed, 600, nodes);
        PIN plain;
        Plain::EdgesMap map;
        for (std::size_t i = 0; i < corners.size(); i += 3)
            Plain::AddTriangle(plain, corners[i], corners[i + 1], corners[i + 2], map);
        EXPECT_EQ(TwinsOf(corners, 0, nodes), Twins(plain.edges)) << "seed " << seed;
    }
}

}  // namespace
}  // namespace KM
