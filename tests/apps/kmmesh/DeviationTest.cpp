#include "Deviation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "Support/Meshes.h"

namespace KM::Tool {
namespace {

TEST(DeviationOf, IsNoneFromItself) {
    const PIN ball = KM::Test::BumpySphere(12);
    const Deviation deviation = DeviationOf(ball, ball);
    EXPECT_NEAR(deviation.ofNodes, 0.0, 1e-12);
    EXPECT_NEAR(deviation.ofEdges, 0.0, 1e-12);
}

//  3 - 2     node 2 of the first surface is lifted; the second one has the other diagonal
//  | \ |
//  0 - 1
TEST(DeviationOf, LooksBothWays) {
    const PIN lifted = KM::Test::FromFacets({{{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}}, {0, 1, 3, 1, 2, 3}});
    const PIN flat = KM::Test::UnitSquare();
    EXPECT_EQ(DeviationOf(lifted, flat).ofNodes, 1.0);
    PIN other = lifted;
    other = KM::Test::FromFacets({other.points, {0, 1, 2, 0, 2, 3}});
    EXPECT_NEAR(DeviationOf(lifted, other).ofNodes, 0.0, 1e-15);
    EXPECT_NEAR(DeviationOf(lifted, other).ofEdges, std::sqrt(1.0 / 6.0), 0.15);
    EXPECT_GT(DeviationOf(lifted, other).ofEdges, 0.2);
}

TEST(DeviationOf, IsInfiniteFromNothingAndPassesOverNodesWithoutEdge) {
    EXPECT_EQ(DeviationOf(KM::Test::Cube(), PIN()).ofNodes, std::numeric_limits<double>::infinity());
    PIN loose = KM::Test::Cube();
    loose.points.push_back({9, 9, 9});
    loose.p2e.push_back(-1);
    EXPECT_EQ(DeviationOf(loose, KM::Test::Cube()).ofNodes, 0.0);
}

}  // namespace
}  // namespace KM::Tool
