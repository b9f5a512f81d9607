#pragma once

#include <cstddef>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM::Tool {

/// Calls `take(a, b, c)` with the nodes of each triangle, in the order of their lowest edges. Longer loops count as fans of
/// triangles, dead records not at all.
template <class Take>
void ForEachTriangle(const PIN& mesh, Take take) {
    std::vector<bool> isSeen(mesh.edges.size(), false);
    const auto edgeAt = [&](int e) -> const Edge& { return mesh.edges[static_cast<std::size_t>(e)]; };
    for (std::size_t i = 0; i < mesh.edges.size(); ++i) {
        if (isSeen[i] || mesh.edges[i].NE == -1) continue;
        const int first = static_cast<int>(i);
        for (int e = first; !isSeen[static_cast<std::size_t>(e)]; e = edgeAt(e).NE)
            isSeen[static_cast<std::size_t>(e)] = true;
        for (int b = edgeAt(first).NE; edgeAt(b).NE != first; b = edgeAt(b).NE)
            take(edgeAt(first).P0, edgeAt(b).P0, edgeAt(edgeAt(b).NE).P0);
    }
}

}  // namespace KM::Tool
