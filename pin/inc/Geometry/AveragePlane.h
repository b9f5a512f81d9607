#pragma once

#include <vector>

#include "Geometry/Plane.h"
#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

/// Fits a plane through points by least squares, in closed form. The error is measured along the axis that is nearest to
/// the normal, not at right angles to the plane.
///
/// Level points are a case of their own, which gives no fit: those who ask want to know that there is nothing to turn.
///
/// | code | meaning | plane |
/// |---|---|---|
/// | 1 | no point is further than `tol` from the plane | the fit |
/// | 0 | some point is | the fit |
/// | 2 | all Z are within `tol` of their mean | z = 0, whatever their height |
/// | -2 | so they are, but in XY the points are fewer than three or on a line | z = 0 |
///
/// Points on a line, and one or two points at different heights, get the codes 1 or 0 all the same, with whatever plane
/// the fit falls into. No points give -2. Unless Z is level, a coordinate that is not finite gives a plane that is not
/// valid, with the code 1, because no distance is then above `tol`.
///
/// @param tol  a length; for code 2, also an area: twice that of some triangle of successive points must be above it
/// @return     the code and the plane, which has no stored point
KM_API const Tuple2<int, Plane> AveragePlane(const std::vector<TPoint<double>>& points, double tol);

}  // namespace KM
