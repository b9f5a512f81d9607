#include "Mesh/Core/TransactionRecorder.h"

#include <cstddef>

namespace KM {
namespace {

constexpr std::size_t BlockSize = 4096;

/// Appends and returns the index.
template <class Item>
std::int32_t Keep(std::vector<Item>& items, const Item& item) {
    items.push_back(item);
    return static_cast<std::int32_t>(items.size() - 1);
}

/// What `Keep` gave, beyond the range of a signed index as well.
template <class Item>
const Item& Kept(const std::vector<Item>& items, std::int32_t index) {
    return items[static_cast<std::uint32_t>(index)];
}

}  // namespace

void PINTransactionRecorder::PopEdge(const Edge& edge) { Append({Kind::PopEdge, edge.NE, edge.TE, edge.P0}); }
void PINTransactionRecorder::MoveEdge(const Edge& overwritten, int from, int to) {
    Append({Kind::MoveEdge, Keep(edges_, overwritten), from, to});
}
void PINTransactionRecorder::MoveNode(const TPoint<double>& overwritten, int from, int to) {
    Append({Kind::MoveNode, Keep(points_, overwritten), from, to});
}
void PINTransactionRecorder::MergeNodes(int a, int b) { Append({Kind::MergeNode, a, b, -1}); }
void PINTransactionRecorder::SetTE(int edge, int oldValue, int newValue) {
    Append({Kind::SetTE, edge, oldValue, newValue});
}
void PINTransactionRecorder::SetNE(int edge, int oldValue, int newValue) {
    Append({Kind::SetNE, edge, oldValue, newValue});
}
void PINTransactionRecorder::SetP0(int edge, int oldValue, int newValue) {
    Append({Kind::SetP0, edge, oldValue, newValue});
}
void PINTransactionRecorder::Invalidate(const Edge& edge, int index) {
    Append({Kind::EdgeInvalidate, Keep(edges_, edge), index, -1});
}

void PINTransactionRecorder::Append(const Change& change) {
    // A block grows by doubling, so that a short recording stays small.
    if (blocks_.empty() || blocks_.back().size() == BlockSize) blocks_.emplace_back();
    blocks_.back().push_back(change);
}

template <class Play>
void PINTransactionRecorder::WithAction(const Change& change, Play play) const {
    const auto [kind, a, b, c] = change;
    switch (kind) {
        case Kind::MoveNode:
            return play(KsPinMoveNode(Kept(points_, a), b, c));
        case Kind::MoveEdge:
            return play(KsPinMoveEdge(Kept(edges_, a), b, c));
        case Kind::PopEdge:
            return play(KsPinPopEdge({a, b, c}));
        case Kind::SetTE:
            return play(KsPinSetTE(a, b, c));
        case Kind::SetNE:
            return play(KsPinSetNE(a, b, c));
        case Kind::SetP0:
            return play(KsPinSetP0(a, b, c));
        case Kind::EdgeInvalidate:
            return play(KsPinEdgeInvalidate(Kept(edges_, a), b));
        case Kind::MergeNode:
            return play(KsPinMergeNode(a, b));
    }
}

template <class Play>
void PINTransactionRecorder::Backward(Play play) const {
    for (auto block = blocks_.rbegin(); block != blocks_.rend(); ++block)
        for (auto change = block->rbegin(); change != block->rend(); ++change) WithAction(*change, play);
}

template <class Play>
void PINTransactionRecorder::Forward(Play play) const {
    for (const std::vector<Change>& block : blocks_)
        for (const Change& change : block) WithAction(change, play);
}

void PINTransactionRecorder::Undo(PIN& mesh, KsPinActionVisitor& listener) {
    Backward([&](const auto& action) {
        action.Undo(mesh);
        action.VisitorUndo(listener);
    });
}

void PINTransactionRecorder::Redo(PIN& mesh, KsPinActionVisitor& listener) {
    Forward([&](const auto& action) {
        action.Redo(mesh);
        action.VisitorRedo(listener);
    });
}

void PINTransactionRecorder::UndoVisitor(KsPinActionVisitor& listener) const {
    Backward([&](const auto& action) { action.VisitorUndo(listener); });
}

void PINTransactionRecorder::RedoVisitor(KsPinActionVisitor& listener) const {
    Forward([&](const auto& action) { action.VisitorRedo(listener); });
}

}  // namespace KM
