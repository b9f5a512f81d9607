#include "Facet/StripCutter.h"

#include <gtest/gtest.h>

#include "Support/Meshes.h"

namespace KM {
namespace {

using Strips = std::vector<std::pair<std::vector<int>, int>>;

/// Collects the strips, each with its kind.
struct Collect {
    Strips* strips;
    void operator()(std::span<const int> nodes, int kind) { strips->push_back({{nodes.begin(), nodes.end()}, kind}); }
};

Strips Cut(const std::vector<Edge>& edges) {
    Strips strips;
    CutStrips(edges, Collect{&strips});
    return strips;
}

Strips CutAsAnyLoops(const std::vector<Edge>& edges) {
    Strips strips;
    Collect collect{&strips};
    AnyLoops loops(edges);
    StripCutter(loops).Cut(collect);
    return strips;
}

TEST(CutStrips, OfTrianglesInSlotsIsAsOfAnyLoops) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = KM::Test::RandomMesh(seed, 60);
        for (std::size_t e = seed % 7; e + 3 <= mesh.edges.size(); e += 12)
            for (std::size_t k = 0; k < 3; ++k) mesh.edges[e - e % 3 + k].NE = -1;
        ASSERT_TRUE(SlotTriangles::Of(mesh.edges));
        EXPECT_EQ(Cut(mesh.edges), CutAsAnyLoops(mesh.edges));
    }
}

TEST(CutStrips, ReadsTrianglesInOtherSlotsToo) {
    const std::vector<Edge> edges{{2, -1, 7}, {0, -1, 8}, {1, -1, 9}};
    EXPECT_EQ(Cut(edges), (Strips{{{7, 9, 8}, 1}}));
}

//  Of a quad one strip takes three edges, and the fourth begins a strip again; this is how it has always been.
TEST(CutStrips, TakesThreeEdgesOfALongerLoopAtATime) {
    const std::vector<Edge> quad{{1, -1, 0}, {2, -1, 1}, {3, -1, 2}, {0, -1, 3}};
    EXPECT_EQ(Cut(quad), (Strips{{{0, 1, 2}, 1}, {{2, 3, 0}, 1}}));
}

}  // namespace
}  // namespace KM
