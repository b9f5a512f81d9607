#pragma once

#include <cstdint>
#include <vector>

#include "Mesh/Core/PinActions.h"
#include "Mesh/Core/PinVisitor.h"

namespace KM {

/// The visitor that keeps each reported change, so that the work can be taken back and done again.
///
/// Pass it to one mutator after another, and keep it as long as the mesh is to be reversible. `Undo` then restores
/// `points` and `edges` bit for bit, and `Redo` brings back the end, any number of times. What nobody reports does not
/// come back:
/// - dead nodes that compaction drops from the end. If such a node had lost its edges in this recording, `Undo` brings
///   them back, and they name it, but its place is lost: it reads (0, 0, 0), or `points` does not reach so far. After
///   `Redo`, dead nodes may still stand behind the alive ones. Who needs all places keeps a copy of `points`.
/// - an alive record that the caller gives to `CompactEdge` or `CompactNode` while it is the last one, and a triangle
///   that `Compact` clears because it names a node that does not exist.
/// - `p2e`, which stays as it is, and can then have another length than `points`; `Compact` rebuilds it in that case,
///   `RebuildNodeEdges` in each.
///
/// `Redo` takes a move of the last record for the compaction that it mostly is, and removes that record. So a recording
/// in which a caller moves the last node or edge and leaves it standing can be undone, but not done again.
///
/// Undo fits the mesh as the last recorded change left it, and redo as the undo left it. On another mesh a change of
/// which an index is out of range is left out, though announced; the outcome is then of no use, and nothing else breaks.
///
/// A copy is independent of its original; moving takes the recording, never fails, and leaves the source empty, so a stack
/// of recorders grows at no cost. A change costs 16 bytes, that of a whole edge record 28, that of a node's place 40.
class KM_API PINTransactionRecorder : public TPinManipulationVisitor<TPoint<double>> {
public:
    // What the mutators call. `CreateNode` and `CreateEdge` are not recorded.
    void PopEdge(const Edge& edge) override;
    void MoveEdge(const Edge& overwritten, int from, int to) override;
    void MoveNode(const TPoint<double>& overwritten, int from, int to) override;
    void MergeNodes(int a, int b) override;
    void SetTE(int edge, int oldValue, int newValue) override;
    void SetNE(int edge, int oldValue, int newValue) override;
    void SetP0(int edge, int oldValue, int newValue) override;
    void Invalidate(const Edge& edge, int index) override;

    // Replay keeps the recording, so that undo and redo can alternate. The listener is told of each change just after
    // it is made; it must neither change nor replace this recorder meanwhile. Linear time in the changes.

    /// Takes all changes back, from the last to the first.
    void Undo(PIN& mesh, KsPinActionVisitor& listener);
    /// Makes all changes again, from the first to the last.
    void Redo(PIN& mesh, KsPinActionVisitor& listener);
    /// Announces what `Undo` does, and does nothing.
    void UndoVisitor(KsPinActionVisitor& listener) const;
    /// Announces what `Redo` does, and does nothing.
    void RedoVisitor(KsPinActionVisitor& listener) const;

private:
    enum class Kind : std::int32_t { MoveNode, MoveEdge, PopEdge, SetTE, SetNE, SetP0, EdgeInvalidate, MergeNode };

    /// The fields of an action, and for what is larger its place in `edges_` or `points_`. Decimation makes millions of
    /// these; objects of their own would take three times the memory.
    struct Change {
        Kind kind;
        std::int32_t a;
        std::int32_t b;
        std::int32_t c;
    };

    void Append(const Change& change);
    template <class Play>
    void WithAction(const Change& change, Play play) const;
    template <class Play>
    void Backward(Play play) const;
    template <class Play>
    void Forward(Play play) const;

    // One long vector would take twice the memory while it grows; a deque allocates when it is moved.
    std::vector<std::vector<Change>> blocks_;
    std::vector<Edge> edges_;
    std::vector<TPoint<double>> points_;
};

}  // namespace KM
