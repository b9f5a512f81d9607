#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

// Splits of edges, faces and loops. New edges are appended, in an order that callers count on: the first has the index
// `edges.size()` as it was before. Nothing is renumbered, and no geometric test is made.
//
// An edge that is dead or out of range, or whose links lead nowhere, is refused: nothing changes, and the result, where
// there is one, is -1. Where triangles are asked for, so is an edge on a longer loop, or one whose twin lies on the same
// triangle. A `p2e` that is not as long as `points` waits to be rebuilt by `Compact` and gets no new entry. Entries that
// are not named here stay as they are. Constant time on triangles, the length of the loop elsewhere.

/// Adds a node at `pos` on the edge and splits the triangles on both sides (or the one side of an orphan). The new node
/// is the last one. `e` keeps its start and now ends at the new node; its twin keeps its end.
KM_API void SplitEdge(PIN& mesh, int e, const TPoint<double>& pos);

/// Splits an edge between two triangles where the two opposite nodes suggest it: between the feet of both on the edge,
/// nearer to the foot of the nearer one. Appends the new node's value, interpolated between those of the two nodes in the
/// same ratio. A trace of both values goes to the dump stream.
///
/// @param values  one for each node, so that the appended one lands on the new node's index; nothing changes if one of
///                the opposite nodes has none
///
/// An orphan is refused with an `Error` in the log. Coordinates are not checked: where both opposite nodes lie on the
/// line of the edge, position and value are NaN.
KM_API void SplitEdge(PIN& mesh, std::vector<double>& values, int e);

/// Inserts an existing node in an edge and in its twin. No face is added: the loops on both sides grow by one edge. The
/// twins of both halves are new pairs: `e` with the last edge, the twin of old with the edge that is returned.
///
/// @param node  refused when it does not exist; `p2e` names the returned edge for it
/// @return      the new edge from `node` to the old end of `e`
KM_API int SplitEdge2(PIN& mesh, int e, int node);

/// The same surface as after `SplitEdge2`, with other records: `e` and its twin stay twins, between the old start of `e`
/// and `node`. `p2e` of `node` is the caller's to set. A twin that directly follows `e` on the same loop is refused.
///
/// @return  the new edge from `node` to the old end of `e`
KM_API int AddAlong(PIN& mesh, int e, int node);

/// Adds a node at `pos` inside the triangle of `e`, which becomes three. The new node is the last one.
KM_API void SplitFace(PIN& mesh, int e, const TPoint<double>& pos);

/// Divides the common loop of two edges by a chord between their start nodes; `e1` and `e2` end up on different sides.
/// Works for loops of any length. The edges must differ. That they lie on one loop is not tested: a chord between two
/// loops joins them.
///
/// @return  the new edge that starts where `e1` starts; its twin comes before it
KM_API int SplitLoop(PIN& mesh, int e1, int e2);

}  // namespace KM
