#include "Mesh/Editing/Records.h"

#include <gtest/gtest.h>

#include <climits>

#include "Mesh/Core/Construction.h"
#include "Mesh/Editing/PlainEdits.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/RecordingVisitor.h"

namespace KM {
using namespace Test;

namespace {

using P = TPoint<double>;
using Indices = std::vector<int>;
using Reports = std::vector<std::string>;
using Recorder = RecordingVisitor<PIN>;

// UnitSquare(): 0 runs 0-1, 1 runs 1-3, 2 runs 3-0; 3 runs 1-2, 4 runs 2-3, 5 runs 3-1. Edges 1 and 5 are twins.

TEST(InvalidateEdge, ReportsThenClearsAllButTheTwin) {
    PIN mesh = UnitSquare();
    Recorder recorder;
    InvalidateEdge(mesh, 1, recorder);
    EXPECT_EQ(recorder.reports, (Reports{"Invalidate 2 5 1 1"}));
    EXPECT_EQ(mesh.edges[1], (Edge{-1, 5, -1}));
    mesh.edges[1] = UnitSquare().edges[1];
    EXPECT_TRUE(SameRecords(mesh, UnitSquare()));  // neither the loop nor the twin is told
}

TEST(InvalidateEdge, OutOfRangeDoesNothing) {
    for (const int e : {-1, -2, 6, INT_MIN, INT_MAX}) {
        PIN mesh = UnitSquare();
        Recorder recorder;
        InvalidateEdge(mesh, e, recorder);
        EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
        EXPECT_TRUE(recorder.reports.empty());
    }
}

TEST(MoveNode, ReportsThenMovesTheFan) {
    PIN mesh = UnitSquare();
    Recorder recorder;
    MoveNode(mesh, 1, 0, recorder);
    // The fan of node 1 is open: edge 1 is its first, then comes the orphan 3.
    EXPECT_EQ(recorder.reports, (Reports{"MoveNode 0 0 0 1 0", "SetP0 1 1 0", "SetP0 3 1 0"}));
    EXPECT_EQ(mesh.points[0], P(1, 0, 0));
    EXPECT_EQ(mesh.points[1], P(1, 0, 0));
    EXPECT_EQ(mesh.p2e, (Indices{1, 3, 4, 5}));
    EXPECT_EQ(mesh.edges[1].P0, 0);
    EXPECT_EQ(mesh.edges[3].P0, 0);
}

TEST(MoveNode, StartsAClosedFanAtTheForwardNeighbour) {
    PIN mesh = Sphere(1);
    const int last = 5;
    PIN plain = mesh;
    Recorder recorder, plainRecorder;
    MoveNode(mesh, last, 0, recorder);
    Plain::MoveNode(plain, last, 0, plainRecorder);
    EXPECT_EQ(recorder.reports.size(), 5u);
    EXPECT_EQ(recorder.reports, plainRecorder.reports);
    EXPECT_TRUE(SameRecords(mesh, plain));
    EXPECT_NE(mesh.p2e[0], mesh.p2e[last]);
}

TEST(MoveNode, LeavesOtherFansBehind) {
    PIN mesh = BowTie();  // node 1 has the edges 1 and 3, in two fans; p2e names 3
    AddPoint(mesh, P());
    Recorder recorder;
    MoveNode(mesh, 1, 5, recorder);
    EXPECT_EQ(recorder.reports, (Reports{"MoveNode 0 0 0 1 5", "SetP0 3 1 5"}));
    EXPECT_EQ(mesh.edges[1].P0, 1);
}

TEST(MoveNode, OfADeadNodeMovesThePointAlone) {
    PIN mesh = RightTriangle();
    AddPoint(mesh, P(7, 8, 9));
    Recorder recorder;
    MoveNode(mesh, 3, 1, recorder);
    EXPECT_EQ(recorder.reports, (Reports{"MoveNode 1 0 0 3 1"}));
    EXPECT_EQ(mesh.points[1], P(7, 8, 9));
    EXPECT_EQ(mesh.p2e, (Indices{0, -1, 2, -1}));
    EXPECT_EQ(mesh.edges, RightTriangle().edges);
}

TEST(MoveNode, ToItselfOrOutOfRangeDoesNothing) {
    const struct { int from, to; } refused[] = {{1, 1}, {-1, 0}, {0, -1}, {4, 0}, {0, 4}, {INT_MIN, INT_MAX}, {7, 7}};
    for (const auto& r : refused) {
        PIN mesh = UnitSquare();
        Recorder recorder;
        MoveNode(mesh, r.from, r.to, recorder);
        EXPECT_TRUE(SameRecords(mesh, UnitSquare())) << r.from << " to " << r.to;
        EXPECT_TRUE(recorder.reports.empty());
    }
    PIN mesh = UnitSquare();
    mesh.p2e.clear();
    Recorder recorder;
    MoveNode(mesh, 3, 0, recorder);
    EXPECT_TRUE(recorder.reports.empty());
}

TEST(CompactNode, FillsTheSlotWithTheLastNode) {
    PIN mesh = UnitSquare();
    Recorder recorder;
    CompactNode(mesh, 0, recorder);
    EXPECT_EQ(recorder.reports, (Reports{"MoveNode 0 0 0 3 0", "SetP0 5 3 0", "SetP0 2 3 0"}));
    EXPECT_EQ(mesh.points, (std::vector<P>{{0, 1, 0}, {1, 0, 0}, {1, 1, 0}}));
    EXPECT_EQ(mesh.p2e, (Indices{5, 3, 4}));
}

TEST(CompactNode, AtTheLastNodeRemovesIt) {
    PIN mesh = UnitSquare();
    Recorder recorder;
    CompactNode(mesh, 3, recorder);
    EXPECT_TRUE(recorder.reports.empty());
    EXPECT_EQ(mesh.points.size(), 3u);
    EXPECT_EQ(mesh.p2e, (Indices{0, 3, 4}));
    EXPECT_EQ(mesh.edges, UnitSquare().edges);
}

TEST(CompactNode, DropsDeadNodesAtTheEndFirst) {
    for (const int n : {4, 5, 6, INT_MAX}) {
        PIN mesh = UnitSquare();
        AddPoint(mesh, P());
        AddPoint(mesh, P());
        Recorder recorder;
        CompactNode(mesh, n, recorder);
        EXPECT_TRUE(SameRecords(mesh, UnitSquare())) << n;
        EXPECT_TRUE(recorder.reports.empty());
    }
}

TEST(CompactNode, TakesTheOtherMarkOfNoEdgeForDeadAtTheVeryEndAlone) {
    PIN mesh = UnitSquare();
    mesh.points.resize(7);
    mesh.p2e.insert(mesh.p2e.end(), {-2, -1, -2});
    VisitorOf<PIN> nobody;
    CompactNode(mesh, 6, nobody);
    EXPECT_EQ(mesh.p2e, (Indices{0, 3, 4, 5, -2}));
    EXPECT_EQ(mesh.points.size(), 5u);
}

TEST(CompactNode, RefusesANegativeNodeAndNodeEdgesOfAnotherLength) {
    for (const int n : {-1, -2, INT_MIN}) {
        PIN mesh = UnitSquare();
        VisitorOf<PIN> nobody;
        CompactNode(mesh, n, nobody);
        EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
    }
    for (const std::size_t length : {0u, 3u, 9u}) {
        PIN before = UnitSquare();
        before.p2e.resize(length, -1);
        PIN mesh = before;
        VisitorOf<PIN> nobody;
        CompactNode(mesh, 0, nobody);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
    PIN empty;
    VisitorOf<PIN> nobody;
    CompactNode(empty, 0, nobody);
    EXPECT_TRUE(empty.points.empty());
}

TEST(Records, AreMovedLikeThePlainForm) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        const PIN before = seed % 2 == 0 ? RandomMesh(seed, 30) : Sphere(2);
        for (int n = 0; n < static_cast<int>(before.points.size()); ++n) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << " node " << n);
            PIN mesh = before, plain = before;
            Recorder recorder, plainRecorder;
            CompactNode(mesh, n, recorder);
            Plain::CompactNode(plain, n, plainRecorder);
            ASSERT_EQ(recorder.reports, plainRecorder.reports);
            ASSERT_TRUE(SameRecords(mesh, plain));
        }
    }
}

TEST(Records, ServeTheSinglePrecisionMesh) {
    SPIN mesh;
    mesh.points = {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    mesh.edges = UnitSquare().edges;
    mesh.p2e = UnitSquare().p2e;
    RecordingVisitor<SPIN> recorder;
    CompactNode(mesh, 0, recorder);
    MoveNode(mesh, 1, 2, recorder);
    InvalidateEdge(mesh, 4, recorder);
    EXPECT_EQ(recorder.reports, (Reports{"MoveNode 0 0 0 3 0", "SetP0 5 3 0", "SetP0 2 3 0", "MoveNode 1 1 0 1 2",
                                         "SetP0 1 1 2", "SetP0 3 1 2", "Invalidate 5 -1 2 4"}));
}

}  // namespace
}  // namespace KM
