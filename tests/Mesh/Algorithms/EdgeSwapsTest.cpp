#include "Mesh/Algorithms/EdgeSwaps.h"

#include <gtest/gtest.h>

#include "Mesh/Core/Construction.h"
#include "Mesh/Core/Fans.h"
#include "PlainDecimation.h"
#include "Support/BrokenMeshes.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;

//       C
//     /   \      two triangles (A, B, C) and (B, A, D) with the nodes 0 to 3
//    A --- B
//     \   /
//       D
PIN Two(const P& A, const P& B, const P& C, const P& D) { return FromFacets({{A, B, C, D}, {0, 1, 2, 1, 0, 3}}); }

bool IsSwapped(PIN mesh, double tolerance, double ratio = 0.9) {
    SwapEdges(mesh, tolerance, ratio);
    ExpectCompact(mesh);
    return EdgeOfSEVertices(mesh, 2, 3) != -1;
}

// The long diagonal divides it into two halves of 1 to 3; the short one into equal ones.
PIN Kite() { return Two(P(0, 0, 0), P(4, 0, 0), P(2, 0.5, 0), P(2, -1.5, 0)); }

TEST(SwapEdges, TakesTheShorterDiagonalThatBalances) {
    EXPECT_TRUE(IsSwapped(Kite(), 1.0));
    EXPECT_FALSE(IsSwapped(Kite(), 1.0, 0.5));  // the other one is just half as long
    EXPECT_TRUE(IsSwapped(Kite(), 1.0, 0.51));
}

TEST(SwapEdges, LeavesEqualDiagonals) {
    EXPECT_FALSE(IsSwapped(Two(P(0, 0, 0), P(1, 1, 0), P(0, 1, 0), P(1, 0, 0)), 1.0));
    EXPECT_FALSE(IsSwapped(Two(P(0, 0, 0), P(1, 1, 0), P(0, 1, 0), P(1, 0, 0)), 1.0, 1.0));
}

TEST(SwapEdges, LeavesEqualBalance) {
    EXPECT_FALSE(IsSwapped(Two(P(0, 0, 0), P(4, 0, 0), P(2, 1, 0), P(2, -1, 0)), 1.0));
}

TEST(SwapEdges, LeavesADentedQuadrilateral) {
    EXPECT_FALSE(IsSwapped(Two(P(0, 0, 0), P(4, 0, 0), P(5, 1, 0), P(5, -0.5, 0)), 1.0));
}

TEST(SwapEdges, SwapsLongEdgesOnlyNearAnEndOfTheOther) {
    EXPECT_FALSE(IsSwapped(Kite(), 0.039));
    EXPECT_TRUE(IsSwapped(Kite(), 0.0401));
    // The crossing is at 1/75 of the other diagonal.
    EXPECT_TRUE(IsSwapped(Two(P(0, 0, 0), P(4, 0, 0), P(2, 0.02, 0), P(2, -1.48, 0)), 0.001));
    EXPECT_TRUE(IsSwapped(Two(P(0, 0, 0), P(4, 0, 0), P(2, 1.48, 0), P(2, -0.02, 0)), 0.001));
}

TEST(SwapEdges, KeepsTheSurfaceWithinTwiceTheTolerance) {
    const auto bent = [](double height) { return Two(P(0, 0, 0), P(4, 0, 0), P(2, 0.5, height), P(2, -1.5, height)); };
    EXPECT_TRUE(IsSwapped(bent(0.19), 0.1));
    EXPECT_FALSE(IsSwapped(bent(0.21), 0.1));
}

TEST(SwapEdges, LeavesUprightTriangles) {
    EXPECT_FALSE(IsSwapped(Two(P(0, 0, 0), P(4, 0, 0), P(2, 0, 0.5), P(2, 0, -1.5)), 1.0));
}

TEST(SwapEdges, LeavesWhatIsNoNumber) {
    EXPECT_FALSE(IsSwapped(Kite(), NaN));
    EXPECT_FALSE(IsSwapped(Kite(), 1.0, NaN));
    EXPECT_FALSE(IsSwapped(Kite(), 0.0));
    EXPECT_FALSE(IsSwapped(Kite(), -1.0));
    EXPECT_TRUE(IsSwapped(Kite(), Infinity));
    for (int node = 0; node < 4; ++node) {
        for (const double bad : {NaN, Infinity, 1e300}) {
            PIN mesh = Kite();
            mesh.points[static_cast<std::size_t>(node)].X = bad;
            EXPECT_FALSE(IsSwapped(mesh, 1.0)) << node << ' ' << bad;
        }
    }
}

TEST(SwapEdges, OfNoTwinsDoesNothing) {
    for (const PIN& before : {PIN(), RightTriangle(), BowTie()}) {
        PIN mesh = before;
        SwapEdges(mesh, 10.0, 0.9);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(SwapEdges, StopsBehindARoundWithOneSwap) {
    // The first round has one swap, and what it makes possible has to wait for the next call.
    bool isFound = false;
    for (unsigned seed = 0; seed < 3000 && !isFound; ++seed) {
        Numbers next(seed);
        PIN mesh = Grid(2);
        for (P& p : mesh.points) p += P(next.Between(-0.4, 0.4), next.Between(-0.4, 0.4), 0);
        PIN once = mesh, again = mesh;
        if (Plain::SwapEdges(once, 10.0, 0.9) != 1) continue;
        SwapEdges(again, 10.0, 0.9);
        ASSERT_TRUE(SameRecords(once, again));
        isFound = Plain::SwapEdges(once, 10.0, 0.9) > 0;
    }
    EXPECT_TRUE(isFound);
}

TEST(SwapEdges, WorksWithoutEntriesOfNodes) {
    PIN mesh = Kite();
    mesh.p2e.clear();
    SwapEdges(mesh, 1.0, 0.9);
    EXPECT_TRUE(mesh.p2e.empty());
    EXPECT_EQ(mesh.edges[mesh.edges[0].TE].P0 + mesh.edges[0].P0, 5);
}

TEST(SwapEdges, IsThePlainRule) {
    int swaps = 0;
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        PIN mesh = seed % 4 == 0   ? Grid(10)
                   : seed % 4 == 1 ? FromFacets(Shuffled(BumpySphereFacets(6), seed))
                   : seed % 4 == 2 ? FromFacets(Shuffled(GridFacets(8), seed))
                                   : RandomMesh(seed, 200);
        for (P& p : mesh.points) p += P(next.Between(-0.45, 0.45), next.Between(-0.45, 0.45), next.Between(-0.1, 0.1));
        if (seed % 5 == 0)
            for (P& p : mesh.points)
                if (next.Below(4) == 0) p = next.HostilePoint();
        const double tolerance = seed % 7 == 0 ? next.Hostile() : next.Between(0.0, 0.5);
        const double ratio = seed % 11 == 0 ? next.Hostile() : next.Between(0.5, 1.2);
        PIN plain = mesh;
        SwapEdges(mesh, tolerance, ratio);
        swaps += Plain::SwapEdges(plain, tolerance, ratio);
        ASSERT_TRUE(SameRecords(mesh, plain));
    }
    EXPECT_GT(swaps, 1000);
}

TEST(SwapEdges, EndsOnBrokenMeshes) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        const PIN sound = seed % 2 == 0 ? Sphere(4) : Grid(7);
        PIN mesh = seed % 4 < 2 ? Broken(sound, seed) : WithBrokenLinks(sound, seed);
        Numbers next(seed);
        for (P& p : mesh.points) p += next.PointBetween(-0.3, 0.3);
        const std::size_t edges = mesh.edges.size();
        SwapEdges(mesh, 100.0, 1.5);
        EXPECT_EQ(mesh.edges.size(), edges);
    }
}

TEST(SwapEdges, PassesOverLargerFaces) {
    const PIN before = Dissolved(Grid(6), 1, 100);
    PIN mesh = before;
    SwapEdges(mesh, 100.0, 1.5);
    ExpectSound(mesh);
    EXPECT_EQ(mesh.edges.size(), before.edges.size());
}

}  // namespace
}  // namespace KM
