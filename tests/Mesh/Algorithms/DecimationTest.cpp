#include "Mesh/Algorithms/Decimation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "PlainDecimation.h"
#include "Support/BrokenMeshes.h"
#include "Support/LogCapture.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"
#include "Support/RecordingVisitor.h"
#include "Support/StopAtReport.h"
#include "Utils/U_Debug/Exceptions.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;
using Verbose::EMessageType;
using Texts = std::vector<std::string>;

Texts Reduce(PIN& mesh, double tolerance) {
    VisitorOf<PIN> nobody;
    LogCapture log;
    DecimateNodes(mesh, tolerance, nobody);
    EXPECT_EQ(log.Count(EMessageType::Error), 0);
    return log.Texts(EMessageType::Info);
}

void CleanUp(PIN& mesh, double tolerance) {
    VisitorOf<PIN> nobody;
    Decimate(mesh, tolerance, nobody);
}

/// `Plain` looks at what a vector has beyond its end where a node is no more; so does nobody here.
void ExpectPlainReduction(const PIN& before, double tolerance) {
    PIN mesh = before, plain = before;
    {
        LogCapture log;
        VisitorOf<PIN> nobody;
        DecimateNodes(mesh, tolerance, nobody);
    }
    Plain::DecimateNodes(plain, tolerance);
    ASSERT_TRUE(SameRecords(mesh, plain));
    ExpectCompact(mesh);
}

/// Two sheets of n by n squares on each other, joined along their borders, the upper one at height `h` inside.
PIN Cushion(int n, double h) {
    IndexedFacets facets = GridFacets(n);
    const int side = n + 1;
    const int lower = static_cast<int>(facets.points.size());
    std::vector<int> upper(static_cast<std::size_t>(lower));
    for (int i = 0; i < lower; ++i) {
        const bool isBorder = i % side == 0 || i % side == n || i / side == 0 || i / side == n;
        upper[static_cast<std::size_t>(i)] = isBorder ? i : static_cast<int>(facets.points.size());
        if (!isBorder) facets.points.push_back(facets.points[static_cast<std::size_t>(i)] + P(0, 0, h));
    }
    const std::vector<int> triples = facets.triples;
    for (std::size_t i = 0; i < triples.size(); i += 3)
        for (const std::size_t k : {i, i + 2, i + 1})
            facets.triples.push_back(upper[static_cast<std::size_t>(triples[k])]);
    return FromFacets(facets);
}

/// A regular ring round the node 0, closed below by one more node far away.
PIN Tent(int ring, double height, double depth) {
    IndexedFacets facets{{P(0, 0, height)}, {}};
    for (int i = 0; i < ring; ++i)
        facets.points.push_back(P(std::cos(6.283185307179586 * i / ring), std::sin(6.283185307179586 * i / ring), 0));
    facets.points.push_back(P(0, 0, -depth));
    for (int i = 0; i < ring; ++i) {
        const int a = 1 + i, b = 1 + (i + 1) % ring;
        facets.triples.insert(facets.triples.end(), {a, b, 0, b, a, ring + 1});
    }
    return FromFacets(facets);
}

TEST(DecimateNodes, TakesFlatInnerNodesAndLeavesTheBorder) {
    PIN mesh = Grid(10);
    EXPECT_EQ(Reduce(mesh, 0.2), Texts{"Removing: 81[%] Triangles"});
    EXPECT_EQ(mesh.points.size(), 40u);
    EXPECT_EQ(OrphanCount(mesh), 40);
    EXPECT_EQ(TrianglesOf(mesh).size(), 38u);
    ExpectCompact(mesh);
}

TEST(DecimateNodes, KeepsWhatStandsOutMoreThanTheTolerance) {
    // The ring of four is a square, which is a plane: the distance is the height, to the last bit.
    for (const double height : {0.25, 0.5}) {
        PIN mesh = Tent(4, height, 50.0);
        const bool goes = !(height > 0.25);
        Reduce(mesh, 0.25);
        EXPECT_EQ(mesh.points.size(), goes ? 5u : 6u) << height;
    }
    PIN mesh = Tent(4, 0.25, 50.0);
    Reduce(mesh, std::nextafter(0.25, 0.0));
    EXPECT_EQ(mesh.points.size(), 6u);
}

TEST(DecimateNodes, KeepsNodesWithLongEdges) {
    // Edges of the inner node of a grid of 2 x 2 squares are 1 or the diagonal. 100 times 1/64 is above it; 1/128 is below 1.
    for (const double tolerance : {1.0 / 64.0, 1.0 / 128.0}) {
        PIN mesh = Grid(2);
        Reduce(mesh, tolerance);
        EXPECT_EQ(mesh.points.size(), tolerance > 0.01 ? 8u : 9u);
    }
}

TEST(DecimateNodes, LetsAnEdgeOfJustThatLengthPass) {
    // A flat star of edges of length 25, with a tolerance that gives 625 as the square.
    const auto star = [](double length) {
        IndexedFacets facets{{P(0, 0, 0), P(length, 0, 0), P(0, 25, 0), P(-25, 0, 0), P(0, -25, 0)}, {}};
        for (int i = 0; i < 4; ++i) facets.triples.insert(facets.triples.end(), {0, 1 + i, 1 + (i + 1) % 4});
        return FromFacets(facets);
    };
    ASSERT_EQ(0.25 * 0.25 * 100.0 * 100.0, 625.0);
    PIN just = star(25.0), more = star(std::nextafter(25.0, 26.0));
    Reduce(just, 0.25);
    Reduce(more, 0.25);
    EXPECT_EQ(just.points.size(), 4u);
    EXPECT_EQ(more.points.size(), 5u);
}

TEST(DecimateNodes, WithToleranceZeroKeepsAllButCoincidingNodes) {
    PIN mesh = Grid(5);
    EXPECT_EQ(Reduce(mesh, 0.0), Texts{"Removing: 0[%] Triangles"});
    EXPECT_TRUE(SameRecords(mesh, Grid(5)));
    for (P& p : mesh.points) p = P(1, 2, 3);
    Reduce(mesh, 0.0);
    EXPECT_EQ(mesh.points.size(), 20u);  // the border
}

TEST(DecimateNodes, WithANegativeToleranceKeepsAll) {
    PIN mesh = Sphere(4);
    Reduce(mesh, -1e300);
    EXPECT_TRUE(SameRecords(mesh, Sphere(4)));
}

TEST(DecimateNodes, WithAToleranceThatIsNoNumberKeepsNone) {
    for (const double tolerance : {NaN, Infinity}) {
        PIN mesh = Sphere(5);
        Reduce(mesh, tolerance);
        EXPECT_LT(mesh.points.size(), 8u);
        ExpectCompact(mesh);
    }
}

TEST(DecimateNodes, OfNoEdgesIsNoPercentage) {
    PIN empty;
    PIN points;
    points.points.resize(3);
    points.p2e.assign(3, -1);
    for (PIN* mesh : {&empty, &points}) {
        const Texts texts = Reduce(*mesh, 1.0);
        ASSERT_EQ(texts.size(), 1u);
        EXPECT_NE(texts[0].find("nan[%] Triangles"), std::string::npos);
        EXPECT_TRUE(mesh->points.empty());
    }
}

TEST(DecimateNodes, LeavesNodesOfTwoEdges) {
    PIN mesh = FromFacets({{P(0, 0, 0), P(1, 0, 0), P(0, 1, 0)}, {0, 1, 2, 0, 2, 1}});
    const PIN before = mesh;
    Reduce(mesh, 10.0);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(DecimateNodes, LooksAtTheNodeThatCameIntoTheSlot) {
    // In a flat sheet all inner nodes go, the last one as well, in whatever slot it came to be.
    for (unsigned seed = 0; seed < 20; ++seed) {
        PIN mesh = FromFacets(Shuffled(GridFacets(6), seed));
        Reduce(mesh, 1.0);
        EXPECT_EQ(mesh.points.size(), 24u) << "seed " << seed;
    }
}

TEST(DecimateNodes, LeavesASphereClosed) {
    PIN mesh = Sphere(30);
    const std::size_t before = mesh.edges.size();
    Reduce(mesh, 0.01);
    EXPECT_LT(mesh.edges.size(), before / 2);
    EXPECT_EQ(EulerCharacteristic(mesh), 2);
    ExpectCompact(mesh);
}

TEST(DecimateNodes, TellsTheVisitorOfCompactionOnly) {
    PIN mesh = Grid(6);
    mesh.points.push_back(P(9, 9, 9));
    mesh.p2e.push_back(-1);
    DeleteTriangle(mesh, 9);
    PIN compact = mesh;
    RecordingVisitor<PIN> ofCompact, ofReduction;
    Compact(compact, ofCompact);
    LogCapture log;
    DecimateNodes(mesh, 1.0, ofReduction);
    EXPECT_FALSE(ofCompact.reports.empty());
    EXPECT_EQ(ofReduction.reports, ofCompact.reports);
    EXPECT_LT(mesh.points.size(), compact.points.size());
}

TEST(DecimateNodes, IsATaskInTheLog) {
    LogCapture log;
    VisitorOf<PIN> nobody;
    PIN mesh = Grid(2);
    DecimateNodes(mesh, 1.0, nobody);
    EXPECT_EQ(log.Texts(EMessageType::Note), Texts{"Progress: Task DecimateNodes has started!"});
}

TEST(DecimateNodes, RebuildsWhatIsMissing) {
    PIN mesh = Grid(6), unnamed = mesh, short_ = mesh;
    unnamed.p2e.clear();
    short_.p2e.resize(5);
    for (PIN* m : {&mesh, &unnamed, &short_}) Reduce(*m, 1.0);
    EXPECT_TRUE(SameRecords(mesh, unnamed));
    EXPECT_TRUE(SameRecords(mesh, short_));
}

TEST(DecimateNodes, IsThePlainRuleOnSurfaces) {
    for (unsigned seed = 0; seed < 120; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        PIN mesh = seed % 4 == 0   ? FromFacets(Shuffled(SphereFacets(8), seed))
                   : seed % 4 == 1 ? FromFacets(Shuffled(BumpySphereFacets(8), seed))
                   : seed % 4 == 2 ? FromFacets(Shuffled(GridFacets(12), seed))
                                   : Cushion(9, 0.1);
        const double noise = next.Below(3) == 0 ? 0.0 : next.Between(0.0, 0.3);
        for (P& p : mesh.points) p += next.PointBetween(-noise, noise);
        for (const double tolerance : {0.001, 0.01, 0.05, 0.3, 3.0, 20.0}) ExpectPlainReduction(mesh, tolerance);
    }
}

TEST(DecimateNodes, IsThePlainRuleOnSoups) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        PIN mesh = RandomMesh(seed, 5 + next.Below(400));
        ExpectPlainReduction(mesh, 1e3);
        ExpectPlainReduction(mesh, next.Between(0.0, 5.0));
    }
}

TEST(DecimateNodes, IsThePlainRuleOnHostileNumbers) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        PIN mesh = seed % 3 == 0 ? Sphere(4) : seed % 3 == 1 ? Grid(7) : RandomMesh(seed, 100);
        for (P& p : mesh.points)
            if (next.Below(4) == 0) p = next.HostilePoint();
        ExpectPlainReduction(mesh, next.Hostile());
    }
}

TEST(DecimateNodes, TellsOfATwinThatIsNotNamedInReturn) {
    for (const int start : AllStartingEdges(Grid(2), 4)) {
        PIN mesh = Grid(2);
        mesh.edges[PrevEdge(mesh, start)].TE = -1;
        const PIN before = mesh;
        VisitorOf<PIN> nobody;
        LogCapture log;
        DecimateNodes(mesh, 1.0, nobody);
        EXPECT_EQ(log.Texts(EMessageType::Error), Texts{"Found orphan end edge in RemoveNode!"});
        EXPECT_EQ(mesh.points.size(), before.points.size());
    }
}

TEST(DecimateNodes, EndsOnBrokenMeshes) {
    for (unsigned seed = 0; seed < 600; ++seed) {
        const PIN sound = seed % 3 == 0 ? Sphere(5) : seed % 3 == 1 ? Grid(8) : RandomMesh(seed, 80);
        PIN mesh = seed % 2 == 0 ? Broken(sound, seed) : WithBrokenLinks(sound, seed);
        if (seed % 4 == 1) {  // only some twins that are not named in return
            mesh = sound;
            for (std::size_t e = seed % 7; e < mesh.edges.size(); e += 19) mesh.edges[e].TE = -1;
        }
        const std::size_t nodes = mesh.points.size();
        LogCapture log;
        VisitorOf<PIN> nobody;
        DecimateNodes(mesh, seed % 5 == 0 ? NaN : 0.1, nobody);
        Decimate(mesh, 0.1, nobody);
        EXPECT_LE(mesh.points.size(), nodes) << "seed " << seed;
    }
}

TEST(DecimateNodes, DoesNotWalkRoundInACircleThatNeverComesBack) {
    // All twins lead into one triangle: the walk round any node gets into it and never out again.
    PIN mesh = Grid(300);
    for (std::size_t e = 3; e < mesh.edges.size(); ++e) mesh.edges[e].TE = static_cast<int>(e % 3);
    const std::size_t edges = mesh.edges.size();
    VisitorOf<PIN> nobody;
    DecimateNodes(mesh, 10.0, nobody);
    EXPECT_EQ(mesh.edges.size(), edges);
}

TEST(DecimateNodes, LeavesFacesThatAreNoTriangles) {
    PIN mesh = Dissolved(Grid(12), 3, 40);
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    const std::vector<int> before = CollectNonTriangularLoops(mesh);
    Reduce(mesh, 10.0);
    EXPECT_EQ(CollectNonTriangularLoops(mesh).size(), before.size());
    ExpectCompact(mesh);
}

TEST(DecimateNodes, LeavesASoundMeshWhereItIsStopped) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        const PIN before = seed % 2 == 0 ? Sphere(4) : RandomMesh(seed, 300);
        for (int report = 0; report < 60; report += 1 + static_cast<int>(seed) % 7) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " report " << report);
            PIN mesh = before;
            VisitorOf<PIN> nobody;
            bool isStopped = false;
            {
                const StopAtReport stop(report);
                LogCapture log;
                try {
                    DecimateNodes(mesh, 100.0, nobody);
                } catch (const XUserAbort&) {
                    isStopped = true;
                }
            }
            EXPECT_TRUE(isStopped || report > 4);
            ExpectCompact(mesh);
            EXPECT_EQ(Progress::Default().First(), nullptr);
        }
    }
}

TEST(DecimateNodes, ReportsEachNodeThatItLooksAt) {
    PIN mesh = Grid(3);  // 16 nodes; the four inner ones go, and make way for four more looks
    int looks = 0;
    for (bool isStopped = true; isStopped; ++looks) {
        PIN copy = mesh;
        const StopAtReport stop(looks);
        VisitorOf<PIN> nobody;
        try {
            DecimateNodes(copy, 1.0, nobody);
            isStopped = false;
        } catch (const XUserAbort&) {}
    }
    EXPECT_EQ(looks - 1, 16);
}

TEST(Decimate, TakesOutTrianglesWithACollapsedEdge) {
    // A triangle (0, 0, 1) whose twin along 0-0 is another such, between two of a sheet.
    PIN mesh;
    mesh.points = {P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(0, -1, 0)};
    mesh.edges = {{1, 3, 0}, {2, 6, 0},  {0, -1, 1}, {4, 0, 0},  {5, -1, 0},  {3, 9, 1},
                  {7, 1, 1}, {8, -1, 0}, {6, -1, 2}, {10, 5, 0}, {11, -1, 1}, {9, -1, 3}};
    mesh.p2e = {0, 2, 8, 11};
    PIN plain = mesh;
    CleanUp(mesh, 0.1);
    Plain::Decimate(plain, 0.1);
    EXPECT_TRUE(SameRecords(mesh, plain));
    ExpectCompact(mesh);
    // The first of the two makes an orphan of the other one, which stays.
    EXPECT_EQ(mesh.edges.size(), 9u);
}

TEST(Decimate, CompactsAndSwapsWhereNothingHasCollapsed) {
    PIN mesh = FromFacets({{P(0, 0, 0), P(4, 0, 0), P(2, 0.5, 0), P(2, -1.5, 0)}, {0, 1, 2, 1, 0, 3}});
    mesh.points.push_back(P(7, 7, 7));
    mesh.p2e.push_back(-1);
    PIN plain = mesh;
    CleanUp(mesh, 1.0);
    Plain::Decimate(plain, 1.0);
    EXPECT_TRUE(SameRecords(mesh, plain));
    EXPECT_EQ(mesh.points.size(), 4u);
    EXPECT_NE(EdgeOfSEVertices(mesh, 2, 3), -1);
    EXPECT_EQ(EdgeOfSEVertices(mesh, 0, 1), -1);
}

TEST(Decimate, WritesNothing) {
    LogCapture log;
    PIN mesh = Grid(3);
    CleanUp(mesh, 1.0);
    EXPECT_TRUE(log.Lines().empty());
}

TEST(Decimate, IsThePlainRuleBehindAReduction) {
    int gone = 0;
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        PIN mesh = seed % 3 == 0   ? FromFacets(Shuffled(BumpySphereFacets(9), seed))
                   : seed % 3 == 1 ? FromFacets(Shuffled(GridFacets(12), seed))
                                   : RandomMesh(seed, 20 + next.Below(300));
        const double tolerance = next.Between(0.001, 1.0);
        Reduce(mesh, next.Between(0.1, 50.0));
        PIN plain = mesh;
        CleanUp(mesh, tolerance);
        gone += Plain::Decimate(plain, tolerance);
        ASSERT_TRUE(SameRecords(mesh, plain));
        ExpectCompact(mesh);
    }
    EXPECT_GT(gone, 0);
}

}  // namespace
}  // namespace KM
