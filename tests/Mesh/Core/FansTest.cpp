#include "Mesh/Core/Fans.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <set>

#include "Mesh/Core/FanWalk.h"
#include "Mesh/Core/Loops.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;
using Ints = std::vector<int>;
using Pairs = std::vector<Tuple2<int, int>>;

int NodeCount(const PIN& mesh) { return static_cast<int>(mesh.points.size()); }
int EdgeCount(const PIN& mesh) { return static_cast<int>(mesh.edges.size()); }

/// The middle of a sheet of two by two squares has a closed fan of six edges.
constexpr int Middle = 4;

PIN RandomPolygons(unsigned seed) { return Dissolved(RandomMesh(seed, 60), seed, 40); }

// The rules in their plainest form, for sound meshes.

int PlainStartingEdge(const PIN& mesh, int s) {
    if (s == -1) return -1;
    int t = mesh.edges[PrevEdge(mesh, s)].TE;
    if (t == -1) return s;
    int best = t;
    while (t != -1 && t != s) {
        best = t;
        t = mesh.edges[PrevEdge(mesh, t)].TE;
    }
    return best;
}

Ints PlainWalk(const PIN& mesh, int node) {
    const int first = PlainStartingEdge(mesh, mesh.p2e[node]);
    if (first == -1) return {};
    Ints walk{first};
    while (mesh.edges[walk.back()].TE != -1) {
        const int next = mesh.edges[mesh.edges[walk.back()].TE].NE;
        if (next == first) break;
        walk.push_back(next);
    }
    return walk;
}

int PlainEnd(const PIN& mesh, int edge) { return mesh.edges[mesh.edges[edge].NE].P0; }

int PlainEdgeBetween(const PIN& mesh, int start, int end) {
    const Ints walk = PlainWalk(mesh, start);
    for (auto e = walk.rbegin(); e != walk.rend(); ++e)
        if (PlainEnd(mesh, *e) == end) return *e;
    return -1;
}

Pairs PlainNeighbors(const PIN& mesh, int node) {
    Pairs pairs;
    const Ints walk = PlainWalk(mesh, node);
    if (walk.empty()) return pairs;
    const int incoming = PrevEdge(mesh, walk.front());
    if (mesh.edges[incoming].TE == -1) pairs.push_back({mesh.edges[incoming].P0, incoming});
    for (const int e : walk) pairs.push_back({PlainEnd(mesh, e), e});
    return pairs;
}

TEST(StartingEdge, OfAnOpenFanIsTheEdgeBehindTheIncomingOrphan) {
    const PIN mesh = UnitSquare();
    EXPECT_EQ(StartingEdge(mesh, 1), 1);
    EXPECT_EQ(StartingEdge(mesh, 3), 1);  // node 1 again
    EXPECT_EQ(StartingEdge(mesh, 2), 5);
    EXPECT_EQ(StartingEdge(mesh, 5), 5);
    EXPECT_EQ(StartingEdge(mesh, 4), 4);
}

TEST(StartingEdge, OfAClosedFanIsTheForwardNeighbour) {
    for (const PIN& mesh : {Cube(), Sphere(4)})
        for (int e = 0; e < EdgeCount(mesh); ++e) {
            EXPECT_EQ(StartingEdge(mesh, e), mesh.edges[mesh.edges[e].TE].NE);
            EXPECT_NE(StartingEdge(mesh, e), e);
        }
}

TEST(StartingEdge, OfAClosedFanOfOneEdgeIsThatEdge) {
    PIN mesh;  // two loops of one edge on one node, twins of each other
    mesh.points.resize(2);
    mesh.edges = {{1, 1, 0}, {0, 0, 1}};
    mesh.p2e = {0, 1};
    ExpectSound(mesh);
    EXPECT_EQ(StartingEdge(mesh, 0), 0);
    EXPECT_EQ(AllStartingEdges(mesh, 0), Ints{0});
    EXPECT_EQ(Neighbors(mesh, 0), (Pairs{{1, 0}}));
}

TEST(StartingEdge, OfNoAliveEdgeIsMinusOne) {
    PIN mesh = Cube();
    mesh.edges[0] = {-1, 3, -1};
    for (const int e : {-1, -2, INT_MIN, 36, INT_MAX, 0}) EXPECT_EQ(StartingEdge(mesh, e), -1) << e;
    EXPECT_EQ(StartingEdge(PIN(), 0), -1);
}

TEST(StartingEdge, ServesTheSinglePrecisionMesh) {
    SPIN mesh;
    mesh.edges = UnitSquare().edges;
    EXPECT_EQ(StartingEdge(mesh, 3), 1);
    EXPECT_EQ(StartingEdge(mesh, -1), -1);
}

TEST(AllStartingEdges, OfAnOpenFanBeginsWithTheOrphanAndEndsWithTheStartingEdge) {
    const PIN mesh = UnitSquare();
    EXPECT_EQ(AllStartingEdges(mesh, 0), Ints{0});
    EXPECT_EQ(AllStartingEdges(mesh, 1), (Ints{3, 1}));
    EXPECT_EQ(AllStartingEdges(mesh, 3), (Ints{2, 5}));
}

TEST(AllStartingEdges, OfAClosedFanBeginsWithTheEdgeOfTheNode) {
    const PIN mesh = Grid(2);
    const Ints fan = AllStartingEdges(mesh, Middle);
    ASSERT_EQ(fan.size(), 6u);
    EXPECT_EQ(fan.front(), mesh.p2e[Middle]);
    EXPECT_EQ(fan.back(), StartingEdge(mesh, mesh.p2e[Middle]));
    for (std::size_t i = 1; i < fan.size(); ++i) EXPECT_EQ(mesh.edges[mesh.edges[fan[i]].TE].NE, fan[i - 1]);
}

TEST(AllStartingEdges, OfAFanOfAnyLengthNameEveryEdgeOnce) {
    for (int count = 1; count < 80; ++count) {
        SCOPED_TRACE(testing::Message() << count << " triangles");
        IndexedFacets facets;
        facets.points.resize(static_cast<std::size_t>(count) + 2);
        for (int i = 1; i <= count; ++i) facets.triples.insert(facets.triples.end(), {0, i, i + 1});
        const PIN mesh = FromFacets(facets);
        Ints expected = PlainWalk(mesh, 0);
        std::reverse(expected.begin(), expected.end());
        const Ints fan = AllStartingEdges(mesh, 0);
        EXPECT_EQ(fan, expected);
        EXPECT_EQ(fan.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(fan.capacity(), fan.size());
        EXPECT_EQ(Neighbors(mesh, 0).size(), fan.size() + 1);
    }
}

TEST(AllStartingEdges, AtANodeWithTwoFansGivesTheOneOfP2E) {
    PIN mesh = BowTie();
    EXPECT_EQ(mesh.p2e[1], 3);
    EXPECT_EQ(AllStartingEdges(mesh, 1), Ints{3});
    mesh.p2e[1] = 1;
    EXPECT_EQ(AllStartingEdges(mesh, 1), Ints{1});
}

TEST(EdgeOfSEVertices, FindsTheEdgeInItsDirectionOnly) {
    const PIN mesh = UnitSquare();
    EXPECT_EQ(EdgeOfSEVertices(mesh, 0, 1), 0);
    EXPECT_EQ(EdgeOfSEVertices(mesh, 1, 0), -1);  // the boundary runs from 0 to 1 only
    EXPECT_EQ(EdgeOfSEVertices(mesh, 1, 3), 1);
    EXPECT_EQ(EdgeOfSEVertices(mesh, 3, 1), 5);
    EXPECT_EQ(EdgeOfSEVertices(mesh, 0, 2), -1);
    EXPECT_EQ(EdgeOfSEVertices(mesh, 0, 0), -1);
}

TEST(EdgeOfSEVertices, OfNodesThatDoNotExistIsMinusOne) {
    const PIN mesh = UnitSquare();
    for (const int node : {-1, -2, INT_MIN, 4, INT_MAX}) {
        EXPECT_EQ(EdgeOfSEVertices(mesh, node, 0), -1) << node;
        EXPECT_EQ(EdgeOfSEVertices(mesh, 0, node), -1) << node;
    }
}

TEST(EdgeOfSEVertices, SearchesTheFanOfP2EOnly) {
    const PIN mesh = BowTie();
    EXPECT_EQ(EdgeOfSEVertices(mesh, 1, 3), 3);
    EXPECT_EQ(EdgeOfSEVertices(mesh, 1, 2), -1);
}

// The triangle 0, 1, 2 (edges 0 to 2) and behind its edge 0-1 the loop 0, 1, 2, 1 (edges 3 to 6), which runs 0-1 once
// more.
TEST(EdgeOfSEVertices, TakesTheFirstOfSeveralInTheOrderOfAllStartingEdges) {
    PIN mesh;
    mesh.points.resize(3);
    mesh.edges = {{1, 6, 0}, {2, -1, 1}, {0, -1, 2}, {4, -1, 0}, {5, -1, 1}, {6, -1, 2}, {3, 0, 1}};
    mesh.p2e = {0, 1, 2};
    ExpectSound(mesh);
    EXPECT_EQ(AllStartingEdges(mesh, 0), (Ints{3, 0}));
    EXPECT_EQ(EdgeOfSEVertices(mesh, 0, 1), 3);
}

TEST(Neighbors, OfAnOpenFanBeginsWithTheEdgeThatComesIn) {
    const PIN mesh = UnitSquare();
    EXPECT_EQ(Neighbors(mesh, 1), (Pairs{{0, 0}, {3, 1}, {2, 3}}));
    EXPECT_EQ(Neighbors(mesh, 3), (Pairs{{2, 4}, {1, 5}, {0, 2}}));
    EXPECT_EQ(Neighbors(mesh, 0), (Pairs{{3, 2}, {1, 0}}));
}

TEST(Neighbors, OfAClosedFanHasOnePairAnEdge) {
    const PIN mesh = Grid(2);
    const Pairs pairs = Neighbors(mesh, Middle);
    const Ints fan = AllStartingEdges(mesh, Middle);
    ASSERT_EQ(pairs.size(), fan.size());
    std::set<int> nodes;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        EXPECT_EQ(pairs[i].Second, fan[fan.size() - 1 - i]);
        nodes.insert(pairs[i].First);
    }
    EXPECT_EQ(nodes, (std::set<int>{1, 2, 3, 5, 6, 7}));
}

TEST(Neighbors, TakesATwinOfMinusTwoForNone) {
    PIN mesh = UnitSquare();
    mesh.edges[0].TE = -2;
    EXPECT_EQ(Neighbors(mesh, 1), (Pairs{{0, 0}, {3, 1}, {2, 3}}));
}

TEST(Fans, OfADeadNodeAreEmpty) {
    PIN mesh = UnitSquare();
    mesh.p2e[1] = -1;
    EXPECT_EQ(StartingEdge(mesh, mesh.p2e[1]), -1);
    EXPECT_TRUE(AllStartingEdges(mesh, 1).empty());
    EXPECT_TRUE(Neighbors(mesh, 1).empty());
    EXPECT_EQ(EdgeOfSEVertices(mesh, 1, 2), -1);
    EXPECT_EQ(mesh.points[1], TPoint<double>(1, 0, 0));
}

TEST(Fans, OfNodesThatDoNotExistAreEmpty) {
    PIN mesh = UnitSquare();
    for (const int node : {-1, -2, INT_MIN, 4, INT_MAX}) {
        EXPECT_TRUE(AllStartingEdges(mesh, node).empty()) << node;
        EXPECT_TRUE(Neighbors(mesh, node).empty()) << node;
    }
    EXPECT_TRUE(AllStartingEdges(PIN(), 0).empty());
    EXPECT_TRUE(Neighbors(PIN(), 0).empty());
    EXPECT_TRUE(EmanatingEdges(PIN()).empty());
    mesh.p2e.clear();
    EXPECT_TRUE(AllStartingEdges(mesh, 0).empty());
    EXPECT_TRUE(Neighbors(mesh, 0).empty());
    EXPECT_EQ(EmanatingEdges(mesh).size(), 4u);
}

TEST(Fans, AgreeWithThePlainRules) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = seed % 2 == 0 ? RandomMesh(seed, 60) : RandomPolygons(seed);
        for (int node = 0; node < NodeCount(mesh); ++node) {
            Ints walk = PlainWalk(mesh, node);
            EXPECT_EQ(StartingEdge(mesh, mesh.p2e[node]), walk.empty() ? -1 : walk.front());
            std::reverse(walk.begin(), walk.end());
            EXPECT_EQ(AllStartingEdges(mesh, node), walk);
            EXPECT_EQ(Neighbors(mesh, node), PlainNeighbors(mesh, node));
            for (int end = 0; end < NodeCount(mesh); ++end)
                ASSERT_EQ(EdgeOfSEVertices(mesh, node, end), PlainEdgeBetween(mesh, node, end)) << node << " " << end;
        }
    }
}

TEST(Fans, OfAManifoldHoldAllEmanatingEdges) {
    for (const PIN& mesh : {Cube(), Grid(5), Sphere(6)}) {
        const std::vector<Ints> emanating = EmanatingEdges(mesh);
        for (int node = 0; node < NodeCount(mesh); ++node) {
            Ints fan = AllStartingEdges(mesh, node);
            std::sort(fan.begin(), fan.end());
            EXPECT_EQ(fan, emanating[node]);
        }
    }
}

TEST(EmanatingEdges, SeeEveryFanOfANode) {
    const std::vector<Ints> edges = EmanatingEdges(BowTie());
    EXPECT_EQ(edges, (std::vector<Ints>{{0}, {1, 3}, {2}, {4}, {5}}));
}

TEST(EmanatingEdges, AgreeWithAScan) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = RandomPolygons(seed);
        const std::vector<Ints> edges = EmanatingEdges(mesh);
        const std::vector<Ints> orphans = EmanatingOrphans(mesh);
        ASSERT_EQ(edges.size(), mesh.points.size());
        ASSERT_EQ(orphans.size(), mesh.points.size());
        for (int node = 0; node < NodeCount(mesh); ++node) {
            Ints expectedEdges, expectedOrphans;
            for (int e = 0; e < EdgeCount(mesh); ++e) {
                if (mesh.edges[e].NE == -1 || mesh.edges[e].P0 != node) continue;
                expectedEdges.push_back(e);
                if (mesh.edges[e].TE == -1) expectedOrphans.push_back(e);
            }
            EXPECT_EQ(edges[node], expectedEdges);
            EXPECT_EQ(orphans[node], expectedOrphans);
        }
    }
}

TEST(EmanatingEdges, HaveNoRoomToSpare) {
    for (const Ints& edges : EmanatingEdges(Sphere(8))) EXPECT_EQ(edges.capacity(), edges.size());
}

TEST(EmanatingEdges, LeaveOutDeadEdgesAndNodesThatDoNotExist) {
    PIN mesh = RightTriangle();
    mesh.edges[0].P0 = 3;
    mesh.edges[1].P0 = -1;
    mesh.edges.push_back({-1, -1, 2});
    EXPECT_EQ(EmanatingEdges(mesh), (std::vector<Ints>{{}, {}, {2}}));
    EXPECT_EQ(EmanatingOrphans(mesh), (std::vector<Ints>{{}, {}, {2}}));
}

TEST(EmanatingOrphans, OfAClosedMeshAreEmptyLists) { EXPECT_EQ(EmanatingOrphans(Cube()), std::vector<Ints>(8)); }

TEST(Fans, EndOnBrokenLinks) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = WithBrokenLinks(RandomPolygons(seed), seed);
        if (seed % 3 == 0) mesh.p2e.resize(mesh.p2e.size() / 2);
        for (int e = -2; e < EdgeCount(mesh) + 2; ++e) {
            const int first = StartingEdge(mesh, e);
            EXPECT_TRUE(first == -1 || mesh.edges[first].NE != -1);
            EXPECT_EQ(first == -1, !IsAliveEdge(mesh, e));
        }
        for (int node = -2; node < NodeCount(mesh) + 2; ++node) {
            const Ints fan = AllStartingEdges(mesh, node);
            EXPECT_LE(fan.size(), mesh.edges.size());
            EXPECT_LE(Neighbors(mesh, node).size(), fan.size() + 1);
            for (const int e : fan) EXPECT_NE(mesh.edges[e].NE, -1);
            EdgeOfSEVertices(mesh, node, 1);
        }
        EXPECT_EQ(EmanatingEdges(mesh).size(), mesh.points.size());
        EXPECT_EQ(EmanatingOrphans(mesh).size(), mesh.points.size());
    }
}

TEST(Fans, EndWhereTheWalkCirclesWithoutItsStart) {
    PIN mesh = Cube();
    const Ints fan = AllStartingEdges(mesh, 0);
    // The step from the second edge of the walk leads back to itself.
    const int second = fan[fan.size() - 2];
    mesh.edges[mesh.edges[second].TE].NE = second;
    EXPECT_LE(AllStartingEdges(mesh, 0).size(), mesh.edges.size());
    EXPECT_LE(Neighbors(mesh, 0).size(), mesh.edges.size() + 1);
}

}  // namespace
}  // namespace KM
