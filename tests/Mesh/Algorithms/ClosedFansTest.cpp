#include "Mesh/Algorithms/ClosedFans.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "Mesh/Core/Construction.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;

const P Untouched(7, 7, 7);

/// The fans at all nodes, each by the last edge that starts there.
struct Fans {
    Fans(const PIN& mesh, bool isWeighted)
        : normals(mesh.points.size(), Untouched), isTaken(mesh.points.size(), false) {
        std::vector<int> last(mesh.points.size(), -1);
        for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) last[mesh.edges[e].P0] = e;
        ClosedFans fans(mesh, isWeighted, normals);
        for (std::size_t node = 0; node < last.size(); ++node) isTaken[node] = fans.Take(last[node]);
        fans.Finish();
    }

    std::vector<P> normals;
    std::vector<bool> isTaken;
};

/// A closed cone: node 0 is its tip, with so many triangles.
PIN Cone(int sides) {
    Soup soup;
    const auto rim = [&](int k) {
        const double angle = 2.0 * std::numbers::pi * (k % sides) / sides;
        return P(std::cos(angle), std::sin(angle), 0);
    };
    for (int k = 0; k < sides; ++k) soup.insert(soup.end(), {P(0, 0, 1), rim(k), rim(k + 1)});
    PIN mesh;
    AddTriangles_1(mesh, soup);
    return mesh;
}

int TipOf(const PIN& mesh) {
    for (std::size_t node = 0; node < mesh.points.size(); ++node)
        if (mesh.points[node].Z == 1.0) return static_cast<int>(node);
    return -1;
}

TEST(ClosedFans, GiveTheNormalsOfASphereThatFillsManyBlocks) {
    const PIN sphere = Sphere(12);
    const Fans fans(sphere, false);
    ASSERT_GT(sphere.points.size(), 4 * VectorBlock::Size);
    for (std::size_t node = 0; node < sphere.points.size(); ++node) {
        EXPECT_TRUE(fans.isTaken[node]);
        EXPECT_NEAR(Length(fans.normals[node] - sphere.points[node]), 0.0, 0.05) << node;
        EXPECT_NEAR(Length(fans.normals[node]), 1.0, 1e-15);
    }
}

TEST(ClosedFans, WeighByTheAreaInXY) {
    // The octahedron's triangles weigh the same; so do those of the cube's top, and its sides weigh nothing.
    const PIN octahedron = Sphere(1);
    const Fans round(octahedron, true);
    for (std::size_t node = 0; node < octahedron.points.size(); ++node)
        EXPECT_NEAR(Length(round.normals[node] - octahedron.points[node]), 0.0, 1e-15) << node;
    const PIN cube = Cube();
    const Fans square(cube, true);
    for (std::size_t node = 0; node < cube.points.size(); ++node)
        EXPECT_EQ(Length(square.normals[node] - P(0, 0, cube.points[node].Z > 0.5 ? 1 : -1)), 0.0) << node;
}

TEST(ClosedFans, LeaveTheBoundaryAlone) {
    const PIN grid = Grid(2);
    const Fans fans(grid, false);
    for (std::size_t node = 0; node < grid.points.size(); ++node) {
        const bool isInside = grid.points[node].X == 1.0 && grid.points[node].Y == 1.0;
        EXPECT_EQ(fans.isTaken[node], isInside) << node;
        EXPECT_EQ(Length(fans.normals[node] - (isInside ? P(0, 0, 1) : Untouched)), 0.0) << node;
    }
}

TEST(ClosedFans, LeaveNodesWithoutWeightAlone) {
    PIN upright = Grid(2);
    for (P& p : upright.points) p = P(p.X, 0, p.Y);
    const Fans fans(upright, true);
    int taken = 0;
    for (std::size_t node = 0; node < upright.points.size(); ++node) {
        taken += fans.isTaken[node];
        EXPECT_EQ(Length(fans.normals[node] - Untouched), 0.0) << node;
    }
    EXPECT_EQ(taken, 1);
}

TEST(ClosedFans, TakeFansOfUpTo24Triangles) {
    for (const int sides : {3, 24, 25, 60}) {
        const PIN cone = Cone(sides);
        const Fans fans(cone, false);
        const int tip = TipOf(cone);
        EXPECT_EQ(fans.isTaken[tip], sides <= 24) << sides;
        EXPECT_NEAR(Length(fans.normals[tip] - (sides <= 24 ? P(0, 0, 1) : Untouched)), 0.0, 1e-14) << sides;
    }
}

TEST(ClosedFans, LeaveFansWithWrongLinksAlone) {
    const PIN sound = Sphere(1);
    for (const int wrong : {-1, -2, 1000}) {
        PIN mesh = sound;
        mesh.edges[0].TE = wrong;
        const int node = mesh.edges[0].P0;
        EXPECT_FALSE(Fans(mesh, false).isTaken[node]) << wrong;
    }
}

}  // namespace
}  // namespace KM
