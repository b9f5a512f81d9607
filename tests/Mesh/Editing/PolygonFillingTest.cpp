#include "Mesh/Editing/PolygonFilling.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Mesh/Core/Construction.h"
#include "Mesh/Editing/FaceChecks.h"
#include "Support/Numbers.h"
#include "Support/Polygons.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;
using Edges = std::vector<Edge>;

constexpr double Pi = std::numbers::pi;

//  3 - 2
//  |   |
//  0 - 1
const Soup Square = {P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(0, 1, 0)};

/// Points on the circle of radius 1 at the given angles, in degrees.
Soup OnCircle(const std::vector<double>& degrees) {
    Soup points;
    for (const double d : degrees) points.push_back(P(std::cos(d * Pi / 180), std::sin(d * Pi / 180), 0));
    return points;
}

/// The node that all chords of a freshly filled loop have in common.
int ApexOf(const PIN& filled) { return filled.edges.back().P0; }

int ApexOfFilling(const Soup& outline, int clockwise, int e) {
    PIN mesh = OneLoop(outline);
    TriangulatePolygon(mesh, clockwise, e);
    ExpectSound(mesh);
    EXPECT_EQ(mesh.edges.size(), 3 * outline.size() - 6);
    return ApexOf(mesh);
}

// The rules as plain as they can be written.

void PlainInsertFan(PIN& mesh, int e, int node) {
    const std::vector<int> L = Loop(mesh, e);
    const int m = static_cast<int>(L.size());
    const int base = EdgeCount(mesh);
    std::vector<int> X;
    for (const int edge : L) X.push_back(mesh.edges[edge].P0);
    for (int i = 0; i < m; ++i) {
        const int twinOfFirst = i == m - 1 ? base + 1 : base + 2 * i + 3;
        const int twinOfSecond = i == 0 ? base + 2 * (m - 1) : base + 2 * (i - 1);
        mesh.edges.push_back({base + 2 * i + 1, twinOfFirst, X[(i + 1) % m]});
        mesh.edges.push_back({L[i], twinOfSecond, node});
        mesh.edges[L[i]].NE = base + 2 * i;
    }
    mesh.p2e[node] = base + 1;
}

double PlainDirection(const PIN& mesh, int from, int to) {
    const P d = mesh.points[to] - mesh.points[from];
    const double angle = std::atan2(d.Y, d.X);
    return angle < 0 ? angle + 2 * Pi : angle;
}

int PlainWidest(const PIN& mesh, const std::vector<int>& L, int clockwise) {
    double best = -1e10;
    int position = 0;
    for (int i = 0; i < static_cast<int>(L.size()); ++i) {
        const int node = mesh.edges[L[i]].P0;
        const double out = PlainDirection(mesh, node, mesh.edges[mesh.edges[L[i]].NE].P0);
        const double back = PlainDirection(mesh, node, mesh.edges[PrevEdge(mesh, L[i])].P0);
        double opening = clockwise == 0 ? back - out : out - back;
        if (opening < 0) opening += 2 * Pi;
        else if (opening >= 2 * Pi) opening -= 2 * Pi;
        if (opening - best > 0.2) {
            best = opening;
            position = i;
        }
    }
    return position;
}

void PlainTriangulate(PIN& mesh, int clockwise, int e) {
    std::vector<int> L = Loop(mesh, e);
    const int m = static_cast<int>(L.size());
    if (m <= 3) return;
    std::rotate(L.begin(), L.begin() + PlainWidest(mesh, L, clockwise), L.end());
    auto& edges = mesh.edges;
    const auto next = [&edges] { return static_cast<int>(edges.size()); };
    edges[L[0]].NE = L[1];
    edges[L[1]].NE = next();
    edges.push_back({L[0], next() + 1, edges[L[2]].P0});
    for (int k = 2; k <= m - 3; ++k) {
        const int c = next();
        edges.push_back({L[k], c - 1, edges[L[0]].P0});
        edges[L[k]].NE = c + 1;
        edges.push_back({c, c + 2, edges[L[k + 1]].P0});
    }
    edges[L[m - 2]].NE = L[m - 1];
    edges.push_back({L[m - 2], next() - 1, edges[L[0]].P0});
    edges[L[m - 1]].NE = next() - 1;
}

TEST(InsertFan, OfATriangle) {
    PIN mesh = OneLoop({P(0, 0, 0), P(1, 0, 0), P(0, 1, 0)});
    AddPoint(mesh, P(0.2, 0.2, 0));
    InsertFan(mesh, 0, 3);
    EXPECT_EQ(
        mesh.edges,
        (Edges{{3, -1, 0}, {5, -1, 1}, {7, -1, 2}, {4, 6, 1}, {0, 7, 3}, {6, 8, 2}, {1, 3, 3}, {8, 4, 0}, {2, 5, 3}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2, 4}));
    ExpectSound(mesh);
    EXPECT_EQ(TrianglesOf(mesh).size(), 3u);
}

TEST(InsertFan, BeginsAtTheEdge) {
    PIN mesh = OneLoop({P(0, 0, 0), P(1, 0, 0), P(0, 1, 0)});
    AddPoint(mesh, P(0.2, 0.2, 0));
    InsertFan(mesh, 2, 3);
    EXPECT_EQ(mesh.edges[3], (Edge{4, 6, 0}));
    EXPECT_EQ(mesh.edges[4], (Edge{2, 7, 3}));
    EXPECT_EQ(mesh.edges[2].NE, 3);
    EXPECT_EQ(mesh.p2e[3], 4);
}

TEST(InsertFan, OfShortLoops) {
    for (int count = 1; count <= 2; ++count) {
        SCOPED_TRACE(count);
        PIN mesh = OneLoop(Soup(Square.begin(), Square.begin() + count));
        InsertFan(mesh, 0, AddPoint(mesh, P(5, 5, 0)));
        ExpectSound(mesh);
        EXPECT_EQ(EdgeCount(mesh), 3 * count);
    }
}

TEST(InsertFan, IsThePlainRuleOnRandomLoops) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = RandomLoops(seed);
        const int e = static_cast<int>(seed * 7 % mesh.edges.size());
        if (mesh.edges[e].NE == -1) continue;
        const int euler = EulerCharacteristic(mesh);
        const int node = AddPoint(mesh, P(0.1, 0.2, 0.3));
        PIN plain = mesh;
        InsertFan(mesh, e, node);
        PlainInsertFan(plain, e, node);
        EXPECT_TRUE(SameRecords(mesh, plain));
        ExpectSound(mesh);
        EXPECT_EQ(EulerCharacteristic(mesh), euler);
    }
}

TEST(InsertFan, KeepsTheAreaOfALoop) {
    const Soup outline = StarShaped(3, 40);
    PIN mesh = OneLoop(outline);
    InsertFan(mesh, 5, AddPoint(mesh, P(0, 0, 0)));
    double area = 0;
    for (const Soup& face : FaceOutlines(mesh)) {
        EXPECT_EQ(face.size(), 3u);
        EXPECT_GT(AreaOf(face), 0.0);
        area += AreaOf(face);
    }
    EXPECT_NEAR(area, AreaOf(outline), 1e-9 * area);
}

TEST(InsertFan, WithoutNodeEdges) {
    PIN mesh = OneLoop(Square);
    mesh.points.push_back(P(0.5, 0.5, 0));
    mesh.p2e.clear();
    InsertFan(mesh, 0, 4);
    EXPECT_EQ(EdgeCount(mesh), 12);
    EXPECT_TRUE(mesh.p2e.empty());
}

TEST(InsertFan, RefusesWhatDoesNotExist) {
    ExpectRefusesWhatIsNoEdge([](PIN& mesh, int e) { InsertFan(mesh, e, 0); });
    for (const int node : {-1, INT_MIN, 4, INT_MAX})
        ExpectRefusesWhatIsNoEdge([node](PIN& mesh, int) { InsertFan(mesh, 4, node); });
}

TEST(InsertFan, RefusesALoopThatDoesNotComeRound) {
    PIN mesh = OneLoop(Square);
    mesh.edges[3].NE = 1;
    const PIN before = mesh;
    InsertFan(mesh, 0, 2);
    TriangulatePolygon(mesh, 0, 0);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(InsertFan, SurvivesBrokenLinks) {
    ExpectSurvivesBrokenLinks([](PIN& mesh, int e) {
        if (e % 5 == 0) InsertFan(mesh, e, e % 20);
    });
}

TEST(TriangulatePolygon, OfASquare) {
    PIN mesh = OneLoop(Square);
    TriangulatePolygon(mesh, 0, 0);
    EXPECT_EQ(mesh.edges, (Edges{{1, -1, 0}, {4, -1, 1}, {3, -1, 2}, {5, -1, 3}, {0, 5, 2}, {2, 4, 0}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2, 3}));
    ExpectSound(mesh);
}

TEST(TriangulatePolygon, OfAPentagonFromTheEdge) {
    PIN mesh = OneLoop(OnCircle({0, 72, 144, 216, 288}));
    TriangulatePolygon(mesh, 0, 1);
    EXPECT_EQ(
        mesh.edges,
        (Edges{
            {8, -1, 0}, {2, -1, 1}, {5, -1, 2}, {7, -1, 3}, {0, -1, 4}, {1, 6, 3}, {3, 5, 1}, {6, 8, 4}, {4, 7, 1}}));
    ExpectSound(mesh);
}

TEST(TriangulatePolygon, LeavesUpToThreeEdgesAlone) {
    for (int count = 1; count <= 3; ++count) {
        PIN mesh = OneLoop(Soup(Square.begin(), Square.begin() + count));
        const PIN before = mesh;
        TriangulatePolygon(mesh, 0, 0);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(TriangulatePolygon, KeepsTheFirstCornerOfARegularPolygon) {
    for (int count = 4; count <= 40; ++count)
        for (int e = 0; e < count; ++e) {
            EXPECT_EQ(ApexOfFilling(Circle(count), 0, e), e);
            EXPECT_EQ(ApexOfFilling(Reversed(Circle(count)), 1, e), e);
        }
}

//  3 ---- 2      the corner 0 is right; that at 1, at (1, 0), is wider the further 2 leans out
//  |     /
//  0 - 1
TEST(TriangulatePolygon, TakesACornerThatIsWiderByMoreThanAFifth) {
    const auto apex = [](double more) {
        return ApexOfFilling({P(0, 0, 0), P(1, 0, 0), P(1 + std::sin(more), std::cos(more), 0), P(0, 1, 0)}, 0, 0);
    };
    EXPECT_EQ(apex(0.199), 0);
    EXPECT_EQ(apex(0.201), 1);
}

TEST(TriangulatePolygon, ComparesWithTheWidestSoFar) {
    // The corners open by 95, 103, 112, 118 and 112 degrees; 0.2 radians are 11.5 degrees.
    const Soup outline = {P(0, 0, 0), P(1.3895, 0, 0), P(1.61445, 0.97437, 0), P(0.7953, 1.54795, 0),
                          P(-0.09571, 1.09396, 0)};
    EXPECT_EQ(ApexOfFilling(outline, 0, 0), 2);
}

//  4 - 3
//  |    \     a dent at 1: its inner angle is the widest of all
//  0  1  2      (seen clockwise, it is the narrowest)
TEST(TriangulatePolygon, MeasuresOnTheSideThatIsAskedFor) {
    const Soup dented = {P(0, 0, 0), P(2, 1, 0), P(4, 0, 0), P(4, 4, 0), P(0, 4, 0)};
    EXPECT_EQ(ApexOfFilling(dented, 0, 0), 1);
    EXPECT_EQ(ApexOfFilling(Reversed(dented), 7, 0), 3);
    EXPECT_EQ(ApexOfFilling(dented, 1, 0), 0);
}

TEST(TriangulatePolygon, IgnoresHeights) {
    Soup outline = StarShaped(5, 20);
    const int apex = ApexOfFilling(outline, 0, 0);
    for (std::size_t i = 0; i < outline.size(); ++i) outline[i].Z = 100.0 * static_cast<double>(i % 7);
    EXPECT_EQ(ApexOfFilling(outline, 0, 0), apex);
}

TEST(TriangulatePolygon, IsThePlainRuleOnRandomLoops) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 2 == 0 ? RandomLoops(seed) : OneLoop(RandomOutline(seed, 4 + static_cast<int>(seed % 17)));
        const int e = static_cast<int>(seed * 7 % mesh.edges.size());
        if (mesh.edges[e].NE == -1) continue;
        const int euler = EulerCharacteristic(mesh);
        PIN plain = mesh;
        TriangulatePolygon(mesh, seed % 3 == 0, e);
        PlainTriangulate(plain, seed % 3 == 0, e);
        EXPECT_TRUE(SameRecords(mesh, plain));
        ExpectSound(mesh);
        EXPECT_EQ(EulerCharacteristic(mesh), euler);
        EXPECT_LE(Loop(mesh, e).size(), 3u);
    }
}

TEST(TriangulatePolygon, KeepsTheArea) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        const Soup outline = StarShaped(seed, 30);
        PIN mesh = OneLoop(outline);
        TriangulatePolygon(mesh, 0, 0);
        // Triangles that lie over others are turned, and count as negative.
        EXPECT_NEAR(AreaOf(FaceOutlines(mesh)), AreaOf(outline), 1e-9 * AreaOf(outline));
    }
}

TEST(TriangulatePolygon, TakesCoordinatesThatAreNoNumbers) {
    Soup outline = Square;
    for (P& p : outline) p.X = NaN;
    EXPECT_EQ(ApexOfFilling(outline, 0, 2), 2);
    outline = Circle(6);
    outline[3].Y = Infinity;
    ApexOfFilling(outline, 0, 0);
}

TEST(TriangulatePolygon, RefusesWhatDoesNotExist) {
    ExpectRefusesWhatIsNoEdge([](PIN& mesh, int e) { TriangulatePolygon(mesh, 0, e); });
    PIN mesh = OneLoop(Square);
    mesh.edges[2].P0 = 4;
    const PIN before = mesh;
    TriangulatePolygon(mesh, 0, 0);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(TriangulatePolygon, SurvivesBrokenLinks) {
    ExpectSurvivesBrokenLinks([](PIN& mesh, int e) { TriangulatePolygon(mesh, e % 2, e); });
}

}  // namespace
}  // namespace KM
