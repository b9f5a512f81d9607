#pragma once

#include "Geometry/Point.h"

namespace KM {

/// The determinant of the matrix with these rows (or columns, but for rounding), expanded along the first.
inline double Determinant(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c) {
    return Dot(a, Cross(b, c));
}

}  // namespace KM
