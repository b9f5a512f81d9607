#pragma once

#include <cstddef>

#include "Mesh/Core/Pin.h"

namespace KM {

/// A mesh as pointers and counts. A local one stays in registers, where loops over vectors read their ends, and divide
/// to get their sizes, once more for each edge. Ends when the mesh changes.
struct MeshView {
    explicit MeshView(const PIN& mesh)
        : edges(mesh.edges.data()),
          points(mesh.points.data()),
          edgeCount(mesh.edges.size()),
          nodeCount(mesh.points.size()) {}

    bool IsEdge(int e) const { return static_cast<std::size_t>(e) < edgeCount; }
    bool IsNode(int node) const { return static_cast<std::size_t>(node) < nodeCount; }

    const Edge* edges;
    const TPoint<double>* points;
    std::size_t edgeCount;
    std::size_t nodeCount;
};

}  // namespace KM
