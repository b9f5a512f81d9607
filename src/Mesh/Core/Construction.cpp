#include "Mesh/Core/Construction.h"

#include <algorithm>

#include "Mesh/Core/NonExistentNode.h"
#include "Mesh/Core/SafeLinks.h"

namespace KM {
namespace {

/// The edge that waits against (`start`, `end`), or -1. A triangle that was taken back leaves its edges in the map;
/// those that nothing has replaced since name no edge, and nobody waits there.
template <class Mesh>
int TakeWaiting(const Mesh& mesh, EdgesMap& map, int start, int end) {
    const int waiting = map.UseEdge(start, end);
    return IsEdge(mesh, waiting) ? waiting : -1;
}

template <class Mesh>
void DropLastEdges(Mesh& mesh, std::size_t count) {
    mesh.edges.resize(mesh.edges.size() - std::min(count, mesh.edges.size()));
}

template <class IndexVector>
void SetNodeEdge(IndexVector& p2e, int node, int e) {
    const std::size_t needed = static_cast<std::size_t>(node) + 1;
    // Filled with the new edge and not with -1: recorded meshes of the display road have it so.
    if (p2e.size() < needed) p2e.resize(needed, e);
    p2e[node] = e;
}

bool CanAddPolygon(const PIN& mesh, const std::vector<int>& nodes, const std::vector<int>& twins) {
    if (twins.size() < nodes.size()) return false;
    // A twin may also be an edge of the new loop that was appended before. A negative index becomes a huge one.
    for (std::size_t i = 0; i < nodes.size(); ++i)
        if (twins[i] != -1 && static_cast<std::size_t>(twins[i]) >= mesh.edges.size() + i) return false;
    return true;
}

}  // namespace

int AddPoint(PIN& mesh, const TPoint<double>& point) {
    mesh.points.push_back(point);
    mesh.p2e.push_back(-1);
    return static_cast<int>(mesh.points.size()) - 1;
}

template <class Mesh>
int AddEdge(Mesh& mesh, int start, int end, EdgesMap& map, bool setNodeEdge) {
    if (start < 0 || end < 0) {
        ReportNonExistentNode();
        return -1;
    }
    const int e = static_cast<int>(mesh.edges.size());
    mesh.edges.push_back({-1, -1, start});
    const int twin = TakeWaiting(mesh, map, start, end);
    if (twin == -1) {
        map.AddEdge(e, start, end);
    } else {
        if (mesh.edges[twin].TE != -1) return -1;
        mesh.edges[twin].TE = e;
        mesh.edges[e].TE = twin;
    }
    if (setNodeEdge) SetNodeEdge(mesh.p2e, start, e);
    return e;
}

template <class Mesh>
void AddTriangle(Mesh& mesh, int a, int b, int c, EdgesMap& map, bool setNodeEdge) {
    if (a == b || b == c || c == a) return;
    const int e1 = AddEdge(mesh, a, b, map, setNodeEdge);
    if (e1 < 0) return DropLastEdges(mesh, 1);
    const int e2 = AddEdge(mesh, b, c, map, setNodeEdge);
    if (e2 < 0) {
        OrphanTwin(mesh, e1);
        return DropLastEdges(mesh, 2);
    }
    const int e3 = AddEdge(mesh, c, a, map, setNodeEdge);
    if (e3 < 0) {
        OrphanTwin(mesh, e1);
        OrphanTwin(mesh, e2);
        return DropLastEdges(mesh, 3);
    }
    mesh.edges[e1].NE = e2;
    mesh.edges[e2].NE = e3;
    mesh.edges[e3].NE = e1;
}

std::vector<int> AddPolygon(PIN& mesh, const std::vector<int>& nodes, const std::vector<int>& twins) {
    if (!CanAddPolygon(mesh, nodes, twins)) return {};
    const int first = static_cast<int>(mesh.edges.size());
    const int count = static_cast<int>(nodes.size());
    std::vector<int> added(nodes.size());
    for (int i = 0; i < count; ++i) {
        added[i] = first + i;
        mesh.edges.push_back({first + (i + 1) % count, twins[i], nodes[i]});
        if (twins[i] != -1) mesh.edges[twins[i]].TE = first + i;
    }
    return added;
}

template KM_API int AddEdge(PIN&, int, int, EdgesMap&, bool);
template KM_API int AddEdge(SPIN&, int, int, EdgesMap&, bool);
template KM_API void AddTriangle(PIN&, int, int, int, EdgesMap&, bool);
template KM_API void AddTriangle(SPIN&, int, int, int, EdgesMap&, bool);

}  // namespace KM
