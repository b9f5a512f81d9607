#include "Mesh/Algorithms/Geodesics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numbers>

#include "Mesh/Core/WholeMesh.h"
#include "PlainGeodesics.h"
#include "Support/BrokenMeshes.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM::Test {
namespace {

std::vector<double> Distances(PIN mesh, const std::vector<int>& sources) {
    std::vector<double> distances{1.0, 2.0};
    GeodesicDist(mesh, sources, distances);
    return distances;
}

double Straight(const PIN& mesh, int a, int b) { return Length(mesh.points[a] - mesh.points[b]); }

int NodeCount(const PIN& mesh) { return static_cast<int>(mesh.points.size()); }

/// Nodes of a flat grid, moved within their plane.
PIN ShakenGrid(int n, unsigned seed) {
    PIN mesh = FromFacets(Shuffled(GridFacets(n), seed));
    Numbers numbers(seed);
    for (auto& p : mesh.points) p += TPoint<double>(numbers.Between(-0.2, 0.2), numbers.Between(-0.2, 0.2), 0.0);
    return mesh;
}

/// A fan of `count` triangles round node 0, whose angles add up to `angle`, drawn in space as a cone. The other nodes are
/// at distance 1 from it.
PIN Cone(int count, double angle) {
    const double side = 2.0 * std::sin(angle / count / 2.0);
    const double radius = side / (2.0 * std::sin(std::numbers::pi / count));
    IndexedFacets facets;
    facets.points.push_back({0.0, 0.0, 0.0});
    for (int i = 0; i < count; ++i) {
        const double a = 2.0 * std::numbers::pi * i / count;
        facets.points.push_back({radius * std::cos(a), radius * std::sin(a), -std::sqrt(1.0 - radius * radius)});
        const int triple[] = {0, i + 1, (i + 1) % count + 1};
        facets.triples.insert(facets.triples.end(), std::begin(triple), std::end(triple));
    }
    return FromFacets(facets);
}

TEST(Geodesics, OneTriangle) {
    EXPECT_EQ(Distances(RightTriangle(), {0}), (std::vector<double>{0.0, 1.0, 1.0}));
    EXPECT_EQ(Distances(RightTriangle(), {1}), (std::vector<double>{1.0, 0.0, std::sqrt(2.0)}));
}

TEST(Geodesics, FlatSheetsGiveStraightDistances) {
    for (const int n : {1, 2, 3, 6, 10}) {
        for (unsigned seed = 0; seed < 4; ++seed) {
            const PIN mesh = seed == 0 ? Grid(n) : ShakenGrid(n, seed);
            for (int source = 0; source < NodeCount(mesh); source += 1 + NodeCount(mesh) / 12) {
                SCOPED_TRACE(testing::Message() << "size " << n << " seed " << seed << " source " << source);
                const std::vector<double> distances = Distances(mesh, {source});
                // A shaken border is not convex: ways along it bend. Its inner nodes see enough of each other.
                for (int node = 0; node < NodeCount(mesh); ++node) {
                    if (seed == 0) {
                        EXPECT_NEAR(distances[node], Straight(mesh, source, node), 1e-9) << "node " << node;
                    }
                    EXPECT_GE(distances[node], Straight(mesh, source, node) - 1e-7) << "node " << node;
                }
            }
        }
    }
}

TEST(Geodesics, SeveralSourcesGiveTheMinimum) {
    const PIN mesh = Grid(8);
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        std::vector<int> sources;
        const int count = 2 + numbers.Below(4);
        for (int i = 0; i < count; ++i) sources.push_back(numbers.Below(NodeCount(mesh)));
        sources.push_back(std::min(sources[0] + 1, NodeCount(mesh) - 1));  // neighbours, as a rule
        sources.push_back(sources[1]);
        const std::vector<double> distances = Distances(mesh, sources);
        for (int node = 0; node < NodeCount(mesh); ++node) {
            double nearest = 1e20;
            for (const int source : sources) nearest = std::min(nearest, Straight(mesh, source, node));
            EXPECT_NEAR(distances[node], nearest, 1e-7) << "node " << node;
        }
    }
}

TEST(Geodesics, CornersOfTheCube) {
    const PIN cube = Cube();
    for (int source = 0; source < 8; ++source) {
        const std::vector<double> distances = Distances(cube, {source});
        for (int node = 0; node < 8; ++node) {
            // Over two faces that are opened flat: a rectangle of 1 by 2.
            const double straight = Straight(cube, source, node);
            EXPECT_NEAR(distances[node], straight > 1.5 ? std::sqrt(5.0) : straight, 1e-9);
        }
    }
}

TEST(Geodesics, ConesOpenToSectors) {
    for (const double angle : {1.0, 2.0, 3.0, 5.0, 6.2}) {
        const int count = 12;
        const std::vector<double> distances = Distances(Cone(count, angle), {1});
        EXPECT_NEAR(distances[0], 1.0, 1e-12);
        for (int i = 0; i < count; ++i) {
            SCOPED_TRACE(testing::Message() << "angle " << angle << " node " << i + 1);
            const int steps = std::min(i, count - i);
            const double between = angle * steps / count;
            EXPECT_NEAR(distances[i + 1], 2.0 * std::sin(between / 2.0), 1e-9);
        }
    }
}

TEST(Geodesics, SphereComesNearItsArcs) {
    const PIN sphere = Sphere(16);
    const std::vector<double> distances = Distances(sphere, {0});
    for (int node = 0; node < NodeCount(sphere); ++node) {
        const double arc = std::acos(std::clamp(Dot(sphere.points[0], sphere.points[node]), -1.0, 1.0));
        EXPECT_NEAR(distances[node], arc, 0.01 * arc + 1e-12);
    }
}

TEST(Geodesics, SeparatePiecesAreNotReached) {
    PIN mesh = Grid(2);
    const int count = NodeCount(mesh);
    Append(mesh, Cube());
    const std::vector<double> distances = Distances(mesh, {0});
    EXPECT_GT(distances[count - 1], 0.0);
    for (int node = count; node < NodeCount(mesh); ++node) EXPECT_EQ(distances[node], 0.0);
}

TEST(Geodesics, SourcesThatAreNoneAreLeftOut) {
    EXPECT_EQ(Distances(RightTriangle(), {}), std::vector<double>(3, 0.0));
    EXPECT_EQ(Distances(RightTriangle(), {-1, 3, 1000000, -2147483647}), std::vector<double>(3, 0.0));
    EXPECT_EQ(Distances(RightTriangle(), {7, 0}), (std::vector<double>{0.0, 1.0, 1.0}));
    EXPECT_TRUE(Distances(PIN(), {0}).empty());
    PIN withDeadNode = RightTriangle();
    withDeadNode.points.push_back({5, 5, 5});
    withDeadNode.p2e.push_back(-1);
    EXPECT_EQ(Distances(withDeadNode, {3}), std::vector<double>(4, 0.0));
    PIN withoutIndex = RightTriangle();
    withoutIndex.p2e.clear();
    EXPECT_EQ(Distances(withoutIndex, {0}), std::vector<double>(3, 0.0));
}

TEST(Geodesics, MeshStaysAsItIs) {
    PIN mesh = BumpySphere(6);
    const PIN before = mesh;
    std::vector<double> distances;
    GeodesicDist(mesh, {0, 5}, distances);
    EXPECT_TRUE(SameRecords(mesh, before));
}

/// Roofs, valleys and saddles of a few triangles.
PIN SmallRoughMesh(unsigned seed) {
    PIN mesh = seed % 4 == 0 ? Grid(2) : seed % 4 == 1 ? Grid(3) : seed % 4 == 2 ? Cube() : Sphere(1);
    Numbers numbers(seed);
    for (auto& p : mesh.points) p += numbers.PointBetween(-0.25, 0.25);
    return mesh;
}

TEST(Geodesics, WatchedOnesAreTheSameAndCanBeStopped) {
    PIN mesh = BumpySphere(40);
    std::vector<double> plain, watched, untouched{1.0, 2.0};
    GeodesicDist(mesh, {5, 700}, plain);
    std::vector<double> told;
    WatchedGeodesicDist(mesh, {5, 700}, watched, [&](double reached) { told.push_back(reached); });
    EXPECT_EQ(watched, plain);
    ASSERT_GT(told.size(), 10u);
    EXPECT_GT(told.front(), 0.0);
    EXPECT_GT(told.back(), told.front());
    EXPECT_LE(told.back(), *std::max_element(plain.begin(), plain.end()));
    const auto stop = [](double) { throw 1; };
    EXPECT_THROW(WatchedGeodesicDist(mesh, {5}, untouched, stop), int);
    EXPECT_EQ(untouched, (std::vector{1.0, 2.0}));
}

TEST(Geodesics, AgreeWithUnfoldingAllRowsOfTriangles) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        const PIN mesh = SmallRoughMesh(seed);
        const PlainGeodesics plain(mesh);
        for (int source = 0; source < NodeCount(mesh); ++source) {
            const std::vector<double> distances = Distances(mesh, {source});
            for (int node = 0; node < NodeCount(mesh); ++node)
                EXPECT_NEAR(distances[node], plain.Distance(source, node), 1e-6)
                    << "seed " << seed << ", from " << source << " to " << node;
        }
    }
}

TEST(Geodesics, LieBetweenStraightAndAlongEdges) {
    for (unsigned seed = 0; seed < 24; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 3 == 0 ? BumpySphere(8) : seed % 3 == 1 ? Grid(12) : ShakenGrid(12, seed);
        Numbers numbers(seed);
        if (seed % 3 != 0)
            for (auto& p : mesh.points) p.Z += numbers.Between(-0.5, 0.5);
        const int source = numbers.Below(NodeCount(mesh));
        const std::vector<double> distances = Distances(mesh, {source});
        std::vector<double> alongEdges;
        GeodesicDistByDijkstra(mesh, source, alongEdges);
        EXPECT_EQ(distances[source], 0.0);
        for (int node = 0; node < NodeCount(mesh); ++node) {
            EXPECT_LE(distances[node], alongEdges[node] * (1.0 + 1e-9) + 1e-7);
            EXPECT_GE(distances[node], Straight(mesh, source, node) * (1.0 - 1e-9) - 1e-7);
        }
    }
}

/// Whatever the mesh is, the search ends, with one finite distance a node.
void ExpectEnd(const PIN& mesh) {
    const std::vector<double> distances = Distances(mesh, {0, 1, NodeCount(mesh) / 2});
    ASSERT_EQ(distances.size(), mesh.points.size());
    for (const double distance : distances) EXPECT_TRUE(distance >= 0.0 && distance < Infinity);
}

TEST(Geodesics, EndOnDegenerateTriangles) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 2 == 0 ? Grid(6) : BumpySphere(4);
        Numbers numbers(seed);
        for (int i = 0; i < 12; ++i) {
            TPoint<double>& p = mesh.points[numbers.Below(NodeCount(mesh))];
            const TPoint<double> other = mesh.points[numbers.Below(NodeCount(mesh))];
            p = i % 3 == 0 ? other : i % 3 == 1 ? (p + other) * 0.5 : TPoint<double>(p.X, 0.0, 0.0);
        }
        ExpectEnd(mesh);
    }
    PIN point = Grid(4);
    for (auto& p : point.points) p = {1, 2, 3};
    ExpectEnd(point);
}

TEST(Geodesics, EndOnHostileNumbers) {
    for (unsigned seed = 0; seed < 120; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 2 == 0 ? Grid(5) : Sphere(3);
        Numbers numbers(seed);
        const int count = 1 + numbers.Below(NodeCount(mesh));
        for (int i = 0; i < count; ++i)
            mesh.points[numbers.Below(NodeCount(mesh))] = numbers.HostilePoint(seed % 3 == 0);
        ExpectEnd(mesh);
    }
}

// Next to lengths of 1e7 and more the tolerance is nothing: windows that rounding alone tells apart would come for ever.
TEST(Geodesics, EndWhereRoundingExceedsTheTolerance) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 2 == 0 ? Grid(4) : Cube();
        Numbers numbers(seed);
        for (auto& p : mesh.points)
            if (numbers.Below(5) == 0) p = p + numbers.Direction() * std::pow(10.0, numbers.Between(5.0, 30.0));
        ExpectEnd(mesh);
    }
}

TEST(Geodesics, EndOnAllSizes) {
    for (const double size : {1e-300, 1e-12, 1e-9, 1e-7, 1e-6, 1e-3, 1e3, 1e6, 1e9, 1e12, 1e100, 1e160}) {
        for (unsigned seed = 0; seed < 4; ++seed) {
            SCOPED_TRACE(testing::Message() << "size " << size << " seed " << seed);
            PIN mesh = seed < 2 ? ShakenGrid(10, seed) : Sphere(5);
            for (auto& p : mesh.points) p *= size;
            ExpectEnd(mesh);
        }
    }
}

TEST(Geodesics, LargeAndSmallModelsScale) {
    for (const double size : {1e-3, 1e3, 1e6}) {
        PIN mesh = Grid(6);
        for (auto& p : mesh.points) p *= size;
        const std::vector<double> distances = Distances(mesh, {8});
        for (int node = 0; node < NodeCount(mesh); ++node)
            EXPECT_NEAR(distances[node], Straight(mesh, 8, node), 1e-6 * size + 1e-6);
    }
}

TEST(Geodesics, EndOnUnsoundLinks) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectEnd(seed % 3 == 0   ? Broken(RandomMesh(seed, 40), seed)
                  : seed % 3 == 1 ? WithBrokenLinks(Grid(5), seed)
                                  : RandomMesh(seed, 60));
    }
}

}  // namespace
}  // namespace KM::Test
