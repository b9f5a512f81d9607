#pragma once

#include "Mesh/Core/Pin.h"
#include "Mesh/Core/PinVisitor.h"

// Reduction of a mesh in place: `DecimateNodes` takes out what the tolerance can spare, `Decimate` cleans up behind it. Both
// compact the mesh before they return, and the visitor hears of compaction only: node removals and swaps are not reported.
// Who holds indices can follow a clean-up without collapsed edges and swaps, never a reduction.
//
// Made for meshes of triangles. A mesh under edit may be passed: dead records go, `p2e` is rebuilt where it is missing, and
// where links lead nowhere the surface stays as it is. Coordinates that are not finite pass each comparison as numbers do
// for which "greater" is false.

namespace KM {

/// Takes out nodes that lie close to the planes of their neighbours, one after the other, in the order of the indices. The
/// last node moves into the slot of one that goes, and is looked at next. What a node does is decided by its fan at that
/// moment, so the result depends on the numbering; errors are not added up over nodes that have gone before.
///
/// A node goes if it lies inside the surface, no edge at it is longer than 100 times the tolerance, it is no further than the
/// tolerance from each plane of the fan that its first neighbour makes with the others, and `RemoveNode` can take it out.
/// Nodes on a border always stay.
///
/// @param tolerance  a distance; with 0 only nodes go that coincide with all of their neighbours. One that is NaN holds no
///                   node back
/// @throws XUserAbort  if the user wants to stop, at a report of progress or at the message that ends the work; the mesh is
///                     sound and compact then, without the nodes that had gone
///
/// Logs at `Info` how many per cent of the triangles have gone, which is not a number if there were none. Linear time but
/// for the valence of nodes; a node that goes costs most.
KM_API void DecimateNodes(PIN& mesh, double tolerance, TPinManipulationVisitor<TPoint<double>>& visitor);

/// Takes out triangles with a collapsed edge, one that runs from a node to itself and has a twin that does the same; the
/// edges beyond them become orphans. Then it compacts, and improves the triangles by three calls of `SwapEdges` with a ratio
/// of 0.9.
///
/// @param tolerance  as `SwapEdges` takes it; deletions do not depend on it
KM_API void Decimate(PIN& mesh, double tolerance, TPinManipulationVisitor<TPoint<double>>& visitor);

}  // namespace KM
