#include "Mesh/Algorithms/HoleFilling.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "Mesh/Algorithms/PlainFilling.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/WholeMesh.h"
#include "Support/BrokenMeshes.h"
#include "Support/DumpCapture.h"
#include "Support/Holes.h"
#include "Support/LogCapture.h"
#include "Support/LogOn.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM {
namespace {

using namespace Test;
using Verbose::EMessageType;

const std::string Impossible = "PIN.ExtraHill: Can't arrive here!";

void Open(PIN& mesh, int e) {
    mesh.edges[mesh.edges[e].TE].TE = -1;
    mesh.edges[e].TE = -1;
}

/// Random facets on few nodes, some of whose twin pairs are apart again: doubles and opposites at most borders.
PIN Crumpled(unsigned seed) {
    std::mt19937 random(seed);
    IndexedFacets facets = RandomFacets(seed, 8 + static_cast<int>(seed % 30));
    const int nodes = 4 + static_cast<int>(random() % 5);
    for (int& node : facets.triples) node %= std::min(nodes, static_cast<int>(facets.points.size()));
    PIN mesh = FromFacets(facets);
    for (std::size_t e = 0; e < mesh.edges.size(); ++e)
        if (mesh.edges[e].TE != -1 && random() % 3 == 0) Open(mesh, static_cast<int>(e));
    return mesh;
}

/// Fills as the plain rules do: the same mesh, and the same words on the log and on the dump stream.
///
/// @return  what both wrote on the dump stream, and behind it a "!" for each report of opposites
std::string ExpectAsPlain(const PIN& mesh, int maxEdges) {
    PIN filled = mesh;
    PIN plain = mesh;
    std::vector<std::string> lines;
    std::string trace;
    {
        const LogCapture log;
        const DumpCapture dump;
        PlainFillHoles(plain, maxEdges);
        lines = log.Lines();
        trace = dump.Text();
    }
    const LogCapture log;
    const DumpCapture dump;
    FillHoles(filled, maxEdges);
    EXPECT_TRUE(SameRecords(filled, plain));
    EXPECT_EQ(log.Lines(), lines);
    EXPECT_EQ(dump.Text(), trace);
    for (const std::string& text : log.Texts(EMessageType::Error))
        if (text == Impossible) trace += "!";
    return trace;
}

TEST(FillHoles, ClosesASphere) {
    for (unsigned seed = 0; seed < 20; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = WithHoles(BumpySphere(12), seed, 15, 3, 30);
        ASSERT_GT(AllOrphanLoops(mesh).size(), 5u);
        const std::size_t edgeCount = mesh.edges.size();
        const std::vector<TPoint<double>> points = mesh.points;
        FillHoles(mesh, 30);
        EXPECT_GT(mesh.edges.size(), edgeCount);
        EXPECT_EQ(mesh.points, points);
        EXPECT_TRUE(mesh.p2e.empty());
        VisitorOf<PIN> nobody;
        Compact(mesh, nobody);
        ExpectCompact(mesh);
        EXPECT_EQ(OrphanCount(mesh), 0);
        EXPECT_EQ(EulerCharacteristic(mesh), 2);
    }
}

TEST(FillHoles, LeavesHolesThatAreTooLong) {
    for (const int maxEdges : {0, 1, 3, 8}) {
        SCOPED_TRACE(testing::Message() << "up to " << maxEdges);
        PIN mesh = WithHoles(BumpySphere(12), 3, 15, 3, 12);
        std::vector<std::vector<int>> longOnes = AllOrphanLoops(mesh);
        std::erase_if(longOnes, [&](const auto& loop) { return static_cast<int>(loop.size()) <= maxEdges; });
        ASSERT_FALSE(longOnes.empty());
        FillHoles(mesh, maxEdges);
        EXPECT_EQ(AllOrphanLoops(mesh), longOnes);
        EXPECT_TRUE(mesh.p2e.empty());
    }
}

TEST(FillHoles, ANegativeNumberFillsAll) {
    for (const int maxEdges : {-1, INT_MIN, INT_MAX}) {
        PIN mesh = Grid(9);
        FillHoles(mesh, maxEdges);
        EXPECT_EQ(OrphanCount(mesh), 0) << maxEdges;
    }
}

TEST(FillHoles, OfAClosedMeshOnlyEmptiesTheNodeEdges) {
    PIN mesh = Cube();
    const LogCapture log;
    const DumpCapture dump;
    FillHoles(mesh, 100);
    EXPECT_EQ(mesh.edges, Cube().edges);
    EXPECT_EQ(mesh.points, Cube().points);
    EXPECT_TRUE(mesh.p2e.empty());
    EXPECT_TRUE(log.Lines().empty());
    EXPECT_EQ(dump.Text(), "");
}

TEST(FillHoles, OfNothingIsNothing) {
    PIN mesh;
    FillHoles(mesh, 100);
    EXPECT_TRUE(mesh.edges.empty());
}

// Two triangles that were taken apart have one border each, and an edge of each runs against one of the other.
TEST(FillHoles, OppositeOrphansOfTwoBordersBecomeTwins) {
    PIN mesh = UnitSquare();
    int inner = 0;
    while (mesh.edges[inner].TE == -1) ++inner;
    const std::vector<Edge> joined = mesh.edges;
    Open(mesh, inner);
    ASSERT_EQ(AllOrphanLoops(mesh).size(), 2u);
    const DumpCapture dump;
    FillHoles(mesh, 2);
    EXPECT_EQ(mesh.edges, joined);
    EXPECT_EQ(dump.Text(), "X");
}

// Both of the first two triangles run 0-1, the third runs 1-0: it goes to the first.
TEST(FillHoles, OfOrphansThatRunTheSameWayTheFirstIsJoined) {
    PIN mesh;
    mesh.points.resize(5);
    mesh.edges = {{1, -1, 0}, {2, -1, 1}, {0, -1, 2}, {4, -1, 0}, {5, -1, 1},
                  {3, -1, 3}, {7, -1, 1}, {8, -1, 0}, {6, -1, 4}};
    const DumpCapture dump;
    FillHoles(mesh, 0);
    EXPECT_EQ(dump.Text(), "xX");
    EXPECT_EQ(mesh.edges[0].TE, 6);
    EXPECT_EQ(mesh.edges[6].TE, 0);
    EXPECT_EQ(OrphanCount(mesh), 7);
}

// Edge 3 runs 0-1 as edge 0 does, so that it does not wait. Edge 6 takes edge 0, and edge 9 comes too late for edge 3.
TEST(FillHoles, OppositeOrphansThatMissedEachOtherAreReported) {
    PIN mesh;
    mesh.points.resize(5);
    const int starts[] = {0, 1, 4, 0, 1, 2, 1, 0, 3, 1};
    for (int e = 0; e < 10; ++e) mesh.edges.push_back({e + 1, -1, starts[e]});
    mesh.edges[2].NE = 0;
    mesh.edges[9].NE = 3;
    const LogCapture log;
    const DumpCapture dump;
    FillHoles(mesh, 2);
    EXPECT_EQ(dump.Text(), "xXX");
    EXPECT_EQ(log.Texts(EMessageType::Error), std::vector<std::string>{Impossible});
    EXPECT_EQ(mesh.edges[0].TE, 6);
    EXPECT_EQ(mesh.edges[4].TE, 5);
    EXPECT_TRUE(mesh.p2e.empty());
}

// An edge from a node to itself is no opposite of another such edge.
TEST(FillHoles, OrphansFromANodeToItselfAreNotJoined) {
    PIN mesh;
    mesh.points.resize(2);
    mesh.edges = {{1, -1, 0}, {2, -1, 0}, {3, -1, 0}, {0, -1, 1}};
    const LogCapture log;
    const DumpCapture dump;
    FillHoles(mesh, 0);
    EXPECT_EQ(dump.Text(), "xX");
    EXPECT_TRUE(log.Lines().empty());
    EXPECT_EQ(OrphanCount(mesh), 2);
}

TEST(FillHoles, AgreesWithThePlainRulesOnHoles) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        // A flat sheet has many corners with the same circle.
        ExpectAsPlain(WithHoles(seed % 2 == 0 ? Grid(14) : BumpySphere(7), seed, 8, 3, 40), seed % 3 == 0 ? 20 : -1);
    }
}

TEST(FillHoles, AgreesWithThePlainRulesWhereBordersMeet) {
    std::string traces;
    for (unsigned seed = 0; seed < 3000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = Crumpled(seed);
        if (seed % 3 == 0) mesh = Dissolved(std::move(mesh), seed, 5);
        traces += ExpectAsPlain(mesh, static_cast<int>(seed % 7) - 1);
    }
    for (const char trace : {'x', 'X', '!'}) EXPECT_GT(std::count(traces.begin(), traces.end(), trace), 20) << trace;
}

TEST(FillHoles, AgreesWithThePlainRulesOnRandomFacets) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = RandomMesh(seed, 60);
        Numbers numbers(seed);
        if (seed % 4 == 0)
            for (auto& p : mesh.points) p = numbers.HostilePoint();
        ExpectAsPlain(mesh, seed % 2 == 0 ? -1 : 12);
    }
}

TEST(FillHoles, AMeshStaysSoundWhateverItsBorders) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = seed % 2 == 0 ? Crumpled(seed) : RandomMesh(seed, 40);
        ASSERT_EQ(FirstUnsoundness(mesh), "");
        FillHoles(mesh, -1);
        RebuildNodeEdges(mesh);
        ExpectSound(mesh);
        EXPECT_EQ(OrphanCount(mesh), 0);
    }
}

/// A log that does not get its first line: each message is a point where a user's abort can come through.
class AbortingDevice : public DumpingDevice {
public:
    struct Abort {};

    void Write(const std::string&) override {}
    void OnBegin() override { throw Abort(); }
    void Reset() override {}
    void ApplyBackground() override {}
};

TEST(FillHoles, AnAbortAtAMessageLeavesASoundMesh) {
    PIN mesh = WithHoles(Sphere(6), 1, 1, 12, 12);
    PIN face;  // of four edges that have no other face: nothing to cut
    face.points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    face.edges = {{1, -1, 0}, {2, -1, 1}, {3, -1, 2}, {0, -1, 3}};
    face.p2e = {0, 1, 2, 3};
    Append(mesh, face);
    AbortingDevice device;
    const LogOn log(device);
    EXPECT_THROW(FillHoles(mesh, -1), AbortingDevice::Abort);
    ExpectSound(mesh);
    EXPECT_EQ(OrphanCount(mesh), 4);
}

TEST(FillHoles, BrokenLinksDoNoHarm) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = WithHoles(Sphere(6), seed, 4, 3, 12);
        mesh = seed % 2 == 0 ? Broken(std::move(mesh), seed) : WithBrokenLinks(std::move(mesh), seed);
        const std::vector<TPoint<double>> points = mesh.points;
        FillHoles(mesh, -1);
        EXPECT_EQ(mesh.points, points);
        VisitorOf<PIN> nobody;
        Compact(mesh, nobody);
    }
}

}  // namespace
}  // namespace KM
