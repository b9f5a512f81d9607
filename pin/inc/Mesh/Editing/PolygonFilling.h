#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

// Triangles for loops of any length. New edges are appended and nothing is renumbered. An edge that is dead or out of
// range, or whose loop does not come round, is refused without effect. Both cost the length of the loop.

/// Joins each edge of a loop to a node, normally a new one inside, and so makes a triangle of each. For each edge in
/// order, two edges are appended: from its end to the node, and from the node to its start. `p2e` of the node names the
/// second of all; other entries stay as they are. No geometric test is made.
///
/// @param node  refused when it does not exist
KM_API void InsertFan(PIN& mesh, int e, int node);

/// Fills a loop with a fan of triangles, seen in XY, from its widest corner. A corner counts as wider than an earlier
/// one if its angle is more by above 0.2 radians: of equal ones the first along the loop from `e` is taken. For each
/// chord in order, two edges are appended: to the apex, and from it. `p2e` stays as it is and right.
///
/// @param clockwise  0 for a loop that runs counter-clockwise in XY, anything else for one that runs clockwise
///
/// On a loop with concave corners the fan can overlap itself. Loops of up to three edges are left alone, and so are
/// loops through a node that does not exist.
KM_API void TriangulatePolygon(PIN& mesh, int clockwise, int e);

}  // namespace KM
