#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Collapses an edge into its start node, which moves to `pos`; the triangles on both sides go, longer loops lose one
/// edge. Leaves dead records for `Compact`. The end node stays in the mesh as a corpse at (-1e20, -1e20, -1e20), with its
/// `p2e`; that of the nodes opposite the edge can go on naming a dead edge.
///
/// Only the fan that `e` belongs to at its end node follows to the start node. No test is made that the surface stays
/// manifold or unfolded: where the two ends have a common neighbour beside the opposite nodes, edges come to lie double,
/// and where the end node has just two triangles, twins end up dead.
///
/// Refused without effect: an edge that is dead, out of range or has links that lead nowhere, and one whose twin is its
/// own neighbour on the loop. Costs the valence of the end node, and the length of loops that are no triangles.
KM_API void RemoveEdge(PIN& mesh, int e, const TPoint<double>& pos);

}  // namespace KM
