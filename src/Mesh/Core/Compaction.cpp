#include "Mesh/Core/Compaction.h"

#include <algorithm>
#include <vector>

#include "Mesh/Core/Loops.h"
#include "Mesh/Core/NodeCompaction.h"
#include "Mesh/Core/PreviousEdges.h"
#include "Mesh/Core/SafeLinks.h"

namespace KM {
namespace {

template <class Mesh>
void DropDeadEnd(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    while (!mesh.edges.empty() && IsDead(mesh.edges.back())) {
        visitor.PopEdge(mesh.edges.back());
        mesh.edges.pop_back();
    }
}

/// `MoveEdgeRecord` with the previous edge found, -1 for none.
template <class Mesh>
void MoveRecord(Mesh& mesh, int previous, int from, int to, VisitorOf<Mesh>& visitor) {
    if (previous != -1) {
        visitor.SetNE(previous, mesh.edges[previous].NE, to);
        mesh.edges[previous].NE = to;
    }
    const int twin = mesh.edges[from].TE;
    if (IsEdge(mesh, twin)) {
        visitor.SetTE(twin, mesh.edges[twin].TE, to);
        mesh.edges[twin].TE = to;
    }
    visitor.MoveEdge(mesh.edges[to], from, to);
    mesh.edges[to] = mesh.edges[from];
    const int node = mesh.edges[to].P0;
    if (mesh.p2e.size() == mesh.points.size() && IsNode(mesh, node)) mesh.p2e[node] = to;
}

/// `CompactEdge` for a dead slot, one of many.
template <class Mesh>
void FillSlot(Mesh& mesh, PreviousEdges<Mesh>& previous, int e, VisitorOf<Mesh>& visitor) {
    DropDeadEnd(mesh, visitor);
    if (!IsEdge(mesh, e)) return;
    const int last = static_cast<int>(mesh.edges.size()) - 1;
    MoveRecord(mesh, previous.Of(last), last, e, visitor);
    previous.Follow(last, e);
    mesh.edges.pop_back();
}

/// Fills each gap in the edges from the end, and makes `p2e` exact. True if an edge names a node that does not exist.
template <class Mesh>
bool CompactEdges(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    std::fill(mesh.p2e.begin(), mesh.p2e.end(), -1);
    bool hasStray = false;
    PreviousEdges<Mesh> previous(mesh);
    for (int e = 0; IsEdge(mesh, e); ++e) {
        if (IsDead(mesh.edges[e])) FillSlot(mesh, previous, e, visitor);
        if (!IsEdge(mesh, e)) break;  // there were only dead ones up to the end
        const int node = mesh.edges[e].P0;
        if (IsNode(mesh, node))
            mesh.p2e[node] = e;
        else
            hasStray = true;
    }
    return hasStray;
}

}  // namespace

template <class Mesh>
void MoveEdgeRecord(Mesh& mesh, int from, int to, VisitorOf<Mesh>& visitor) {
    if (from == to || !IsAliveEdge(mesh, from) || !IsEdge(mesh, to)) return;
    MoveRecord(mesh, PrevEdge(mesh, from), from, to, visitor);
}

template <class Mesh>
void CompactEdge(Mesh& mesh, int e, VisitorOf<Mesh>& visitor) {
    if (e < 0) return;
    DropDeadEnd(mesh, visitor);
    if (!IsEdge(mesh, e)) return;
    MoveEdgeRecord(mesh, static_cast<int>(mesh.edges.size()) - 1, e, visitor);
    mesh.edges.pop_back();
}

template <class Mesh>
void RebuildNodeEdges(Mesh& mesh) {
    mesh.p2e.resize(mesh.points.size(), 0);
    NameNodeEdges(mesh);
}

template <class Mesh>
void DeleteTriangle(Mesh& mesh, int e) {
    if (!IsAliveEdge(mesh, e)) return;
    const int ne = mesh.edges[e].NE;
    const int pe = PrevEdge(mesh, e);
    if (pe == -1) return;
    for (const int edge : {e, ne, pe}) OrphanTwin(mesh, edge);
    for (const int edge : {e, ne, pe}) mesh.edges[edge] = Edge();
}

template <class Mesh>
void Compact(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    if (mesh.p2e.size() != mesh.points.size()) RebuildNodeEdges(mesh);
    while (CompactEdges(mesh, visitor)) {
        for (int e = 0; IsEdge(mesh, e); ++e)
            if (!IsNode(mesh, mesh.edges[e].P0)) ClearLoop(mesh, e);
    }
    CompactNodes(mesh, visitor);
}

void CompactQuick(PIN& mesh) {
    while (!mesh.p2e.empty() && mesh.p2e.back() == -1) {
        mesh.p2e.pop_back();
        if (!mesh.points.empty()) mesh.points.pop_back();
    }
    while (!mesh.edges.empty() && IsMarkedDead(mesh.edges.back())) mesh.edges.pop_back();
}

template KM_API void Compact(PIN&, VisitorOf<PIN>&);
template KM_API void Compact(SPIN&, VisitorOf<SPIN>&);
template KM_API void CompactEdge(PIN&, int, VisitorOf<PIN>&);
template KM_API void CompactEdge(SPIN&, int, VisitorOf<SPIN>&);
template KM_API void MoveEdgeRecord(PIN&, int, int, VisitorOf<PIN>&);
template KM_API void MoveEdgeRecord(SPIN&, int, int, VisitorOf<SPIN>&);
template KM_API void RebuildNodeEdges(PIN&);
template KM_API void RebuildNodeEdges(SPIN&);
template KM_API void DeleteTriangle(PIN&, int);
template KM_API void DeleteTriangle(SPIN&, int);

}  // namespace KM
