#include "Facet/StripLoops.h"

#include <gtest/gtest.h>

#include <limits>

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

TEST(SlotTriangles, AreAllAliveOrAllDead) {
    EXPECT_TRUE(SlotTriangles::Of({}));
    EXPECT_TRUE(SlotTriangles::Of(EdgesWithNext({1, 2, 0, -1, -1, -1, 7, 8, 6})));
    EXPECT_FALSE(SlotTriangles::Of(EdgesWithNext({1, 2, 0, -1})));
    EXPECT_FALSE(SlotTriangles::Of(EdgesWithNext({1, -1, 0})));
    EXPECT_FALSE(SlotTriangles::Of(EdgesWithNext({2, 0, 1})));
    EXPECT_FALSE(SlotTriangles::Of(EdgesWithNext({0, 2, 1})));
    EXPECT_FALSE(SlotTriangles::Of(EdgesWithNext({1, 2, 0, 4, 5, 0})));
}

/// What the cutter can ask about an edge.
template <class Loops>
std::vector<int> Answers(const Loops& loops, int e) {
    std::vector<int> answers{loops.Count(), loops.IsUntaken(e), loops.CanTake(e), loops.Node(e)};
    if (loops.CanTake(e)) {
        const int twin = loops.Twin(e);
        answers.insert(answers.end(), {loops.Next(e), loops.Previous(e), loops.Third(e), loops.IsUntaken(twin),
                                       loops.CanTake(twin), loops.IsUntaken(twin) ? twin : -1});
    }
    return answers;
}

TEST(SlotTriangles, AnswerAsAnyLoopsDo) {
    std::vector<Edge> edges = EdgesWithNext({1, 2, 0, 4, 5, 3, -1, -1, -1});
    const int twins[] = {4, 6, -2, 9, 0, std::numeric_limits<int>::max(), 1, -1, 2};
    for (std::size_t e = 0; e < edges.size(); ++e) edges[e].TE = twins[e];
    SlotTriangles triangles = *SlotTriangles::Of(edges);
    AnyLoops loops(edges);
    const auto expectSame = [&] {
        for (int e = 0; e < loops.Count(); ++e) EXPECT_EQ(Answers(triangles, e), Answers(loops, e)) << "edge " << e;
    };
    expectSame();
    triangles.Take(4);
    loops.Take(4);
    EXPECT_FALSE(loops.IsUntaken(3));
    expectSame();
    triangles.GiveBack(5);
    loops.GiveBack(5);
    EXPECT_TRUE(loops.CanTake(3));
    expectSame();
}

}  // namespace
}  // namespace KM
