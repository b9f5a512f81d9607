#pragma once

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

// Distances of points from lines, segments and planes. None of them refuses anything: coordinates that are not finite
// give what the arithmetic gives. `t` counts along a-b: 0 is a, 1 is b.

/// The distance of `p` from the infinite line through `a` and `b`, and the foot of `p` on it.
///
/// In 3D: at least 0. A distance below 1e-3 comes back squared, so compare with tolerances far above that. A line
/// shorter than 1e-3 has no direction: the distance is then that from `a`, and `t` is 0.5.
///
/// In 2D only X and Y count and the result has a sign: positive to the right of the direction from `a` to `b`. A distance
/// and a `t` that pass for zero come back as 0. Where `a` and `b` agree within 1e-8 in X, Y and Z, the result is the
/// distance from `b` in 3D, never negative, and `t` is 0.5. A line that is vertical in Z alone has no foot in XY: its
/// `t` is infinite or NaN.
///
/// @param t  receives the parameter of the foot
KM_API double DistPtLn(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& p, double& t, bool in3D);

/// The same without the foot.
KM_API double DistPtLn(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& p, bool in3D);

/// The distance of `p` from the segment a-b.
///
/// Where the foot of `p` lies between the ends, this is `DistPtLn`. Beyond an end it is the plain distance from that end:
/// in 3D, or in XY with the side of the line as its sign, where a point on the line itself, within 1e-8, counts as
/// right of it.
///
/// @param t       receives the parameter of the foot, brought into [1e-8, 0.99999999]: never 0 and never 1
/// @param unused  is not read
KM_API double DistPtSegm(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& p, double& t,
                         bool in3D, double unused);

/// The signed distance of `p` from the plane of A, B, C: positive where the three are seen counter-clockwise. Three points
/// on a line, and a triangle too small to have a normal, stand for the level plane through A.
KM_API double DistToPlane(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                          const TPoint<double>& p);

/// Six times the signed volume of the tetrahedron A, B, C, p, with the sign of `DistToPlane`. No normalising, so it serves
/// tests of side, and is 0 for three points on a line.
KM_API double DistPointToPlan(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                              const TPoint<double>& p);

/// How far `p` lies above the line through `a` and `b`, measured along Y, in XY. A segment upright within 1e-8 in X
/// is stood for by its upper end.
KM_API double DistPointAboveSegment(const TPoint<double>& p, const TPoint<double>& a, const TPoint<double>& b);

}  // namespace KM
