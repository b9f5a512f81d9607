#include "Facet/StripCutter.h"

#include <gtest/gtest.h>

#include <limits>
#include <utility>

namespace KM {
namespace {

std::vector<Edge> EdgesWithNext(const std::vector<int>& next) {
    std::vector<Edge> edges;
    for (const int ne : next) edges.push_back({ne, -1, static_cast<int>(edges.size())});
    return edges;
}

std::vector<int> Previous(const std::vector<int>& next) { return PreviousOnLoops(EdgesWithNext(next)); }

TEST(PreviousOnLoops, TurnsLoopsOfAnyLengthRound) {
    EXPECT_EQ(Previous({}), std::vector<int>());
    EXPECT_EQ(Previous({1, 2, 0}), (std::vector<int>{2, 0, 1}));
    EXPECT_EQ(Previous({0, 2, 1, 4, 5, 6, 3}), (std::vector<int>{0, 2, 1, 6, 3, 4, 5}));
    EXPECT_EQ(Previous({2, 0, 1}), (std::vector<int>{1, 2, 0}));
}

TEST(PreviousOnLoops, LeavesOutWhatOnlyLeadsToALoop) {
    EXPECT_EQ(Previous({1, 2, 3, 1}), (std::vector<int>{-1, 3, 1, 2}));
    EXPECT_EQ(Previous({1, 0, 3, 0}), (std::vector<int>{1, 0, -1, -1}));
}

TEST(PreviousOnLoops, LeavesOutWhatLeadsNowhere) {
    constexpr int far = std::numeric_limits<int>::max();
    EXPECT_EQ(Previous({-1, 0, 1}), (std::vector<int>{-1, -1, -1}));
    EXPECT_EQ(Previous({3, far, -7}), (std::vector<int>{-1, -1, -1}));
}

TEST(PreviousOnLoops, TakesLinearTimeOnOneLongWay) {
    std::vector<int> next(1000000);
    for (std::size_t i = 0; i < next.size(); ++i) next[i] = static_cast<int>(i) - 1;
    EXPECT_EQ(Previous(next), std::vector<int>(next.size(), -1));
    next[0] = static_cast<int>(next.size()) - 1;
    EXPECT_EQ(Previous(next)[0], 1);
}

/// The nodes of all strips, strip after strip.
template <class Mesh>
std::vector<std::vector<int>> Cut(const Mesh& mesh) {
    std::vector<std::vector<int>> strips;
    StripCutter(mesh).Cut(
        [&](std::span<const int> nodes, std::int32_t) { strips.emplace_back(nodes.begin(), nodes.end()); });
    return strips;
}

TEST(StripCutter, ServesBothKindsOfMesh) {
    PIN mesh;
    mesh.edges = EdgesWithNext({1, 2, 0});
    SPIN single;
    single.edges = mesh.edges;
    EXPECT_EQ(Cut(mesh), (std::vector<std::vector<int>>{{0, 1, 2}}));
    EXPECT_EQ(Cut(single), Cut(mesh));
}

//  Of a quad one strip takes three edges, and the fourth begins a strip again; this is how it has always been.
TEST(StripCutter, TakesThreeEdgesOfALongerLoopAtATime) {
    PIN mesh;
    mesh.edges = EdgesWithNext({1, 2, 3, 0});
    EXPECT_EQ(Cut(mesh), (std::vector<std::vector<int>>{{0, 1, 2}, {2, 3, 0}}));
}

}  // namespace
}  // namespace KM
