#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Turns edges to the other diagonal of their two triangles where that is shorter, balances the triangles better, and keeps
/// the surface where it is. At most five rounds over all edges, in the order of the indices; one with less than two swaps is
/// the last.
///
/// An edge is swapped if
/// - `ratio` times its length is greater than the length of the other diagonal;
/// - both are shorter than 100 times the tolerance, or they come close to each other near an end of the other diagonal;
/// - the lines of the two come closest within both, or not more than a twentieth beyond an end;
/// - the smaller of the two new triangles, in XY, is a larger part of the larger one than it is now: surfaces are taken to be
///   near to a function of X and Y, and upright triangles stay;
/// - the two diagonals come closer than twice the tolerance.
///
/// What is no number passes none of these tests. Edges that are dead, have no twin or no triangle on each side, or name
/// nodes that do not exist are passed over. No record is added, moved or reported.
///
/// @param tolerance  a length; nothing is swapped with 0 or less
/// @param ratio      a factor below 1
///
/// Linear time a round. Allocates nothing.
KM_API void SwapEdges(PIN& mesh, double tolerance, double ratio);

}  // namespace KM
