#pragma once

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

/// The length tolerance that belongs to a box and an accuracy setting.
///
/// @param lo,hi     minimum and maximum corner
/// @param accuracy  0 gives 3/1000 of the largest extent; each 0.125 more halves it
KM_API double PINTolerance(const TPoint<double>& lo, const TPoint<double>& hi, double accuracy);

/// The step of a sampling grid for about `count` items in the box.
///
/// @param accuracy  0 is the coarse end, 1 the fine end, where `count` 1 gives twice the mean extent
KM_API double PINGridStep(const TPoint<double>& lo, const TPoint<double>& hi, int count, double accuracy);

}  // namespace KM
