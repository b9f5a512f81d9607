#include "Mesh/Editing/ConvexPolygons.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Mesh/Editing/FaceChecks.h"
#include "Support/HostilePoints.h"
#include "Support/Polygons.h"

namespace KM {
namespace {

using namespace Test;
using Edges = std::vector<Edge>;

constexpr double Pi = std::numbers::pi;

//  3 - 2
//  | \ |    edges 1 and 5 are the pair between
//  0 - 1
const Edges SquareAsOne = {{3, -1, 0}, {-1, -1, -1}, {0, -1, 3}, {4, -1, 1}, {2, -1, 2}, {-1, -1, -1}};

/// The sharpest turn to the right of an outline, in radians; 0 for a convex one.
double WorstTurn(const Soup& outline) {
    double worst = 0.0;
    const std::size_t count = outline.size();
    for (std::size_t i = 0; i < count; ++i) {
        const P in = outline[(i + 1) % count] - outline[i];
        const P out = outline[(i + 2) % count] - outline[(i + 1) % count];
        worst = std::max(worst, -std::atan2(in.X * out.Y - in.Y * out.X, in.X * out.X + in.Y * out.Y));
    }
    return worst;
}

PIN Shaken(PIN mesh, unsigned seed) {
    Numbers next(seed);
    for (P& p : mesh.points) p += next.PointBetween(-0.2, 0.2);  // of a grid no triangle is turned over
    return mesh;
}

/// A grid stretched and turned to another one of whole numbers: what was straight is so to the last bit.
PIN TurnedGrid(unsigned seed) {
    Numbers next(seed);
    const double a = next.Below(31) + 1;
    const double b = next.Below(61) - 30;
    PIN mesh = Grid(6);
    for (P& p : mesh.points) p = P(a * p.X - b * p.Y, b * p.X + a * p.Y, p.Z);
    return mesh;
}

// The rule as plain as it can be written.

double PlainAngle(const PIN& mesh, int from, int to) {
    const P d = mesh.points[to] - mesh.points[from];
    const double angle = std::atan2(d.Y, d.X);
    return angle < 0 ? angle + 2 * Pi : angle;
}

double PlainTurn(const PIN& mesh, int p, int q) {
    const auto start = [&mesh](int e) { return mesh.edges[e].P0; };
    const auto end = [&mesh](int e) { return mesh.edges[mesh.edges[e].NE].P0; };
    const double turn = PlainAngle(mesh, start(q), end(q)) - PlainAngle(mesh, end(p), start(p));
    return turn < 0 ? turn + 2 * Pi : turn;
}

void PlainMerge(PIN& mesh, int startEdge) {
    std::vector<char> flags(mesh.edges.size(), 0);
    for (bool isMerged = true; isMerged;) {
        isMerged = false;
        const int size = EdgeCount(mesh);
        for (int i = 0; i < size; ++i) {
            const int x = (size + i + startEdge) % size;
            const auto [ne, t, start] = mesh.edges[x];
            if (flags[x] || ne == -1 || t == -1 || flags[t]) continue;
            flags[x] = flags[t] = 1;
            const int pe = PrevEdge(mesh, x);
            const int pt = PrevEdge(mesh, t);
            const int nt = mesh.edges[t].NE;
            if (!(PlainTurn(mesh, pe, nt) >= Pi && PlainTurn(mesh, pt, ne) >= Pi)) continue;
            mesh.edges[pe].NE = nt;
            mesh.edges[pt].NE = ne;
            mesh.p2e[mesh.edges[ne].P0] = ne;
            mesh.p2e[mesh.edges[nt].P0] = nt;
            mesh.edges[t] = mesh.edges[x] = {-1, -1, -1};
            isMerged = true;
        }
    }
}

TEST(DeleteEdgeBetweenLoops, MakesOneLoopOfTwo) {
    for (const int e : {1, 5}) {
        PIN mesh = UnitSquare();
        DeleteEdgeBetweenLoops(mesh, e);
        EXPECT_EQ(mesh.edges, SquareAsOne);
        EXPECT_EQ(mesh.p2e[1], 3);
        EXPECT_EQ(mesh.p2e[3], 2);
        ExpectSound(mesh);
    }
}

TEST(DeleteEdgeBetweenLoops, RefusesAnOrphanAndWhatIsNoEdge) {
    ExpectRefusesWhatIsNoEdge([](PIN& mesh, int e) { DeleteEdgeBetweenLoops(mesh, e); });
    ExpectRefusesWhatIsNoEdge([](PIN& mesh, int) { DeleteEdgeBetweenLoops(mesh, 3); });
}

//  Edges 4 and 5 are a spike from node 0 into the square, to node 4.
TEST(DeleteEdgeBetweenLoops, RefusesASpike) {
    PIN mesh = OneLoop({P(0, 0, 0), P(2, 0, 0), P(2, 2, 0), P(0, 2, 0), P(1, 1, 0)});
    mesh.edges = {{1, -1, 0}, {2, -1, 1}, {3, -1, 2}, {4, -1, 3}, {5, 5, 0}, {0, 4, 4}};
    mesh.p2e[4] = 5;
    ExpectSound(mesh);
    const PIN before = mesh;
    DeleteEdgeBetweenLoops(mesh, 4);
    DeleteEdgeBetweenLoops(mesh, 5);
    ToConvexPolygons(mesh, 0);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(DeleteEdgeBetweenLoops, RefusesATwinThatDoesNotKnowIt) {
    PIN mesh = UnitSquare();
    mesh.edges[5].TE = -1;
    const PIN before = mesh;
    DeleteEdgeBetweenLoops(mesh, 1);
    mesh.edges[1].TE = 99;
    DeleteEdgeBetweenLoops(mesh, 1);
    mesh.edges[1].TE = 5;
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(DeleteEdgeBetweenLoops, KeepsRandomMeshesSound) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = RandomLoops(seed);
        for (int e = static_cast<int>(seed % 5); e < EdgeCount(mesh); e += 7) {
            const bool areTwo = mesh.edges[e].TE != -1 && !AreOnSameLoop(mesh, e, mesh.edges[e].TE);
            const int euler = EulerCharacteristic(mesh);
            DeleteEdgeBetweenLoops(mesh, e);
            ExpectSound(mesh);
            EXPECT_TRUE(!areTwo || EulerCharacteristic(mesh) == euler);
        }
    }
}

TEST(ToConvexPolygonsOfMesh, MergesASquare) {
    PIN mesh = UnitSquare();
    ToConvexPolygons(mesh, 0);
    EXPECT_EQ(mesh.edges, SquareAsOne);
}

TEST(ToConvexPolygonsOfMesh, TakesEmptyAndSingleOnes) {
    PIN mesh;
    ToConvexPolygons(mesh, 5);
    EXPECT_TRUE(mesh.edges.empty());
    mesh = RightTriangle();
    ToConvexPolygons(mesh, 1);
    EXPECT_TRUE(SameRecords(mesh, RightTriangle()));
}

//  2
//    \ `.      the edge between the triangles runs from (0, 0) to (2, 0); 3 lies straight on from 2 over 0 at
//     0 - 1    (0.5, -2), and over 1 at (4.5, -2)
//      \ | `.
//        3
TEST(ToConvexPolygonsOfMesh, KeepsAnEdgeAtAConcaveCorner) {
    const auto isMerged = [](const P& fourth) {
        PIN mesh = FromFacets({{P(0, 0, 0), P(2, 0, 0), P(-0.5, 2, 0), fourth}, {0, 1, 2, 1, 0, 3}});
        ToConvexPolygons(mesh, 0);
        return mesh.edges[0].NE == -1;
    };
    EXPECT_FALSE(isMerged(P(0.4, -2, 0)));
    EXPECT_TRUE(isMerged(P(0.5, -2, 0)));
    EXPECT_TRUE(isMerged(P(0.6, -2, 0)));
    EXPECT_TRUE(isMerged(P(0.6, -2, 70)));
    EXPECT_TRUE(isMerged(P(4.4, -2, 0)));
    EXPECT_FALSE(isMerged(P(4.6, -2, 0)));
}

TEST(ToConvexPolygonsOfMesh, BeginsAtTheStartEdge) {
    // Two rows of squares: which diagonals and which sides go depends on who comes first.
    const auto merged = [](long long start) {
        PIN mesh = Grid(4);
        ToConvexPolygons(mesh, static_cast<int>(start));
        ExpectSound(mesh);
        return mesh.edges;
    };
    const int size = EdgeCount(Grid(4));
    EXPECT_NE(merged(0), merged(7));
    EXPECT_EQ(merged(7), merged(7 + size));
    EXPECT_EQ(merged(7), merged(7 - size));
    EXPECT_EQ(merged(7), merged(7 - 5 * size));
    merged(INT_MAX);
    merged(INT_MIN);
}

TEST(ToConvexPolygonsOfMesh, IsThePlainRuleOnRandomMeshes) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 4 == 0 ? Shaken(Dissolved(Grid(8), seed, 20), seed) : Shaken(RandomLoops(seed), seed);
        PIN plain = mesh;
        const int start = static_cast<int>(seed * 11) - 300;
        ToConvexPolygons(mesh, start % EdgeCount(mesh));
        PlainMerge(plain, start % EdgeCount(plain));
        EXPECT_TRUE(SameRecords(mesh, plain));
        ExpectSound(mesh);
    }
}

// Whether a straight corner counts as convex hangs on how the angles are rounded.
TEST(ToConvexPolygonsOfMesh, IsThePlainRuleAtStraightCorners) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = TurnedGrid(seed);
        PIN plain = mesh;
        ToConvexPolygons(mesh, static_cast<int>(seed));
        PlainMerge(plain, static_cast<int>(seed));
        EXPECT_TRUE(SameRecords(mesh, plain));
        ExpectSound(mesh);
    }
}

TEST(ToConvexPolygonsOfMesh, LeavesConvexFacesOfTheSameArea) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed == 0 ? Grid(12) : Shaken(Grid(12), seed);
        const std::size_t triangles = FaceOutlines(mesh).size();
        const double area = AreaOf(FaceOutlines(mesh));
        const int euler = EulerCharacteristic(mesh);
        ToConvexPolygons(mesh, static_cast<int>(seed) * 31);
        const std::vector<Soup> faces = FaceOutlines(mesh);
        EXPECT_LT(faces.size(), triangles * 2 / 3);
        for (const Soup& face : faces) EXPECT_LT(WorstTurn(face), 1e-9);
        EXPECT_NEAR(AreaOf(faces), area, 1e-9);
        EXPECT_EQ(EulerCharacteristic(mesh), euler);
    }
}

TEST(ToConvexPolygonsOfMesh, SurvivesBrokenLinks) {
    ExpectSurvivesBrokenLinks([](PIN& mesh, int e) {
        DeleteEdgeBetweenLoops(mesh, e);
        if (e % 40 == 0) ToConvexPolygons(mesh, e * 3);
    });
}

TEST(ToConvexPolygonsOfMesh, RefusesNodesThatDoNotExist) {
    PIN mesh = UnitSquare();
    for (const int e : {0, 2}) {
        mesh.edges[e].P0 = 4;
        const PIN before = mesh;
        ToConvexPolygons(mesh, 0);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(ToConvexPolygonsOfPolygon, GivesAConvexOneBack) {
    for (const Soup& polygon : {Soup{}, Soup{P(1, 2, 3)}, Circle(4), Circle(50)})
        EXPECT_EQ(ToConvexPolygons(polygon), std::vector<Soup>{polygon});
}

TEST(ToConvexPolygonsOfPolygon, TurnsAConvexOneThatRunsClockwise) {
    const std::vector<Soup> pieces = ToConvexPolygons(Reversed(Circle(12)));
    ASSERT_EQ(pieces.size(), 1u);
    EXPECT_EQ(pieces[0].size(), 12u);
    EXPECT_NEAR(AreaOf(pieces), AreaOf(Circle(12)), 1e-9);
}

//  5 - 4
//  |   |
//  |   3 - 2
//  |       |
//  0 ----- 1
TEST(ToConvexPolygonsOfPolygon, CutsAnAngleInTwo) {
    const Soup angle = {P(0, 0, 1), P(2, 0, 2), P(2, 1, 3), P(1, 1, 4), P(1, 2, 5), P(0, 2, 6)};
    const std::vector<Soup> pieces = ToConvexPolygons(angle);
    EXPECT_EQ(pieces.size(), 2u);
    EXPECT_DOUBLE_EQ(AreaOf(pieces), 3.0);
    for (const Soup& piece : pieces) {
        EXPECT_TRUE(PointsUtils::IsConvex(piece));
        // Heights come along.
        for (const P& p : piece) EXPECT_NE(std::find(angle.begin(), angle.end(), p), angle.end());
    }
}

TEST(ToConvexPolygonsOfPolygon, CutsOutlinesOfAllKinds) {
    const Soup outlines[] = {SpikyStar(60),
                             Spiral(80, 3),
                             Comb(12),
                             KeyHoles(3, 1e-3),
                             StarShaped(1, 90),
                             StarShaped(2, 15),
                             Digitised(300, 1.0),
                             Reversed(StarShaped(3, 40))};
    for (const Soup& outline : outlines) {
        const std::vector<Soup> pieces = ToConvexPolygons(outline);
        EXPECT_LT(pieces.size(), outline.size() - 2);
        for (const Soup& piece : pieces) EXPECT_GE(AreaOf(piece), -1e-9);
        EXPECT_NEAR(AreaOf(pieces), std::fabs(AreaOf(outline)), 1e-9 * std::fabs(AreaOf(outline)));
    }
}

TEST(ToConvexPolygonsOfPolygon, MakesConvexPieces) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        for (const Soup& piece : ToConvexPolygons(StarShaped(seed, 5 + static_cast<int>(seed))))
            EXPECT_LT(WorstTurn(piece), 1e-9);
    }
}

TEST(ToConvexPolygonsOfPolygon, TakesTimeThatGrowsWithTheOutline) {
    // With a walk round the growing piece for each merge this would take a minute.
    Soup outline = Circle(100000);
    outline[0] = P(99, 0, 0);
    const std::vector<Soup> pieces = ToConvexPolygons(outline);
    EXPECT_LT(pieces.size(), 10u);
}

TEST(ToConvexPolygonsOfPolygon, TakesPointsOfAllKinds) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        HostilePoints next(seed);
        Soup outline;
        for (unsigned i = 0; i < seed % 20; ++i) outline.push_back(next());
        EXPECT_LE(ToConvexPolygons(outline).size(), outline.size() + 1);
    }
}

}  // namespace
}  // namespace KM
