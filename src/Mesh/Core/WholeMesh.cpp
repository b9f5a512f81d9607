#include "Mesh/Core/WholeMesh.h"

#include <algorithm>
#include <vector>

#include "Mesh/Core/Loops.h"

namespace KM {

void Reverse(PIN& mesh) {
    std::vector<char> visited(mesh.edges.size(), 0);
    for (int i = 0; i < static_cast<int>(mesh.edges.size()); ++i) {
        if (visited[i]) continue;
        std::vector<int> loop = Loop(mesh, i);
        std::reverse(loop.begin(), loop.end());
        std::vector<int> end(loop.size());
        for (std::size_t k = 0; k < loop.size(); ++k) end[k] = mesh.edges[mesh.edges[loop[k]].NE].P0;
        for (std::size_t k = 0; k < loop.size(); ++k) {
            Edge& edge = mesh.edges[loop[k]];
            edge.NE = loop[(k + 1) % loop.size()];
            edge.P0 = end[k];
            mesh.p2e[end[k]] = loop[k];
            visited[loop[k]] = 1;
        }
    }
}

void Append(PIN& mesh, const PIN& other) {
    const int nodeBase = static_cast<int>(mesh.points.size());
    const int edgeBase = static_cast<int>(mesh.edges.size());
    // Counted loops over reserved room, since `other` may be `mesh` itself.
    const std::size_t edgeCount = other.edges.size();
    const std::size_t pointCount = other.points.size();
    const std::size_t nodeEdgeCount = other.p2e.size();
    mesh.edges.reserve(mesh.edges.size() + edgeCount);
    mesh.points.reserve(mesh.points.size() + pointCount);
    mesh.p2e.reserve(mesh.p2e.size() + nodeEdgeCount);
    for (std::size_t i = 0; i < edgeCount; ++i) {
        Edge edge = other.edges[i];
        edge.NE += edgeBase;
        edge.P0 += nodeBase;
        if (edge.TE != -1) edge.TE += edgeBase;
        mesh.edges.push_back(edge);
    }
    for (std::size_t i = 0; i < pointCount; ++i) mesh.points.push_back(other.points[i]);
    for (std::size_t i = 0; i < nodeEdgeCount; ++i) mesh.p2e.push_back(other.p2e[i] + edgeBase);
}

}  // namespace KM
