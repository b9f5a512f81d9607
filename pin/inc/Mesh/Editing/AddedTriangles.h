#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

// Triangles that grow from the boundary. The three edges are appended; nothing is renumbered, and no geometric test is
// made. Refused, with -1 and nothing changed: an edge that is dead, out of range or no orphan, and a node that does not
// exist. Constant time.

/// Adds a triangle on the open side of an orphan, with its third corner at `node`. `p2e` of `node` names the new edge that
/// starts there. The two other new edges are orphans.
///
/// @return  the new twin of `e`; the edges to and from `node` come after it
KM_API int AddTriangleOrphanEdge(PIN& mesh, int e, int node);

/// Adds the triangle that closes the corner between two orphans, of which the second starts where the first ends. Orphans
/// that do not follow each other are refused.
///
/// `p2e` is wrong afterwards for both ends of `e2`: that of the end names the new orphan, that of the start the new twin of
/// `e2`, and neither edge starts there. Compact, or rebuild `p2e`, before any fan of these nodes is walked.
///
/// @return  the third new edge: the orphan from the start of `e1` to the end of `e2`
KM_API int AddTriangleWith2Edges(PIN& mesh, int e1, int e2);

}  // namespace KM
