#pragma once

#include <vector>

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM::PointsToTrianglesHelper {

/// Builds a surface over a cloud of points in space, by a front that advances from a first triangle. Where the points lie on
/// a closed surface, evenly enough for its curvature, so does the result: n points of a sphere give 2 n - 4 triangles.
///
/// @param triangles   gets three node numbers more per triangle; what it holds stays. Neighbours in it run the same way round.
///                    No two triangles have the same three nodes, and no two nodes are joined in more than two.
/// @param neighbours  for each point those that a triangle may join it to, nearest first: `neighbours[i][0]` and `[1]`
///                    make the first triangle at a point that no front has reached. An index outside the points is passed
///                    over; points without a list have no neighbours. A dozen each serves a smooth surface.
/// @param unused      is not read
///
/// Each next triangle is the cheapest there is: a small one, that goes on straight from the one before. Where no
/// candidate is left there is a gap, and nothing else tells. Coordinates that are not finite cost too much to be joined,
/// except in a first triangle.
///
/// Logs "New start for node: " with the number at each start, and reports progress, as "Tesselate"; both are points of
/// cancellation. Takes n log n time for lists of bounded length.
KM_API void Tesselate3D(std::vector<int>& triangles, const std::vector<TPoint<double>>& points,
                        const std::vector<std::vector<int>>& neighbours, int unused);

}  // namespace KM::PointsToTrianglesHelper
