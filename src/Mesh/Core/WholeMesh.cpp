#include "Mesh/Core/WholeMesh.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include "Mesh/Core/FanWalk.h"

namespace KM {
namespace {

/// Puts the loop through `edge` into `loop`, last edge first, and flags what it meets. False if the walk does not come
/// round, or runs into another loop.
bool CollectAgainstWalk(const PIN& mesh, int edge, std::vector<char>& visited, std::vector<int>& loop) {
    loop.clear();
    int e = edge;
    do {
        if (!IsAliveEdge(mesh, e) || std::exchange(visited[e], 1)) return false;
        loop.push_back(e);
        e = mesh.edges[e].NE;
    } while (e != edge);
    std::reverse(loop.begin(), loop.end());
    return true;
}

/// Links the edges in the order of `loop`, which is against their `NE`.
void TurnRound(PIN& mesh, const std::vector<int>& loop) {
    // The end of an edge is the start of the one before it in `loop`, as it was before the change.
    int end = mesh.edges[loop.back()].P0;
    for (std::size_t k = 0; k < loop.size(); ++k) {
        Edge& edge = mesh.edges[loop[k]];
        const int start = std::exchange(edge.P0, end);
        edge.NE = k + 1 < loop.size() ? loop[k + 1] : loop.front();
        NameNodeEdge(mesh, end, loop[k]);
        end = start;
    }
}

/// Unsigned, so that whatever stands in a broken record wraps.
int Shifted(int index, std::size_t by) {
    return static_cast<int>(static_cast<std::uint32_t>(index) + static_cast<std::uint32_t>(by));
}

}  // namespace

void Reverse(PIN& mesh) {
    std::vector<char> visited(mesh.edges.size(), 0);
    std::vector<int> loop;
    for (int i = 0; i < static_cast<int>(mesh.edges.size()); ++i)
        if (!visited[i] && CollectAgainstWalk(mesh, i, visited, loop)) TurnRound(mesh, loop);
}

void Append(PIN& mesh, const PIN& other) {
    const std::size_t nodeBase = mesh.points.size();
    const std::size_t edgeBase = mesh.edges.size();
    const std::size_t nodeEdgeBase = mesh.p2e.size();
    const std::size_t nodeCount = other.points.size();
    const std::size_t edgeCount = other.edges.size();
    const std::size_t nodeEdgeCount = other.p2e.size();
    // Counted loops, since `other` may be `mesh` itself; and `resize`, which grows by a factor where `reserve` would
    // copy everything again for each of many small meshes.
    mesh.edges.resize(edgeBase + edgeCount);
    mesh.points.resize(nodeBase + nodeCount);
    mesh.p2e.resize(nodeEdgeBase + nodeEdgeCount);

    for (std::size_t i = 0; i < edgeCount; ++i) {
        const Edge& edge = other.edges[i];
        const int twin = edge.TE != -1 ? Shifted(edge.TE, edgeBase) : -1;
        mesh.edges[edgeBase + i] = {Shifted(edge.NE, edgeBase), twin, Shifted(edge.P0, nodeBase)};
    }
    for (std::size_t i = 0; i < nodeCount; ++i) mesh.points[nodeBase + i] = other.points[i];
    for (std::size_t i = 0; i < nodeEdgeCount; ++i) mesh.p2e[nodeEdgeBase + i] = Shifted(other.p2e[i], edgeBase);
}

}  // namespace KM
