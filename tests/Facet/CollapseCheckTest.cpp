#include "Facet/CollapseCheck.h"

#include <gtest/gtest.h>

#include <limits>

#include "Facet/PlainLevels.h"

namespace KM {
namespace {

using namespace KM::Test;
using P = TPoint<double>;

int EdgeBetween(const PIN& mesh, int start, int end) {
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
        if (mesh.edges[e].P0 == start && mesh.edges[mesh.edges[e].NE].P0 == end) return e;
    return -1;
}

//  3 ----- 2
//  | \   / |      node 4 at `middle`, inside a square of side 4
//  |   4   |
//  | /   \ |
//  0 ----- 1
PIN Envelope(P middle) {
    return PlainFacetMesh(
        {{P(0, 0, 0), P(4, 0, 0), P(4, 4, 0), P(0, 4, 0), middle}, {0, 1, 4, 1, 2, 4, 2, 3, 4, 3, 0, 4}});
}

TEST(MayCollapse, AllowsAnInnerNodeToGo) {
    const PIN mesh = Envelope(P(2, 2, 0));
    EXPECT_TRUE(MayCollapse(mesh, EdgeBetween(mesh, 4, 1), false));
}

TEST(MayCollapse, KeepsABoundaryNodeFromGoingInside) {
    const PIN mesh = Envelope(P(2, 2, 0));
    EXPECT_FALSE(MayCollapse(mesh, EdgeBetween(mesh, 1, 4), false));
}

TEST(MayCollapse, RefusesToLoseMoreThanHalfOfAHeight) {
    // Onto node 1 the triangle above 3-0 grows from 1 to 4, and back it would shrink.
    const auto allows = [](double x) {
        const PIN mesh = PlainFacetMesh({{P(0, 0, 0), P(4, 0, 0), P(4, 4, 0), P(0, 4, 0), P(2, 2, 0), P(x, 2, 0)},
                                         {0, 1, 4, 1, 5, 4, 5, 2, 4, 2, 3, 4, 3, 0, 4, 1, 2, 5}});
        return MayCollapse(mesh, EdgeBetween(mesh, 4, 5), false);
    };
    EXPECT_TRUE(allows(3.0));
    EXPECT_TRUE(allows(1.0));    // half of the height over 3-0 is left
    EXPECT_FALSE(allows(0.75));  // less than half
    EXPECT_FALSE(allows(-1.0));  // turned over
}

TEST(MayCollapse, AllowsWhatHasNoLengthWhateverTheFan) {
    // Node 5 lies on node 4, but its triangles hang over.
    const PIN mesh = PlainFacetMesh({{P(0, 0, 0), P(4, 0, 0), P(4, 4, 0), P(0, 4, 0), P(-2, 2, 0), P(-2, 2, 1e-13)},
                                     {0, 1, 4, 1, 5, 4, 5, 2, 4, 2, 3, 4, 3, 0, 4, 1, 2, 5}});
    EXPECT_TRUE(MayCollapse(mesh, EdgeBetween(mesh, 4, 5), false));
    // A boundary node must stay all the same.
    PIN onBoundary = Envelope(P(4, 0, 0));
    EXPECT_FALSE(MayCollapse(onBoundary, EdgeBetween(onBoundary, 1, 4), false));
}

//  3 - 4 - 5
//  |  /|\  |      0-1-2 is a straight boundary
//  0 - 1 - 2
PIN Strip(P third, P fifth) {
    return PlainFacetMesh(
        {{P(0, 0, 0), P(1, 0, 0), P(2, 0, 0), third, P(1, 1, 0), fifth}, {0, 1, 4, 1, 2, 4, 0, 4, 3, 2, 5, 4}});
}

TEST(MayCollapse, SlidesABoundaryNodeAlongTheBoundary) {
    const PIN sheet = Strip(P(0, 1, 0), P(2, 1, 0));
    EXPECT_TRUE(MayCollapse(sheet, EdgeBetween(sheet, 0, 1), true));   // 1 goes
    EXPECT_TRUE(MayCollapse(sheet, EdgeBetween(sheet, 1, 2), false));  // 1 goes
    // A corner may go too, where the triangles allow it: only its price protects it.
    EXPECT_TRUE(MayCollapse(sheet, EdgeBetween(sheet, 0, 1), false));
    EXPECT_TRUE(MayCollapse(sheet, EdgeBetween(sheet, 1, 2), true));
}

TEST(MayCollapse, TurnsNoTriangleOverAlongTheBoundary) {
    // Sliding 0, or 2, onto 1 crosses the line from 4 to 3, or to 5.
    const PIN sheet = Strip(P(0.5, -1, 0), P(1.5, -1, 0));
    EXPECT_FALSE(MayCollapse(sheet, EdgeBetween(sheet, 0, 1), false));
    EXPECT_FALSE(MayCollapse(sheet, EdgeBetween(sheet, 1, 2), true));
}

TEST(MayCollapse, AllowsWhereNumbersFail) {
    PIN mesh = Envelope(P(2, 2, 0));
    mesh.points[4].X = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(MayCollapse(mesh, EdgeBetween(mesh, 4, 1), false));
}

}  // namespace
}  // namespace KM
