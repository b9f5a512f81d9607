#include "SurfaceDistance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>

#include "Mesh/Core/Construction.h"
#include "Support/Meshes.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

SurfaceDistance Of(const PIN& mesh) {
    LongTask task("Testing", 1.0);
    return SurfaceDistance(mesh, task);
}

TEST(SurfaceDistance, IsInfiniteFromNothing) {
    EXPECT_EQ(Of(PIN()).To({1, 2, 3}), std::numeric_limits<double>::infinity());
}

TEST(SurfaceDistance, IsThatToTheNearestOfFaceEdgeAndCorner) {
    const SurfaceDistance surface = Of(KM::Test::RightTriangle());
    EXPECT_EQ(surface.To({0.25, 0.25, 2.0}), 2.0);
    EXPECT_EQ(surface.To({0.25, 0.25, 0.0}), 0.0);
    EXPECT_EQ(surface.To({0.5, -3.0, 4.0}), 5.0);
    EXPECT_EQ(surface.To({-3.0, -4.0, 0.0}), 5.0);
    EXPECT_NEAR(surface.To({1.0, 1.0, 0.0}), std::sqrt(0.5), 1e-15);
}

TEST(SurfaceDistance, TakesATriangleWithoutAreaAsItsEdges) {
    const SurfaceDistance needle = Of(KM::Test::FromFacets({{{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, {0, 1, 2}}));
    EXPECT_EQ(needle.To({1.5, 3.0, 0.0}), 3.0);
}

/// A cube has a distance that can be told without its triangles.
TEST(SurfaceDistance, IsExactRoundACubeOfManyTriangles) {
    KM::Test::Soup soup;
    const PIN grid = KM::Test::Grid(20);
    for (int side = 0; side < 6; ++side)
        for (const Edge& edge : grid.edges) {
            const Point p = grid.points[static_cast<std::size_t>(edge.P0)] / 20.0;
            const double height = side % 2 == 0 ? 0.0 : 1.0;
            soup.push_back(side / 2 == 0   ? Point(height, p.X, p.Y)
                           : side / 2 == 1 ? Point(p.X, height, p.Y)
                                           : Point(p.X, p.Y, height));
        }
    PIN cube;
    AddTriangles_1(cube, soup);
    const SurfaceDistance surface = Of(cube);
    std::mt19937 random(1);
    std::uniform_real_distribution<double> place(-1.0, 2.0);
    for (int i = 0; i < 2000; ++i) {
        const Point p(place(random), place(random), place(random));
        const auto outside = [](double x) { return std::max({-x, x - 1.0, 0.0}); };
        const Point beyond(outside(p.X), outside(p.Y), outside(p.Z));
        const double inside = std::min({p.X, 1 - p.X, p.Y, 1 - p.Y, p.Z, 1 - p.Z});
        const double expected = LengthSquared(beyond) > 0.0 ? Length(beyond) : inside;
        EXPECT_NEAR(surface.To(p), expected, 1e-12);
        if (expected > 0.1) EXPECT_NEAR(surface.To(p, 0.1), expected, 1e-12);
        else EXPECT_LE(surface.To(p, 0.1), 0.1);
    }
}

}  // namespace
}  // namespace KM::Tool
