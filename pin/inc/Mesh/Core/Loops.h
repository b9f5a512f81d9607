#pragma once

#include <cstddef>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// The edge whose `NE` is `edge`: three reads on a triangle, else a walk round the loop. -1 if `edge` is dead or out of
/// range, or if its `NE` does not lead back to it.
template <class Mesh>
inline int PrevEdge(const Mesh& mesh, int edge) {
    const std::size_t count = mesh.edges.size();
    const auto next = [&](int e) { return static_cast<std::size_t>(e) < count ? mesh.edges[e].NE : -1; };
    const int third = next(next(edge));
    if (next(third) == edge) return third;

    int previous = edge;
    // Under edit a loop can run into another one; no sound loop is longer than `edges`.
    for (std::size_t left = count; left != 0; --left) {
        const int following = next(previous);
        if (following == edge) return previous;
        previous = following;
    }
    return -1;
}

// The queries return snapshots; they do not follow later changes of the mesh. An edge index that is out of range or
// dead gives an empty result, false or 0.0, and so does a walk that cannot come round, because the links of a mesh
// under edit lead nowhere. All take linear time at most.

/// The loop through `edge`, beginning with it, in the order of `NE`.
KM_API std::vector<int> Loop(const PIN& mesh, int edge);

/// The boundary through the orphan `edge`, beginning with it: each orphan once, in the direction in which they run.
/// Empty when `edge` is no orphan.
KM_API std::vector<int> OrphanLoop(const PIN& mesh, int edge);

/// Every boundary of the mesh, each beginning with its lowest orphan, in the order of these. Linear time.
KM_API std::vector<std::vector<int>> AllOrphanLoops(const PIN& mesh);

/// True when `e2` is met on a walk from `NE(e1)` that ends before `e1`; so an edge is not on the same loop as itself.
KM_API bool AreOnSameLoop(const PIN& mesh, int e1, int e2);

/// The lowest edge of each loop that is not a triangle, ascending: all edges `e` with `NE(NE(NE(e)))` other than `e`,
/// one a loop. Linear time.
KM_API std::vector<int> CollectNonTriangularLoops(const PIN& mesh);

/// The distance between the two ends of an edge.
KM_API double EdgeLength(const PIN& mesh, int edge);

/// The sum of the lengths of `edges`, added in their order; 0.0 for none.
KM_API double LoopLength(const PIN& mesh, const std::vector<int>& edges);

}  // namespace KM
