#include "Mesh/Algorithms/PlaneDivision.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>

#include "Mesh/Algorithms/PlainAnalysis.h"
#include "Support/BrokenMeshes.h"
#include "Support/HostilePoints.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;

struct Divided {
    Divided(const PIN& mesh, const P& at, const P& normal) {
        const double point[] = {at.X, at.Y, at.Z};
        const double direction[] = {normal.X, normal.Y, normal.Z};
        result = PlnDivMesh(mesh, point, direction, below, above);
    }

    int result;
    PIN below;
    PIN above;
};

/// Divides at a height.
Divided AtHeight(const PIN& mesh, double z) { return Divided(mesh, P(0, 0, z), P(0, 0, 1)); }

bool IsUntouched(const PIN& part) { return part.points.empty() && part.edges.empty() && part.p2e.empty(); }

void ExpectRefused(const Divided& parts) {
    EXPECT_EQ(parts.result, 1);
    EXPECT_TRUE(IsUntouched(parts.below) && IsUntouched(parts.above));
}

/// The same records; of numbers that are none, one is as good as another.
bool SameMesh(const PIN& a, const PIN& b) {
    return a.edges == b.edges && a.p2e == b.p2e &&
           std::equal(a.points.begin(), a.points.end(), b.points.begin(), b.points.end(),
                      [](const P& p, const P& q) { return SameBits(p, q); });
}

void ExpectPlainRule(const PIN& mesh, const P& point, const P& normal) {
    const PlainDivision expected = PlainDivide(mesh, point, normal);
    const Divided parts(mesh, point, normal);
    ASSERT_EQ(parts.result, expected.result);
    ASSERT_TRUE(SameMesh(parts.below, expected.below));
    ASSERT_TRUE(SameMesh(parts.above, expected.above));
}

double AreaOf(const PIN& mesh) {
    double twice = 0.0;
    for (const auto& t : TrianglesOf(mesh))
        twice += Length(Cross(mesh.points[t[1]] - mesh.points[t[0]], mesh.points[t[2]] - mesh.points[t[0]]));
    return twice / 2.0;
}

//  3 - 2
//  | \ |    the unit square, upright: node 3 and node 2 are at height 1
//  0 - 1
PIN UprightSquare() {
    PIN mesh = UnitSquare();
    for (P& p : mesh.points) p = P(p.X, 0, p.Y);
    return mesh;
}

PIN TriangleAt(double a, double b, double c) {
    PIN mesh = RightTriangle();
    mesh.points[0].Z = a;
    mesh.points[1].Z = b;
    mesh.points[2].Z = c;
    return mesh;
}

TEST(PlnDivMesh, DoesNothingToAMeshOnOneSide) {
    for (const double z : {-1.0, 2.0, 1.5, -1e-6, 1.0 + 1e-6}) ExpectRefused(AtHeight(Cube(), z));
}

TEST(PlnDivMesh, DoesNothingWithoutEdgesOrPoints) {
    ExpectRefused(AtHeight(PIN(), 0.0));
    PIN mesh = RightTriangle();
    mesh.points.clear();
    ExpectRefused(AtHeight(mesh, 0.0));
    mesh = RightTriangle();
    mesh.edges.clear();
    ExpectRefused(AtHeight(mesh, 0.0));
}

TEST(PlnDivMesh, SplitsATriangleWithOneNodeBelow) {
    const Divided parts = AtHeight(TriangleAt(-1, 1, 1), 0.0);
    ASSERT_EQ(parts.result, 0);
    EXPECT_EQ(parts.below.points, (std::vector<P>{P(0, 0, -1), P(0.5, 0, 0), P(0, 0.5, 0)}));
    EXPECT_EQ(parts.above.points, (std::vector<P>{P(1, 0, 1), P(0, 1, 1), P(0.5, 0, 0), P(0, 0.5, 0)}));
    EXPECT_EQ(TrianglesOf(parts.below).size(), 1u);
    EXPECT_EQ(TrianglesOf(parts.above).size(), 2u);
    ExpectCompact(parts.below);
    ExpectCompact(parts.above);
}

TEST(PlnDivMesh, OpensABorderAlongTheCut) {
    const Divided parts = AtHeight(UprightSquare(), 0.25);
    ASSERT_EQ(parts.result, 0);
    for (const PIN* part : {&parts.below, &parts.above}) {
        ExpectCompact(*part);
        EXPECT_EQ(std::count_if(part->points.begin(), part->points.end(), [](const P& p) { return p.Z == 0.25; }), 3);
        EXPECT_EQ(AllOrphanLoops(*part).size(), 1u);
    }
    EXPECT_EQ(AreaOf(parts.below), 0.25);
    EXPECT_EQ(AreaOf(parts.above), 0.75);
}

TEST(PlnDivMesh, PartsTwinsAcrossTheCut) {
    //  2       cut along 1-3, which lies in the plane
    //  3 - 1
    //  0
    PIN mesh = UnitSquare();
    mesh.points = {P(0, 0, -1), P(1, 0, 0), P(1, 0, 1), P(0, 0, 0)};
    ASSERT_EQ(mesh.edges[1].TE, 5);
    const Divided parts = AtHeight(mesh, 0.0);
    ASSERT_EQ(parts.result, 0);
    EXPECT_EQ(parts.below.edges, (std::vector<Edge>{{1, -1, 0}, {2, -1, 1}, {0, -1, 2}}));
    EXPECT_EQ(parts.below.points, (std::vector<P>{P(0, 0, -1), P(1, 0, 0), P(0, 0, 0)}));
    EXPECT_EQ(parts.above.edges, (std::vector<Edge>{{1, -1, 0}, {2, -1, 1}, {0, -1, 2}}));
    EXPECT_EQ(parts.above.points, (std::vector<P>{P(1, 0, 0), P(1, 0, 1), P(0, 0, 0)}));
    EXPECT_EQ(parts.above.p2e, (std::vector<int>{0, 1, 2}));
}

TEST(PlnDivMesh, KeepsTwinsOnOneSide) {
    const Divided parts = AtHeight(Sphere(6), 0.1);
    ASSERT_EQ(parts.result, 0);
    for (const PIN* part : {&parts.below, &parts.above}) {
        ExpectCompact(*part);
        EXPECT_EQ(AllOrphanLoops(*part).size(), 1u);
        EXPECT_EQ(EulerCharacteristic(*part), 1);
        for (const std::vector<int>& border : AllOrphanLoops(*part))
            for (const int e : border) EXPECT_NEAR(part->points[part->edges[e].P0].Z, 0.1, 1e-12);
    }
    EXPECT_EQ(OrphanCount(parts.below), OrphanCount(parts.above));
}

TEST(PlnDivMesh, DoublesANodeThatTouches) {
    const Divided parts = AtHeight(TriangleAt(0, 1, 1), 0.0);
    ASSERT_EQ(parts.result, 0);
    EXPECT_EQ(parts.below.points, std::vector<P>{P(0, 0, 0)});
    EXPECT_TRUE(parts.below.edges.empty());
    EXPECT_EQ(parts.below.p2e, std::vector<int>{0});
    EXPECT_TRUE(SameRecords(parts.above, TriangleAt(0, 1, 1)));
}

TEST(PlnDivMesh, NoticesATouchCloserThanItClassifies) {
    for (const double z : {9e-8, -9e-8, 0.0}) EXPECT_EQ(AtHeight(TriangleAt(z, 1, 1), 0.0).result, 0) << z;
    ExpectRefused(AtHeight(TriangleAt(1e-7, 1, 1), 0.0));
    ExpectRefused(AtHeight(TriangleAt(1e-6, 1, 1), 0.0));
    const Divided parts = AtHeight(TriangleAt(1e-6, 0, 1), 0.0);  // the other touch lets the wide limit speak
    EXPECT_EQ(parts.below.points.size(), 2u);
    for (const double z : {1e-5, -1e-5}) {
        PIN mesh = BowTie();
        mesh.points[3].Z = z;
        const Divided limit = AtHeight(mesh, 0.0);
        ASSERT_EQ(limit.result, 0);
        EXPECT_EQ(limit.below.points.size(), z > 0 ? 4u : 5u);
        EXPECT_EQ(limit.above.points.size(), z > 0 ? 5u : 4u);
    }
}

TEST(PlnDivMesh, PutsTrianglesInThePlaneAbove) {
    const Divided parts = AtHeight(Grid(3), 0.0);
    ASSERT_EQ(parts.result, 0);
    EXPECT_TRUE(SameRecords(parts.above, [] {
        PIN mesh = Grid(3);
        RebuildNodeEdges(mesh);
        return mesh;
    }()));
    EXPECT_EQ(parts.below.points, Grid(3).points);
    EXPECT_TRUE(parts.below.edges.empty());
    EXPECT_EQ(parts.below.p2e, std::vector<int>(16, 0));
}

TEST(PlnDivMesh, GivesAnEdgeInThePlaneToTheSideOfItsTriangle) {
    const Divided below = AtHeight(TriangleAt(0, 0, -1), 0.0);
    EXPECT_EQ(below.below.edges.size(), 3u);
    const Divided above = AtHeight(TriangleAt(0, 0, 1), 0.0);
    EXPECT_EQ(above.above.edges.size(), 3u);
}

TEST(PlnDivMesh, LeavesTheInputAlone) {
    const PIN mesh = Cube();
    const PIN before = mesh;
    AtHeight(mesh, 0.3);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(PlnDivMesh, TakesANormalOfAnyLength) {
    const PIN mesh = BumpySphere(5);
    const Divided expected(mesh, P(0, 0, 3), P(0, 0, 1));
    for (const double length : {1e-6, 0.25, 1024.0}) {
        const Divided parts(mesh, P(0, 0, 3), P(0, 0, length));
        EXPECT_TRUE(SameRecords(parts.below, expected.below) && SameRecords(parts.above, expected.above));
    }
    const Divided parts(mesh, P(0, 0, 3), P(1e-9, 0, 0));  // no direction: up
    EXPECT_TRUE(SameRecords(parts.below, expected.below) && SameRecords(parts.above, expected.above));
    const Divided turned(mesh, P(0, 0, 3), P(0, 0, -1));
    EXPECT_EQ(turned.below.points.size(), expected.above.points.size());
}

TEST(PlnDivMesh, AppendsToWhatIsThere) {
    const PIN mesh = Cube();
    Divided fresh = AtHeight(mesh, 0.3);
    PIN below = Grid(1), above = UnitSquare();
    const double point[] = {0, 0, 0.3}, normal[] = {0, 0, 1};
    ASSERT_EQ(PlnDivMesh(mesh, point, normal, below, above), 0);
    PIN expectedBelow = Grid(1), expectedAbove = UnitSquare();
    Append(expectedBelow, fresh.below);
    Append(expectedAbove, fresh.above);
    RebuildNodeEdges(expectedBelow);
    RebuildNodeEdges(expectedAbove);
    EXPECT_TRUE(SameRecords(below, expectedBelow));
    EXPECT_TRUE(SameRecords(above, expectedAbove));
}

TEST(PlnDivMesh, MayAppendToTheMeshThatItDivides) {
    const double point[] = {0, 0, 0.3}, normal[] = {0, 0, 1};
    PIN mesh = Cube(), above;
    ASSERT_EQ(PlnDivMesh(mesh, point, normal, mesh, above), 0);
    PIN expected = Cube();
    Append(expected, AtHeight(Cube(), 0.3).below);
    RebuildNodeEdges(expected);
    EXPECT_TRUE(SameRecords(mesh, expected));
    PIN again = Cube(), below;
    ASSERT_EQ(PlnDivMesh(again, point, normal, below, again), 0);
    EXPECT_EQ(again.points.size(), 8u + above.points.size());
}

TEST(PlnDivMesh, RefusesWhatIsMissingOrTheSame) {
    const double point[] = {0, 0, 0.3}, normal[] = {0, 0, 1};
    PIN below, above;
    EXPECT_EQ(PlnDivMesh(Cube(), nullptr, normal, below, above), 1);
    EXPECT_EQ(PlnDivMesh(Cube(), point, nullptr, below, above), 1);
    EXPECT_EQ(PlnDivMesh(Cube(), point, normal, below, below), 1);
    EXPECT_TRUE(IsUntouched(below) && IsUntouched(above));
}

TEST(PlnDivMesh, RefusesAPlaneThatIsNone) {
    for (const double bad : {NaN, Infinity, -Infinity}) {
        ExpectRefused(Divided(Cube(), P(0, bad, 0.3), P(0, 1, 1)));
        ExpectRefused(Divided(Cube(), P(0, 0, 0.3), P(0, bad, 1)));
    }
}

TEST(PlnDivMesh, RefusesBrokenLinks) {
    for (const int wrong : {-2, 77, INT_MAX, INT_MIN}) {
        PIN mesh = Cube();
        mesh.edges[5].P0 = wrong;
        ExpectRefused(AtHeight(mesh, 0.3));
        mesh = Cube();
        mesh.edges[5].NE = wrong < 0 ? 77 : wrong;
        ExpectRefused(AtHeight(mesh, 0.3));
    }
    PIN mesh = Cube();
    mesh.edges[5] = Edge();  // its triangle is not dead as a whole
    ExpectRefused(AtHeight(mesh, 0.3));
}

TEST(PlnDivMesh, TakesATwinThatDoesNotExistForNone) {
    for (const int wrong : {-2, 77, INT_MAX, INT_MIN}) {
        PIN mesh = UprightSquare();
        const Divided expected = AtHeight(mesh, 0.25);
        for (Edge& edge : mesh.edges)
            if (edge.TE == -1) edge.TE = wrong;
        const Divided parts = AtHeight(mesh, 0.25);
        ASSERT_EQ(parts.result, 0);
        EXPECT_TRUE(SameRecords(parts.below, expected.below) && SameRecords(parts.above, expected.above));
    }
}

TEST(PlnDivMesh, RefusesToSplitBetweenFacesThatDoNotMatch) {
    PIN mesh = UprightSquare();
    mesh.edges[5].TE = -1;  // the twin of edge 1, of which it knows nothing
    ExpectRefused(AtHeight(mesh, 0.25));
    mesh = UprightSquare();
    mesh.edges[1].TE = 2;  // of the same triangle
    mesh.edges[2].TE = 1;
    ExpectRefused(AtHeight(mesh, 0.25));
    mesh = UprightSquare();
    mesh.edges[1].TE = mesh.edges[5].TE = -1;
    mesh.edges[2].TE = 3;  // runs elsewhere
    mesh.edges[3].TE = 2;
    ExpectRefused(AtHeight(mesh, 0.25));
}

TEST(PlnDivMesh, RefusesToSplitAFaceThatIsNoTriangle) {
    PIN mesh = Dissolved(UprightSquare(), 1, 100);
    ASSERT_EQ(std::count(mesh.edges.begin(), mesh.edges.end(), Edge{-1, 5, -1}), 1);
    ExpectRefused(AtHeight(mesh, 0.25));
    const Divided parts = AtHeight(mesh, 0.0);  // touches only
    ASSERT_EQ(parts.result, 0);
    EXPECT_EQ(Loop(parts.above, 0).size(), 4u);
}

TEST(PlnDivMesh, LeavesDeadRecordsBehind) {
    PIN mesh = Cube();
    DeleteTriangle(mesh, 0);
    DeleteTriangle(mesh, 21);
    const Divided parts = AtHeight(mesh, 0.3);
    ASSERT_EQ(parts.result, 0);
    ExpectSound(parts.below);
    ExpectSound(parts.above);
    EXPECT_NEAR(AreaOf(parts.below) + AreaOf(parts.above), 5.0, 1e-12);
}

TEST(PlnDivMesh, PartsHaveTheAreaOfTheWhole) {
    const PIN mesh = BumpySphere(20);
    const double area = AreaOf(mesh);
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        const P point = next.PointBetween(-90, 90);
        const P normal = next.Direction();
        const Divided parts(mesh, point, normal);
        if (parts.result == 1) continue;
        EXPECT_NEAR(AreaOf(parts.below) + AreaOf(parts.above), area, 1e-9 * area);
        const Plane plane(normal, point);
        for (const P& p : parts.below.points) EXPECT_LT(plane.Dist(p), 1e-5);
        for (const P& p : parts.above.points) EXPECT_GT(plane.Dist(p), -1e-5);
        ExpectSound(parts.below);
        ExpectSound(parts.above);
        EXPECT_EQ(OrphanCount(parts.below), OrphanCount(parts.above));
        EXPECT_TRUE(CollectNonTriangularLoops(parts.below).empty());
    }
}

TEST(PlnDivMesh, OfAPartByTheSamePlaneSplitsNothing) {
    const PIN mesh = Divided(BumpySphere(8), P(1, 2, 3), P(0, 0, 1)).below;
    const Divided parts(mesh, P(1, 2, 3), P(0, 0, 1));
    ASSERT_EQ(parts.result, 0);
    EXPECT_TRUE(SameRecords(parts.below, mesh));
    EXPECT_TRUE(parts.above.edges.empty());
    EXPECT_EQ(parts.above.points.size(), static_cast<std::size_t>(OrphanCount(mesh)));
}

TEST(PlnDivMesh, IsThePlainRuleToTheBit) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        const P point = next.PointBetween(-60, 60);
        const P normal = seed % 4 == 0 ? P(0, 0, 1) : next.Direction();
        ExpectPlainRule(BumpySphere(1 + static_cast<int>(seed % 9)), point, normal);
        ExpectPlainRule(FromFacets(Shuffled(BumpySphereFacets(6), seed)), point, normal);
        ExpectPlainRule(Cube(), P(0.5, 0.5, 0.5), normal);
        ExpectPlainRule(Sphere(6), P(0, 0, 0), P(0, 0, 1));
    }
}

TEST(PlnDivMesh, IsThePlainRuleWhereAllTrianglesAreSplit) {
    IndexedFacets sheet = GridFacets(30);
    for (P& p : sheet.points) p.Z = static_cast<int>(p.X + p.Y) % 2 == 0 ? 0.3 : -0.4;
    ExpectPlainRule(FromFacets(sheet), P(0, 0, 0), P(0, 0, 1));
}

/// Heights around both limits, some hostile; where products of distances vanish, and where distances are no numbers.
double HostileHeight(Numbers& next) {
    static constexpr double heights[] = {0.0,   1e-7, -1e-7, 9e-8, -9e-8, 1e-5,   -1e-5,   9e-6, -9e-6, 2e-5,
                                         -2e-5, 1.0,  -1.0,  3.0,  -7.0,  1e-200, -1e-200, 1e12, -1e12, -0.0};
    const int kind = next.Below(24);
    return kind < 20 ? heights[kind] : next.Hostile();
}

TEST(PlnDivMesh, IsThePlainRuleOnHostileHeights) {
    int divided = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        PIN mesh = seed % 3 == 0   ? RandomMesh(seed, 3 + next.Below(40))
                   : seed % 3 == 1 ? Sphere(1 + next.Below(3))
                                   : Grid(1 + next.Below(4));
        for (P& p : mesh.points) p.Z = HostileHeight(next);
        const P normal = next.Below(3) == 0 ? next.Direction() : P(0, 0, 1);
        ExpectPlainRule(mesh, P(0, 0, 0), normal);
        divided += AtHeight(mesh, 0.0).result == 0;
    }
    EXPECT_GT(divided, 2000);
}

TEST(PlnDivMesh, IsThePlainRuleOnHostilePoints) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        HostilePoints next(seed);
        PIN mesh = seed % 8 < 4 ? RandomMesh(seed, 40) : Sphere(2);
        for (P& p : mesh.points) p = next();
        const P point = next();
        ExpectPlainRule(mesh, point, next());
    }
}

TEST(PlnDivMesh, OfBrokenMeshesGivesLinksThatExist) {
    int divided = 0;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN sound = seed % 2 != 0 ? Sphere(3) : RandomMesh(seed, 40);
        PIN mesh = seed % 4 < 2 ? Broken(sound, seed) : WithBrokenLinks(sound, seed);
        Numbers next(seed);
        // Of links that are all of the right range more get through.
        if (seed % 3 != 0)
            for (Edge& edge : mesh.edges) {
                if (edge.NE < 0 || edge.NE >= static_cast<int>(mesh.edges.size())) edge.NE = 0;
                if (edge.P0 < 0 || edge.P0 >= static_cast<int>(mesh.points.size())) edge.P0 = 0;
            }
        for (P& p : mesh.points)
            if (seed % 5 != 0) p.Z = next.Below(4) == 0 ? 0.0 : 1.0;
        const Divided parts = AtHeight(mesh, 0.0);
        if (parts.result == 1) ExpectRefused(parts);
        else ++divided;
        for (const PIN* part : {&parts.below, &parts.above}) {
            ASSERT_EQ(part->p2e.size(), part->points.size());
            for (const Edge& edge : part->edges) {
                ASSERT_TRUE(edge.NE >= -1 && edge.NE < static_cast<int>(part->edges.size()));
                ASSERT_TRUE(edge.TE >= -1 && edge.TE < static_cast<int>(part->edges.size()));
                ASSERT_TRUE(edge.P0 >= -1 && edge.P0 < static_cast<int>(part->points.size()));
            }
        }
    }
    EXPECT_GT(divided, 500);
}

TEST(PlnDivMesh, TakesTimeInProportionToALoopInThePlane) {
    PIN polygon;
    const int count = 200'000;
    for (int i = 0; i < count; ++i) {
        polygon.points.push_back(P(i, i % 2, 0));
        polygon.edges.push_back({(i + 1) % count, -1, i});
    }
    EXPECT_EQ(AtHeight(polygon, 0.0).above.edges.size(), polygon.edges.size());
}

}  // namespace
}  // namespace KM
