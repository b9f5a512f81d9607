#include "Mesh/Algorithms/SurfaceEdges.h"

#include <gtest/gtest.h>

#include "Mesh/Core/Fans.h"
#include "Support/BrokenMeshes.h"
#include "Support/Meshes.h"

namespace KM::Test {
namespace {

TEST(SurfaceEdges, PairsGoByTheLowerEdge) {
    const PIN mesh = UnitSquare();
    const SurfaceEdges surface(mesh);
    const int e = EdgeOfSEVertices(mesh, 1, 3);
    const int t = mesh.edges[e].TE;
    ASSERT_NE(t, -1);
    EXPECT_EQ(surface.Canonical(e), std::min(e, t));
    EXPECT_EQ(surface.Canonical(t), std::min(e, t));
    EXPECT_EQ(surface.Twin(std::min(e, t)), std::max(e, t));
    EXPECT_DOUBLE_EQ(surface.Length(std::min(e, t)), std::sqrt(2.0));
    const int orphan = EdgeOfSEVertices(mesh, 0, 1);
    EXPECT_EQ(surface.Canonical(orphan), orphan);
    EXPECT_EQ(surface.Twin(orphan), -1);
    EXPECT_EQ(surface.Canonical(-1), -1);
    EXPECT_EQ(surface.Canonical(6), -1);
    EXPECT_DOUBLE_EQ(surface.LongestLength(), std::sqrt(2.0));
    EXPECT_EQ(SurfaceEdges(PIN{}).LongestLength(), 0.0);
}

TEST(SurfaceEdges, PolygonsAreHoles) {
    const PIN mesh = Dissolved(Grid(4), 1, 3);
    const SurfaceEdges surface(mesh);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        const bool isTriangle = mesh.edges[e].NE != -1 && mesh.edges[mesh.edges[mesh.edges[e].NE].NE].NE == e;
        EXPECT_EQ(surface.Canonical(e) != -1, isTriangle) << "edge " << e;
    }
}

TEST(SurfaceEdges, UnsoundLinksAreNotSeen) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = Broken(RandomMesh(seed, 30), seed);
        const SurfaceEdges surface(mesh);
        const auto isNode = [&](int node) { return node >= 0 && node < static_cast<int>(mesh.points.size()); };
        for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
            const int c = surface.Canonical(e);
            if (c == -1) continue;
            EXPECT_TRUE(isNode(mesh.edges[e].P0));
            EXPECT_EQ(surface.Next(surface.Previous(e)), e);
            EXPECT_EQ(surface.Canonical(c), c);
            EXPECT_TRUE(c == e || surface.Twin(c) == e);
        }
    }
}

}  // namespace
}  // namespace KM::Test
