#include "Mesh/Core/Compaction.h"

#include <utility>
#include <vector>

#include "Mesh/Core/Loops.h"

namespace KM {
namespace {

bool IsDead(const Edge& edge) { return edge.NE < 0; }

using NodeEdges = std::vector<std::vector<std::int32_t>>;

template <class Mesh>
void RemoveDeadEdges(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
        if (IsDead(mesh.edges[e])) CompactEdge(mesh, e, visitor);
}

template <class Mesh>
void SetNodeEdges(Mesh& mesh) {
    mesh.p2e.assign(mesh.points.size(), -1);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        const std::size_t node = static_cast<std::size_t>(mesh.edges[e].P0);
        if (node < mesh.p2e.size()) mesh.p2e[node] = e;
    }
}

/// Lists the edges of each node, and deletes the triangles that name a node that does not exist. True if there were any.
template <class Mesh>
bool CollectNodeEdges(Mesh& mesh, NodeEdges& nodeEdges) {
    bool changed = false;
    nodeEdges.assign(mesh.points.size(), {});
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        if (IsDead(mesh.edges[e])) continue;
        const std::size_t node = static_cast<std::size_t>(mesh.edges[e].P0);
        if (node < mesh.points.size()) {
            nodeEdges[node].push_back(e);
        } else {
            DeleteTriangle(mesh, e);
            changed = true;
        }
    }
    return changed;
}

template <class Mesh>
void DropTrailingDeadNodes(Mesh& mesh, NodeEdges& nodeEdges) {
    while (!mesh.p2e.empty() && mesh.p2e.back() < 0) {
        mesh.points.pop_back();
        mesh.p2e.pop_back();
        nodeEdges.pop_back();
    }
}

template <class Mesh>
void MoveLastNodeTo(Mesh& mesh, int n, NodeEdges& nodeEdges, VisitorOf<Mesh>& visitor) {
    for (const int e : nodeEdges.back()) {
        visitor.SetP0(e, mesh.edges[e].P0, n);
        mesh.edges[e].P0 = n;
    }
    nodeEdges[n] = std::move(nodeEdges.back());
    nodeEdges.pop_back();
    const int last = static_cast<int>(mesh.points.size()) - 1;
    visitor.MoveNode(mesh.points[n], last, n);
    mesh.points[n] = mesh.points[last];
    mesh.points.pop_back();
    mesh.p2e[n] = mesh.p2e[last];
    mesh.p2e.pop_back();
}

}  // namespace

template <class Mesh>
void MoveEdgeRecord(Mesh& mesh, int from, int to, VisitorOf<Mesh>& visitor) {
    if (from == to) return;
    const int previous = PrevEdge(mesh, from);
    visitor.SetNE(previous, mesh.edges[previous].NE, to);
    mesh.edges[previous].NE = to;
    const int twin = mesh.edges[from].TE;
    if (twin != -1) {
        visitor.SetTE(twin, mesh.edges[twin].TE, to);
        mesh.edges[twin].TE = to;
    }
    visitor.MoveEdge(mesh.edges[to], from, to);
    mesh.edges[to] = mesh.edges[from];
    const std::size_t node = static_cast<std::size_t>(mesh.edges[to].P0);
    if (mesh.p2e.size() == mesh.points.size() && node < mesh.p2e.size()) mesh.p2e[node] = to;
}

template <class Mesh>
void CompactEdge(Mesh& mesh, int e, VisitorOf<Mesh>& visitor) {
    while (!mesh.edges.empty() && IsDead(mesh.edges.back())) {
        visitor.PopEdge(mesh.edges.back());
        mesh.edges.pop_back();
    }
    const int last = static_cast<int>(mesh.edges.size()) - 1;
    if (e < 0 || e > last) return;
    MoveEdgeRecord(mesh, last, e, visitor);
    mesh.edges.pop_back();
}

template <class Mesh>
void RebuildNodeEdges(Mesh& mesh) {
    mesh.p2e.resize(mesh.points.size(), 0);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        const std::size_t node = static_cast<std::size_t>(mesh.edges[e].P0);
        if (node < mesh.p2e.size()) mesh.p2e[node] = e;
    }
}

template <class Mesh>
void DeleteTriangle(Mesh& mesh, int e) {
    const int ne = mesh.edges[e].NE;
    const int pe = PrevEdge(mesh, e);
    for (const int edge : {e, ne, pe}) {
        const int twin = mesh.edges[edge].TE;
        if (twin != -1) mesh.edges[twin].TE = -1;
    }
    for (const int edge : {e, ne, pe}) mesh.edges[edge] = Edge();
}

template <class Mesh>
void Compact(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    if (mesh.p2e.size() != mesh.points.size()) RebuildNodeEdges(mesh);
    NodeEdges nodeEdges;
    do {
        RemoveDeadEdges(mesh, visitor);
        SetNodeEdges(mesh);
    } while (CollectNodeEdges(mesh, nodeEdges));
    for (int n = 0; n < static_cast<int>(mesh.points.size()); ++n) {
        if (mesh.p2e[n] >= 0) continue;
        DropTrailingDeadNodes(mesh, nodeEdges);
        if (n < static_cast<int>(nodeEdges.size())) MoveLastNodeTo(mesh, n, nodeEdges, visitor);
    }
}

void CompactQuick(PIN& mesh) {
    while (!mesh.p2e.empty() && mesh.p2e.back() == -1) {
        mesh.p2e.pop_back();
        if (!mesh.points.empty()) mesh.points.pop_back();
    }
    while (!mesh.edges.empty() && mesh.edges.back().NE == -1) mesh.edges.pop_back();
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
