#include "Mesh/Core/Fans.h"

#include <algorithm>

#include "Mesh/Core/Loops.h"

namespace KM {
namespace {

/// The first edge of the forward walk round a node, or -1.
int FirstOfFan(const PIN& mesh, int node) {
    if (node < 0 || node >= static_cast<int>(mesh.p2e.size())) return -1;
    return StartingEdge(mesh, mesh.p2e[node]);
}

template <class Visit>
void WalkForward(const PIN& mesh, int first, Visit visit) {
    int e = first;
    do {
        visit(e);
        const int twin = mesh.edges[e].TE;
        if (twin == -1) return;
        e = mesh.edges[twin].NE;
    } while (e != first);
}

template <class Accept>
std::vector<std::vector<int>> EdgesByStart(const PIN& mesh, Accept accept) {
    std::vector<std::vector<int>> lists(mesh.points.size());
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        const Edge& edge = mesh.edges[e];
        const std::size_t node = static_cast<std::size_t>(edge.P0);
        if (edge.NE != -1 && node < lists.size() && accept(edge)) lists[node].push_back(e);
    }
    return lists;
}

}  // namespace

template <class Mesh>
int StartingEdge(const Mesh& mesh, int edge) {
    if (edge < 0 || edge >= static_cast<int>(mesh.edges.size()) || mesh.edges[edge].NE == -1) return -1;
    int best = edge;
    int e = mesh.edges[PrevEdge(mesh, edge)].TE;
    while (e != -1 && e != edge) {
        best = e;
        e = mesh.edges[PrevEdge(mesh, e)].TE;
    }
    return best;
}

std::vector<int> AllStartingEdges(const PIN& mesh, int node) {
    std::vector<int> fan;
    const int first = FirstOfFan(mesh, node);
    if (first == -1) return fan;
    WalkForward(mesh, first, [&](int e) { fan.push_back(e); });
    std::reverse(fan.begin(), fan.end());
    return fan;
}

int EdgeOfSEVertices(const PIN& mesh, int start, int end) {
    if (start < 0 || end < 0) return -1;
    for (const int e : AllStartingEdges(mesh, start))
        if (mesh.edges[mesh.edges[e].NE].P0 == end) return e;
    return -1;
}

std::vector<Tuple2<int, int>> Neighbors(const PIN& mesh, int node) {
    std::vector<Tuple2<int, int>> neighbors;
    const int first = FirstOfFan(mesh, node);
    if (first == -1) return neighbors;
    const int incoming = PrevEdge(mesh, first);
    if (mesh.edges[incoming].TE < 0) neighbors.push_back({mesh.edges[incoming].P0, incoming});
    WalkForward(mesh, first, [&](int e) { neighbors.push_back({mesh.edges[mesh.edges[e].NE].P0, e}); });
    return neighbors;
}

std::vector<std::vector<int>> EmanatingEdges(const PIN& mesh) {
    return EdgesByStart(mesh, [](const Edge&) { return true; });
}

std::vector<std::vector<int>> EmanatingOrphans(const PIN& mesh) {
    return EdgesByStart(mesh, [](const Edge& edge) { return edge.TE == -1; });
}

template KM_API int StartingEdge(const PIN&, int);
template KM_API int StartingEdge(const SPIN&, int);

}  // namespace KM
