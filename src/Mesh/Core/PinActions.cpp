#include "Mesh/Core/PinActions.h"

#include <algorithm>
#include <cstddef>

#include "Mesh/Core/SafeLinks.h"

namespace KM {
namespace {

/// Grows `items` until `at` is an index of it. False, with nothing grown, if `at` is negative, or if `other` would not
/// be an index even then.
template <class Vector>
bool GrowTo(Vector& items, int at, int other) {
    if (at < 0) return false;
    const std::size_t count = std::max(items.size(), static_cast<std::size_t>(at) + 1);
    if (static_cast<std::size_t>(other) >= count) return false;
    items.resize(count);
    return true;
}

template <class Vector, class Item>
void TakeMoveBack(Vector& items, const Item& overwritten, int from, int to) {
    if (!GrowTo(items, from, to)) return;
    items[from] = items[to];
    items[to] = overwritten;
}

/// Compaction drops the last item behind such a move and does not report it, so the move implies it.
template <class Vector>
void MoveAgain(Vector& items, int from, int to) {
    const std::size_t count = items.size();
    if (static_cast<std::size_t>(from) >= count || static_cast<std::size_t>(to) >= count) return;
    items[to] = items[from];
    if (static_cast<std::size_t>(from) + 1 == count) items.pop_back();
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
    if (GrowTo(mesh.points, a, b)) mesh.points[a] = mesh.points[b];
}

}  // namespace KM
