#include "Mesh/Algorithms/PlanarFilling.h"

#include <gtest/gtest.h>

#include <climits>

#include "Mesh/Algorithms/PlainFilling.h"
#include "Mesh/Core/Compaction.h"
#include "Support/BrokenMeshes.h"
#include "Support/Holes.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM {
namespace {

using namespace Test;
using Points = std::vector<TPoint<double>>;
using Ints = std::vector<int>;

/// The area of all triangles as they are seen in XY, and negative where they are seen from behind.
double AreaOf(const PIN& mesh, const Points& points) {
    double twice = 0.0;
    for (const auto& t : TrianglesOf(mesh))
        twice -= PointsUtils::SignedArea({points[t[0]], points[t[1]], points[t[2]]});
    return twice / 2.0;
}

/// The border that has the greatest area round it.
Ints OuterBorder(const PIN& mesh) {
    Ints outer;
    for (const Ints& loop : AllOrphanLoops(mesh))
        if (outer.empty() || SignedArea(mesh, mesh.points, loop) < SignedArea(mesh, mesh.points, outer)) outer = loop;
    return outer;
}

std::vector<Ints> Holes(const PIN& mesh) {
    std::vector<Ints> holes = AllOrphanLoops(mesh);
    std::erase_if(holes, [&](const Ints& loop) { return SignedArea(mesh, mesh.points, loop) < 0.0; });
    return holes;
}

/// A border that cannot be used: an edge that does not exist or is dead, or one whose start has no point.
struct BadLoop {
    PIN mesh = Grid(3);
    Points points = mesh.points;
    Ints loop = OuterBorder(mesh);
};

std::vector<BadLoop> BadLoops() {
    std::vector<BadLoop> bad;
    for (const int e : {-1, -2, INT_MIN, INT_MAX, static_cast<int>(Grid(3).edges.size())}) {
        bad.emplace_back();
        bad.back().loop.insert(bad.back().loop.begin() + 4, e);
    }
    bad.emplace_back();
    bad.back().mesh.edges[bad.back().loop[5]].NE = -1;
    bad.emplace_back();
    bad.back().mesh.edges[bad.back().loop[5]].P0 = 16;
    bad.emplace_back();
    bad.back().mesh.edges[bad.back().loop[5]].P0 = -7;
    bad.emplace_back();
    bad.back().points.resize(9);
    return bad;
}

TEST(FillHole, ASquareGetsTwoTriangles) {
    PIN mesh = Grid(3);
    VisitorOf<PIN> nobody;
    for (const int e : {24, 27}) DeleteTriangle(mesh, e);  // the square in the middle
    Compact(mesh, nobody);
    const std::vector<Ints> holes = Holes(mesh);
    ASSERT_EQ(holes.size(), 1u);
    const std::size_t edgeCount = mesh.edges.size();
    FillHole(mesh, mesh.points, holes[0]);
    EXPECT_EQ(mesh.edges.size(), edgeCount + 6);
    ExpectCompact(mesh);
    EXPECT_EQ(OrphanCount(mesh), 12);
    EXPECT_EQ(EulerCharacteristic(mesh), 1);
    EXPECT_EQ(AreaOf(mesh, mesh.points), 9.0);
}

TEST(FillHole, FillsHolesOfAnyShape) {
    int filled = 0;
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = WithHoles(Grid(20), seed, 6, 3, 40);
        for (const Ints& hole : Holes(mesh)) {
            FillHole(mesh, mesh.points, hole);
            ++filled;
        }
        ExpectCompact(mesh);
        EXPECT_EQ(AreaOf(mesh, mesh.points), 400.0);
        EXPECT_EQ(EulerCharacteristic(mesh), 1);
    }
    EXPECT_GT(filled, 100);
}

TEST(FillHole, LooksAtTheGivenPointsOnly) {
    PIN mesh = WithHoles(Grid(12), 7, 3, 20, 30);
    PIN upright = mesh;
    for (auto& p : upright.points) p = TPoint<double>(5.0, p.X, p.Y);
    for (const Ints& hole : Holes(mesh)) {
        FillHole(upright, mesh.points, hole);
        FillHole(mesh, mesh.points, hole);
    }
    EXPECT_EQ(upright.edges, mesh.edges);
    EXPECT_EQ(upright.p2e, mesh.p2e);
}

// Ears are cut counter-clockwise, so on the outer border they run as the edges there do.
TEST(FillHole, OfABorderThatRunsCounterClockwiseFindsNoTwins) {
    PIN mesh = UnitSquare();
    FillHole(mesh, mesh.points, OuterBorder(mesh));
    EXPECT_EQ(mesh.edges.size(), 12u);
    EXPECT_EQ(OrphanCount(mesh), 8);
    ExpectSound(mesh);
}

TEST(FillHole, OfFewerThanThreeEdgesIsNothing) {
    for (const Ints& loop : {Ints{}, Ints{0}, Ints{0, 1}}) {
        PIN mesh = RightTriangle();
        FillHole(mesh, mesh.points, loop);
        EXPECT_TRUE(SameRecords(mesh, RightTriangle()));
    }
}

TEST(FillHole, NamesNodeEdgesOnlyWhereAllNodesHaveOne) {
    PIN mesh = WithHoles(Grid(12), 7, 1, 20, 20);
    PIN emptied = mesh;
    emptied.p2e.clear();
    const Ints hole = Holes(mesh)[0];
    FillHole(mesh, mesh.points, hole);
    FillHole(emptied, mesh.points, hole);
    for (const int e : hole) EXPECT_GE(mesh.p2e[mesh.edges[e].P0], 6 * 144 - 3 * 18);
    EXPECT_EQ(emptied.edges, mesh.edges);
    EXPECT_TRUE(emptied.p2e.empty());
}

TEST(FillHole, RefusesWhatHasNoPoint) {
    for (BadLoop& bad : BadLoops()) {
        const PIN before = bad.mesh;
        FillHole(bad.mesh, bad.points, bad.loop);
        EXPECT_TRUE(SameRecords(bad.mesh, before));
    }
}

TEST(FillHole, AgreesWithThePlainRuleOnAnyBorder) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 2 == 0 ? RandomMesh(seed, 30) : WithHoles(Grid(9), seed, 4, 4, 20);
        PIN plain = mesh;
        Points points = mesh.points;
        Numbers numbers(seed);
        if (seed % 3 == 0)
            for (auto& p : points) p = seed % 2 == 0 ? numbers.HostilePoint() : numbers.PointBetween(0.0, 5.0);
        for (const Ints& loop : AllOrphanLoops(mesh)) {
            FillHole(mesh, points, loop);
            PlainFillHole(plain, points, loop);
        }
        EXPECT_TRUE(SameRecords(mesh, plain));
    }
}

TEST(Surround, OfASquareGivesAFrameOfThreeTimesItsSide) {
    PIN mesh = UnitSquare();
    Points points = mesh.points;
    Surround(mesh, points, OuterBorder(mesh));
    ASSERT_EQ(points.size(), 8u);
    const Points corners(points.begin() + 4, points.end());
    using P = TPoint<double>;
    EXPECT_EQ(corners, (Points{P(-1, 2, 0), P(-1, -1, 0), P(2, -1, 0), P(2, 2, 0)}));
    EXPECT_EQ(Points(mesh.points.begin() + 4, mesh.points.end()), Points(4));
    ExpectCompact(mesh);
    EXPECT_EQ(TrianglesOf(mesh).size(), 10u);
    EXPECT_EQ(OrphanCount(mesh), 4);
    EXPECT_EQ(EulerCharacteristic(mesh), 1);
    EXPECT_EQ(AreaOf(mesh, points), 9.0);
}

TEST(Surround, ClosesTheSpaceRoundAnyOutline) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = WithHoles(Grid(12), seed, 6, 3, 20);
        for (auto& p : mesh.points) p = TPoint<double>(p.X + 0.1 * p.Y, p.Y - 0.3 * p.X + 0.01 * p.X * p.Y, p.X);
        const double area = AreaOf(mesh, mesh.points);
        const std::size_t holes = Holes(mesh).size();
        const double inner = -SignedArea(mesh, mesh.points, OuterBorder(mesh)) / 2.0;
        Points points = mesh.points;
        Surround(mesh, points, OuterBorder(mesh));
        ExpectCompact(mesh);
        EXPECT_EQ(AllOrphanLoops(mesh).size(), holes + 1);
        const TPoint<double> a = points[points.size() - 4];
        const TPoint<double> c = points[points.size() - 2];
        EXPECT_NEAR(AreaOf(mesh, points), area + (c.X - a.X) * (a.Y - c.Y) - inner, 1e-9);
    }
}

TEST(Surround, TakesTheFourNodesThatTheMeshHasAlready) {
    PIN mesh = UnitSquare();
    Points points = mesh.points;
    for (int i = 0; i < 4; ++i) AddPoint(mesh, TPoint<double>(7, 8, 9));
    Surround(mesh, points, OuterBorder(mesh));
    EXPECT_EQ(mesh.points.size(), 8u);
    EXPECT_EQ(mesh.points[4], TPoint<double>(7, 8, 9));
    ExpectCompact(mesh);
}

TEST(Surround, CanTakeThePointsOfTheMeshItself) {
    PIN mesh = UnitSquare();
    PIN other = mesh;
    Points points = mesh.points;
    Surround(other, points, OuterBorder(other));
    Surround(mesh, mesh.points, OuterBorder(mesh));
    EXPECT_EQ(mesh.points, points);
    EXPECT_EQ(mesh.edges, other.edges);
    ExpectCompact(mesh);
}

TEST(Surround, CanBeRepeated) {
    PIN mesh = UnitSquare();
    for (int i = 0; i < 3; ++i) Surround(mesh, mesh.points, OuterBorder(mesh));
    ExpectCompact(mesh);
    EXPECT_EQ(mesh.points.size(), 16u);
    EXPECT_EQ(AreaOf(mesh, mesh.points), 27.0 * 27.0);
}

TEST(Surround, LeavesAMeshWithoutNodeEdgesWithout) {
    PIN mesh = UnitSquare();
    mesh.p2e.clear();
    Points points = mesh.points;
    Surround(mesh, points, OuterBorder(mesh));
    EXPECT_TRUE(mesh.p2e.empty());
    EXPECT_EQ(OrphanCount(mesh), 4);
}

TEST(Surround, RefusesWhatHasNoPoint) {
    for (BadLoop& bad : BadLoops()) {
        const PIN before = bad.mesh;
        const Points points = bad.points;
        Surround(bad.mesh, bad.points, bad.loop);
        EXPECT_TRUE(SameRecords(bad.mesh, before));
        EXPECT_EQ(bad.points, points);
    }
    PIN mesh = UnitSquare();
    Surround(mesh, mesh.points, {});
    EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
}

TEST(Surround, AgreesWithThePlainRuleOnAnyBorder) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 2 == 0 ? RandomMesh(seed, 30) : WithHoles(Grid(9), seed, 4, 4, 20);
        Numbers numbers(seed);
        Points points = mesh.points;
        if (seed % 3 == 0)
            for (auto& p : points) p = seed % 2 == 0 ? numbers.HostilePoint(true) : numbers.PointBetween(0.0, 5.0);
        PIN plain = mesh;
        Points plainPoints = points;
        for (const Ints& loop : AllOrphanLoops(mesh)) {
            Surround(mesh, points, loop);
            PlainSurround(plain, plainPoints, loop);
        }
        EXPECT_EQ(points, plainPoints);
        EXPECT_EQ(mesh.points, plain.points);
        EXPECT_EQ(mesh.edges, plain.edges);
        // The plain rule leaves wrong entries where a corner of the frame gets no triangle.
        if (FirstUnsoundness(plain).empty()) {
            EXPECT_EQ(mesh.p2e, plain.p2e);
        }
        ExpectSound(mesh);
    }
}

TEST(SignedArea, OfABorderIsTwiceItsArea) {
    PIN mesh = UnitSquare();
    EXPECT_EQ(SignedArea(mesh, mesh.points, OuterBorder(mesh)), -2.0);
    mesh = WithHoles(Grid(9), 1, 1, 3, 3);
    ASSERT_EQ(Holes(mesh).size(), 1u);
    EXPECT_EQ(SignedArea(mesh, mesh.points, Holes(mesh)[0]), 1.0);
    EXPECT_EQ(SignedArea(mesh, mesh.points, OuterBorder(mesh)), -162.0);
}

TEST(SignedArea, OfNothingOrOfWhatHasNoPointIsZero) {
    EXPECT_EQ(SignedArea(PIN(), {}, {}), 0.0);
    for (const BadLoop& bad : BadLoops()) EXPECT_EQ(SignedArea(bad.mesh, bad.points, bad.loop), 0.0);
}

TEST(PlanarFilling, BrokenLinksAndWildLoopsDoNoHarm) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        PIN mesh = seed % 2 == 0 ? Broken(Grid(5), seed) : WithBrokenLinks(Grid(5), seed);
        Points points = mesh.points;
        for (auto& p : points) p = numbers.Below(2) == 0 ? numbers.HostilePoint() : p;
        Ints loop;
        while (loop.size() < 12) {
            const int e = numbers.Below(static_cast<int>(mesh.edges.size()));
            const Edge& edge = mesh.edges[e];
            // Mostly such as are not refused.
            if (numbers.Below(200) == 0 || (edge.NE >= 0 && edge.P0 >= 0 && edge.P0 < 36)) loop.push_back(e);
        }
        SignedArea(mesh, points, loop);
        FillHole(mesh, points, loop);
        Surround(mesh, points, loop);
        VisitorOf<PIN> nobody;
        Compact(mesh, nobody);
    }
}

}  // namespace
}  // namespace KM
