// Long random sequences of edits, and edits of meshes whose links are broken.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <functional>
#include <iterator>
#include <set>

#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Core/Fans.h"
#include "Mesh/Core/Loops.h"
#include "Mesh/Editing/AddedTriangles.h"
#include "Mesh/Editing/EdgeRemoval.h"
#include "Mesh/Editing/EdgeSplits.h"
#include "Mesh/Editing/EdgeSwap.h"
#include "Mesh/Editing/NodeRemoval.h"
#include "Mesh/Editing/PlainEdits.h"
#include "Mesh/Editing/PointRemoval.h"
#include "Mesh/Editing/Records.h"
#include "Support/BrokenMeshes.h"
#include "Support/DumpCapture.h"
#include "Support/LogCapture.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM {
using namespace Test;

namespace {

using P = TPoint<double>;

/// Edits a mesh and its copy, this one by the plain forms, by legal steps alone: those after which a sound mesh of triangles
/// is sound again. After each step the two are the same.
class TwoMeshes {
public:
    TwoMeshes(const PIN& mesh, unsigned seed) : mesh_(mesh), plain_(mesh), next_(seed) { FollowEuler(); }

    void Step() {
        e_ = next_.Below(EdgeCount());
        // Removals can roll up a triangle to a cone. No edit of an edge is legal where the cone is closed.
        if (TwinOf(e_) != -1 && AreOnSameLoop(mesh_, e_, TwinOf(e_))) return TakeNode();
        if (EdgeCount() < 60) Grow(next_.Below(6));
        else if (EdgeCount() > 240) Shrink(next_.Below(4));
        else next_.Below(2) == 0 ? Grow(next_.Below(6)) : Shrink(next_.Below(4));
    }

    void Check(bool isThorough) const {
        ASSERT_TRUE(SameRecords(mesh_, plain_));
        ASSERT_EQ(IntegrityFaults(mesh_), "");
        if (!isThorough) return;
        ASSERT_EQ(EulerCharacteristic(mesh_), euler_);
    }

    void CompactBoth() {
        VisitorOf<PIN> nobody;
        Compact(mesh_, nobody);
        Plain::Compact(plain_, nobody);
    }
    bool IsEmpty() const { return mesh_.edges.empty(); }
    const PIN& Mesh() const { return mesh_; }
    long long Edits() const { return edits_; }

private:
    int EdgeCount() const { return static_cast<int>(mesh_.edges.size()); }
    int StartOf(int e) const { return mesh_.edges[e].P0; }
    int EndOf(int e) const { return StartOf(mesh_.edges[e].NE); }
    int ThirdOf(int e) const { return EndOf(mesh_.edges[e].NE); }
    int TwinOf(int e) const { return mesh_.edges[e].TE; }
    void FollowEuler() { euler_ = EulerCharacteristic(mesh_); }

    /// Applies both forms of an edit and compares what they return.
    template <class Edit, class PlainEdit>
    auto Both(Edit edit, PlainEdit plainEdit) {
        ++edits_;
        const auto result = edit(mesh_);
        EXPECT_EQ(result, plainEdit(plain_));
        return result;
    }
#define KM_BOTH(...) Both([&](PIN& m) { return __VA_ARGS__; }, [&](PIN& m) { return Plain::__VA_ARGS__; })
#define KM_BOTH_VOID(...) Both([&](PIN& m) { return __VA_ARGS__, 0; }, [&](PIN& m) { return Plain::__VA_ARGS__, 0; })

    void Grow(int kind) {
        const P pos = next_.PointBetween(-1, 1);
        switch (kind) {
            case 0:
                KM_BOTH_VOID(SplitEdge(m, e_, pos));
                break;
            case 1:
                KM_BOTH_VOID(SplitFace(m, e_, pos));
                break;
            case 2:
                Swap();
                break;
            case 3:
                SplitByChords(pos);
                break;
            case 4:
                AddOnBoundary(pos);
                break;
            default:
                CloseCorner();
                break;
        }
    }

    void Shrink(int kind) {
        switch (kind) {
            case 0:
                Swap();
                break;
            case 1:
                Collapse();
                break;
            case 2:
                TakeNode();
                break;
            default:
                CutOut();
                break;
        }
    }

    int AddToBoth(const P& pos) {
        AddPoint(plain_, pos);
        return AddPoint(mesh_, pos);
    }

    void Swap() {
        if (TwinOf(e_) == -1) return;
        const int C = ThirdOf(e_), D = ThirdOf(TwinOf(e_));
        if (C != D && !AreNeighbours(C, D)) KM_BOTH_VOID(SwapEdge(m, e_));
    }

    bool AreNeighbours(int a, int b) const {
        return EdgeOfSEVertices(mesh_, a, b) != -1 || EdgeOfSEVertices(mesh_, b, a) != -1;
    }

    /// A split in three steps: a node into the edge, then a chord on each side. Now and then the half beyond the node
    /// is taken out again, from the longer loops.
    void SplitByChords(const P& pos) {
        const int t = TwinOf(e_);
        const int node = AddToBoth(pos);
        const bool isAlong = next_.Below(2) == 0;
        const int half = isAlong ? KM_BOTH(AddAlong(m, e_, node)) : KM_BOTH(SplitEdge2(m, e_, node));
        mesh_.p2e[node] = plain_.p2e[node] = half;
        if (next_.Below(4) == 0 && HasOneFan(EndOf(half))) {
            const P moved = mesh_.points[EndOf(half)];
            KM_BOTH_VOID(RemoveEdge(m, half, moved));
            return CompactBoth();
        }
        const int C = PrevEdge(mesh_, e_);
        KM_BOTH(SplitLoop(m, half, C));
        if (t == -1) return;
        const int back = isAlong ? t : EdgeCount() - 3;  // the twins of the halves that start at the node
        const int opposite = PrevEdge(mesh_, PrevEdge(mesh_, back));
        KM_BOTH(SplitLoop(m, back, opposite));
    }

    void AddOnBoundary(const P& pos) {
        if (TwinOf(e_) != -1) return;
        const int node = AddToBoth(pos);
        KM_BOTH(AddTriangleOrphanEdge(m, e_, node));
    }

    void CloseCorner() {
        if (TwinOf(e_) != -1) return;
        const int following = OrphanLoop(mesh_, e_)[1 % OrphanLoop(mesh_, e_).size()];
        if (following == e_ || EndOf(following) == StartOf(e_)) return;
        KM_BOTH(AddTriangleWith2Edges(m, e_, following));
        RebuildNodeEdges(mesh_);
        RebuildNodeEdges(plain_);
    }

    std::set<int> NeighboursOf(int node) const {
        std::set<int> nodes;
        for (const auto& [neighbour, edge] : Neighbors(mesh_, node)) nodes.insert(neighbour);
        return nodes;
    }

    bool HasOneFan(int node) const {
        const auto starts = [&](const Edge& e) { return e.NE != -1 && e.P0 == node; };
        return std::count_if(mesh_.edges.begin(), mesh_.edges.end(), starts) ==
               static_cast<std::ptrdiff_t>(AllStartingEdges(mesh_, node).size());
    }

    bool IsOnBoundary(int node) const {
        const std::vector<int> edges = AllStartingEdges(mesh_, node);
        return TwinOf(edges[0]) == -1;
    }

    /// The triangle hangs together with others by more than one edge.
    bool IsJoined(int e) const { return TwinOf(mesh_.edges[e].NE) != -1 || TwinOf(PrevEdge(mesh_, e)) != -1; }

    /// The ends have no neighbours in common but the opposite nodes, and these keep their surface.
    bool CanCollapse() const {
        const int A = StartOf(e_), B = EndOf(e_), C = ThirdOf(e_), t = TwinOf(e_);
        if (A == B || !HasOneFan(A) || !HasOneFan(B)) return false;
        if (!IsJoined(e_) || (t != -1 && !IsJoined(t))) return false;
        if (t != -1 && IsOnBoundary(A) && IsOnBoundary(B)) return false;
        std::set<int> opposite = {C};
        if (t != -1) opposite.insert(ThirdOf(t));
        if (opposite.size() != (t == -1 ? 1u : 2u)) return false;
        if (opposite.count(A) != 0 || opposite.count(B) != 0) return false;
        std::vector<int> common;
        const std::set<int> a = NeighboursOf(A), b = NeighboursOf(B);
        std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::back_inserter(common));
        if (!std::equal(common.begin(), common.end(), opposite.begin(), opposite.end())) return false;
        for (const int x : opposite)
            if (AllStartingEdges(mesh_, x).size() < 4) return false;
        return true;
    }

    void Collapse() {
        if (!CanCollapse()) return;
        const P pos = next_.PointBetween(-1, 1);
        KM_BOTH_VOID(RemoveEdge(m, e_, pos));
        CompactBoth();
    }

    /// The last node moves with one fan alone, and so does what is left of the removed one.
    void TakeNode() {
        const int node = StartOf(e_);
        if (HasOneFan(node) && HasOneFan(static_cast<int>(mesh_.points.size()) - 1)) KM_BOTH(RemoveNode(m, node));
    }

    void CutOut() {
        if (next_.Below(8) != 0) return;
        const int node = StartOf(e_);
        const bool scanAll = next_.Below(2) == 0;
        KM_BOTH_VOID(RemovePoint(m, node, scanAll));
        CompactBoth();
        FollowEuler();
    }
#undef KM_BOTH
#undef KM_BOTH_VOID

    PIN mesh_;
    PIN plain_;
    Numbers next_;
    int e_ = 0;
    int euler_ = 0;
    long long edits_ = 0;
};

#if defined(__SANITIZE_ADDRESS__)
constexpr bool IsSanitized = true;
#elif defined(__clang__)
constexpr bool IsSanitized = __has_feature(address_sanitizer);
#else
constexpr bool IsSanitized = false;
#endif

/// Sanitizers make each step many times as dear; the first sequences see every kind of edit all the same.
constexpr long long EditsPerTest = IsSanitized ? 12000 : 100000;

/// Runs sequences on meshes that `make(seed)` gives until enough edits are done.
void RunSequences(const std::function<PIN(unsigned)>& make) {
    LogCapture log;
    long long done = 0;
    for (unsigned seed = 0; done < EditsPerTest; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Verbose::ClearLog();  // each refused node of a boundary leaves a line
        TwoMeshes meshes(make(seed), seed);
        for (int step = 0; step < 4000 && !meshes.IsEmpty(); ++step) {
            meshes.Step();
            ASSERT_NO_FATAL_FAILURE(meshes.Check(step % 16 == 0)) << "step " << step;
        }
        meshes.CompactBoth();
        ASSERT_NO_FATAL_FAILURE(meshes.Check(true));
        ASSERT_EQ(FirstUncompactness(meshes.Mesh()), "");
        done += meshes.Edits();
    }
}

TEST(RandomEdits, KeepSpheresSound) {
    RunSequences([](unsigned seed) { return Sphere(1 + static_cast<int>(seed % 3)); });
}

TEST(RandomEdits, KeepOpenSheetsSound) {
    RunSequences([](unsigned seed) { return Grid(2 + static_cast<int>(seed % 4)); });
}

TEST(RandomEdits, KeepSoupsThatAreNoManifoldsSound) {
    RunSequences([](unsigned seed) { return RandomMesh(seed, 40); });
}

/// Every edit there is, on any index.
void EditAnything(PIN& mesh, int kind, int i, int j) {
    VisitorOf<PIN> nobody;
    std::vector<double> values(mesh.points.size(), 1.0);
    switch (kind) {
        case 0:
            return SplitEdge(mesh, i, P(1, 2, 3));
        case 1:
            return SplitEdge(mesh, values, i);
        case 2:
            SplitEdge2(mesh, i, j);
            return;
        case 3:
            AddAlong(mesh, i, j);
            return;
        case 4:
            return SplitFace(mesh, i, P(1, 2, 3));
        case 5:
            return SwapEdge(mesh, i);
        case 6:
            SplitLoop(mesh, i, j);
            return;
        case 7:
            AddTriangleOrphanEdge(mesh, i, j);
            return;
        case 8:
            AddTriangleWith2Edges(mesh, i, j);
            return;
        case 9:
            return InvalidateEdge(mesh, i, nobody);
        case 10:
            return MoveNode(mesh, i, j, nobody);
        case 11:
            return CompactNode(mesh, i, nobody);
        case 12:
            RemoveNode(mesh, i);
            return;
        case 13:
            return RemoveEdge(mesh, i, P(1, 2, 3));
        case 14:
            return RemovePoint(mesh, i, j % 2 == 0);
        default:
            return DeleteLoop(mesh, i);
    }
}
constexpr int EditKinds = 16;

TEST(RandomEdits, OfBrokenMeshesStayInsideThem) {
    LogCapture log;
    DumpCapture dump;
    for (unsigned seed = 0; seed < 600; ++seed) {
        Numbers next(seed);
        const PIN sound = seed % 3 == 0 ? RandomMesh(seed, 20) : seed % 3 == 1 ? Sphere(2) : Grid(3);
        PIN mesh = seed % 2 == 0 ? WithBrokenLinks(sound, seed) : Broken(sound, seed);
        Verbose::ClearLog();
        for (int step = 0; step < 200; ++step) {
            const int count = static_cast<int>(std::max(mesh.edges.size(), mesh.points.size()));
            const int kind = next.Below(EditKinds);
            const int i = next.Below(count + 3) - 2;
            const int j = next.Below(count + 3) - 2;
            EditAnything(mesh, kind, i, j);
        }
        // Not one of 200 steps can have added more than six edges and one node.
        EXPECT_LE(mesh.edges.size(), sound.edges.size() + 1200);
        EXPECT_LE(mesh.points.size(), sound.points.size() + 200);
        VisitorOf<PIN> nobody;
        Compact(mesh, nobody);
    }
}

TEST(RandomEdits, OutOfRangeHaveNoEffect) {
    LogCapture log;
    const PIN before = Sphere(2);
    for (int kind = 0; kind < EditKinds; ++kind)
        for (const int i : {-1, -2, INT_MIN, INT_MAX, static_cast<int>(before.edges.size())})
            for (const int j : {0, -1, INT_MIN, INT_MAX}) {
                PIN mesh = before;
                EditAnything(mesh, kind, i, j);
                EXPECT_TRUE(SameRecords(mesh, before)) << "edit " << kind << " of " << i << " and " << j;
            }
    EXPECT_TRUE(log.Lines().empty());
}

}  // namespace
}  // namespace KM
