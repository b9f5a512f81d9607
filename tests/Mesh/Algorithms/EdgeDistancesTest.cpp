#include <gtest/gtest.h>

#include "Mesh/Algorithms/Geodesics.h"
#include "Mesh/Core/Fans.h"
#include "Support/BrokenMeshes.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM::Test {
namespace {

std::vector<double> Distances(PIN mesh, int source) {
    std::vector<double> distances{1.0, 2.0};
    GeodesicDistByDijkstra(mesh, source, distances);
    return distances;
}

/// All edges are tried until nothing gets better.
std::vector<double> PlainDistances(const PIN& mesh, int source) {
    std::vector<double> distances(mesh.points.size(), 1e20);
    distances[source] = 0.0;
    for (bool isBetter = true; isBetter;) {
        isBetter = false;
        for (int node = 0; node < static_cast<int>(mesh.points.size()); ++node)
            for (const auto& [neighbor, edge] : Neighbors(mesh, node)) {
                const double through = distances[node] + Length(mesh.points[neighbor] - mesh.points[node]);
                if (distances[node] == 1e20 || !(through < distances[neighbor])) continue;
                distances[neighbor] = through;
                isBetter = true;
            }
    }
    return distances;
}

TEST(EdgeDistances, OneTriangle) {
    EXPECT_EQ(Distances(RightTriangle(), 0), (std::vector<double>{0.0, 1.0, 1.0}));
    EXPECT_EQ(Distances(RightTriangle(), 1), (std::vector<double>{1.0, 0.0, std::sqrt(2.0)}));
}

TEST(EdgeDistances, BorderIsAWay) {
    // From node 2 to node 1 the edge 1-2 is run against its direction, along the border.
    EXPECT_EQ(Distances(UnitSquare(), 2), (std::vector<double>{2.0, 1.0, 0.0, 1.0}));
}

TEST(EdgeDistances, UnreachedNodesKeepTheirMark) {
    EXPECT_EQ(Distances(BowTie(), 0)[0], 0.0);
    PIN twoPieces = RightTriangle();
    twoPieces.points.push_back({5, 5, 5});
    twoPieces.p2e.push_back(-1);
    EXPECT_EQ(Distances(twoPieces, 0)[3], 1e20);
    EXPECT_EQ(Distances(twoPieces, 3), (std::vector<double>{1e20, 1e20, 1e20, 0.0}));
    for (const int noNode : {-1, 3, 1000000, -2147483647})
        EXPECT_EQ(Distances(RightTriangle(), noNode), std::vector<double>(3, 1e20));
    EXPECT_TRUE(Distances(PIN(), 0).empty());
}

TEST(EdgeDistances, NodesThatAreNoNumbersAreNotReached) {
    PIN mesh = UnitSquare();
    mesh.points[1].Y = NaN;
    EXPECT_EQ(Distances(mesh, 0), (std::vector<double>{0.0, 1e20, 2.0, 1.0}));
}

TEST(EdgeDistances, AgreeWithTheExhaustiveSearch) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = seed % 3 == 0 ? RandomMesh(seed, 60) : seed % 3 == 1 ? BumpySphere(4) : Grid(7);
        const int source = static_cast<int>(seed % mesh.points.size());
        EXPECT_EQ(Distances(mesh, source), PlainDistances(mesh, source));
    }
}

TEST(EdgeDistances, EndOnUnsoundLinks) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = seed % 2 == 0 ? Broken(RandomMesh(seed, 40), seed) : WithBrokenLinks(Grid(5), seed);
        EXPECT_EQ(Distances(mesh, 0).size(), mesh.points.size());
    }
}

}  // namespace
}  // namespace KM::Test
