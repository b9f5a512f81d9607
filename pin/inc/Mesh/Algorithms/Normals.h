#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

// Averages of the unit normals of the triangles around a node. With `weighted` each counts with its area in the XY plane,
// so that upright triangles do not count at all: made for surfaces that are milled from above. Without, each counts alike.
// A triangle too thin to have a normal counts with (0, 0, 1). A triangle whose links or nodes do not exist is left out. Of
// a longer loop the triangle of an edge is that of its first three corners.

/// The normal at the start node of `edge`, from a walk forward through its fan. Costs the node's valence, allocates nothing.
///
/// @param edge  of a closed fan, any edge; of an open fan, its start: the triangles behind `edge` are not met. Nor does the
///              last triangle of an open fan count, since the walk ends before an edge without twin
/// @return      of unit length; NaN in each coordinate if nothing counts: for an orphan, for an edge that is dead or out of
///              range, and, with `weighted`, for triangles that are all upright
KM_API const TPoint<double> NodeNormal(const PIN& mesh, int edge, bool weighted);

/// Replaces `normals` by one normal a node, of unit length, for open and closed fans alike. A node without triangles, and
/// with `weighted` one with upright triangles only, gets (0, 0, 0).
///
/// The fan of a node is that of its highest-numbered edge, whatever `p2e` says. Only a node at which no edge starts is
/// looked up in `p2e`: it gets the normal of the fan that is named there, which for a sound mesh is none. Where `p2e` is
/// too short, that is the fan of edge 0.
///
/// Linear time. Walks over links that contradict each other end in time as well, and leave (0, 0, 0) where they are cut.
KM_API void Normals(const PIN& mesh, std::vector<TPoint<double>>& normals, bool weighted);

}  // namespace KM
