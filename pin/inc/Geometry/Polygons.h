#pragma once

#include <vector>

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

/// Polygons are lists of points. One is *closed* when its last point repeats its first.
///
/// "Differ by less than `tol`" is said of each coordinate apart, which makes a box of it and not a sphere; Z counts if
/// `in3D`. A coordinate that is not a number differs from everything. All functions take linear time.
namespace PointsUtils {

/// Closes each polygon whose ends differ by less than `tol` without being equal, by one more point: its first. A polygon
/// with ends further apart stays open.
KM_API void Close(std::vector<std::vector<TPoint<double>>>& polygons, double tol, bool in3D);

/// Drops each point that differs by less than `tol` from the last one that was kept; the first is always kept. If the ends
/// of what is left differ by less than 2 `tol` without being equal, the first point is added behind the last: a list
/// that was nearly closed becomes closed, with its near end still in it.
KM_API void RemoveCoincidentPoints(std::vector<TPoint<double>>& points, double tol, bool in3D);
KM_API void RemoveCoincidentPoints(std::vector<std::vector<TPoint<double>>>& polygons, double tol, bool in3D);

/// Thins out a polyline: of a run along which each point is near the line through the first two, only the ends stay. Lists
/// of fewer than 4 points are left alone. What remains goes through `RemoveCoincidentPoints`, in 3D. A list whose ends
/// differ by less than 3 `tol` is closed exactly at the end, if it then still has three points.
///
/// @param tol      the distance that a point on the line may have from it, as `DistPtLn` measures
/// @param blend    0 measures in XY, 1 in 3D, and what lies between mixes the two
/// @param twoPass  also goes through the list backward first, and keeps what either way finds to be a corner
///
/// A list never becomes empty: one that would is left as it was.
KM_API void RemoveCollinearPoints(std::vector<TPoint<double>>& points, double tol, double blend, bool twoPass);

/// True if the polygon, seen in XY, turns left or goes straight on at each of its points. It has to run counter-clockwise:
/// a convex one that runs clockwise gives false. Turns are not added up, so a star whose outline crosses itself can
/// give true. An empty polygon is convex.
KM_API bool IsConvex(const std::vector<TPoint<double>>& polygon);

/// Twice the area of the polygon in XY: negative if it runs counter-clockwise, positive if clockwise. It need not be
/// closed. Fewer than 2 points give 0.
KM_API double SignedArea(const std::vector<TPoint<double>>& polygon);
/// The sum over all polygons.
KM_API double SignedArea(const std::vector<std::vector<TPoint<double>>>& polygons);

}  // namespace PointsUtils
}  // namespace KM
