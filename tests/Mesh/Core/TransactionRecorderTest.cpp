#include "Mesh/Core/TransactionRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Fans.h"
#include "Mesh/Core/Loops.h"
#include "Mesh/Core/Orientation.h"
#include "Mesh/Editing/Records.h"
#include "Support/BrokenMeshes.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/ReplayLog.h"

namespace KM {
namespace {

using namespace Test;

using Lines = std::vector<std::string>;

/// Lets `p2e` of a node name an alive edge there, or none.
void NameEdgeOf(PIN& mesh, int node) {
    mesh.p2e[node] = -1;
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
        if (mesh.edges[e].NE != -1 && mesh.edges[e].P0 == node) mesh.p2e[node] = e;
}

/// Kills the loop of `edge` and makes orphans of its neighbours' edges, all of it reported.
void KillLoop(PIN& mesh, int edge, PINTransactionRecorder& recorder) {
    for (const int e : Loop(mesh, edge)) {
        const int twin = mesh.edges[e].TE;
        if (twin != -1 && mesh.edges[twin].TE == e) {
            recorder.SetTE(twin, e, -1);
            mesh.edges[twin].TE = -1;
        }
        const int node = mesh.edges[e].P0;
        InvalidateEdge(mesh, e, recorder);
        NameEdgeOf(mesh, node);
    }
}

/// True if all edges at a node are in the fan that `p2e` leads to, so that the node can move.
bool HasOneFan(const PIN& mesh, int node) {
    const auto startsHere = [&](const Edge& edge) { return edge.NE != -1 && edge.P0 == node; };
    return std::count_if(mesh.edges.begin(), mesh.edges.end(), startsHere) ==
           static_cast<std::ptrdiff_t>(AllStartingEdges(mesh, node).size());
}

std::vector<bool> AliveNodes(const PIN& mesh) {
    std::vector<bool> isAlive(mesh.points.size(), false);
    for (const Edge& edge : mesh.edges)
        if (edge.NE >= 0 && static_cast<std::size_t>(edge.P0) < isAlive.size()) isAlive[edge.P0] = true;
    return isAlive;
}

using Place = std::array<double, 3>;

Place PlaceOf(const TPoint<double>& p) { return {p.X, p.Y, p.Z}; }
Place PlaceOf(const PIN& mesh, int node) { return PlaceOf(mesh.points[node]); }

/// A recorder that notes which places no report tells of, by looking at the mesh before and after each compaction.
class WatchedRecorder : public PINTransactionRecorder {
public:
    std::set<Place> lost;

    void MoveNode(const TPoint<double>& overwritten, int from, int to) override {
        kept_.insert(PlaceOf(overwritten));
        PINTransactionRecorder::MoveNode(overwritten, from, to);
    }

    void CompactAll(PIN& mesh) {
        Watch(mesh, [&] { Compact(mesh, *this); });
    }
    void CompactOne(PIN& mesh, int node) {
        Watch(mesh, [&] { CompactNode(mesh, node, *this); });
    }

private:
    template <class Step>
    void Watch(PIN& mesh, Step step) {
        const PIN before = mesh;
        kept_.clear();
        step();
        for (const TPoint<double>& p : mesh.points) kept_.insert(PlaceOf(p));
        for (const TPoint<double>& p : before.points)
            if (!kept_.contains(PlaceOf(p))) lost.insert(PlaceOf(p));
    }

    std::set<Place> kept_;
};

/// Same bits in all edges, and in the points of all nodes of `a` that have an edge, lost ones aside.
bool SameSurface(const PIN& a, const PIN& b, const std::set<Place>& lost = {}) {
    const std::vector<bool> isAlive = AliveNodes(a);
    for (int n = 0; n < static_cast<int>(isAlive.size()); ++n) {
        if (!isAlive[n] || lost.contains(PlaceOf(a, n))) continue;
        if (n >= static_cast<int>(b.points.size())) return false;
        if (std::memcmp(&a.points[n], &b.points[n], sizeof a.points[n]) != 0) return false;
    }
    return a.edges == b.edges;
}

/// Same bits in all edges and all points.
bool SameBits(const PIN& a, PIN b) {
    b.p2e = a.p2e;
    return SameRecords(a, b);
}

TEST(TransactionRecorder, StartsEmptyAndThenDoesNothing) {
    PINTransactionRecorder recorder;
    ReplayLog log;
    PIN mesh = UnitSquare();
    recorder.CreateNode(1);
    recorder.CreateEdge(2);
    recorder.Undo(mesh, log);
    recorder.Redo(mesh, log);
    recorder.UndoVisitor(log);
    recorder.RedoVisitor(log);
    EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
    EXPECT_EQ(log.lines, Lines());
}

/// One change of each kind, none of which fits a small mesh.
PINTransactionRecorder OneOfEach() {
    PINTransactionRecorder recorder;
    recorder.PopEdge({1, 2, 3});
    recorder.MoveEdge({1, 2, 3}, 30, 31);
    recorder.MoveNode({1, 2, 3}, 32, 33);
    recorder.MergeNodes(34, 35);
    recorder.SetTE(36, 37, 38);
    recorder.SetNE(39, 40, 41);
    recorder.SetP0(42, 43, 44);
    recorder.Invalidate({1, 2, 3}, 45);
    return recorder;
}

const Lines Redone = {"PopEdgeRedo",        "MoveEdgeRedo 30 31", "MoveNodeRedo 32 33", "MergeNodeRedo 34 35",
                      "SetTERedo 36 37 38", "SetNERedo 39 40 41", "SetP0Redo 42 43 44", "EdgeInvalidateRedo 45"};
const Lines Undone = {"EdgeInvalidateUndo 45", "SetP0Undo 42 43 44", "SetNEUndo 39 40 41", "SetTEUndo 36 37 38",
                      "MergeNodeUndo 34 35",   "MoveNodeUndo 32 33", "MoveEdgeUndo 30 31", "PopEdgeUndo"};

TEST(TransactionRecorder, AConstantOneAnnouncesInItsOrderAndBackward) {
    const PINTransactionRecorder recorder = OneOfEach();
    ReplayLog log;
    recorder.RedoVisitor(log);
    EXPECT_EQ(log.lines, Redone);
    log.lines.clear();
    recorder.UndoVisitor(log);
    EXPECT_EQ(log.lines, Undone);
}

TEST(TransactionRecorder, ReplayAnnouncesTheSame) {
    PINTransactionRecorder recorder = OneOfEach();
    ReplayLog log;
    PIN mesh;
    recorder.Undo(mesh, log);
    EXPECT_EQ(log.lines, Undone);
    log.lines.clear();
    recorder.Redo(mesh, log);
    EXPECT_EQ(log.lines, Redone);
}

/// Looks at the mesh whenever it is told of something.
struct Witness : ReplayLog {
    const PIN& mesh;
    std::vector<int> seen;
    explicit Witness(const PIN& watched) : mesh(watched) {}
    void SetTEUndo(int edge, int, int) override { seen.push_back(mesh.edges[edge].TE); }
    void SetTERedo(int edge, int, int) override { seen.push_back(mesh.edges[edge].TE); }
};

TEST(TransactionRecorder, AnnouncesEachChangeBehindItAndBeforeTheNext) {
    PIN mesh = RightTriangle();
    PINTransactionRecorder recorder;
    recorder.SetTE(0, -1, 7);
    recorder.SetTE(0, 7, 8);
    mesh.edges[0].TE = 8;
    Witness witness(mesh);
    recorder.Undo(mesh, witness);
    recorder.Redo(mesh, witness);
    EXPECT_EQ(witness.seen, (std::vector<int>{7, -1, 7, 8}));
}

TEST(TransactionRecorder, CopiesAreIndependentAndMovingEmpties) {
    PINTransactionRecorder first = OneOfEach();
    PINTransactionRecorder copy = first;
    copy.SetTE(0, 1, 2);
    ReplayLog log;
    first.RedoVisitor(log);
    EXPECT_EQ(log.lines, Redone);

    const PINTransactionRecorder moved = std::move(first);
    log.lines.clear();
    first.RedoVisitor(log);  // what moving leaves is part of the contract
    EXPECT_EQ(log.lines, Lines());
    moved.RedoVisitor(log);
    EXPECT_EQ(log.lines, Redone);

    PINTransactionRecorder assigned;
    assigned.SetTE(0, 1, 2);
    assigned = std::move(copy);
    log.lines.clear();
    copy.UndoVisitor(log);
    EXPECT_EQ(log.lines, Lines());
    assigned.UndoVisitor(log);
    EXPECT_EQ(log.lines.size(), 9U);
}

// A host's stack of recorders must not copy millions of changes each time that it grows.
TEST(TransactionRecorder, MovingNeverFails) {
    EXPECT_TRUE(std::is_nothrow_move_constructible_v<PINTransactionRecorder>);
    EXPECT_TRUE(std::is_nothrow_move_assignable_v<PINTransactionRecorder>);
}

TEST(TransactionRecorder, ALongRecordingKeepsItsOrder) {
    PINTransactionRecorder recorder;
    Lines redone;
    const auto record = [&](int i) {
        recorder.SetTE(0, i, i + 1);
        redone.push_back("SetTERedo 0 " + std::to_string(i) + ' ' + std::to_string(i + 1));
    };
    for (int i = 0; i < 20000; ++i) record(i);
    const PINTransactionRecorder early = recorder;
    for (int i = 20000; i < 30000; ++i) record(i);
    ReplayLog log;
    recorder.RedoVisitor(log);
    EXPECT_EQ(log.lines, redone);
    log.lines.clear();
    early.RedoVisitor(log);
    EXPECT_EQ(log.lines, Lines(redone.begin(), redone.begin() + 20000));

    PIN mesh = RightTriangle();
    mesh.edges[0].TE = 30000;
    Witness witness(mesh);
    recorder.Undo(mesh, witness);
    ASSERT_EQ(witness.seen.size(), 30000U);
    EXPECT_TRUE(std::is_sorted(witness.seen.rbegin(), witness.seen.rend()));
    EXPECT_EQ(mesh.edges[0].TE, 0);
}

TEST(TransactionRecorder, CompactEdgeComesBackWithDeadRecords) {
    PIN mesh = UnitSquare();
    mesh.edges.insert(mesh.edges.begin(), Edge{-1, 3, 9});
    for (std::size_t e = 1; e < mesh.edges.size(); ++e) {
        ++mesh.edges[e].NE;
        if (mesh.edges[e].TE != -1) ++mesh.edges[e].TE;
    }
    for (int& e : mesh.p2e) ++e;
    mesh.edges.push_back({-1, 8, 8});
    ExpectSound(mesh);
    const PIN before = mesh;
    PINTransactionRecorder recorder;
    CompactEdge(mesh, 0, recorder);
    ASSERT_EQ(mesh.edges.size(), 6U);
    const PIN after = mesh;
    ReplayLog log;
    recorder.Undo(mesh, log);
    EXPECT_TRUE(SameBits(mesh, before));
    EXPECT_EQ(mesh.p2e, after.p2e);
    recorder.Redo(mesh, log);
    EXPECT_TRUE(SameRecords(mesh, after));
}

//  2       4
//  | \   / |   the nodes 0 and 2 go, and 4 and 3 take their slots; two more dead ones stand behind them
//  0 - 1 - 3
TEST(TransactionRecorder, DeadNodesAtTheEndDoNotComeBack) {
    PIN mesh = BowTie();
    mesh.points.insert(mesh.points.end(), 2, TPoint<double>(9, 9, 9));
    mesh.p2e.insert(mesh.p2e.end(), 2, -1);
    const PIN before = mesh;
    PINTransactionRecorder recorder;
    KillLoop(mesh, 0, recorder);
    Compact(mesh, recorder);
    const PIN after = mesh;
    ReplayLog log;
    for (int round = 0; round < 3; ++round) {
        recorder.Undo(mesh, log);
        EXPECT_TRUE(SameSurface(before, mesh));
        EXPECT_EQ(mesh.points.size(), 5U);
        recorder.Redo(mesh, log);
        EXPECT_TRUE(SameRecords(after, mesh));
    }
}

// Here nodes 3 and 4 go themselves: their edges come back and name them, but nobody told where they were.
TEST(TransactionRecorder, NodesThatDieAtTheEndLoseTheirPlaces) {
    PIN mesh = BowTie();
    const PIN before = mesh;
    PINTransactionRecorder recorder;
    KillLoop(mesh, 3, recorder);
    Compact(mesh, recorder);
    const PIN after = mesh;
    ReplayLog log;
    recorder.Undo(mesh, log);
    EXPECT_EQ(mesh.edges, before.edges);
    EXPECT_EQ(mesh.points, after.points);
    recorder.Redo(mesh, log);
    EXPECT_TRUE(SameRecords(after, mesh));
}

TEST(TransactionRecorder, FixOrientationComesBack) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = Sphere(3);
        std::mt19937 random(seed);
        for (int k = 0; k < 20; ++k) {  // turn some triangles round, so that their twins clash
            const int e = static_cast<int>(random() % mesh.edges.size()) / 3 * 3;
            const std::array<Edge, 3> old = {mesh.edges[e], mesh.edges[e + 1], mesh.edges[e + 2]};
            for (int i = 0; i < 3; ++i) mesh.edges[e + i] = {e + (i + 2) % 3, old[i].TE, old[(i + 1) % 3].P0};
        }
        const PIN before = mesh;
        PINTransactionRecorder recorder;
        FixOrientation(mesh, recorder);
        ExpectSound(mesh);
        const PIN after = mesh;
        ReplayLog log;
        recorder.Undo(mesh, log);
        EXPECT_TRUE(SameBits(mesh, before));
        recorder.Redo(mesh, log);
        EXPECT_TRUE(SameRecords(mesh, after));
    }
}

TEST(TransactionRecorder, AMoveOfTheLastRecordThatStaysIsUndoneButNotDoneAgain) {
    PIN mesh = RightTriangle();
    mesh.edges.insert(mesh.edges.begin(), Edge());
    mesh.edges[1] = {2, -1, 0};
    mesh.edges[2] = {3, -1, 1};
    mesh.edges[3] = {1, -1, 2};
    const PIN before = mesh;
    PINTransactionRecorder recorder;
    MoveEdgeRecord(mesh, 3, 0, recorder);
    ASSERT_EQ(mesh.edges.size(), 4U);
    ReplayLog log;
    recorder.Undo(mesh, log);
    EXPECT_TRUE(SameBits(mesh, before));
    recorder.Redo(mesh, log);
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{1, -1, 2}, {2, -1, 0}, {0, -1, 1}}));
}

/// Lets the dead node `to`, if it is one, be overwritten by another one, or filled from the end.
void MoveSomeNode(PIN& mesh, std::mt19937& random, WatchedRecorder& recorder) {
    const int last = static_cast<int>(mesh.points.size()) - 1;
    if (last < 1) return;
    const int to = static_cast<int>(random() % last);
    const int from = static_cast<int>(random() % last);
    if (mesh.p2e[to] != -1 || mesh.p2e[from] == -1) return;
    if (random() % 2 == 0) {
        if (mesh.p2e[last] != -1 && HasOneFan(mesh, last)) recorder.CompactOne(mesh, to);
    } else if (HasOneFan(mesh, from)) {
        MoveNode(mesh, from, to, recorder);
        mesh.p2e[from] = -1;
    }
}

/// Moves an alive record, other than the last one, into the dead slot `to`, if it is one.
void MoveSomeEdge(PIN& mesh, int from, int to, WatchedRecorder& recorder) {
    if (from + 1 == static_cast<int>(mesh.edges.size())) return;
    if (mesh.edges[from].NE == -1 || mesh.edges[to].NE != -1) return;
    MoveEdgeRecord(mesh, from, to, recorder);
    InvalidateEdge(mesh, from, recorder);
}

/// Kills loops, moves records and nodes into dead slots, and compacts, in any order. All of it is reported.
void Work(PIN& mesh, std::mt19937& random, WatchedRecorder& recorder) {
    const int steps = 5 + static_cast<int>(random() % 40);
    for (int i = 0; i < steps && !mesh.edges.empty(); ++i) {
        const int e = static_cast<int>(random() % mesh.edges.size());
        const int other = static_cast<int>(random() % mesh.edges.size());
        switch (random() % 16) {
            case 0:
                recorder.CompactAll(mesh);
                break;
            case 1:
                FixOrientation(mesh, recorder);
                break;
            case 2:
            case 3:
            case 4:
                if (mesh.edges[e].NE == -1) CompactEdge(mesh, e, recorder);
                break;
            case 5:
            case 6:
                MoveSomeEdge(mesh, other, e, recorder);
                break;
            case 7:
            case 8:
            case 9:
                MoveSomeNode(mesh, random, recorder);
                break;
            default:
                if (mesh.edges[e].NE != -1) KillLoop(mesh, e, recorder);
        }
        ExpectIntact(mesh);
    }
}

PIN Start(unsigned seed) {
    switch (seed % 4) {
        case 0:
            return Sphere(3);
        case 1:
            return Grid(5);
        case 2:
            return RandomMesh(seed, 60);
        default:
            return Dissolved(Grid(6), seed, 12);
    }
}

TEST(TransactionRecorder, RandomWorkComesBackAnyNumberOfTimes) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        PIN mesh = Start(seed);
        ExpectIntact(mesh);
        const PIN before = mesh;
        WatchedRecorder recorder;
        Work(mesh, random, recorder);
        if (seed % 2 == 0) recorder.CompactAll(mesh);
        const PIN after = mesh;
        ReplayLog log;
        for (int round = 0; round < 3; ++round) {
            recorder.Undo(mesh, log);
            ASSERT_TRUE(SameSurface(before, mesh, recorder.lost));
            EXPECT_EQ(mesh.p2e, after.p2e);
            recorder.Redo(mesh, log);
            ASSERT_TRUE(SameSurface(after, mesh));
            EXPECT_EQ(mesh.p2e, after.p2e);
        }
        recorder.Undo(mesh, log);
        RebuildNodeEdges(mesh);
        if (!recorder.lost.empty()) continue;  // edges may name a node whose place nobody told of
        ExpectIntact(mesh);
    }
}

TEST(TransactionRecorder, WorkInSeveralTransactionsComesBackStepByStep) {
    for (unsigned seed = 0; seed < 60; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        PIN mesh = Start(seed);
        std::vector<PIN> states = {mesh};
        std::vector<WatchedRecorder> recorders;
        std::set<Place> lost;
        for (int i = 0; i < 4; ++i) {
            Work(mesh, random, recorders.emplace_back());
            states.push_back(mesh);
            lost.insert(recorders.back().lost.begin(), recorders.back().lost.end());
        }
        ReplayLog log;
        for (std::size_t i = 4; i-- != 0;) {
            recorders[i].Undo(mesh, log);
            ASSERT_TRUE(SameSurface(states[i], mesh, lost)) << i;
        }
        for (std::size_t i = 0; i < 4; ++i) {
            recorders[i].Redo(mesh, log);
            ASSERT_TRUE(SameSurface(states[i + 1], mesh, lost)) << i;
        }
    }
}

// ---------------------------------------------------------------------------------------------------------------------

/// A host's data beside a mesh: a colour for each node and each edge, and nothing but announcements to follow it by.
class Colours : public ReplayLog {
public:
    std::vector<int> nodes;
    std::vector<int> edges;

    void MoveNodeUndo(int from, int to) override { Back(nodes, from, to); }
    void MoveNodeRedo(int from, int to) override { Forth(nodes, from, to); }
    void MoveEdgeUndo(int from, int to) override { Back(edges, from, to); }
    void MoveEdgeRedo(int from, int to) override { Forth(edges, from, to); }
    void EdgeInvalidateUndo(int index) override { GrowTo(edges, index); }

private:
    static constexpr int Uncoloured = 0;

    static void GrowTo(std::vector<int>& colours, int index) {
        if (index >= static_cast<int>(colours.size())) colours.resize(index + 1, Uncoloured);
    }
    static void Back(std::vector<int>& colours, int from, int to) {
        GrowTo(colours, std::max(from, to));
        colours[from] = colours[to];
        colours[to] = Uncoloured;  // what stands there again was dead
    }
    static void Forth(std::vector<int>& colours, int from, int to) {
        colours[to] = colours[from];
        colours[from] = Uncoloured;
    }
};

/// Colours by geometry: on a mesh where no two nodes have one place, and no two edges one pair of ends, it tells what
/// the colours of the same nodes and edges are after any renumbering.
class Painter {
public:
    explicit Painter(const PIN& mesh) {
        int colour = 0;
        for (int n = 0; n < static_cast<int>(mesh.points.size()); ++n) nodes_[PlaceOf(mesh, n)] = ++colour;
        for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) edges_[Ends(mesh, e)] = ++colour;
    }

    int OfNode(const PIN& mesh, int node) const { return nodes_.at(PlaceOf(mesh, node)); }
    int OfEdge(const PIN& mesh, int edge) const { return edges_.at(Ends(mesh, edge)); }

    void Paint(const PIN& mesh, Colours& colours) const {
        colours.nodes.clear();
        colours.edges.clear();
        for (int n = 0; n < static_cast<int>(mesh.points.size()); ++n) colours.nodes.push_back(OfNode(mesh, n));
        for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
            colours.edges.push_back(mesh.edges[e].NE == -1 ? 0 : OfEdge(mesh, e));
    }

    /// How many alive nodes and edges have the colour that they had at the start, and how many have another one.
    std::pair<int, int> RightAndWrong(const PIN& mesh, const Colours& colours) const {
        std::pair<int, int> count;
        const auto check = [&](int colour, int expected) {
            if (colour != 0) ++(colour == expected ? count.first : count.second);
        };
        const std::vector<bool> isAlive = AliveNodes(mesh);
        for (int n = 0; n < static_cast<int>(mesh.points.size()); ++n)
            if (isAlive[n]) check(colours.nodes[n], OfNode(mesh, n));
        for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
            if (mesh.edges[e].NE != -1) check(colours.edges[e], OfEdge(mesh, e));
        return count;
    }

private:
    static std::pair<Place, Place> Ends(const PIN& mesh, int e) {
        return {PlaceOf(mesh, mesh.edges[e].P0), PlaceOf(mesh, mesh.edges[mesh.edges[e].NE].P0)};
    }

    std::map<Place, int> nodes_;
    std::map<std::pair<Place, Place>, int> edges_;
};

TEST(TransactionRecorder, ColoursOfAListenerFollowEachRenumbering) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        PIN mesh = seed % 2 == 0 ? Sphere(4) : Grid(7);
        const Painter painter(mesh);
        WatchedRecorder recorder;
        Work(mesh, random, recorder);
        recorder.CompactAll(mesh);
        const int survivors = static_cast<int>(mesh.points.size() + mesh.edges.size());

        Colours colours;
        painter.Paint(mesh, colours);
        for (int round = 0; round < 3; ++round) {
            recorder.Undo(mesh, colours);
            EXPECT_EQ(painter.RightAndWrong(mesh, colours), std::pair(survivors, 0));
            recorder.Redo(mesh, colours);
            EXPECT_EQ(painter.RightAndWrong(mesh, colours), std::pair(survivors, 0));
        }
        // A second view of the mesh follows by the announcements alone.
        Colours second;
        painter.Paint(mesh, second);
        std::as_const(recorder).UndoVisitor(second);
        recorder.Undo(mesh, colours);
        EXPECT_EQ(painter.RightAndWrong(mesh, second), std::pair(survivors, 0));
    }
}

// ---------------------------------------------------------------------------------------------------------------------

/// The plain form of a recorder: an object for each change.
struct Objects {
    std::vector<std::shared_ptr<const KsPinAction>> actions;

    void Undo(PIN& mesh, KsPinActionVisitor& listener) const {
        for (auto action = actions.rbegin(); action != actions.rend(); ++action) {
            (*action)->Undo(mesh);
            (*action)->VisitorUndo(listener);
        }
    }
    void Redo(PIN& mesh, KsPinActionVisitor& listener) const {
        for (const auto& action : actions) {
            action->Redo(mesh);
            action->VisitorRedo(listener);
        }
    }
};

/// Reports a change that may fit no mesh, and makes the same one by hand.
void ReportAnything(std::mt19937& random, PINTransactionRecorder& recorder, Objects& objects) {
    const auto index = [&] { return random() % 12 == 0 ? -1 : static_cast<int>(random() % 70); };
    const auto value = [&] { return static_cast<int>(random()); };
    const auto add = [&](const auto& action) {
        objects.actions.push_back(std::make_shared<std::decay_t<decltype(action)>>(action));
    };
    const Edge edge = {value(), value(), value()};
    const TPoint<double> point(value(), random() % 2 == 0 ? -0.0 : NAN, value() * 1e300);
    const int a = index();
    const int b = index();
    const int c = value();
    switch (random() % 8) {
        case 0:
            recorder.PopEdge(edge);
            return add(KsPinPopEdge(edge));
        case 1:
            recorder.MoveEdge(edge, a, b);
            return add(KsPinMoveEdge(edge, a, b));
        case 2:
            recorder.MoveNode(point, a, b);
            return add(KsPinMoveNode(point, a, b));
        case 3:
            recorder.MergeNodes(a, b);
            return add(KsPinMergeNode(a, b));
        case 4:
            recorder.SetTE(a, b, c);
            return add(KsPinSetTE(a, b, c));
        case 5:
            recorder.SetNE(a, b, c);
            return add(KsPinSetNE(a, b, c));
        case 6:
            recorder.SetP0(a, b, c);
            return add(KsPinSetP0(a, b, c));
        default:
            recorder.Invalidate(edge, a);
            return add(KsPinEdgeInvalidate(edge, a));
    }
}

TEST(TransactionRecorder, DoesWhatAnObjectForEachChangeDoes) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        PINTransactionRecorder recorder;
        Objects objects;
        for (int i = 0; i < 60; ++i) ReportAnything(random, recorder, objects);
        PIN mesh = RandomMesh(seed, 15);
        PIN plain = mesh;
        ReplayLog log;
        ReplayLog plainLog;
        for (int round = 0; round < 6; ++round) {
            if (random() % 2 == 0) {
                recorder.Undo(mesh, log);
                objects.Undo(plain, plainLog);
            } else {
                recorder.Redo(mesh, log);
                objects.Redo(plain, plainLog);
            }
            ASSERT_TRUE(SameRecords(mesh, plain));
        }
        EXPECT_EQ(log.lines, plainLog.lines);
    }
}

// ---------------------------------------------------------------------------------------------------------------------

TEST(TransactionRecorder, AMeshThatHasChangedSinceIsWrittenWithinItsBounds) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        std::mt19937 random(seed);
        PIN mesh = Start(seed);
        WatchedRecorder recorder;
        Work(mesh, random, recorder);
        recorder.CompactAll(mesh);

        ReplayLog log;
        PIN others[] = {PIN(), RightTriangle(), Grid(3), mesh, Broken(RandomMesh(seed, 20), seed)};
        others[3].edges.resize(others[3].edges.size() / 2);
        others[3].points.resize(others[3].points.size() / 3);
        for (PIN& other : others)
            for (int round = 0; round < 2; ++round) {
                recorder.Redo(other, log);
                recorder.Undo(other, log);
                recorder.Undo(other, log);
                recorder.Redo(other, log);
            }
    }
}

TEST(TransactionRecorder, BrokenMeshesComeBackAsWell) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = Broken(RandomMesh(seed, 40), seed);
        for (Edge& edge : mesh.edges)  // a triangle at a node that does not exist is cleared without a report
            if (static_cast<std::size_t>(edge.P0) >= mesh.points.size()) edge.P0 = 0;
        const PIN before = mesh;
        WatchedRecorder recorder;
        FixOrientation(mesh, recorder);
        recorder.CompactAll(mesh);
        ReplayLog log;
        recorder.Undo(mesh, log);
        EXPECT_TRUE(SameSurface(before, mesh, recorder.lost));
    }
}

}  // namespace
}  // namespace KM
