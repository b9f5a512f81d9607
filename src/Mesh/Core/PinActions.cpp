#include "Mesh/Core/PinActions.h"

#include <cstddef>

#include "Mesh/Core/SafeLinks.h"

namespace KM {
namespace {

template <class Vector>
bool Has(const Vector& items, int index) {
    return static_cast<std::size_t>(index) < items.size();  // a negative index becomes a huge one
}

template <class Vector>
void GrowTo(Vector& items, int index) {
    if (!Has(items, index)) items.resize(static_cast<std::size_t>(index) + 1);
}

template <class Vector, class Item>
void TakeMoveBack(Vector& items, const Item& overwritten, int from, int to) {
    if (from < 0 || to < 0) return;
    GrowTo(items, from);
    // A node can die where it was moved to, and be dropped without a report. What stands at `from` is then the better
    // guess, and what had been overwritten comes back all the same.
    if (Has(items, to)) items[from] = items[to];
    GrowTo(items, to);
    items[to] = overwritten;
}

/// Compaction drops the last item behind such a move and does not report it, so the move implies it.
template <class Vector>
void MoveAgain(Vector& items, int from, int to) {
    if (!Has(items, from) || !Has(items, to)) return;
    items[to] = items[from];
    if (static_cast<std::size_t>(from) + 1 == items.size()) items.pop_back();
}

void SetField(PIN& mesh, int edge, std::int32_t Edge::*field, int value) {
    if (IsEdge(mesh, edge)) mesh.edges[edge].*field = value;
}

}  // namespace

void KsPinMoveNode::Undo(PIN& mesh) const { TakeMoveBack(mesh.points, overwritten, from, to); }
void KsPinMoveNode::Redo(PIN& mesh) const { MoveAgain(mesh.points, from, to); }

void KsPinMoveEdge::Undo(PIN& mesh) const { TakeMoveBack(mesh.edges, overwritten, from, to); }
void KsPinMoveEdge::Redo(PIN& mesh) const { MoveAgain(mesh.edges, from, to); }

void KsPinPopEdge::Undo(PIN& mesh) const { mesh.edges.push_back(edge); }
void KsPinPopEdge::Redo(PIN& mesh) const {
    if (!mesh.edges.empty()) mesh.edges.pop_back();
}

void KsPinSetTE::Undo(PIN& mesh) const { SetField(mesh, edge, &Edge::TE, oldValue); }
void KsPinSetTE::Redo(PIN& mesh) const { SetField(mesh, edge, &Edge::TE, newValue); }

void KsPinSetNE::Undo(PIN& mesh) const { SetField(mesh, edge, &Edge::NE, oldValue); }
void KsPinSetNE::Redo(PIN& mesh) const { SetField(mesh, edge, &Edge::NE, newValue); }

void KsPinSetP0::Undo(PIN& mesh) const { SetField(mesh, edge, &Edge::P0, oldValue); }
void KsPinSetP0::Redo(PIN& mesh) const { SetField(mesh, edge, &Edge::P0, newValue); }

void KsPinEdgeInvalidate::Undo(PIN& mesh) const {
    if (IsEdge(mesh, index)) mesh.edges[index] = edge;
}
void KsPinEdgeInvalidate::Redo(PIN& mesh) const {
    SetField(mesh, index, &Edge::NE, -1);
    SetField(mesh, index, &Edge::P0, -1);
}

void KsPinMergeNode::Undo(PIN& mesh) const {
    if (a < 0 || b < 0) return;
    GrowTo(mesh.points, a);
    if (Has(mesh.points, b)) mesh.points[a] = mesh.points[b];
}

}  // namespace KM
