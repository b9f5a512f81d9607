#pragma once

#include <vector>

#include "Geometry/Point.h"

namespace KM::Test {

/// `count` points spread evenly over the sphere of radius 1, from pole to pole.
std::vector<TPoint<double>> SpherePoints(int count);

/// For each point the `count` others that are nearest to it, nearest first.
std::vector<std::vector<int>> NearestNeighbours(const std::vector<TPoint<double>>& points, int count);

}  // namespace KM::Test
