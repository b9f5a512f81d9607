#include "Mesh/Editing/NodeRemoval.h"

#include <gtest/gtest.h>

#include <climits>

#include "Mesh/Core/Construction.h"
#include "Mesh/Core/Fans.h"
#include "Mesh/Editing/EdgeSplits.h"
#include "Mesh/Editing/PlainEdits.h"
#include "Support/LogCapture.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM {
using namespace Test;

namespace {

using P = TPoint<double>;
using Triangles = std::vector<std::array<int, 3>>;
using Texts = std::vector<std::string>;

PIN Tetrahedron() {
    return FromFacets({{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(0, 0, 1)}, {0, 2, 1, 0, 1, 3, 1, 2, 3, 2, 0, 3}});
}

/// Two pyramids base to base: a ring of nodes 0 .. n - 1 between the apices n (above) and n + 1 (below).
PIN Bipyramid(const std::vector<P>& ring) {
    IndexedFacets facets{ring, {}};
    const int n = static_cast<int>(ring.size());
    facets.points.insert(facets.points.end(), {P(0, 0, 1), P(0, 0, -1)});
    for (int i = 0; i < n; ++i) {
        const int next = (i + 1) % n;
        facets.triples.insert(facets.triples.end(), {i, next, n, next, i, n + 1});
    }
    return FromFacets(facets);
}

PIN RegularBipyramid(int n) {
    std::vector<P> ring;
    for (int i = 0; i < n; ++i)
        ring.push_back(P(std::cos(2.0 * 3.141592653589793 * i / n),  //
                         std::sin(2.0 * 3.141592653589793 * i / n), 0));
    return Bipyramid(ring);
}

Texts RefusalsOf(PIN mesh, int node) {
    LogCapture log;
    const PIN before = mesh;
    EXPECT_FALSE(RemoveNode(mesh, node));
    EXPECT_TRUE(SameRecords(mesh, before));
    return log.Texts(Verbose::EMessageType::Error);
}

TEST(RemoveNode, OfValenceThreeLeavesTheRingAsATriangle) {
    PIN mesh = Tetrahedron();
    ASSERT_TRUE(RemoveNode(mesh, 3));
    EXPECT_EQ(mesh.points.size(), 3u);
    EXPECT_EQ(mesh.edges.size(), 6u);
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 1, 2}, {0, 2, 1}}));
    for (const Edge& e : mesh.edges) EXPECT_NE(mesh.edges[e.TE].NE, -1);
    ExpectCompact(mesh);
}

TEST(RemoveNode, TakesBackASplitOfAFace) {
    for (int e = 0; e < 24; ++e) {
        PIN mesh = Sphere(1);
        SplitFace(mesh, e, P(0.3, 0.3, 0.3));
        ASSERT_TRUE(RemoveNode(mesh, 6));
        EXPECT_EQ(TrianglesOf(mesh), TrianglesOf(Sphere(1)));
        ExpectCompact(mesh);
    }
}

TEST(RemoveNode, OfValenceFourMakesOneChordFromTheNodeBeforeTheSharpestCorner) {
    for (int sharp = 0; sharp < 4; ++sharp) {
        SCOPED_TRACE(sharp);
        std::vector<P> ring = {P(1, 0, 0), P(0, 1, 0), P(-1, 0, 0), P(0, -1, 0)};
        ring[sharp] = ring[sharp] * 5.0;
        PIN mesh = Bipyramid(ring);
        ASSERT_TRUE(RemoveNode(mesh, 4));
        EXPECT_EQ(mesh.points.size(), 5u);
        EXPECT_EQ(mesh.edges.size(), 24u - 6u);
        EXPECT_EQ(mesh.points[4], P(0, 0, -1));  // the last node came into the slot
        // The chord cuts the sharp corner off.
        EXPECT_NE(EdgeOfSEVertices(mesh, (sharp + 1) % 4, (sharp + 3) % 4), -1);
        EXPECT_EQ(EdgeOfSEVertices(mesh, sharp, (sharp + 2) % 4), -1);
        EXPECT_EQ(EulerCharacteristic(mesh), 2);
        ExpectCompact(mesh);
    }
}

TEST(RemoveNode, TakesTheFirstOfEqualCorners) {
    // All four coordinates are 0 or 1, so all corners are right angles to the last bit.
    PIN mesh = Bipyramid({P(1, 0, 0), P(0, 1, 0), P(-1, 0, 0), P(0, -1, 0)});
    const int apex = mesh.edges[mesh.edges[AllStartingEdges(mesh, 4)[0]].NE].P0;
    ASSERT_TRUE(RemoveNode(mesh, 4));
    EXPECT_NE(EdgeOfSEVertices(mesh, apex, (apex + 2) % 4), -1);
}

TEST(RemoveNode, FillsLongRingsFromOneApex) {
    for (int n = 4; n <= 12; ++n) {
        SCOPED_TRACE(n);
        PIN mesh = RegularBipyramid(n);
        PIN plain = mesh;
        ASSERT_TRUE(RemoveNode(mesh, n));
        ASSERT_TRUE(Plain::RemoveNode(plain, n));
        EXPECT_TRUE(SameRecords(mesh, plain));
        std::size_t apices = 0;
        for (int i = 0; i < n; ++i) apices += AllStartingEdges(mesh, i).size() == static_cast<std::size_t>(n);
        EXPECT_EQ(apices, n == 4 ? 2u : 1u);
        EXPECT_EQ(EulerCharacteristic(mesh), 2);
        ExpectCompact(mesh);
    }
}

TEST(RemoveNode, MovesTheLastNodeIntoTheSlot) {
    PIN mesh = Sphere(3);
    const P last = mesh.points.back();
    const std::size_t valence = AllStartingEdges(mesh, static_cast<int>(mesh.points.size()) - 1).size();
    int far = 0;
    while (Length(mesh.points[far] - last) < 1.0) ++far;
    ASSERT_TRUE(RemoveNode(mesh, far));
    EXPECT_EQ(mesh.points[far], last);
    EXPECT_EQ(AllStartingEdges(mesh, far).size(), valence);
    ExpectCompact(mesh);
}

TEST(RemoveNode, RefusesLessThanThreeEdgesWithoutAWord) {
    EXPECT_EQ(RefusalsOf(UnitSquare(), 1), Texts());  // on the boundary, too, but that is not looked at
    EXPECT_EQ(RefusalsOf(UnitSquare(), 0), Texts());
    PIN flat = FromFacets({{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0)}, {0, 1, 2, 0, 2, 1}});  // all nodes have valence 2
    EXPECT_EQ(RefusalsOf(flat, 0), Texts());
    for (const int node : {-1, 4, INT_MIN, INT_MAX}) EXPECT_EQ(RefusalsOf(UnitSquare(), node), Texts());
    PIN unnamed = Sphere(2);
    unnamed.p2e.clear();
    EXPECT_EQ(RefusalsOf(unnamed, 0), Texts());
    unnamed = Sphere(2);
    unnamed.p2e.pop_back();
    EXPECT_EQ(RefusalsOf(unnamed, 0), Texts());
}

TEST(RemoveNode, RefusesTheBoundary) {
    // Which open end is met first depends on where the sharpest corner turns the walk to.
    PIN mesh = Grid(2);
    int starts = 0, ends = 0;
    for (const int node : {1, 3, 5, 7}) {
        const int valence = static_cast<int>(AllStartingEdges(mesh, node).size());
        for (int turn = 0; turn < 40; ++turn) {
            Numbers next(static_cast<unsigned>(turn));
            for (P& p : mesh.points) p = next.PointBetween(0, 1);
            const Texts texts = RefusalsOf(mesh, node);
            ASSERT_EQ(texts.size(), valence < 3 ? 0u : 1u);
            if (texts.empty()) continue;
            starts += texts[0] == "Found orphan start edge in RemoveNode!";
            ends += texts[0] == "Found orphan end edge in RemoveNode!";
        }
    }
    EXPECT_GT(starts, 0);
    EXPECT_GT(ends, 0);
    EXPECT_EQ((starts + ends) % 40, 0);
}

TEST(RemoveNode, RefusesAnEntryThatLeadsToAnotherNode) {
    PIN mesh = Sphere(2);
    mesh.p2e[3] = mesh.p2e[7];
    EXPECT_EQ(RefusalsOf(mesh, 3), (Texts{"Found start edge that doesn't have correct starting point!"}));
}

TEST(RemoveNode, RefusesAFanWithAFaceThatIsNoTriangle) {
    PIN mesh = RegularBipyramid(4);
    AddPoint(mesh, P(0.5, 0.5, 0.5));
    SplitEdge2(mesh, mesh.p2e[4], 6);
    EXPECT_EQ(RefusalsOf(mesh, 4), Texts());
}

TEST(RemoveNode, TellsOfABoundaryAndOfAWrongEntryWhateverTheFacesAre) {
    // One face in the fan of node 1, at the middle of a side, has four edges.
    PIN open = Grid(2);
    const std::vector<int> fan = AllStartingEdges(open, 1);
    ASSERT_EQ(fan.size(), 3u);
    AddPoint(open, P(9, 9, 9));
    SplitEdge2(open, open.edges[fan[1]].NE, 9);
    const Texts texts = RefusalsOf(open, 1);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_TRUE(texts[0] == "Found orphan start edge in RemoveNode!" ||
                texts[0] == "Found orphan end edge in RemoveNode!");

    PIN closed = RegularBipyramid(4);
    AddPoint(closed, P(0.5, 0.5, 0.5));
    SplitEdge2(closed, closed.p2e[4], 6);
    closed.p2e[5] = closed.p2e[4];
    EXPECT_EQ(RefusalsOf(closed, 5), (Texts{"Found start edge that doesn't have correct starting point!"}));
}

TEST(RemoveNode, RefusesARingThatFoldsOntoItself) {
    // Two triangles (0, 0, 1), each rolled up to a cone, joined along their edges 0-0: each is met twice round node 0.
    PIN mesh;
    mesh.points = {P(0, 0, 0), P(1, 0, 0)};
    mesh.p2e = {0, 2};
    mesh.edges = {{1, 3, 0}, {2, 2, 0}, {0, 1, 1}, {4, 0, 0}, {5, 5, 0}, {3, 4, 1}};
    ExpectSound(mesh);
    ASSERT_EQ(AllStartingEdges(mesh, 0).size(), 4u);
    EXPECT_EQ(RefusalsOf(mesh, 0), Texts());
}

TEST(RemoveNode, RefusesLinksThatLeadNowhere) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        const PIN before = WithBrokenLinks(Sphere(2), seed);
        for (int node = 0; node < static_cast<int>(before.points.size()); ++node) {
            PIN mesh = before;
            const bool isRemoved = RemoveNode(mesh, node);
            ASSERT_TRUE(isRemoved || SameRecords(mesh, before)) << "seed " << seed << " node " << node;
        }
    }
}

TEST(RemoveNode, IsLikeThePlainFormOnAllMeshes) {
    LogCapture log;
    for (unsigned seed = 0; seed < 120; ++seed) {
        PIN before = seed % 3 == 0 ? RandomMesh(seed, 40) : seed % 3 == 1 ? Sphere(2) : Grid(4);
        Numbers next(seed);
        if (seed % 2 == 0)
            for (P& p : before.points) p = seed % 4 == 0 ? next.HostilePoint() : next.PointBetween(-1, 1);
        for (int n = 0; n < static_cast<int>(before.points.size()); ++n) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " node " << n);
            PIN mesh = before, plain = before;
            ASSERT_EQ(RemoveNode(mesh, n), Plain::RemoveNode(plain, n));
            ASSERT_TRUE(SameRecords(mesh, plain));
        }
    }
}

TEST(RemoveNode, ReducesASphereToAlmostNothing) {
    PIN mesh = Sphere(6);
    int removed = 0;
    for (int node = 0; node < static_cast<int>(mesh.points.size());) {
        const bool isRemoved = RemoveNode(mesh, node);
        removed += isRemoved;
        ASSERT_EQ(FirstUncompactness(mesh), "");
        if (!isRemoved) ++node;
    }
    EXPECT_EQ(EulerCharacteristic(mesh), 2);
    EXPECT_LT(mesh.points.size(), 8u);
    EXPECT_EQ(removed + mesh.points.size(), Sphere(6).points.size());
}

}  // namespace
}  // namespace KM
