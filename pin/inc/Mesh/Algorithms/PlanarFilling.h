#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

// A border of a mesh, seen in XY. `points` has one point for each node of the mesh, where it is to be seen: the points of
// the mesh themselves, or another projection. `loop` is a border as `OrphanLoop` gives it.
//
// Nothing happens, and an area is 0.0, if an entry of `loop` is no alive edge or starts at a node that has no point. The
// entry of `p2e` of each node that gets a triangle is set; a `p2e` that is not as long as the mesh has nodes waits for
// `Compact`, and gets none.

/// Triangulates the inside of one border. The new edges become twins of the border edges and of each other. What
/// `TriangulateConcavePolygon` cannot cut stays open, and so does a triangle whose edge has two faces already. n log n time.
///
/// The border has to run clockwise, as that of a hole does in a surface that is seen from its front; triangles on one that
/// runs the other way find no twins.
KM_API void FillHole(PIN& mesh, const std::vector<TPoint<double>>& points, const std::vector<int>& loop);

/// Triangulates the space between one border, which has to run counter-clockwise, and a rectangle round it. The distance
/// to the rectangle is the greater of the width and the height of the border, on all sides.
///
/// @param points  gets the four corners of the rectangle, counter-clockwise from the upper left, with Z = 0. A mesh that
///                then has four nodes fewer gets four at (0, 0, 0), whose coordinates are the caller's to set. May be
///                `mesh.points`.
/// @param loop    an empty one does nothing
KM_API void Surround(PIN& mesh, std::vector<TPoint<double>>& points, const std::vector<int>& loop);

/// `PointsUtils::SignedArea` of the border: twice the area, negative if it runs counter-clockwise.
KM_API double SignedArea(const PIN& mesh, const std::vector<TPoint<double>>& points, const std::vector<int>& loop);

}  // namespace KM
