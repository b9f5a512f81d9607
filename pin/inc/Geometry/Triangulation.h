#pragma once

#include <vector>

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM::PointsUtils {

// Triangulators of one polygon, seen in XY; its first point need not be repeated at the end. Triangles are three positions
// in the polygon; they are added to what `triangles` holds. A coordinate that is not finite does no harm, but the triangles
// round it, or all of them, may be missing.

/// Cuts a polygon of any shape, that runs either way, into triangles that run counter-clockwise.
///
/// First all points on straight runs are cut off, round by round, each with a triangle of no area, so that every position
/// is used. Then ears: from where the last one was cut, forward, the first corner that no other point blocks. There is no
/// measure of quality, and the order of the triangles is part of the result: hosts compare it between runs. Where no
/// corner is free any more, as can be with outlines that cross themselves, the rest stays open; `triangles` then gets
/// fewer than the number of points less two.
///
/// A point on one of the two sides of a corner blocks it, and so does one in the place of the corner itself; one on the
/// third side, or in the place of one of its ends, does not. Lobes that meet in a doubled point are cut completely. A hole
/// that is joined by a bridge is, too, if one of the ways along it is moved a little: two ways in exactly the same place
/// come to a dead end.
///
/// Real outlines take n log n time (100,000 points a tenth of a second); finite coordinates beyond 1e150 are looked
/// at one by one, for each corner. Method: G. H. Meisters, "Polygons have ears" (1975).
KM_API void TriangulateConcavePolygon(const std::vector<TPoint<double>>& polygon,
                                      std::vector<std::vector<int>>& triangles);

/// Cuts a convex polygon into a fan about its point 0. Three points are one triangle, fewer none.
///
/// The middle of the fan is -1 instead of 0 in polygons of four points and more of which no corner has an angle above 0, as
/// where coordinates are not numbers, or where all corners are sharp and all sides shorter than `ZeroTest`. Callers
/// that can meet such have to look.
KM_API void TriangulateConvexPolygon(const std::vector<TPoint<double>>& polygon,
                                     std::vector<std::vector<int>>& triangles);

}  // namespace KM::PointsUtils
