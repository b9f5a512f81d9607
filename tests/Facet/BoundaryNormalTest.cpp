#include "Facet/BoundaryNormal.h"

#include <gtest/gtest.h>

#include "Facet/PlainLevels.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace KM::Test;
using P = TPoint<double>;

TEST(BoundaryNormal, PointsAwayFromTheThirdNode) {
    const PIN mesh = RightTriangle();
    EXPECT_EQ(BoundaryNormal(mesh, 0), P(0, -1, 0));
    EXPECT_EQ(BoundaryNormal(mesh, 2), P(-1, 0, 0));
    const P slanted = BoundaryNormal(mesh, 1);
    EXPECT_NEAR(slanted.X, std::sqrt(0.5), 1e-15);
    EXPECT_NEAR(slanted.Y, std::sqrt(0.5), 1e-15);
}

TEST(BoundaryNormal, OfANullEdgePointsAwayFromTheThirdNode) {
    const PIN mesh = PlainFacetMesh({{P(1, 0, 0), P(1, 0, 0), P(1, 0, 4)}, {0, 1, 2}});
    EXPECT_EQ(BoundaryNormal(mesh, 0), P(0, 0, -1));
    const PIN point = PlainFacetMesh({{P(1, 0, 0), P(1, 0, 0), P(1, 0, 0)}, {0, 1, 2}});
    EXPECT_EQ(BoundaryNormal(point, 0), P(0, 0, 0));
}

//  A needle a, b, c on the X axis, in which c lies at `cx`, with a neighbour below a-b, and others across b-c and c-a.
PIN NeedleWithNeighbours(double cx, bool withTwin) {
    IndexedFacets facets{{P(0, 0, 0), P(4, 0, 0), P(cx, 0, 0), P(1, -2, 0), P(3, 0, 5), P(1, 7, 0)},
                         {0, 1, 2, 2, 1, 4, 0, 2, 5}};
    if (withTwin) facets.triples.insert(facets.triples.end(), {1, 0, 3});
    return PlainFacetMesh(facets);
}

TEST(BoundaryNormal, OfAFlatTriangleIsThatOfItsTwinReversed) {
    EXPECT_EQ(BoundaryNormal(NeedleWithNeighbours(2, true), 0), P(0, -1, 0));
}

TEST(BoundaryNormal, OfAFlatBoundaryTriangleIsBorrowed) {
    // c ahead of a, or close to b: from across c-a, whose third node is above; c behind a: from across b-c, reversed.
    EXPECT_EQ(BoundaryNormal(NeedleWithNeighbours(2, false), 0), P(0, -1, 0));
    EXPECT_EQ(BoundaryNormal(NeedleWithNeighbours(4.5, false), 0), P(0, -1, 0));
    EXPECT_EQ(BoundaryNormal(NeedleWithNeighbours(-2, false), 0), P(0, 0, 1));
}

TEST(BoundaryNormal, IsNullWhereNobodyLends) {
    for (const double cx : {2.0, 4.5, -2.0}) {
        const PIN mesh = PlainFacetMesh({{P(0, 0, 0), P(4, 0, 0), P(cx, 0, 0)}, {0, 1, 2}});
        EXPECT_EQ(BoundaryNormal(mesh, 0), P(0, 0, 0));
    }
    // The twin is flat too.
    const PIN both = PlainFacetMesh({{P(0, 0, 0), P(4, 0, 0), P(2, 0, 0), P(1, 0, 0)}, {0, 1, 2, 1, 0, 3}});
    EXPECT_EQ(BoundaryNormal(both, 0), P(0, 0, 0));
}

}  // namespace
}  // namespace KM
