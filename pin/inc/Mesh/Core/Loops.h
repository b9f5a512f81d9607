#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// The edge whose `NE` is `edge`: three reads on a triangle, else a walk round the loop. Defined on alive edges only.
template <class Mesh>
inline int PrevEdge(const Mesh& mesh, int edge) {
    const int third = mesh.edges[mesh.edges[edge].NE].NE;
    int previous = third;
    if (mesh.edges[third].NE != edge) {
        previous = edge;
        while (mesh.edges[previous].NE != edge) previous = mesh.edges[previous].NE;
    }
    return previous;
}

// The queries return snapshots; they do not follow later changes of the mesh. An edge index that is out of range or dead
// gives an empty result or false.

/// The loop through `edge`, beginning with it, in the order of `NE`.
KM_API std::vector<int> Loop(const PIN& mesh, int edge);

/// The boundary through the orphan `edge`, beginning with it: each orphan once, in the direction in which they run.
/// Empty when `edge` is no orphan.
KM_API std::vector<int> OrphanLoop(const PIN& mesh, int edge);

/// Every boundary of the mesh, each beginning with its lowest orphan, in the order of these. Linear time.
KM_API std::vector<std::vector<int>> AllOrphanLoops(const PIN& mesh);

/// True when `e2` is met on a walk from `NE(e1)` that ends before `e1`; so an edge is not on the same loop as itself.
KM_API bool AreOnSameLoop(const PIN& mesh, int e1, int e2);

/// The lowest edge of each loop that is not a triangle, ascending. Takes no account of dead records: compact first.
KM_API std::vector<int> CollectNonTriangularLoops(const PIN& mesh);

/// The distance between the two ends of an edge.
KM_API double EdgeLength(const PIN& mesh, int edge);

/// The sum of the lengths of `edges`, added in their order; 0.0 for none.
KM_API double LoopLength(const PIN& mesh, const std::vector<int>& edges);

}  // namespace KM
