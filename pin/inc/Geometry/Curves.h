#pragma once

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

/// A point of the cubic Hermite arc from A, where `t` is 0, to C, where it is 1. The tangents at its ends are 4 B and
/// -4 D: B leads out of A, and D out of C, back into the arc.
///
/// @param B, D  vectors, not points
/// @param t     any value; beyond 0 and 1 the arc goes on
KM_API const TPoint<double> GetSplinePoint(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                                           const TPoint<double>& D, double t);

/// The point X that best replaces B and C in the polyline A, B, C, D.
///
/// The error of X is the greater of two distances: of B from the line A-X, and of C from the line X-D, as `DistPtLn` gives
/// them in 3D. Tried are the point between the lines AB and CD where they come nearest to each other, if it lies close
/// to B-C, and seven points spread evenly from B to C. The first of the best wins; the point between the lines comes
/// before all others.
///
/// @param tol  that point counts if it lies nearer to the line B-C than 5 `tol`, and not more than a tenth of the length of
///             B-C beyond its ends. `tol` bounds nothing else.
/// @return     the error and X. An error of 1e20 means that no point has one, as where A, B or C is not finite. With
///             such a D the error is the distance of B alone.
KM_API const Tuple2<double, TPoint<double>> Simplify(const TPoint<double>& A, const TPoint<double>& B,
                                                     const TPoint<double>& C, const TPoint<double>& D, double tol);

}  // namespace KM
