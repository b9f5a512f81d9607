// One hole at a time, through FillHoles: which corners are cut, and in what order.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "Mesh/Algorithms/HoleFilling.h"
#include "Mesh/Algorithms/PlainFilling.h"
#include "Mesh/Core/Compaction.h"
#include "Support/LogCapture.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM {
namespace {

using namespace Test;
using Edges = std::vector<Edge>;
using P = TPoint<double>;
using Verbose::EMessageType;

const std::string OneOrphan = "FillHole: found a loop with only one orphan edge.";
const std::string NoCorner = "FillHole: didn't find a possible candidate hole can't be filled. ";

/// A hole through the given nodes: its orphan i is edge 3 i and runs from node i to node i + 1. The faces outside meet in
/// one more node, the last one.
PIN Cone(const std::vector<P>& ring) {
    IndexedFacets facets;
    facets.points = ring;
    facets.points.emplace_back(0.5, 0.25, 40.0);
    const int count = static_cast<int>(ring.size());
    for (int i = 0; i < count; ++i) facets.triples.insert(facets.triples.end(), {i, (i + 1) % count, count});
    return FromFacets(facets);
}

/// What was appended when the mesh was filled.
Edges Appended(const PIN& before, const PIN& mesh) {
    return Edges(mesh.edges.begin() + static_cast<std::ptrdiff_t>(before.edges.size()), mesh.edges.end());
}

Edges FilledIn(PIN mesh) {
    const PIN before = mesh;
    FillHoles(mesh, -1);
    return Appended(before, mesh);
}

void ExpectClosed(PIN mesh) {
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    ExpectSound(mesh);
    EXPECT_EQ(OrphanCount(mesh), 0);
}

void ExpectAsPlain(const PIN& mesh) {
    PIN filled = mesh;
    PIN plain = mesh;
    FillHoles(filled, -1);
    PlainFillHoles(plain, -1);
    EXPECT_TRUE(SameRecords(filled, plain));
}

TEST(CloseHole, ThreeEdgesGetOneTriangle) {
    PIN mesh = RightTriangle();
    FillHoles(mesh, 3);
    EXPECT_EQ(mesh.edges, (Edges{{1, 3, 0}, {2, 5, 1}, {0, 4, 2}, {4, 0, 1}, {5, 2, 0}, {3, 1, 2}}));
    EXPECT_EQ(mesh.points, RightTriangle().points);
    ExpectClosed(mesh);
}

TEST(CloseHole, TwoEdgesBecomeTwins) {
    PIN mesh = Cube();
    const Edges closed = mesh.edges;
    const int twin = mesh.edges[5].TE;
    mesh.edges[5].TE = mesh.edges[twin].TE = -1;
    FillHoles(mesh, 2);
    EXPECT_EQ(mesh.edges, closed);
}

TEST(CloseHole, OneEdgeIsReportedAndStays) {
    PIN mesh;
    mesh.points.resize(1);
    mesh.edges = {{0, -1, 0}};
    mesh.p2e = {0};
    const LogCapture log;
    FillHoles(mesh, 10);
    EXPECT_EQ(mesh.edges, (Edges{{0, -1, 0}}));
    EXPECT_EQ(log.Texts(EMessageType::Error), std::vector<std::string>{OneOrphan});
    EXPECT_EQ(log.Lines().size(), 1u);
}

// All four circles of a square are the same.
TEST(CloseHole, OfEqualCornersTheFirstIsCut) {
    const Edges added = FilledIn(Cone({P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(0, 1, 0)}));
    EXPECT_EQ(added, (Edges{{13, 0, 1}, {14, 15, 0}, {12, 3, 2}, {16, 13, 2}, {17, 9, 0}, {15, 6, 3}}));
}

// The corner at node 3 has a circle of radius 2.9, the others have some of 3.2 to 3.7.
TEST(CloseHole, TheCornerWithTheSmallestCircleIsCut) {
    const Edges added = FilledIn(Cone({P(0, 0, 0), P(4, 0, 0), P(5, 5, 0), P(4, 6, 0), P(0, 5, 0)}));
    ASSERT_EQ(added.size(), 9u);
    EXPECT_EQ(added[0], (Edge{16, 6, 3}));
    EXPECT_EQ(added[1].P0, 2);
    EXPECT_EQ(added[2], (Edge{15, 9, 4}));
}

// Node 0 lies between node 3 and node 1, and nearly on their line: the corner is last in the list and its second edge is
// the first.
TEST(CloseHole, ACornerAcrossTheBeginningLeavesItsNewEdgeThere) {
    const Edges added = FilledIn(Cone({P(0, 0, 0), P(1, 0, 0), P(50, 60, 0), P(0, 1, 0)}));
    EXPECT_EQ(added, (Edges{{13, 9, 0}, {14, 15, 3}, {12, 0, 1}, {16, 13, 1}, {17, 6, 3}, {15, 3, 2}}));
}

// All nodes on a line: the chords are 5, 2, 5, 2 long.
TEST(CloseHole, OnALineTheShortestChordWins) {
    const Edges added = FilledIn(Cone({P(0, 0, 0), P(1, 0, 0), P(5, 0, 0), P(3, 0, 0)}));
    EXPECT_EQ(added, (Edges{{13, 3, 2}, {14, 17, 1}, {12, 6, 3}, {16, 0, 1}, {17, 9, 0}, {15, 13, 3}}));
}

// A straight corner counts ten times its chord, here 30, and so is worse than one with a circle of radius 18.
TEST(CloseHole, AStraightCornerCountsTenTimesItsChord) {
    const PIN mesh = Cone({P(0, 0, 0), P(1, 0, 0), P(3, 0, 0), P(20, 20, 0), P(0, 20, 0)});
    EXPECT_EQ(PlainScore(mesh, 0, 3), 30.0);
    const Edges added = FilledIn(mesh);
    EXPECT_NE(added[0].TE, 0);
    ExpectAsPlain(mesh);
}

//  3 - 2
//  | \ |    The best corners of the border would be those at 0 and 2, but each lies on one face.
//  0 - 1
TEST(CloseHole, TwoEdgesOfOneFaceAreNoCorner) {
    PIN mesh = UnitSquare();
    mesh.points[1].X = 9.0;
    const PIN before = mesh;
    FillHoles(mesh, 4);
    for (const Edge& e : Appended(before, mesh)) EXPECT_FALSE(e.P0 == 1 && mesh.edges[e.NE].P0 == 3);
    EXPECT_EQ(TrianglesOf(mesh).size(), 4u);
    ExpectClosed(mesh);
    ExpectAsPlain(before);
}

TEST(CloseHole, ABorderThatIsAllOneFaceStays) {
    PIN mesh;
    mesh.points = {P(0, 0, 0), P(1, 0, 0), P(2, 1, 0), P(1, 2, 0), P(0, 2, 0)};
    for (int i = 0; i < 5; ++i) mesh.edges.push_back({(i + 1) % 5, -1, i});
    const Edges before = mesh.edges;
    const LogCapture log;
    FillHoles(mesh, 5);
    EXPECT_EQ(mesh.edges, before);
    EXPECT_EQ(log.Texts(EMessageType::Warning), std::vector<std::string>{NoCorner + "5"});
    EXPECT_EQ(log.Lines().size(), 1u);
}

// Each corner but one has one of the two nodes without a place.
TEST(CloseHole, WhereNoCornerIsLeftTheRestStaysOpen) {
    std::vector<P> ring;
    for (int i = 0; i < 7; ++i) ring.emplace_back(std::cos(0.9 * i), std::sin(0.9 * i), 0.0);
    PIN mesh = Cone(ring);
    mesh.points[0] = P(NaN, 0, 0);
    mesh.points[3] = P(0, Infinity, 0);
    const std::size_t edgeCount = mesh.edges.size();
    const LogCapture log;
    FillHoles(mesh, 7);
    EXPECT_EQ(log.Texts(EMessageType::Warning), std::vector<std::string>{NoCorner + "6"});
    EXPECT_EQ(mesh.edges.size(), edgeCount + 3);
    EXPECT_EQ(OrphanCount(mesh), 6);
    RebuildNodeEdges(mesh);
    ExpectSound(mesh);
}

TEST(CloseHole, CoordinatesFarOffAreNoCorner) {
    std::vector<P> ring;
    for (int i = 0; i < 5; ++i) ring.emplace_back(3e19 * i, i % 2 == 0 ? 1e25 : -1e25, 0.0);
    PIN mesh = Cone(ring);
    const LogCapture log;
    FillHoles(mesh, 5);
    EXPECT_EQ(log.Texts(EMessageType::Warning), std::vector<std::string>{NoCorner + "5"});
    EXPECT_EQ(OrphanCount(mesh), 5);
}

/// Rings of one kind, by the seed: on a coarse lattice, where circles tie and points coincide; on a line; on a circle; sound
/// ones; hostile ones.
std::vector<P> Ring(unsigned seed) {
    Numbers numbers(seed);
    const int count = 4 + numbers.Below(seed % 10 == 0 ? 300 : 40);
    std::vector<P> ring;
    for (int i = 0; i < count; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / count;
        const P onLattice = {static_cast<double>(numbers.Below(4)), static_cast<double>(numbers.Below(4)), 0.0};
        const P kinds[] = {onLattice, onLattice.X * P(1, 2, 3), P(std::cos(angle), std::sin(angle), 0.0),
                           numbers.PointBetween(-9.0, 9.0), numbers.HostilePoint()};
        ring.push_back(kinds[seed % 5]);
    }
    return ring;
}

TEST(CloseHole, AgreesWithASearchOfTheListForEachCut) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectAsPlain(Cone(Ring(seed)));
    }
}

TEST(CloseHole, AHoleOf50000EdgesClosesAtOnce) {
    std::vector<P> ring;
    for (int i = 0; i < 50000; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / 50000;
        const double radius = 100.0 + std::sin(17.0 * angle) + 0.3 * (i % 3);
        ring.emplace_back(radius * std::cos(angle), radius * std::sin(angle), std::cos(5.0 * angle));
    }
    PIN mesh = Cone(ring);
    FillHoles(mesh, 50000);
    EXPECT_EQ(mesh.edges.size(), 3u * (50000 + 49998));
    EXPECT_EQ(OrphanCount(mesh), 0);
}

}  // namespace
}  // namespace KM
