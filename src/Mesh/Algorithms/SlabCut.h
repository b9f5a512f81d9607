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

/// The corners of a triangle, ascending along an axis. Corners at the same level keep their order.
/// @param nine  x, y, z of its first, second and third corner
inline AscendingCorners SortedAlong(Axis axis, const double* nine) {
    const auto corner = [nine](int i) { return TPoint<double>(nine[3 * i], nine[3 * i + 1], nine[3 * i + 2]); };
    const double a = corner(0).*axis;
    const double b = corner(1).*axis;
    const double c = corner(2).*axis;
    // A look into a table, since no processor can foresee the way through comparisons. Rows 3 and 4 are for what is no number.
    static constexpr unsigned char Orders[8][3] = {{0, 1, 2}, {1, 0, 2}, {0, 2, 1}, {1, 0, 2},
                                                   {0, 1, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    const auto& order = Orders[(b < a ? 1 : 0) + (c < b ? 2 : 0) + (c < a ? 4 : 0)];
    return {corner(order[0]), corner(order[1]), corner(order[2])};
}

/// The part of a triangle inside a slab, as a closed polygon: its first point is its last point too. Empty where there is none;
/// of a triangle that only touches the slab, it has no area.
///
/// @param triangle  neither wholly inside the slab nor wholly on one side of it
/// @param polygon   receives the points; what it holds goes
void CutToSlab(Axis axis, const AscendingCorners& triangle, const Slab& slab, std::vector<TPoint<double>>& polygon);

}  // namespace KM
