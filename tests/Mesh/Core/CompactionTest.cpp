#include "Mesh/Core/Compaction.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>

#include "Mesh/Core/Construction.h"
#include "Mesh/Core/PlainBuild.h"
#include "Support/BrokenMeshes.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/RecordingVisitor.h"

namespace KM {
using namespace Test;

namespace {

using Reports = std::vector<std::string>;
using Recorder = RecordingVisitor<PIN>;

/// Nodes 0, 1, 2 and edges 0, 1, 2; nodes 3, 4, 5 and edges 3, 4, 5. No common node.
PIN TwoTriangles() {
    PIN mesh;
    AddTriangles_3(mesh, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {5, 0, 0}, {6, 0, 0}, {5, 1, 0}}, {0, 1, 2, 3, 4, 5});
    return mesh;
}

PIN WithDeletions(PIN mesh, unsigned seed, unsigned of = 2) {
    std::mt19937 random(seed);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); e += 3)
        if (random() % of == 0) DeleteTriangle(mesh, e);
    return mesh;
}

TEST(Compact, LeavesACompactMeshAlone) {
    PIN mesh = UnitSquare();
    Recorder recorder;
    Compact(mesh, recorder);
    EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
    EXPECT_TRUE(recorder.reports.empty());
}

TEST(Compact, OfAnEmptyMeshDoesNothing) {
    PIN mesh;
    Recorder recorder;
    Compact(mesh, recorder);
    EXPECT_TRUE(SameRecords(mesh, PIN()));
    EXPECT_TRUE(recorder.reports.empty());
}

TEST(Compact, OfDeadEdgesAloneLeavesNothing) {
    PIN mesh = UnitSquare();
    for (Edge& e : mesh.edges) e.NE = e.P0 = -1;
    Recorder recorder;
    Compact(mesh, recorder);
    EXPECT_TRUE(SameRecords(mesh, PIN()));
    // From the end; the twin of a dead record stays as it was, and means nothing.
    EXPECT_EQ(recorder.reports, (Reports{"PopEdge -1 1 -1", "PopEdge -1 -1 -1", "PopEdge -1 -1 -1", "PopEdge -1 -1 -1",
                                         "PopEdge -1 5 -1", "PopEdge -1 -1 -1"}));
}

TEST(Compact, FillsAGapInTheNodesFromTheEnd) {
    PIN mesh = RightTriangle();
    mesh.points.insert(mesh.points.begin() + 1, {7, 8, 9});  // node 1 is dead, the last is now node 3
    mesh.edges = {{1, -1, 0}, {2, -1, 2}, {0, -1, 3}};
    Recorder recorder;
    Compact(mesh, recorder);
    EXPECT_EQ(recorder.reports, (Reports{"SetP0 2 3 1", "MoveNode 7 8 9 3 1"}));
    EXPECT_EQ(mesh.points, (std::vector<TPoint<double>>{{0, 0, 0}, {0, 1, 0}, {1, 0, 0}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 2, 1}));
    ExpectCompact(mesh);
}

TEST(Compact, MovesAllFansOfANode) {
    // Node 4 belongs to two triangles that have no edge in common; node 0 is dead.
    PIN mesh;
    mesh.points.resize(5);
    EdgesMap map;
    AddTriangle(mesh, 4, 1, 2, map, true);
    AddTriangle(mesh, 3, 1, 4, map, true);
    Recorder recorder;
    Compact(mesh, recorder);
    EXPECT_EQ(recorder.reports, (Reports{"SetP0 0 4 0", "SetP0 5 4 0", "MoveNode 0 0 0 4 0"}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{5, 4, 2, 3}));
    ExpectCompact(mesh);
}

TEST(Compact, DropsDeadNodesAtTheEndWithoutReport) {
    PIN mesh = RightTriangle();
    AddPoint(mesh, {1, 1, 1});
    AddPoint(mesh, {2, 2, 2});
    Recorder recorder;
    Compact(mesh, recorder);
    EXPECT_TRUE(recorder.reports.empty());
    EXPECT_TRUE(SameRecords(mesh, RightTriangle()));
}

TEST(Compact, FillsAGapInTheEdgesFromTheEnd) {
    PIN mesh = TwoTriangles();
    DeleteTriangle(mesh, 1);
    Recorder recorder;
    Compact(mesh, recorder);
    EXPECT_EQ(recorder.reports, (Reports{"SetNE 4 5 0", "MoveEdge -1 -1 -1 5 0", "SetNE 3 4 1", "MoveEdge -1 -1 -1 4 1",
                                         "SetNE 0 3 2", "MoveEdge -1 -1 -1 3 2", "SetP0 0 5 0", "MoveNode 0 0 0 5 0",
                                         "SetP0 1 4 1", "MoveNode 1 0 0 4 1", "SetP0 2 3 2", "MoveNode 0 1 0 3 2"}));
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{2, -1, 0}, {0, -1, 1}, {1, -1, 2}}));
    ExpectCompact(mesh);
}

TEST(Compact, TakesARecordWithATwinForDead) {
    PIN mesh = TwoTriangles();
    for (int e = 0; e < 3; ++e) mesh.edges[e] = {-1, 4, -1};
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    EXPECT_EQ(mesh.edges.size(), 3u);
    ExpectCompact(mesh);
}

TEST(Compact, RepairsNodeEdgesOfAnyLength) {
    for (const std::size_t length : {0u, 1u, 9u}) {
        PIN mesh = UnitSquare();
        mesh.p2e.resize(length, 77);
        Recorder recorder;
        Compact(mesh, recorder);
        EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
        EXPECT_TRUE(recorder.reports.empty());
    }
}

TEST(Compact, LetsTheHighestEdgeAtANodeWin) {
    PIN mesh = UnitSquare();
    mesh.p2e = {0, 1, 4, 2};
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 3, 4, 5}));
}

TEST(Compact, DeletesTheTriangleOfANodeThatDoesNotExist) {
    for (const int stray : {4, INT_MAX, -1, INT_MIN}) {
        SCOPED_TRACE(stray);
        PIN mesh = UnitSquare();
        mesh.edges[4].P0 = stray;
        VisitorOf<PIN> nobody;
        Compact(mesh, nobody);
        EXPECT_EQ(mesh.edges, (std::vector<Edge>{{1, -1, 0}, {2, -1, 1}, {0, -1, 2}}));  // node 3 is now node 2
        ExpectCompact(mesh);
    }
}

TEST(Compact, DeletesALongerLoopOfANodeThatDoesNotExist) {
    PIN mesh = TwoTriangles();
    AddPolygon(mesh, {1, 0, 3, 99, 5}, {0, -1, -1, -1, -1});
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    EXPECT_TRUE(SameRecords(mesh, TwoTriangles()));
}

TEST(Compact, MatchesThePlainRulesAfterDeletions) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = WithDeletions(seed % 2 == 0 ? RandomMesh(seed, 80) : Sphere(4), seed, 2 + seed % 3);
        if (seed % 5 == 0 && !mesh.edges.empty()) mesh.edges[seed % mesh.edges.size()].P0 = 1000;
        PIN plain = mesh;
        Recorder recorder, plainRecorder;
        Compact(mesh, recorder);
        Plain::Compact(plain, plainRecorder);
        ASSERT_EQ(recorder.reports, plainRecorder.reports);
        ASSERT_TRUE(SameRecords(mesh, plain));
        ExpectCompact(mesh);
    }
}

/// Dead records, and between them loops of one to six edges in slots that are out of order; half of them with twins.
PIN ScatteredLoops(unsigned seed) {
    std::mt19937 random(seed);
    std::vector<int> slots(60);
    for (std::size_t i = 0; i < slots.size(); ++i) slots[i] = static_cast<int>(i);
    for (std::size_t i = slots.size(); i > 1; --i) std::swap(slots[i - 1], slots[random() % i]);
    PIN mesh;
    mesh.points.resize(9);
    mesh.edges.resize(slots.size());
    for (std::size_t at = 0; at < 30;) {
        const std::size_t length = 1 + random() % 6;
        for (std::size_t i = 0; i < length; ++i)
            mesh.edges[slots[at + i]] = {slots[at + (i + 1) % length], -1, static_cast<int>(random() % 9)};
        at += length;
    }
    for (std::size_t i = 0; i + 1 < 15; i += 2) {
        mesh.edges[slots[i]].TE = slots[i + 1];
        mesh.edges[slots[i + 1]].TE = slots[i];
    }
    return mesh;
}

TEST(Compact, MatchesThePlainRulesOnLoopsOfAnyLength) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = ScatteredLoops(seed);
        PIN plain = mesh;
        Recorder recorder, plainRecorder;
        Compact(mesh, recorder);
        Plain::Compact(plain, plainRecorder);
        ASSERT_EQ(recorder.reports, plainRecorder.reports);
        ASSERT_TRUE(SameRecords(mesh, plain));
    }
}

// A walk round the loop for each of its edges would need 9 * 10^10 steps here, whole or broken.
TEST(Compact, IsQuickOnALongLoop) {
    constexpr int count = 300000;
    for (const bool isBroken : {false, true}) {
        PIN mesh;
        mesh.points.resize(1);
        mesh.edges.resize(count);
        AddPolygon(mesh, std::vector<int>(count, 0), std::vector<int>(count, -1));
        if (isBroken) mesh.edges.back().NE = 2 * count - 10;
        VisitorOf<PIN> nobody;
        Compact(mesh, nobody);
        EXPECT_EQ(mesh.edges.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(mesh.edges[0].NE, isBroken ? 9 : count - 1);
    }
}

TEST(Compact, ServesTheDisplayMeshAlike) {
    float xyz[] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0};
    int triples[] = {0, 1, 2, 2, 1, 3};
    SPIN mesh;
    AddTrianglesSPIN(mesh, 4, xyz, 2, triples);
    DeleteTriangle(mesh, 0);
    RecordingVisitor<SPIN> recorder;
    Compact(mesh, recorder);
    EXPECT_EQ(recorder.reports.back(), "MoveNode 0 0 0 3 0");
    ExpectCompact(mesh);
}

TEST(Compact, KeepsTheFacesThatWereLeft) {
    const PIN before = WithDeletions(Sphere(8), 3);
    PIN mesh = before;
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    EXPECT_EQ(TrianglesOf(mesh).size(), TrianglesOf(before).size());
    EXPECT_EQ(OrphanCount(mesh), OrphanCount(before));
    EXPECT_EQ(EulerCharacteristic(mesh), EulerCharacteristic(before));
}

TEST(Compact, EndsOnBrokenLinks) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = Broken(Sphere(2), seed);
        VisitorOf<PIN> nobody;
        Compact(mesh, nobody);
        EXPECT_EQ(mesh.p2e.size(), mesh.points.size());
        for (const Edge& e : mesh.edges)
            ASSERT_TRUE(e.NE >= 0 && e.P0 >= 0 && e.P0 < static_cast<int>(mesh.points.size()));
    }
}

TEST(CompactEdge, DropsTheDeadEndAndFillsTheSlot) {
    PIN mesh = TwoTriangles();
    mesh.edges.resize(7);
    mesh.edges.back().TE = 3;
    Recorder recorder;
    CompactEdge(mesh, 1, recorder);  // overwritten although it is alive
    EXPECT_EQ(recorder.reports, (Reports{"PopEdge -1 3 -1", "SetNE 4 5 1", "MoveEdge 2 -1 1 5 1"}));
    EXPECT_EQ(mesh.edges.size(), 5u);
    EXPECT_EQ(mesh.edges[1], (Edge{3, -1, 5}));
    EXPECT_EQ(mesh.p2e[5], 1);
}

TEST(CompactEdge, OfTheLastEdgeOnlyDropsIt) {
    PIN mesh = RightTriangle();
    Recorder recorder;
    CompactEdge(mesh, 2, recorder);
    EXPECT_EQ(mesh.edges.size(), 2u);
    EXPECT_TRUE(recorder.reports.empty());
}

TEST(CompactEdge, BeyondTheEdgesOnlyDropsTheDeadEnd) {
    PIN mesh = RightTriangle();
    mesh.edges.resize(5);
    Recorder recorder;
    CompactEdge(mesh, -1, recorder);
    EXPECT_EQ(mesh.edges.size(), 5u);
    CompactEdge(mesh, 4, recorder);
    EXPECT_EQ(mesh.edges.size(), 3u);
    EXPECT_EQ(recorder.reports, (Reports{"PopEdge -1 -1 -1", "PopEdge -1 -1 -1"}));
    CompactEdge(mesh, INT_MAX, recorder);
    EXPECT_TRUE(SameRecords(mesh, RightTriangle()));
    PIN empty;
    CompactEdge(empty, 0, recorder);
    EXPECT_TRUE(SameRecords(empty, PIN()));
}

TEST(MoveEdgeRecord, MovesAllReferences) {
    PIN mesh = UnitSquare();
    mesh.edges.push_back({-1, 8, -1});
    Recorder recorder;
    MoveEdgeRecord(mesh, 1, 6, recorder);
    EXPECT_EQ(recorder.reports, (Reports{"SetNE 0 1 6", "SetTE 5 1 6", "MoveEdge -1 8 -1 1 6"}));
    EXPECT_EQ(mesh.edges[6], (Edge{2, 5, 1}));
    EXPECT_EQ(mesh.edges[1], mesh.edges[6]);
    EXPECT_EQ(mesh.p2e[1], 6);
}

TEST(MoveEdgeRecord, LeavesNodeEdgesOfAnotherLengthAlone) {
    PIN mesh = RightTriangle();
    mesh.edges.resize(4);
    mesh.p2e.clear();
    VisitorOf<PIN> nobody;
    MoveEdgeRecord(mesh, 0, 3, nobody);
    EXPECT_TRUE(mesh.p2e.empty());
    EXPECT_EQ(mesh.edges[2].NE, 3);
}

TEST(MoveEdgeRecord, FollowsALongLoop) {
    PIN mesh;
    mesh.points.resize(5);
    AddPolygon(mesh, {0, 1, 2, 3, 4}, {-1, -1, -1, -1, -1});
    mesh.edges.resize(6);
    Recorder recorder;
    MoveEdgeRecord(mesh, 2, 5, recorder);
    EXPECT_EQ(recorder.reports, (Reports{"SetNE 1 2 5", "MoveEdge -1 -1 -1 2 5"}));
}

TEST(MoveEdgeRecord, RefusesWhatIsNoEdge) {
    const int refused[][2] = {{0, 0}, {-1, 0}, {0, -1}, {4, 0}, {0, 4}, {3, 0}, {INT_MAX, 1}};
    for (const auto& r : refused) {
        PIN mesh = RightTriangle();
        mesh.edges.resize(4);  // edge 3 is dead
        const PIN before = mesh;
        Recorder recorder;
        MoveEdgeRecord(mesh, r[0], r[1], recorder);
        EXPECT_TRUE(SameRecords(mesh, before));
        EXPECT_TRUE(recorder.reports.empty());
    }
}

TEST(RebuildNodeEdges, KeepsEntriesThatNoEdgeSets) {
    PIN mesh = RightTriangle();
    mesh.points.resize(6);
    mesh.p2e = {-1, -1, -1, 42};
    RebuildNodeEdges(mesh);
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2, 42, 0, 0}));
    mesh.points.resize(2);
    RebuildNodeEdges(mesh);
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1}));
}

TEST(DeleteTriangle, ClearsThreeRecordsAndOrphansTheNeighbours) {
    for (const int e : {0, 1, 2}) {
        PIN mesh = UnitSquare();
        DeleteTriangle(mesh, e);
        for (int k = 0; k < 3; ++k) EXPECT_EQ(mesh.edges[k], Edge());
        EXPECT_EQ(mesh.edges[5].TE, -1);
        EXPECT_EQ(mesh.p2e, UnitSquare().p2e);
    }
}

TEST(DeleteTriangle, RefusesWhatIsNoAliveEdge) {
    PIN mesh = UnitSquare();
    mesh.edges.resize(7);
    const PIN before = mesh;
    for (const int e : {-1, 6, 7, INT_MAX, INT_MIN}) DeleteTriangle(mesh, e);
    EXPECT_TRUE(SameRecords(mesh, before));
}

}  // namespace
}  // namespace KM
