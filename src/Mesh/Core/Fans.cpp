#include "Mesh/Core/Fans.h"

#include <array>
#include <iterator>

#include "Mesh/Core/FanWalk.h"

namespace KM {
namespace {

/// Counts first: half a million lists that each grow by reallocation cost more than a second look at the edges.
template <class Accept>
std::vector<std::vector<int>> EdgesByStart(const PIN& mesh, Accept accept) {
    const std::size_t nodeCount = mesh.points.size();
    const auto isListed = [&](const Edge& edge) {
        return !IsMarkedDead(edge) && static_cast<std::size_t>(edge.P0) < nodeCount && accept(edge);
    };
    std::vector<int> count(nodeCount, 0);
    for (const Edge& edge : mesh.edges)
        if (isListed(edge)) ++count[edge.P0];

    std::vector<std::vector<int>> lists(nodeCount);
    for (std::size_t node = 0; node < nodeCount; ++node) lists[node].reserve(count[node]);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
        if (isListed(mesh.edges[e])) lists[mesh.edges[e].P0].push_back(e);
    return lists;
}

}  // namespace

template <class Mesh>
int StartingEdge(const Mesh& mesh, int edge) {
    return FirstOfFan(mesh, edge);
}

std::vector<int> AllStartingEdges(const PIN& mesh, int node) {
    // Nearly every fan fits into the array, and then one walk is enough to allocate exactly.
    std::array<int, 32> met;
    const FanWalk fan(mesh, node);
    std::size_t count = 0;
    for (const int e : fan) {
        if (count < met.size()) met[count] = e;
        ++count;
    }

    // Callers rely on the order against the walk, where the last edge comes first.
    if (count <= met.size()) return {std::make_reverse_iterator(met.begin() + count), met.rend()};
    std::vector<int> edges(count);
    auto place = edges.end();
    for (const int e : fan) *--place = e;
    return edges;
}

int EdgeOfSEVertices(const PIN& mesh, int start, int end) {
    if (start < 0 || end < 0) return -1;
    // Of several edges to the same node the last of the walk counts, as it comes first in `AllStartingEdges`.
    int found = -1;
    for (const int e : FanWalk(mesh, start))
        if (EndNode(mesh, e) == end) found = e;
    return found;
}

std::vector<Tuple2<int, int>> Neighbors(const PIN& mesh, int node) {
    std::vector<Tuple2<int, int>> neighbors;
    const FanWalk fan(mesh, node);
    if (fan.First() == -1) return neighbors;
    neighbors.reserve(fan.Count() + 1);
    if (PreviousInFan(mesh, fan.First()) == -1) {
        const int incoming = PrevEdge(mesh, fan.First());
        if (incoming != -1) neighbors.push_back({mesh.edges[incoming].P0, incoming});
    }
    for (const int e : fan) neighbors.push_back({EndNode(mesh, e), e});
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
