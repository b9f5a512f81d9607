#pragma once

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

/// The centre of the circle through three points in XY, with Z = 0; the Z of the points is not looked at. (-1e20, -1e20,
/// -1e20) if they span a parallelogram of less than 1e-8.
KM_API const TPoint<double> Circle3P2D(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c);

/// The centre of the circle through three points in space. Points on a line, within the limit of `Circle3P2D`, give a point
/// of enormous coordinates: one further than 1e10 from `a` is none.
KM_API const TPoint<double> Circle3P3D(TPoint<double> a, TPoint<double> b, TPoint<double> c);

}  // namespace KM
