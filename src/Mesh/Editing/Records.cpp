#include "Mesh/Editing/Records.h"

#include "Mesh/Core/FanWalk.h"

namespace KM {
namespace {

template <class Mesh>
bool IsNodeWithEntry(const Mesh& mesh, int node) {
    return IsNode(mesh, node) && static_cast<std::size_t>(node) < mesh.p2e.size();
}

template <class Mesh>
void DropDeadNodesAtEnd(Mesh& mesh) {
    // -2 is no edge either, but is no dead node: only what the first look finds goes for it.
    for (bool isDead = !mesh.p2e.empty() && (mesh.p2e.back() == -1 || mesh.p2e.back() == -2); isDead;) {
        mesh.points.pop_back();
        mesh.p2e.pop_back();
        isDead = !mesh.p2e.empty() && mesh.p2e.back() == -1;
    }
}

}  // namespace

template <class Mesh>
void InvalidateEdge(Mesh& mesh, int e, VisitorOf<Mesh>& visitor) {
    if (!IsEdge(mesh, e)) return;
    visitor.Invalidate(mesh.edges[e], e);
    mesh.edges[e].NE = -1;
    mesh.edges[e].P0 = -1;
}

template <class Mesh>
void MoveNode(Mesh& mesh, int from, int to, VisitorOf<Mesh>& visitor) {
    if (from == to || !IsNodeWithEntry(mesh, from) || !IsNodeWithEntry(mesh, to)) return;
    visitor.MoveNode(mesh.points[to], from, to);
    mesh.points[to] = mesh.points[from];
    const FanWalk fan(mesh, from);
    mesh.p2e[to] = fan.First();
    for (const int e : fan) {
        visitor.SetP0(e, mesh.edges[e].P0, to);
        mesh.edges[e].P0 = to;
    }
}

template <class Mesh>
void CompactNode(Mesh& mesh, int n, VisitorOf<Mesh>& visitor) {
    if (n < 0 || mesh.p2e.size() != mesh.points.size()) return;
    DropDeadNodesAtEnd(mesh);
    if (!IsNode(mesh, n)) return;
    MoveNode(mesh, static_cast<int>(mesh.points.size()) - 1, n, visitor);
    mesh.points.pop_back();
    mesh.p2e.pop_back();
}

template KM_API void InvalidateEdge(PIN&, int, VisitorOf<PIN>&);
template KM_API void InvalidateEdge(SPIN&, int, VisitorOf<SPIN>&);
template KM_API void MoveNode(PIN&, int, int, VisitorOf<PIN>&);
template KM_API void MoveNode(SPIN&, int, int, VisitorOf<SPIN>&);
template KM_API void CompactNode(PIN&, int, VisitorOf<PIN>&);
template KM_API void CompactNode(SPIN&, int, VisitorOf<SPIN>&);

}  // namespace KM
