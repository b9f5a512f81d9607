#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Takes a node with all its triangles out of a closed fan and fills the ring that it leaves with a fan of triangles from
/// the ring's sharpest corner. Neither the node's flatness nor the quality of the new triangles is judged.
///
/// Compacts at once: gaps in the edges are filled from the end, and the last node moves to index `node`. No visitor sees
/// it. Of a node with several fans only the one that `p2e` leads to goes, or moves: keep such nodes away from it.
///
/// @return  false, with the mesh untouched: for a node with fewer than three edges; with one `Error` in the log, for a
///          node on the boundary and for one whose `p2e` leads to another node; and for a fan that folds onto itself, has
///          a face that is no triangle, or does not come round; and as long as `p2e` waits to be rebuilt
///
/// Costs the valence of the node and of the last one, and a sort of three times the valence.
KM_API bool RemoveNode(PIN& mesh, int node);

}  // namespace KM
