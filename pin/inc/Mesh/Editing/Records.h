#pragma once

#include "Mesh/Core/Pin.h"
#include "Mesh/Core/PinVisitor.h"

namespace KM {

// Single records, for edits that a recorder follows: each change is reported before it is made. An index that is out of
// range is refused without effect or report.

/// Marks a record dead: `NE` and `P0` become -1. `TE` stays and the twin is not told; the rest of the loop is the
/// caller's to repair or to kill.
template <class Mesh>
KM_API void InvalidateEdge(Mesh& mesh, int e, VisitorOf<Mesh>& visitor);

/// Moves a node's record to another index, over the one that stands there. The fan that `p2e[from]` leads to goes with
/// it; other fans of a non-manifold node stay behind. The old slot keeps its content. Nothing happens when the two are
/// equal. Costs the node's valence.
template <class Mesh>
KM_API void MoveNode(Mesh& mesh, int from, int to, VisitorOf<Mesh>& visitor);

/// Drops dead nodes at the end, without a report, then, if slot `n` is still there, overwrites it with the last node,
/// dead or not, as `MoveNode` does. Does nothing while `p2e` is not as long as `points`. Costs the valence of the last
/// node, whatever the size of the mesh.
template <class Mesh>
KM_API void CompactNode(Mesh& mesh, int n, VisitorOf<Mesh>& visitor);

}  // namespace KM
