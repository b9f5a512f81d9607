#pragma once

#include <vector>

#include "Geometry/Point.h"

namespace KM {

/// Cuts triangles off an outline that runs counter-clockwise, until nothing is left or nothing can be cut. See
/// `PointsUtils::TriangulateConcavePolygon`.
///
/// @param isReversed  the outline is `polygon` backward; triangles name its points by their places in `polygon`, in the
///                    order of the outline
void ClipEars(const std::vector<TPoint<double>>& polygon, bool isReversed, std::vector<std::vector<int>>& triangles);

}  // namespace KM
