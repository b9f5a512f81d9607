#include "Mesh/Algorithms/ConnectedSolids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "Mesh/Algorithms/PlainAnalysis.h"
#include "Support/BrokenMeshes.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;
using Solids = std::vector<std::vector<int>>;

Solids SolidsOf(const PIN& mesh) {
    Solids solids;
    CollectSolids(mesh, solids);
    return solids;
}

PIN Joined(std::initializer_list<PIN> parts) {
    PIN mesh;
    for (const PIN& part : parts) Append(mesh, part);
    return mesh;
}

TEST(CollectSolids, GivesThreeEdgesForATriangle) {
    EXPECT_EQ(SolidsOf(RightTriangle()), (Solids{{0, 1, 2}}));
    EXPECT_EQ(SolidsOf(Joined({RightTriangle(), RightTriangle()})), (Solids{{0, 1, 2}, {3, 4, 5}}));
}

TEST(CollectSolids, DoesNotConnectThroughANode) { EXPECT_EQ(SolidsOf(BowTie()), (Solids{{0, 1, 2}, {3, 4, 5}})); }

TEST(CollectSolids, WalksOverTwins) { EXPECT_EQ(SolidsOf(UnitSquare()), (Solids{{0, 1, 2, 5, 3, 4}})); }

TEST(CollectSolids, ListsATriangleAgainThatItReachedOnTwoWays) {
    // Of four triangles the first brings the three others on the stack, and each of them those that are left: six pairs
    // of twins, and the first triangle.
    IndexedFacets tetrahedron{{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(0, 0, 1)}, {0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0, 3}};
    const Solids solids = SolidsOf(FromFacets(tetrahedron));
    ASSERT_EQ(solids.size(), 1u);
    EXPECT_EQ(solids[0].size(), 3u * 7u);
    EXPECT_EQ(std::set<int>(solids[0].begin(), solids[0].end()).size(), 12u);
}

TEST(CollectSolids, AppendsToWhatIsThere) {
    Solids solids{{7}};
    CollectSolids(RightTriangle(), solids);
    EXPECT_EQ(solids, (Solids{{7}, {0, 1, 2}}));
}

TEST(CollectSolids, OfNoEdgesAreNone) {
    EXPECT_TRUE(SolidsOf(PIN()).empty());
    PIN points;
    points.points.resize(3);
    points.p2e.assign(3, -1);
    EXPECT_TRUE(SolidsOf(points).empty());
}

TEST(CollectSolids, HasNoPlaceForALonelyNode) {
    PIN mesh = UnitSquare();
    mesh.points.push_back(P(9, 9, 9));
    mesh.p2e.push_back(-1);
    EXPECT_EQ(SolidsOf(mesh), SolidsOf(UnitSquare()));
}

TEST(CollectSolids, HasEachEdgeInOneSolid) {
    const PIN mesh = Joined({Sphere(5), Grid(3), RightTriangle(), Cube(), BumpySphere(7)});
    const Solids solids = SolidsOf(mesh);
    ASSERT_EQ(solids.size(), 5u);
    std::set<int> all;
    for (const std::vector<int>& solid : solids) {
        const std::set<int> own(solid.begin(), solid.end());
        EXPECT_EQ(*own.begin(), solid.front());
        EXPECT_EQ(*own.rbegin() - *own.begin() + 1, static_cast<int>(own.size()));
        all.insert(own.begin(), own.end());
    }
    EXPECT_EQ(all.size(), mesh.edges.size());
}

TEST(CollectSolids, KeepsNoMoreRoomThanItNeeds) {
    PIN mesh;
    for (int i = 0; i < 1000; ++i) Append(mesh, RightTriangle());
    for (const std::vector<int>& solid : SolidsOf(mesh)) EXPECT_EQ(solid.capacity(), 3u);
}

TEST(CollectSolids, IsThePlainRule) {
    for (const PIN& mesh : {Cube(), Grid(6), Sphere(9), FromFacets(Shuffled(SphereFacets(9), 2))})
        EXPECT_EQ(SolidsOf(mesh), PlainSolids(mesh));
    for (unsigned seed = 0; seed < 300; ++seed) {
        PIN mesh = RandomMesh(seed, 10 + static_cast<int>(seed));
        if (seed % 3 == 0) {
            VisitorOf<PIN> nobody;
            mesh = Dissolved(mesh, seed, 20);  // faces of more edges, of which the walk takes three at a time
            Compact(mesh, nobody);
        }
        ASSERT_EQ(SolidsOf(mesh), PlainSolids(mesh)) << "seed " << seed;
    }
}

TEST(CollectSolids, PassesOverDeadRecords) {
    PIN mesh = Joined({RightTriangle(), UnitSquare()});
    DeleteTriangle(mesh, 0);
    DeleteTriangle(mesh, 6);
    EXPECT_EQ(SolidsOf(mesh), (Solids{{3, 4, 5}}));
}

TEST(CollectSolids, EndsOnBrokenMeshes) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        const PIN sound = seed % 2 != 0 ? Sphere(4) : RandomMesh(seed, 60);
        const PIN mesh = seed % 4 < 2 ? Broken(sound, seed) : WithBrokenLinks(sound, seed);
        std::set<int> met;
        std::size_t listed = 0;
        for (const std::vector<int>& solid : SolidsOf(mesh)) {
            met.insert(solid.begin(), solid.end());
            listed += solid.size();
        }
        std::size_t alive = 0;
        for (const Edge& edge : mesh.edges) alive += edge.NE >= 0;
        EXPECT_EQ(met.size(), alive) << "seed " << seed;
        EXPECT_LE(listed, 12 * mesh.edges.size());
    }
}

}  // namespace
}  // namespace KM
