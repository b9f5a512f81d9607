#include "Mesh/Algorithms/Normals.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <numbers>

#include "Mesh/Algorithms/PlainAnalysis.h"
#include "Support/BrokenMeshes.h"
#include "Support/HostilePoints.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;

const P Up(0, 0, 1);

std::vector<P> NormalsOf(const PIN& mesh, bool weighted) {
    std::vector<P> normals{P(9, 9, 9)};
    Normals(mesh, normals, weighted);
    return normals;
}

bool IsNaN(const P& p) { return std::isnan(p.X) && std::isnan(p.Y) && std::isnan(p.Z); }

/// `count` triangles round node 0, in the plane z = 0 but for waves; closed, or with a gap.
PIN Fan(int count, bool isClosed) {
    IndexedFacets fan;
    fan.points.push_back(P(0, 0, 0.1));
    for (int i = 0; i < count; ++i) {
        const double turn = 2.0 * std::numbers::pi * i / count;
        fan.points.push_back(P(std::cos(turn), std::sin(turn), 0.05 * (i % 5)));
    }
    for (int i = 0; i < count - (isClosed ? 0 : 1); ++i)
        fan.triples.insert(fan.triples.end(), {0, i + 1, (i + 1) % count + 1});
    return FromFacets(fan);
}

/// Four squares with a closed fan in the middle, at node 4; upright.
PIN UprightGrid() {
    IndexedFacets grid = GridFacets(2);
    for (P& p : grid.points) p = P(p.X, 0, p.Y);
    return FromFacets(grid);
}

//  3 - 2    The unit square, bent along 1-3: (0,1,3) lies flat, (1,2,3) rises towards node 2. The fan of node 1 is edge 1,
//  | \ |    of the flat triangle, and then edge 3, an orphan, of the other.
//  0 - 1
PIN BentSquare() {
    PIN mesh = UnitSquare();
    mesh.points[2].Z = 1.0;
    return mesh;
}

void ExpectSameNormals(const PIN& mesh) {
    for (const bool weighted : {false, true}) {
        const std::vector<P> expected = PlainNormals(mesh, weighted);
        const std::vector<P> normals = NormalsOf(mesh, weighted);
        ASSERT_EQ(normals.size(), expected.size());
        for (std::size_t node = 0; node < normals.size(); ++node)
            ASSERT_TRUE(SameBits(normals[node], expected[node])) << "node " << node << " weighted " << weighted;
    }
}

TEST(Normals, OfAFlatSquarePointUp) {
    for (const bool weighted : {false, true}) {
        EXPECT_EQ(NormalsOf(UnitSquare(), weighted), std::vector<P>(4, Up));
        EXPECT_EQ(NormalsOf(Grid(3), weighted), std::vector<P>(16, Up));
    }
}

TEST(Normals, OfAnEmptyMeshAreNone) {
    EXPECT_TRUE(NormalsOf(PIN(), false).empty());
    PIN points;
    points.points.resize(2);
    EXPECT_EQ(NormalsOf(points, true), std::vector<P>(2));
}

TEST(Normals, CountAllTrianglesOfAnOpenFan) {
    const PIN mesh = BentSquare();
    const P rising = SafeUnit(P(-1, -1, 1));
    const std::vector<P> normals = NormalsOf(mesh, false);
    EXPECT_EQ(normals[0], Up);
    EXPECT_EQ(normals[2], SafeUnit(rising));
    EXPECT_EQ(normals[1], SafeUnit((Up + rising) / 2.0));
}

TEST(Normals, AreWeightedByTheAreaInTheXYPlane) {
    PIN mesh = BentSquare();
    const P rising = SafeUnit(P(-1, -1, 1));
    EXPECT_EQ(NormalsOf(mesh, true)[1], SafeUnit((Up + rising) / 2.0));  // larger, but not seen from above
    mesh.points[0] = P(-1, 0, 0);
    EXPECT_EQ(NormalsOf(mesh, true)[1], SafeUnit((Up * 1.0 + rising * 0.5) / 1.5));
    mesh.points[2] = P(1, 0, 1);
    EXPECT_EQ(NormalsOf(mesh, true)[1], SafeUnit(SafeUnit(P(0, 0, 2)) * 1.0));
}

TEST(Normals, CountAreasUnsigned) {
    PIN mesh = Grid(2);
    Reverse(mesh);
    EXPECT_EQ(NormalsOf(mesh, true), std::vector<P>(9, P(0, 0, -1)));
}

TEST(Normals, OfUprightTrianglesAreZeroWhenWeighted) {
    EXPECT_EQ(NormalsOf(UprightGrid(), true), std::vector<P>(9));
    EXPECT_EQ(NormalsOf(UprightGrid(), false), std::vector<P>(9, P(0, -1, 0)));
}

TEST(Normals, CountATriangleWithoutAreaAsUp) {
    PIN mesh = UprightGrid();
    for (P& p : mesh.points) p = P(1, 2, 3);
    EXPECT_EQ(NormalsOf(mesh, false), std::vector<P>(9, Up));
    EXPECT_EQ(NormalsOf(mesh, true), std::vector<P>(9));
}

TEST(Normals, FollowTheHighestEdgeOfANodeWithTwoFans) {
    PIN mesh = BowTie();
    mesh.points[4].Z = 1.0;
    mesh.p2e[1] = 1;  // the other fan
    EXPECT_EQ(NormalsOf(mesh, false)[1], SafeUnit(SafeUnit(P(0, -1, 1))));
}

TEST(Normals, DoNotTrustTheEdgesThatNodesName) {
    const PIN mesh = BumpySphere(3);
    const std::vector<P> expected = NormalsOf(mesh, false);
    for (const int wrong : {-1, -2, 0, 7, INT_MAX, INT_MIN}) {
        PIN other = mesh;
        other.p2e.assign(mesh.p2e.size(), wrong);
        EXPECT_EQ(NormalsOf(other, false), expected) << wrong;
    }
    PIN other = mesh;
    other.p2e.clear();
    EXPECT_EQ(NormalsOf(other, false), expected);
    other.p2e.assign(mesh.p2e.size() + 5, 1);
    EXPECT_EQ(NormalsOf(other, false), expected);
}

TEST(Normals, OfANodeWithoutEdgesAreThoseOfTheEdgeItNames) {
    PIN mesh = BentSquare();
    const std::vector<P> own = NormalsOf(mesh, false);
    mesh.points.push_back(P(5, 5, 5));
    EXPECT_EQ(NormalsOf(mesh, false)[4], own[0]);  // no entry yet: a new one is 0
    for (const auto& [named, expected] : {std::pair(-1, P()), {3, own[1]}, {4, own[2]}, {6, P()}, {INT_MIN, P()}}) {
        mesh.p2e.resize(4);
        mesh.p2e.push_back(named);
        EXPECT_EQ(NormalsOf(mesh, false)[4], expected) << named;
    }
}

// As after the filling of holes, which empties `p2e`.
TEST(Normals, OfABorderDoNotSufferFromManyNodesWithoutEdges) {
    PIN mesh;
    mesh.points.resize(300'000);
    mesh.p2e.assign(mesh.points.size(), -1);
    Append(mesh, Fan(6, true));
    mesh.p2e.clear();
    ExpectSameNormals(mesh);
}

TEST(Normals, OfASphereAreItsRadii) {
    const PIN mesh = Sphere(20);
    for (const P& normal : NormalsOf(mesh, false)) EXPECT_NEAR(Length(normal), 1.0, 1e-15);
    const std::vector<P> normals = NormalsOf(mesh, false);
    for (std::size_t node = 0; node < normals.size(); ++node)
        EXPECT_LT(Length(normals[node] - mesh.points[node]), 0.02) << node;
}

TEST(Normals, AreThePlainRuleToTheBit) {
    for (const PIN& mesh : {Cube(), Grid(5), Sphere(8), BumpySphere(12), UprightGrid(), BowTie(),
                            FromFacets(Shuffled(BumpySphereFacets(15), 3)), Dissolved(BumpySphere(6), 1, 60)})
        ExpectSameNormals(mesh);
}

TEST(Normals, AreThePlainRuleOnLongFans) {
    for (const int count : {3, 22, 23, 24, 25, 26, 55, 56, 57, 900})
        for (const bool isClosed : {false, true}) ExpectSameNormals(Fan(count, isClosed));
}

TEST(Normals, AreThePlainRuleOnRandomMeshes) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 3 == 0 ? RandomMesh(seed, 60) : FromFacets(Shuffled(SphereFacets(1 + seed % 4), seed));
        HostilePoints next(seed);
        if (seed % 2 != 0)
            for (P& p : mesh.points) p = next();
        if (seed % 5 == 0) mesh = Dissolved(mesh, seed, 10);
        ExpectSameNormals(mesh);
    }
}

TEST(Normals, OfBrokenMeshesAreOneANode) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        const PIN sound = seed % 2 != 0 ? Sphere(3) : RandomMesh(seed, 40);
        const PIN mesh = seed % 4 < 2 ? Broken(sound, seed) : WithBrokenLinks(sound, seed);
        for (const bool weighted : {false, true}) ASSERT_EQ(NormalsOf(mesh, weighted).size(), mesh.points.size());
        for (int e = -2; e < static_cast<int>(mesh.edges.size()) + 2; ++e) NodeNormal(mesh, e, e % 2 != 0);
    }
}

TEST(Normals, LeaveOutATriangleWithoutNodes) {
    PIN mesh = BentSquare();
    mesh.edges[4].P0 = 77;  // node 2 of the rising triangle
    EXPECT_EQ(NormalsOf(mesh, false), (std::vector<P>{Up, Up, P(), Up}));
}

/// Each triangle's step back leads to the next one, and the last leads into the middle: walks never come round.
PIN CirclingLinks(int triangles) {
    PIN mesh;
    mesh.points.resize(static_cast<std::size_t>(triangles));
    for (int k = 0; k < triangles; ++k) {
        const int following = k + 1 < triangles ? k + 1 : triangles / 2;
        mesh.edges.push_back({3 * k + 1, -1, k});
        mesh.edges.push_back({3 * k + 2, -1, -1});
        mesh.edges.push_back({3 * k, 3 * following, -1});
    }
    mesh.p2e.resize(mesh.points.size());
    return mesh;
}

TEST(Normals, EndInTimeWhereLinksCircle) {
    const PIN mesh = CirclingLinks(100'000);
    EXPECT_EQ(NormalsOf(mesh, false), std::vector<P>(mesh.points.size()));
}

TEST(Normals, SufferFromACircleAtItsOwnNodesOnly) {
    PIN mesh = Grid(40);
    const std::vector<P> expected = NormalsOf(mesh, false);
    const int e = mesh.p2e[820];
    mesh.edges[PrevEdge(mesh, e)].TE = mesh.edges[PrevEdge(mesh, mesh.edges[mesh.edges[e].TE].NE)].TE;
    const std::vector<P> normals = NormalsOf(mesh, false);
    int others = 0;
    for (std::size_t node = 0; node < normals.size(); ++node) others += normals[node] != expected[node];
    EXPECT_LE(others, 2);
}

TEST(Normals, TakeTimeInProportionToALongLoop) {
    PIN polygon;
    const int count = 200'000;
    for (int i = 0; i < count; ++i) {
        polygon.points.push_back(P(i, i % 2, 0));
        polygon.edges.push_back({(i + 1) % count, -1, i});
    }
    polygon.p2e.resize(polygon.points.size());
    const std::vector<P> normals = NormalsOf(polygon, false);
    EXPECT_EQ(normals[0], P(0, 0, -1));
    EXPECT_EQ(normals[1], Up);
}

TEST(NodeNormal, CountsAllButTheLastTriangleOfAnOpenFan) {
    const PIN mesh = BentSquare();
    EXPECT_EQ(StartingEdge(mesh, mesh.p2e[1]), 1);
    EXPECT_EQ(NodeNormal(mesh, 1, false), Up);
    EXPECT_EQ(NodeNormal(mesh, 1, true), Up);
}

TEST(NodeNormal, DependsOnTheEdgeOfAnOpenFan) {
    PIN mesh = Fan(5, false);
    const int first = StartingEdge(mesh, mesh.p2e[0]);
    const int second = mesh.edges[mesh.edges[first].TE].NE;
    EXPECT_NE(NodeNormal(mesh, first, false), NodeNormal(mesh, second, false));
}

TEST(NodeNormal, OfAClosedFanIsTheAverageFromAnyEdge) {
    const PIN mesh = Sphere(6);
    const std::vector<P> normals = NormalsOf(mesh, false);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        EXPECT_TRUE(SameBits(NodeNormal(mesh, e, false), PlainNodeNormal(mesh, e, false)));
        EXPECT_LT(Length(NodeNormal(mesh, e, false) - normals[mesh.edges[e].P0]), 1e-14);
    }
}

TEST(NodeNormal, IsThePlainRuleToTheBit) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 2 == 0 ? RandomMesh(seed, 50) : Dissolved(BumpySphere(3), seed, 12);
        HostilePoints next(seed);
        if (seed % 3 == 0)
            for (P& p : mesh.points) p = next();
        for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
            if (mesh.edges[e].NE == -1) continue;
            ASSERT_TRUE(SameBits(NodeNormal(mesh, e, false), PlainNodeNormal(mesh, e, false))) << e;
        }
    }
}

TEST(NodeNormal, IsNoNumberWhereNothingCounts) {
    const PIN mesh = BentSquare();
    for (const int e : {3, 0, 6, -1, INT_MAX, INT_MIN}) EXPECT_TRUE(IsNaN(NodeNormal(mesh, e, false))) << e;
    EXPECT_TRUE(IsNaN(NodeNormal(PIN(), 0, true)));
}

TEST(NodeNormal, EndsOnAClosedFanOfUprightTriangles) {
    const PIN mesh = UprightGrid();
    EXPECT_EQ(NodeNormal(mesh, mesh.p2e[4], false), P(0, -1, 0));
    EXPECT_TRUE(IsNaN(NodeNormal(mesh, mesh.p2e[4], true)));
}

TEST(NodeNormal, EndsWhereLinksCircle) {
    PIN mesh = Sphere(3);
    const int e = mesh.p2e[5];
    const int second = mesh.edges[mesh.edges[e].TE].NE;
    mesh.edges[second].TE = mesh.edges[e].TE;  // comes back to itself, never to the edge
    NodeNormal(mesh, e, false);
}

}  // namespace
}  // namespace KM
