#pragma once

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

// Two infinite lines, AB and CD. Parameters count along them: `t` is 0 in A and 1 in B, `u` is 0 in C and 1 in D.

/// Where the lines cross as seen along Z; the Z of all four points is not looked at.
///
/// @param t, u  receive the parameters of the crossing, or -1e20, both, where there is none
/// @return      false if A equals B or C equals D in X and Y, exactly, or if the lines are parallel to the last bit; a
///              hair off parallel gives a crossing far away
KM_API bool IntLineLine(double& t, double& u, const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                        const TPoint<double>& D);

/// The point of AB, in 3D, over the crossing of the lines in XY. Where there is none the result is a meaningless point,
/// -1e20 times the way from A to B; nothing else tells.
KM_API const TPoint<double> IntLineLine(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                                        const TPoint<double>& D);

/// `IntLineLine` for lines that hang on common points: the parameters are exactly 0 or 1 where C lies on A (0, 0), B on D
/// (1, 1) or B on C (1, 0), and (0, 1) where C lies on the line AB and D level with A across it. Coordinates are
/// compared exactly, in the order C on A, the (0, 1) case, B on D, B on C, and the first that holds counts.
///
/// @return  as above; lines also count as parallel where C and D are less than 1e-12 apart across AB
KM_API bool IntLineLine2(double& t, double& u, const TPoint<double>& A, const TPoint<double>& B,
                         const TPoint<double>& C, const TPoint<double>& D);

/// The parameters, on AB and on CD, of the two points where the lines in 3D come nearest to each other. Parallel lines
/// divide by zero: their parameters are infinite or NaN.
KM_API const Tuple2<double, double> MinSegmentBetweenTwoLines(const TPoint<double>& A, const TPoint<double>& B,
                                                              const TPoint<double>& C, const TPoint<double>& D);

/// The two points themselves. An output may be one of the four points that come in.
KM_API void MinSegmentBetweenTwoLines(TPoint<double>& onAB, TPoint<double>& onCD, const TPoint<double>& A,
                                      const TPoint<double>& B, const TPoint<double>& C, const TPoint<double>& D);

/// The point halfway between the two.
KM_API const TPoint<double> MidOfMinSegmentBetweenTwoLines(const TPoint<double>& A, const TPoint<double>& B,
                                                           const TPoint<double>& C, const TPoint<double>& D);

}  // namespace KM
