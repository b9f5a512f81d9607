#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// Makes triangles of a loop, all from the start node of its first edge. Appends a twin pair for each chord, first the
/// edge that comes to the apex, then the one that leaves it. `p2e` stays as it is.
///
/// @param loop  at least three edges, each starting where the one before it ends; their `NE` is written anew
inline void FillWithFan(PIN& mesh, const std::vector<int>& loop) {
    auto& edges = mesh.edges;
    const int apex = edges[loop[0]].P0;
    int leaving = loop[0];  // from the apex, and the first edge of the triangle in work
    std::size_t k = 1;
    for (; k + 2 < loop.size(); ++k) {
        const int coming = static_cast<int>(edges.size());
        edges[leaving].NE = loop[k];
        edges[loop[k]].NE = coming;
        edges.push_back({leaving, coming + 1, edges[loop[k + 1]].P0});
        edges.push_back({loop[k + 1], coming, apex});
        leaving = coming + 1;
    }
    edges[leaving].NE = loop[k];
    edges[loop[k]].NE = loop[k + 1];
    edges[loop[k + 1]].NE = leaving;
}

}  // namespace KM
