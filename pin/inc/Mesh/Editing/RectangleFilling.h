#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Fills a loop that has four corners and, on each of its sides, up to one node more, as refinement of the faces around
/// leaves it. The pattern depends on the length of the loop and on which sides carry a node, that is where the outline,
/// seen in XY, goes on rather than turns; it does not depend on lengths. New edges are appended, in twin pairs; `p2e`
/// stays as it is and right.
///
/// @param e          an edge that starts at a corner. From a side node, the patterns can give slivers
/// @param clockwise  as for `TriangulatePolygon`
///
/// Loops of more than eight edges, and one of six on which fewer than two side nodes are found, go to
/// `TriangulatePolygon`. On a loop of six with both nodes on one side, the pattern leaves a loop of two and one of
/// four. Refused without effect: an edge that is dead or out of range, and a loop that does not come round or goes
/// through a node that does not exist. Costs the length of the loop.
KM_API void TriangulateRectangle(PIN& mesh, int clockwise, int e);

}  // namespace KM
