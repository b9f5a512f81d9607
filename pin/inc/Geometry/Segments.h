#pragma once

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

/// Whether the segments AB and CD meet as seen along Z.
///
/// Each segment owns one of its ends and not the other, so that a crossing at the joint of a chain counts once: of two
/// segments that follow each other, a line through their common point meets one. Segments on one line that share no end do not meet.
///
/// Where the segments share an end point, Z included, C is moved by 1e-7 or D by 2e-7, along X and along Y, before they are
/// looked at. Most neighbours in an outline then do not meet at their joint; where the step leads across AB they do,
/// and that is one in three if they run in all directions.
///
/// @param t  receives the parameter of the meeting of the two lines on AB, 0 in A and 1 in B
/// @param u  the same on CD. With false both hold what was found on the way: the crossing of the two lines outside the
///           segments, 0.5 where a look at the boxes is enough, -1e20 where the lines are parallel or a segment is upright
KM_API bool IntSegmSegm(double& t, double& u, const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                        const TPoint<double>& D);

}  // namespace KM
