#pragma once

#include <array>
#include <vector>

#include "Geometry/Point.h"

namespace KM {

/// A coordinate of a point.
using Axis = double TPoint<double>::*;

/// A triangle whose corners ascend along an axis.
using AscendingCorners = std::array<TPoint<double>, 3>;

/// What lies between two levels of an axis.
struct Slab {
    double lo;
    double hi;
};

/// Corners at the same level keep their order.
void SortAlong(Axis axis, AscendingCorners& corners);

/// The part of a triangle inside a slab, as a closed polygon: its first point is its last point too. Empty where there is none;
/// of a triangle that only touches the slab, it has no area.
///
/// @param triangle  neither wholly inside the slab nor wholly on one side of it
/// @param polygon   receives the points; what it holds goes
void CutToSlab(Axis axis, const AscendingCorners& triangle, const Slab& slab, std::vector<TPoint<double>>& polygon);

}  // namespace KM
