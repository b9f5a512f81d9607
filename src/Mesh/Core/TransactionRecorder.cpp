#include "Mesh/Core/TransactionRecorder.h"

namespace KM {
namespace {

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

void PINTransactionRecorder::PopEdge(const Edge& edge) {
    changes_.push_back({Kind::PopEdge, edge.NE, edge.TE, edge.P0});
}
void PINTransactionRecorder::MoveEdge(const Edge& overwritten, int from, int to) {
    changes_.push_back({Kind::MoveEdge, Keep(edges_, overwritten), from, to});
}
void PINTransactionRecorder::MoveNode(const TPoint<double>& overwritten, int from, int to) {
    changes_.push_back({Kind::MoveNode, Keep(points_, overwritten), from, to});
}
void PINTransactionRecorder::MergeNodes(int a, int b) { changes_.push_back({Kind::MergeNode, a, b, -1}); }
void PINTransactionRecorder::SetTE(int edge, int oldValue, int newValue) {
    changes_.push_back({Kind::SetTE, edge, oldValue, newValue});
}
void PINTransactionRecorder::SetNE(int edge, int oldValue, int newValue) {
    changes_.push_back({Kind::SetNE, edge, oldValue, newValue});
}
void PINTransactionRecorder::SetP0(int edge, int oldValue, int newValue) {
    changes_.push_back({Kind::SetP0, edge, oldValue, newValue});
}
void PINTransactionRecorder::Invalidate(const Edge& edge, int index) {
    changes_.push_back({Kind::EdgeInvalidate, Keep(edges_, edge), index, -1});
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
    for (auto change = changes_.rbegin(); change != changes_.rend(); ++change) WithAction(*change, play);
}

template <class Play>
void PINTransactionRecorder::Forward(Play play) const {
    for (const Change& change : changes_) WithAction(change, play);
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
