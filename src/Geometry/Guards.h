#pragma once

#include <cmath>

#include "Geometry/Point.h"

namespace KM {

// What the functions on points, lines and solids have in common where their input degenerates.

inline constexpr double NoResult = -1e20;
inline constexpr double Unbounded = 1e20;

/// The coordinates by number.
inline constexpr double TPoint<double>::*Axes[] = {&TPoint<double>::X, &TPoint<double>::Y, &TPoint<double>::Z};

/// True for a line whose points, this far apart, are too close to give it a direction.
inline bool IsShort(const TPoint<double>& endToEnd) { return 1e-6 > LengthSquared(endToEnd); }

inline bool AgreeWithin(double tolerance, const TPoint<double>& a, const TPoint<double>& b) {
    return tolerance > std::fabs(b.X - a.X) && tolerance > std::fabs(b.Y - a.Y) && tolerance > std::fabs(b.Z - a.Z);
}

/// The parameter of the foot of `p` on the line a-b; the middle where the line is too short.
inline double FootOnLine(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& p) {
    const TPoint<double> along = b - a;
    return IsShort(along) ? 0.5 : -Dot(along, a - p) / LengthSquared(along);
}

}  // namespace KM
