#pragma once

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Geometry/Point.h"

namespace KM {

/// The angle between two vectors, in radians. Its cosine is held off 1 and -1, so that a division by the angle is safe.
/// Where a vector has no direction the angle is 0 for a positive dot product, else pi.
///
/// @param hasNoDirection  tells it from a length: callers differ in the limit, and in what they make of NaN
template <class Limit>
double ClampedAngle(const TPoint<double>& u, const TPoint<double>& v, Limit hasNoDirection) {
    constexpr double most = 0.99999999;
    const double dot = Dot(u, v);
    const double uLength = Length(u);
    const double vLength = Length(v);
    if (hasNoDirection(uLength) || hasNoDirection(vLength)) return dot > 0.0 ? 0.0 : std::numbers::pi;
    return std::acos(std::clamp(dot / (uLength * vLength), -most, most));
}

}  // namespace KM
