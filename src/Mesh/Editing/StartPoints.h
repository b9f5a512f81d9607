#pragma once

#include <span>
#include <vector>

#include "Mesh/Core/Pin.h"
#include "Mesh/Core/SafeLinks.h"

namespace KM {

/// The points at which edges start. Empty if one of them does not exist.
inline std::vector<TPoint<double>> StartPoints(const PIN& mesh, std::span<const int> edges) {
    std::vector<TPoint<double>> points;
    points.reserve(edges.size());
    for (const int e : edges) {
        const int node = mesh.edges[e].P0;
        if (!IsNode(mesh, node)) return {};
        points.push_back(mesh.points[node]);
    }
    return points;
}

}  // namespace KM
