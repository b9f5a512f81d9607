#pragma once

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

// Points made from points. None of them refuses anything unless it says so: coordinates that are not finite give what
// the arithmetic gives.

/// The point of the infinite line through `a` and `b` that is nearest to `p`. A line shorter than 1e-3 gives its midpoint.
KM_API const TPoint<double> NearestPtOnLn(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& p);

/// The point of the infinite line through `base` along `dir` that is nearest to `p`.
///
/// @param dir  of unit length; that is the caller's to see to
KM_API const TPoint<double> FindNearestPointOnLine(const TPoint<double>& base, const TPoint<double>& dir,
                                                   const TPoint<double>& p);

/// True if `a`, `b` and `c` lie on one line, on whichever side of `a` the two others are. Also true where `b` or `c` passes
/// for `a` in each coordinate.
///
/// @param tol  how far the cosine of the angle at `a` may be from 1 or -1; a difference of `tol` itself is too much
KM_API bool AreCollinears(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c, double tol);

/// A point on the bisector of the angle at `a` between `b` and `c`: `a` plus the mean of the two unit directions. It
/// coincides with `a` where these are opposite. A direction too short to have one counts as +Z.
KM_API const TPoint<double> BisectorPoint(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c);

/// Moves one end of the segment a-b along its line to where one coordinate has a given value. The value need not lie
/// between those of the ends.
///
/// A segment that is level along the axis within 1e-8 stays as it is; so does any segment where `a` or `b` is null or
/// `axis` is none of 0, 1, 2.
///
/// @param axis     0 for X, 1 for Y, 2 for Z
/// @param clipEnd  true moves `*b`, false `*a`
KM_API void ClipSegmentToPlane(TPoint<double>* a, TPoint<double>* b, double value, int axis, bool clipEnd);

}  // namespace KM
