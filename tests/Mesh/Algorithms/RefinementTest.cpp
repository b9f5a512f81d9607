#include "Mesh/Algorithms/Refinement.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "Mesh/Algorithms/PlainRefinement.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Loops.h"
#include "Support/BrokenMeshes.h"
#include "Support/LogCapture.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/LogState.h"

namespace KM {
namespace {

using namespace Test;
using Edges = std::vector<Edge>;
using P = TPoint<double>;
using Verbose::EMessageType;

constexpr double Tiny = std::numeric_limits<double>::denorm_min();
constexpr double Largest = std::numeric_limits<double>::max();

PIN Triangle(const P& a, const P& b, const P& c) { return OneLoop({a, b, c}); }

double LongestEdge(const PIN& mesh) {
    double longest = 0.0;
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) longest = std::max(longest, EdgeLength(mesh, e));
    return longest;
}

double Area(const PIN& mesh) {
    double area = 0.0;
    for (const auto& [a, b, c] : TrianglesOf(mesh))
        area += Length(Cross(mesh.points[b] - mesh.points[a], mesh.points[c] - mesh.points[a])) / 2.0;
    return area;
}

void ExpectUnchanged(PIN mesh, double maxLength) {
    const PIN before = mesh;
    const LogCapture log;
    Refine(mesh, maxLength);
    EXPECT_TRUE(SameRecords(mesh, before)) << maxLength;
    EXPECT_TRUE(log.Lines().empty());
}

void ExpectRefused(PIN mesh, double maxLength, const std::string& lengthText) {
    const PIN before = mesh;
    const LogCapture log;
    Refine(mesh, maxLength);
    EXPECT_TRUE(SameRecords(mesh, before));
    EXPECT_EQ(log.Texts(EMessageType::Error),
              std::vector<std::string>{"Refine: a length of " + lengthText +
                                       " takes more than 100000000 new triangles, nothing is changed"});
    EXPECT_EQ(log.Lines().size(), 1u);
}

/// Refines as the plain form does, and gives its rounds.
int RefineAsPlain(PIN& mesh, double maxLength) {
    PIN plain = mesh;
    const int rounds = Plain::Refine(plain, maxLength);
    Refine(mesh, maxLength);
    EXPECT_TRUE(SameRecords(mesh, plain));
    return rounds;
}

TEST(Refine, ALimitAboveAllLengthsChangesNothing) {
    for (const PIN& mesh : {RightTriangle(), UnitSquare(), BowTie(), Cube(), Sphere(3), PIN()}) {
        ExpectUnchanged(mesh, LongestEdge(mesh));
        ExpectUnchanged(mesh, 100.0);
        ExpectUnchanged(mesh, Infinity);
    }
}

//  2
//  | \        Corner 1 is cut off first, then corner 0, then corner 2.
//  5 - 4
//  | \ | \    .
//  0 - 3 - 1
TEST(Refine, ATriangleWithThreeLongSidesBecomesFour) {
    PIN mesh = RightTriangle();
    EXPECT_EQ(RefineAsPlain(mesh, 0.9), 1);
    EXPECT_EQ(mesh.points, (Soup{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(0.5, 0, 0), P(0.5, 0.5, 0), P(0, 0.5, 0)}));
    EXPECT_EQ(mesh.edges, (Edges{{8, -1, 0},
                                 {6, -1, 1},
                                 {11, -1, 2},
                                 {1, -1, 3},
                                 {2, -1, 4},
                                 {0, -1, 5},
                                 {3, 7, 4},
                                 {10, 6, 3},
                                 {5, 9, 3},
                                 {7, 8, 5},
                                 {9, 11, 4},
                                 {4, 10, 5}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2, 3, 4, 5}));
}

TEST(Refine, AMagnitudeIsWhatCounts) {
    PIN mesh = Sphere(2);
    PIN other = mesh;
    Refine(mesh, 0.3);
    Refine(other, -0.3);
    EXPECT_TRUE(SameRecords(mesh, other));
    EXPECT_GT(mesh.edges.size(), Sphere(2).edges.size());
}

//  3 - 2
//  | 4 |    A long diagonal alone: its middle is joined with the two corners beside it.
//  0 - 1
TEST(Refine, OneLongEdgeIsJoinedWithTheOppositeCorners) {
    PIN mesh = UnitSquare();
    EXPECT_EQ(RefineAsPlain(mesh, 1.2), 1);
    EXPECT_EQ(TrianglesOf(mesh), (std::vector<std::array<int, 3>>{{0, 1, 4}, {0, 4, 3}, {1, 2, 4}, {2, 3, 4}}));
    ExpectSound(mesh);
}

TEST(Refine, AnEdgeOfFourAndAHalfLimitsTakesThreeRounds) {
    PIN mesh = Triangle(P(0, 0, 0), P(4.5, 0, 0), P(2.25, 0.5, 0));
    EXPECT_EQ(RefineAsPlain(mesh, 1.0), 3);
    EXPECT_EQ(std::count_if(mesh.points.begin(), mesh.points.end(), [](const P& p) { return p.Y == 0.0; }), 9);
    EXPECT_LE(LongestEdge(mesh), 1.0);
}

TEST(Refine, AChordThatIsTooLongIsTakenUpAgain) {
    PIN mesh = Triangle(P(0, 0, 0), P(1.2, 0, 0), P(0.6, 2.9, 0));
    EXPECT_GT(RefineAsPlain(mesh, 1.1), 1);
    EXPECT_LE(LongestEdge(mesh), 1.1);
    ExpectSound(mesh);
}

TEST(Refine, FacesOfMoreEdgesAreFilledWhereASplitTouchesThem) {
    PIN touched = OneLoop({P(0, 0, 0), P(2, 0, 0), P(3, 1, 0), P(2, 2, 0), P(0, 2, 0)});
    RefineAsPlain(touched, 1.9);
    EXPECT_TRUE(CollectNonTriangularLoops(touched).empty());
    PIN untouched = touched = OneLoop({P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(0, 1, 0)});
    Refine(untouched, 1.0);
    EXPECT_TRUE(SameRecords(untouched, touched));
}

TEST(Refine, AFaceOfManyEdgesIsCutInLinearTime) {
    Soup circle;
    for (int i = 0; i < 50000; ++i) circle.emplace_back(std::cos(1.256e-4 * i), std::sin(1.256e-4 * i), 0.0);
    circle[0] = P(1.5, 0, 0);
    PIN mesh = OneLoop(circle);
    Refine(mesh, 0.4);
    EXPECT_TRUE(CollectNonTriangularLoops(mesh).empty());
    EXPECT_LE(LongestEdge(mesh), 0.4);
}

/// Meshes of one kind each, by the seed.
PIN MeshOfKind(unsigned seed) {
    Numbers next(seed);
    switch (seed % 7) {
        case 0:
            return RandomMesh(seed, 30);
        case 1:
            return Dissolved(Sphere(3), seed, 25);
        case 2:
            return FromFacets(Shuffled(BumpySphereFacets(3), seed));
        case 3:
            return Dissolved(Grid(4), seed, 8);
        case 4:
            return Triangle(next.PointBetween(-9, 9), next.PointBetween(-9, 9), next.PointBetween(-9, 9));
        case 5:
            return BowTie();
        default:
            break;
    }
    PIN mesh = Grid(4);
    for (P& p : mesh.points) p = next.PointBetween(-1.0, 1.0) * (next.Below(5) == 0 ? 20.0 : 1.0);
    return mesh;
}

TEST(Refine, AgreesWithItsPlainForm) {
    for (unsigned seed = 0; seed < 700; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = MeshOfKind(seed);
        const PIN before = mesh;
        Numbers next(seed);
        const double limit = LongestEdge(mesh) * next.Between(0.08, 0.9);
        RefineAsPlain(mesh, limit);
        ASSERT_LE(LongestEdge(mesh), limit * (1.0 + 1e-12));
        ExpectSound(mesh);
        EXPECT_EQ(EulerCharacteristic(mesh), EulerCharacteristic(before));
        ASSERT_TRUE(std::equal(before.points.begin(), before.points.end(), mesh.points.begin()));
        if (CollectNonTriangularLoops(before).empty()) {
            EXPECT_NEAR(Area(mesh), Area(before), 1e-9 * Area(before));
        }
        if (HasFailure()) return;
    }
}

TEST(Refine, TheSecondTimeThereIsNothingToDo) {
    for (unsigned seed = 0; seed < 70; ++seed) {
        PIN mesh = MeshOfKind(seed);
        const double limit = LongestEdge(mesh) / 7.0;
        Refine(mesh, limit);
        const PIN once = mesh;
        Refine(mesh, limit * (1.0 + 1e-12));
        EXPECT_TRUE(SameRecords(mesh, once)) << seed;
    }
}

TEST(Refine, DeadRecordsAreSkipped) {
    PIN mesh = Dissolved(Grid(3), 1, 6);
    ASSERT_TRUE(std::any_of(mesh.edges.begin(), mesh.edges.end(), [](const Edge& e) { return e.NE == -1; }));
    RefineAsPlain(mesh, 0.3);
    ExpectSound(mesh);
}

TEST(Refine, LimitsThatAreNoLengthChangeNothing) {
    ExpectUnchanged(Sphere(2), NaN);
    ExpectUnchanged(Sphere(2), -Infinity);
    ExpectUnchanged(Sphere(2), 1e200);
    ExpectUnchanged(PIN(), 0.0);
    ExpectUnchanged(Triangle(P(1, 2, 3), P(1, 2, 3), P(1, 2, 3)), 0.0);
}

TEST(Refine, LimitsThatWouldFillTheMemoryAreRefused) {
    ExpectRefused(RightTriangle(), 0.0, "0");
    ExpectRefused(Sphere(2), -0.0, "-0");
    ExpectRefused(Sphere(2), Tiny, "4.94066e-324");
    ExpectRefused(Sphere(2), 1e-300, "1e-300");
    ExpectRefused(Sphere(2), -1e-6, "-1e-06");
    ExpectRefused(UnitSquare(), 1e-4, "0.0001");
    ExpectRefused(Triangle(P(0, 0, 0), P(1, 0, 0), P(2, 0, 0)), 1e-8, "1e-08");
    ExpectRefused(Triangle(P(-Largest, 0, 0), P(Largest, 0, 0), P(0, Largest / 2, 0)), 1.0, "1");
}

TEST(Refine, NeedlesAreNotTakenForLargeFaces) {
    PIN mesh = Triangle(P(0, 0, 0), P(1000, 0, 0), P(1000, 1e-3, 0));
    Refine(mesh, 0.5);
    EXPECT_LE(LongestEdge(mesh), 0.5);
    EXPECT_LT(mesh.edges.size(), 600000u);
}

TEST(Refine, CoordinatesThatAreNotFiniteStayAndSoDoTheirEdges) {
    for (const double wrong : {NaN, Infinity, -Infinity, Largest}) {
        PIN mesh = Grid(4);
        mesh.points[12].X = wrong;
        const LogCapture log;
        Refine(mesh, 0.3);
        ExpectSound(mesh);
        if (wrong == Largest) {
            EXPECT_EQ(log.Count(EMessageType::Error), 1);
            continue;
        }
        EXPECT_TRUE(log.Lines().empty());
        EXPECT_GT(mesh.points.size(), 100u);
        for (std::size_t n = 25; n < mesh.points.size(); ++n) EXPECT_TRUE(std::isfinite(mesh.points[n].X));
    }
    ExpectUnchanged(Triangle(P(Infinity, 0, 0), P(0, Infinity, 0), P(0, 0, 0)), 0.5);
    ExpectUnchanged(Triangle(P(NaN, 0, 0), P(0, NaN, 0), P(0, 0, NaN)), 0.0);
    // Their sums have no place among numbers.
    ExpectUnchanged(Triangle(P(Largest, 0, 0), P(Largest, Largest, 0), P(Largest, 0, Largest)), 1e150);
}

// A few steps from one number to the next: halved and rounded, some triangles come back in their own parts, for ever.
TEST(Refine, EndsWhereNumbersEnd) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        const double step = std::ldexp(1.0, -52);
        const auto coordinate = [&] { return 1.0 + step * next.Below(1 << seed % 8); };
        const auto point = [&] { return P{coordinate(), coordinate(), coordinate()}; };
        Soup corners;
        for (int i = 0; i < 3; ++i) corners.push_back(point());
        PIN mesh = OneLoop(corners);
        const LogCapture log;
        Refine(mesh, step * next.Between(0.1, 3.0));
        ExpectSound(mesh);
        EXPECT_LT(mesh.points.size(), 20000u);
        EXPECT_TRUE(log.Lines().empty());
        if (HasFailure()) return;
    }
    ExpectUnchanged(Triangle(P(1, 0, 0), P(std::nextafter(1.0, 2.0), 0, 0), P(1, Tiny, 0)), 1e-17);
}

// Four steps are enough for each half and each cut to come out shorter than what it replaces.
TEST(Refine, AFewStepsFromOneNumberToTheNextAreStillALimit) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        const double far[] = {1.0, 1e6, 1e12, 1e15, 0x1.fffffffffff00p+50};
        const double base = far[seed % std::size(far)];
        const double step = std::nextafter(base, Infinity) - base;
        PIN mesh = seed % 2 == 0 ? Grid(2) : Sphere(1);
        for (P& p : mesh.points) p = P(base, base, base) + next.PointBetween(0.0, 24.0) * step;
        RefineAsPlain(mesh, step * next.Between(4.0, 20.0));
        if (HasFailure()) return;
    }
    PIN mesh = Triangle(P(1e15, 0, 0), P(1e15 + 3, 0, 0), P(1e15, 2, 0));
    EXPECT_EQ(RefineAsPlain(mesh, 1.0), 3);
}

// The square of the limit is 0, and so are those of lengths that are not longer than about 1e-162.
TEST(Refine, EndsWhereSquaresAreTooSmallForANumber) {
    for (const double limit : {0.0, Tiny, 1e-300, -1e-165}) {
        PIN mesh = Triangle(P(0, 0, 0), P(1e-160, 0, 0), P(0, 1e-160, 0));
        EXPECT_EQ(RefineAsPlain(mesh, limit), 6) << limit;
    }
}

TEST(Refine, FarAwayAnEdgeIsAsLongAsElsewhereIfItsEndsAgree) {
    PIN mesh = RightTriangle();
    for (P& p : mesh.points) p.Z = 1e20;
    EXPECT_EQ(RefineAsPlain(mesh, 0.2), 3);
}

TEST(Refine, BrokenLinksDoNoHarm) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = Broken(seed % 3 == 0 ? Dissolved(Sphere(2), seed, 8) : Sphere(2), seed);
        if (seed % 2 == 0) mesh = WithBrokenLinks(mesh, seed);
        const LogCapture log;
        Refine(mesh, 0.2);
        EXPECT_LT(mesh.edges.size(), 100000u);
        SampleEdge(mesh, static_cast<int>(seed % mesh.edges.size()), 0.05);
    }
}

void ExpectBroken(PIN mesh, int edge) {
    const PIN before = mesh;
    const LogCapture log;
    Refine(mesh, 0.6);
    EXPECT_TRUE(SameRecords(mesh, before));
    EXPECT_EQ(log.Texts(EMessageType::Error),
              std::vector<std::string>{"Refine: the links of edge " + std::to_string(edge) +
                                       " are broken, nothing is changed"});
}

TEST(Refine, ALongEdgeWithBrokenLinksIsNamed) {
    PIN mesh = RightTriangle();
    mesh.edges[0].NE = 1000000;
    ExpectBroken(mesh, 1);
    for (const int twin : {-2, 0, 1, 77, std::numeric_limits<int>::max()}) {
        mesh = RightTriangle();
        mesh.edges[0].TE = twin;
        ExpectBroken(mesh, 0);
    }
    // It leads into a triangle from outside, so that walks along NE never come back to it.
    mesh = RightTriangle();
    mesh.points.push_back(P(5, 5, 5));
    mesh.p2e.push_back(3);
    mesh.edges.push_back({0, -1, 3});
    ExpectBroken(mesh, 3);
}

// The first or second new node would be the missing one.
TEST(Refine, AnEdgeWithoutItsNodeIsNamed) {
    for (const int node : {-2, -1, 3, 4, 77, std::numeric_limits<int>::max()}) {
        PIN mesh = Triangle(P(2, 1.5, 1), P(0.5, 1.5, 4), P(1.5, 1.5, 0));
        mesh.edges[1].P0 = node;
        ExpectBroken(mesh, 1);
    }
}

TEST(Refine, ShortEdgesMayHaveBrokenLinks) {
    PIN mesh = UnitSquare();
    const int diagonal = mesh.edges[0].TE != -1 ? 0 : mesh.edges[1].TE != -1 ? 1 : 2;
    mesh.edges[(diagonal + 1) % 3].TE = 99;
    Refine(mesh, 1.2);
    EXPECT_EQ(mesh.points.size(), 5u);
}

TEST(Refine, NodesWithoutEntriesWaitForThem) {
    PIN mesh = Sphere(2);
    PIN whole = mesh;
    mesh.p2e.clear();
    Refine(mesh, 0.4);
    Refine(whole, 0.4);
    EXPECT_EQ(mesh.edges, whole.edges);
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    ExpectCompact(mesh);
}

TEST(WatchedRefine, MakesTheSameMeshAndNeverFallsBack) {
    PIN mesh = BumpySphere(8);
    PIN watched = mesh;
    std::vector<double> fractions;
    Refine(mesh, 1.5);
    WatchedRefine(watched, 1.5, [&](double fraction) { fractions.push_back(fraction); });
    EXPECT_TRUE(SameRecords(mesh, watched));
    ASSERT_GT(fractions.size(), 6u);
    EXPECT_TRUE(std::is_sorted(fractions.begin(), fractions.end()));
    EXPECT_EQ(fractions.front(), 0.0);
    EXPECT_LE(fractions.back(), 1.0);
    EXPECT_GT(fractions.back(), 0.2);
}

TEST(WatchedRefine, NeedsNoWatchAndTellsNothingOfNothing) {
    PIN mesh = Sphere(2);
    PIN watched = mesh;
    Refine(mesh, 0.3);
    WatchedRefine(watched, 0.3, nullptr);
    EXPECT_TRUE(SameRecords(mesh, watched));
    WatchedRefine(watched, 10.0, [](double) { ADD_FAILURE(); });
}

TEST(WatchedRefine, CanBeStoppedAtEachReportAndLeavesTriangles) {
    const PIN before = BumpySphere(5);
    std::size_t last = before.edges.size();
    for (int reports = 0;; ++reports) {
        SCOPED_TRACE(testing::Message() << "stopped at report " << reports);
        PIN mesh = before;
        int left = reports;
        const auto watch = [&](double) {
            if (left-- == 0) throw XUserAbort();
        };
        bool isStopped = false;
        try {
            WatchedRefine(mesh, 2.2, watch);
        } catch (const XUserAbort&) {
            isStopped = true;
        }
        ExpectSound(mesh);
        EXPECT_TRUE(CollectNonTriangularLoops(mesh).empty());
        EXPECT_EQ(EulerCharacteristic(mesh), 2);
        EXPECT_GE(mesh.edges.size(), last);
        last = mesh.edges.size();
        if (!isStopped) break;
    }
}

TEST(SampleEdge, DividesEquallyAndInOrder) {
    PIN mesh = RightTriangle();
    SampleEdge(mesh, 0, 0.3);
    EXPECT_EQ(mesh.points, (Soup{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(0.25, 0, 0), P(0.5, 0, 0), P(0.75, 0, 0)}));
    EXPECT_EQ(mesh.edges, (Edges{{3, -1, 0}, {2, -1, 1}, {0, -1, 2}, {4, -1, 3}, {5, -1, 4}, {1, -1, 5}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2, 3, 4, 5}));
}

TEST(SampleEdge, DividesTheTwinAsWell) {
    PIN mesh = UnitSquare();
    const int diagonal = mesh.edges[0].TE != -1 ? 0 : mesh.edges[1].TE != -1 ? 1 : 2;
    SampleEdge(mesh, diagonal, 0.4);
    ExpectSound(mesh);
    EXPECT_EQ(mesh.points.size(), 7u);
    EXPECT_EQ(Loop(mesh, diagonal).size(), 6u);
    EXPECT_EQ(Loop(mesh, mesh.edges[diagonal].TE).size(), 6u);
}

TEST(SampleEdge, AStepOfHalfTheLengthAddsOneNode) {
    PIN mesh = RightTriangle();
    SampleEdge(mesh, 2, 0.5);
    ASSERT_EQ(mesh.points.size(), 4u);
    EXPECT_EQ(mesh.points[3], P(0, 0.5, 0));
    SampleEdge(mesh, 2, 0.5);
    EXPECT_EQ(mesh.points.size(), 4u);
}

TEST(SampleEdge, WhatIsNoStepChangesNothing) {
    const PIN before = RightTriangle();
    PIN mesh = before;
    const LogCapture log;
    for (const double step : {1.0, 1.5, Infinity, -Infinity, NaN, -0.1, -0.0}) SampleEdge(mesh, 0, step);
    PIN point = Triangle(P(1, 1, 1), P(1, 1, 1), P(1, 1, 1));
    SampleEdge(point, 0, 0.0);
    EXPECT_TRUE(SameRecords(mesh, before));
    EXPECT_EQ(point.points.size(), 3u);
    EXPECT_TRUE(log.Lines().empty());
}

TEST(SampleEdge, TooManyPartsAreRefused) {
    const PIN before = RightTriangle();
    PIN mesh = before;
    const LogCapture log;
    SampleEdge(mesh, 0, 0.0);
    SampleEdge(mesh, 0, 0.9e-8);
    SampleEdge(mesh, 0, Tiny);
    EXPECT_TRUE(SameRecords(mesh, before));
    EXPECT_EQ(log.Texts(EMessageType::Error),
              (std::vector<std::string>{"SampleEdge: a step of 0 makes more than 100000000 parts",
                                        "SampleEdge: a step of 9e-09 makes more than 100000000 parts",
                                        "SampleEdge: a step of 4.94066e-324 makes more than 100000000 parts"}));
    mesh.points[1].X = Infinity;
    SampleEdge(mesh, 0, 0.5);
    mesh.points[1].X = NaN;
    SampleEdge(mesh, 0, 0.5);
    EXPECT_EQ(mesh.points.size(), 3u);
    EXPECT_EQ(log.Count(EMessageType::Error), 4);
}

TEST(SampleEdge, EdgesThatAreNoneAreLeftAlone) {
    PIN mesh = UnitSquare();
    mesh.edges[3].NE = -1;
    mesh.edges[0].TE = 77;
    mesh.edges[1].P0 = 99;
    mesh.edges[2].NE = 88;
    const PIN before = mesh;
    for (int edge = -2; edge <= 3; ++edge) SampleEdge(mesh, edge, 0.1);
    for (const int edge : {6, 1 << 30, std::numeric_limits<int>::min()}) SampleEdge(mesh, edge, 0.1);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(SampleEdge, HostilePointsLeaveSoundLinks) {
    const double parts[] = {1.0, 2.0, 3.5, 1000.0, 1e9, 1e300, -1.0, NaN, 0.0, Infinity};
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        PIN mesh = Sphere(1);
        for (P& p : mesh.points) p = next.HostilePoint();
        const int edge = next.Below(static_cast<int>(mesh.edges.size()));
        const LogCapture log;
        SampleEdge(mesh, edge, EdgeLength(mesh, edge) / parts[seed % std::size(parts)]);
        ASSERT_EQ(IntegrityFaults(mesh), "");
        ASSERT_LE(mesh.points.size(), 6u + 1000u);
    }
}

TEST(SampleEdge, AgreesWithItsPlainForm) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = MeshOfKind(seed);
        Numbers next(seed);
        PIN plain = mesh;
        for (int i = 0; i < 5; ++i) {
            const int edge = next.Below(static_cast<int>(mesh.edges.size()));
            if (mesh.edges[edge].NE == -1) continue;
            const double step = EdgeLength(mesh, edge) * next.Between(0.02, 1.2) + 1e-9;
            SampleEdge(mesh, edge, step);
            Plain::SampleEdge(plain, edge, step);
        }
        ASSERT_TRUE(SameRecords(mesh, plain));
        ExpectSound(mesh);
    }
}

}  // namespace
}  // namespace KM
