#include "Mesh/Core/PinActions.h"

#include <gtest/gtest.h>

#include <climits>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/ReplayLog.h"

namespace KM {
namespace {

using namespace Test;

using Points = std::vector<TPoint<double>>;
using Edges = std::vector<Edge>;
using Lines = std::vector<std::string>;

/// Four points and four records whose fields tell them apart, and a `p2e` that no action may touch.
PIN Marked() {
    PIN mesh;
    for (int i = 0; i < 4; ++i) {
        mesh.points.emplace_back(i, i, i);
        mesh.edges.push_back({10 + i, 20 + i, 30 + i});
    }
    mesh.p2e = {7, 8, 9};
    return mesh;
}

const TPoint<double> Old(5, 6, 7);
const Edge OldRecord = {1, 2, 3};

TEST(PinActions, ArePlainAndHaveNoVirtualDestructor) {
    EXPECT_TRUE(std::is_abstract_v<KsPinAction>);
    EXPECT_TRUE(std::is_abstract_v<KsPinActionVisitor>);
    EXPECT_FALSE(std::has_virtual_destructor_v<KsPinAction>);
    EXPECT_TRUE(std::is_trivially_destructible_v<KsPinMoveNode>);
    const std::shared_ptr<KsPinAction> owner(new KsPinSetTE(1, -1, 2));  // knows the class that it has to delete
    PIN mesh = Marked();
    owner->Redo(mesh);
    EXPECT_EQ(mesh.edges[1].TE, 2);
}

TEST(KsPinMoveNode, UndoRestoresBothPlaces) {
    PIN mesh = Marked();
    KsPinMoveNode(Old, 3, 1).Undo(mesh);
    EXPECT_EQ(mesh.points, (Points{{0, 0, 0}, Old, {2, 2, 2}, {1, 1, 1}}));
    EXPECT_EQ(mesh.edges, Marked().edges);
    EXPECT_EQ(mesh.p2e, Marked().p2e);
}

TEST(KsPinMoveNode, UndoGrowsWithZeros) {
    PIN mesh = Marked();
    KsPinMoveNode(Old, 6, 1).Undo(mesh);
    EXPECT_EQ(mesh.points, (Points{{0, 0, 0}, Old, {2, 2, 2}, {3, 3, 3}, {0, 0, 0}, {0, 0, 0}, {1, 1, 1}}));
    EXPECT_EQ(mesh.p2e, Marked().p2e);
}

TEST(KsPinMoveNode, UndoKeepsWhatStandsThereIfTheMovedNodeIsGone) {
    PIN mesh = Marked();
    KsPinMoveNode(Old, 1, 5).Undo(mesh);
    EXPECT_EQ(mesh.points, (Points{{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {0, 0, 0}, Old}));
}

TEST(KsPinMoveNode, RedoRemovesTheLastPointAlone) {
    PIN mesh = Marked();
    KsPinMoveNode(Old, 2, 1).Redo(mesh);
    EXPECT_EQ(mesh.points, (Points{{0, 0, 0}, {2, 2, 2}, {2, 2, 2}, {3, 3, 3}}));
    KsPinMoveNode(Old, 3, 0).Redo(mesh);
    EXPECT_EQ(mesh.points, (Points{{3, 3, 3}, {2, 2, 2}, {2, 2, 2}}));
}

TEST(KsPinMoveEdge, UndoRestoresBothRecords) {
    PIN mesh = Marked();
    KsPinMoveEdge(OldRecord, 3, 1).Undo(mesh);
    EXPECT_EQ(mesh.edges, (Edges{{10, 20, 30}, OldRecord, {12, 22, 32}, {11, 21, 31}}));
    EXPECT_EQ(mesh.points, Marked().points);
}

TEST(KsPinMoveEdge, UndoGrowsWithDeadRecords) {
    PIN mesh = Marked();
    KsPinMoveEdge(OldRecord, 5, 0).Undo(mesh);
    EXPECT_EQ(mesh.edges, (Edges{OldRecord, {11, 21, 31}, {12, 22, 32}, {13, 23, 33}, Edge(), {10, 20, 30}}));
}

TEST(KsPinMoveEdge, RedoRemovesTheLastRecordAlone) {
    PIN mesh = Marked();
    KsPinMoveEdge(OldRecord, 2, 1).Redo(mesh);
    EXPECT_EQ(mesh.edges, (Edges{{10, 20, 30}, {12, 22, 32}, {12, 22, 32}, {13, 23, 33}}));
    KsPinMoveEdge(OldRecord, 3, 0).Redo(mesh);
    EXPECT_EQ(mesh.edges, (Edges{{13, 23, 33}, {12, 22, 32}, {12, 22, 32}}));
}

TEST(KsPinPopEdge, UndoAppendsAndRedoRemoves) {
    PIN mesh = Marked();
    KsPinPopEdge(OldRecord).Undo(mesh);
    ASSERT_EQ(mesh.edges.size(), 5U);
    EXPECT_EQ(mesh.edges.back(), OldRecord);
    KsPinPopEdge(OldRecord).Redo(mesh);
    EXPECT_TRUE(SameRecords(mesh, Marked()));
}

TEST(KsPinSetField, WritesOneFieldOfOneRecord) {
    PIN mesh = Marked();
    KsPinSetTE(1, 4, 5).Undo(mesh);
    KsPinSetNE(2, 6, 7).Undo(mesh);
    KsPinSetP0(3, 8, 9).Undo(mesh);
    EXPECT_EQ(mesh.edges, (Edges{{10, 20, 30}, {11, 4, 31}, {6, 22, 32}, {13, 23, 8}}));
    KsPinSetTE(1, 4, 5).Redo(mesh);
    KsPinSetNE(2, 6, 7).Redo(mesh);
    KsPinSetP0(3, 8, 9).Redo(mesh);
    EXPECT_EQ(mesh.edges, (Edges{{10, 20, 30}, {11, 5, 31}, {7, 22, 32}, {13, 23, 9}}));
}

TEST(KsPinEdgeInvalidate, UndoWritesTheRecordAndRedoLeavesItsTwin) {
    PIN mesh = Marked();
    KsPinEdgeInvalidate(OldRecord, 2).Undo(mesh);
    EXPECT_EQ(mesh.edges[2], OldRecord);
    mesh.edges[2].TE = 42;
    KsPinEdgeInvalidate(OldRecord, 2).Redo(mesh);
    EXPECT_EQ(mesh.edges[2], (Edge{-1, 42, -1}));
}

TEST(KsPinMergeNode, UndoCopiesAPointAndRedoDoesNothing) {
    PIN mesh = Marked();
    KsPinMergeNode(5, 2).Undo(mesh);
    EXPECT_EQ(mesh.points, (Points{{0, 0, 0}, {1, 1, 1}, {2, 2, 2}, {3, 3, 3}, {0, 0, 0}, {2, 2, 2}}));
    const PIN before = mesh;
    KsPinMergeNode(0, 1).Redo(mesh);
    EXPECT_TRUE(SameRecords(mesh, before));
    KsPinMergeNode(0, 1).Undo(mesh);
    EXPECT_EQ(mesh.points[0], (TPoint<double>(1, 1, 1)));
}

TEST(PinActions, AnIndexOutOfRangeWritesNothing) {
    for (const int bad : {-1, -2, INT_MIN, 4, INT_MAX}) {
        SCOPED_TRACE(bad);
        PIN mesh = Marked();
        const auto playBoth = [&](const auto& action) {
            action.Undo(mesh);
            action.Redo(mesh);
        };
        playBoth(KsPinSetTE(bad, 0, 0));
        playBoth(KsPinSetNE(bad, 0, 0));
        playBoth(KsPinSetP0(bad, 0, 0));
        playBoth(KsPinEdgeInvalidate(OldRecord, bad));
        playBoth(KsPinMergeNode(3, bad));
        for (const auto& [from, to] : {std::pair(3, bad), std::pair(bad, 0)}) {
            KsPinMoveNode(Old, from, to).Redo(mesh);
            KsPinMoveEdge(OldRecord, from, to).Redo(mesh);
            if (bad > 0) continue;  // undo would grow the vectors
            KsPinMoveNode(Old, from, to).Undo(mesh);
            KsPinMoveEdge(OldRecord, from, to).Undo(mesh);
            KsPinMergeNode(from, to).Undo(mesh);
        }
        EXPECT_TRUE(SameRecords(mesh, Marked()));
    }
    PIN empty;
    KsPinPopEdge(OldRecord).Redo(empty);
    EXPECT_TRUE(SameRecords(empty, PIN()));
}

TEST(PinActions, AnnounceTheirIndices) {
    ReplayLog log;
    const auto announce = [&](const auto& action) {
        action.VisitorUndo(log);
        action.VisitorRedo(log);
    };
    announce(KsPinMoveNode(Old, 1, 2));
    announce(KsPinMoveEdge(OldRecord, 3, 4));
    announce(KsPinSetTE(5, 6, 7));
    announce(KsPinSetNE(8, 9, 10));
    announce(KsPinSetP0(11, 12, 13));
    announce(KsPinEdgeInvalidate(OldRecord, 14));
    announce(KsPinMergeNode(15, 16));
    announce(KsPinPopEdge(OldRecord));
    EXPECT_EQ(log.lines,
              (Lines{"MoveNodeUndo 1 2", "MoveNodeRedo 1 2", "MoveEdgeUndo 3 4", "MoveEdgeRedo 3 4", "SetTEUndo 5 6 7",
                     "SetTERedo 5 6 7", "SetNEUndo 8 9 10", "SetNERedo 8 9 10", "SetP0Undo 11 12 13",
                     "SetP0Redo 11 12 13", "EdgeInvalidateUndo 14", "EdgeInvalidateRedo 14", "MergeNodeUndo 15 16",
                     "MergeNodeRedo 15 16", "PopEdgeUndo", "PopEdgeRedo"}));
}

}  // namespace
}  // namespace KM
