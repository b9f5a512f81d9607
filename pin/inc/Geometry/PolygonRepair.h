#pragma once

#include <vector>

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM::PointsUtils {

// Both functions replace what `result` holds, which may be the polygon itself.

/// Cuts off the loops of a polygon that crosses itself, as seen in XY. The result is closed: the first point appears
/// again at its end.
///
/// The outline is followed point by point. Where a new segment crosses the outline so far, by `IntSegmSegm`, all that lies
/// between is dropped and the crossing point, on the new segment in all three coordinates, takes its place; of several
/// crossings the one nearest to the start of the outline counts. Segments shorter than 1e-7 cross nothing.
///
/// @return  true if a crossing was cut; false, with a closed copy, if there is none
///
/// Real outlines take n log n time, spiky ones too; each point of a spiral takes time for all the turns round it.
KM_API bool MakePolygonNonSelfIntersecting(const std::vector<TPoint<double>>& polygon,
                                           std::vector<TPoint<double>>& result);

/// Pulls each convex corner of a polygon that runs counter-clockwise along its side back towards the corner before it, by
/// `factor` of the length of that side. Corners that turn right, in XY, stay. The result begins with the image of the
/// polygon's second point.
KM_API void AdjustConvexPolygonVertices(const std::vector<TPoint<double>>& polygon, std::vector<TPoint<double>>& result,
                                        double factor);

}  // namespace KM::PointsUtils
