#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// Makes one loop of the two at an edge by taking out the edge and its twin, which stay as dead records. `p2e` of both
/// ends names edges that go on. Where both sides are the same loop, it falls into two.
///
/// Refused without effect: an orphan; an edge that is dead, out of range, or has links that lead nowhere; and one next
/// to its twin on a loop, where a node would be left without edge. Costs the lengths of both loops.
KM_API void DeleteEdgeBetweenLoops(PIN& mesh, int e);

/// Merges faces, seen in XY, to larger convex ones: goes once through all edges and takes out each pair of twins at
/// whose both ends the merged loop turns left or goes straight on. There is no tolerance: a straight corner off the axes
/// can count as a turn to the right by the rounding of its angles. Greedy: which faces come out depends on the order.
/// Leaves dead records for `Compact`, and refuses nothing: what cannot be merged stays. Linear time.
///
/// @param startEdge  where the round begins; counts modulo the number of edges, also when negative
KM_API void ToConvexPolygons(PIN& mesh, int startEdge);

/// Cuts a polygon, seen in XY, into convex ones that run counter-clockwise. A polygon that is convex already, by
/// `PointsUtils::IsConvex`, comes back as it is. There is no promise that they are the fewest. Takes the time of
/// `PointsUtils::TriangulateConcavePolygon`, and what that leaves open is missing.
KM_API std::vector<std::vector<TPoint<double>>> ToConvexPolygons(const std::vector<TPoint<double>>& polygon);

}  // namespace KM
