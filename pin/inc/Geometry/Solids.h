#pragma once

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

// Where the line through A and B enters and leaves a solid. Parameters count along AB: 0 is A, 1 is B. Those outside
// 0 to 1 are not removed. Each function returns how many it wrote, and 0 leaves `t` as it was; a null `t` gives 0.

/// A sphere. The parameters are the roots of the quadratic equation in the order in which `Solver::Quadratic` gives
/// them, which is not always that along the line.
///
/// @param t  room for two
/// @return   0, 1 where the line touches the sphere, or 2. A segment shorter than 1e-4 gives 1, which means nothing.
KM_API int IntSegmSphere(double t[], const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& centre,
                         double radius);

/// A cylinder round the infinite line through C and D.
///
/// @param C, D    at a distance of 1 from each other: the axis vector is used as it comes, and another length scales the
///                result
/// @param t       room for two, first the way in. A line along the axis, inside, gives -1e20 and 1e20 over the length of AB.
/// @return        0 or 2
KM_API int IntSegmCylinder(double t[], const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                           const TPoint<double>& D, double radius);

/// A cylinder that ends in C and in D, with its two caps.
///
/// D and B are moved a little first, D by 1e-7 at least and both to where C and D, and A and B, are some 1e-4 apart in
/// each coordinate; so results are not exact to more than that.
///
/// @param t  room for two, first the way in; -1e20 and 1e20 if the whole segment lies inside
/// @return   0 or 2; 2 does not say that the way in or out lies within the segment
KM_API int IntSegmCylinderFinite(double t[], TPoint<double> A, TPoint<double> B, TPoint<double> C, TPoint<double> D,
                                 double radius);

}  // namespace KM
