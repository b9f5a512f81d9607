#pragma once

#include <vector>

#include "Geometry/Point.h"

// The rules of triangulation and of repair in their plain form, step by step, with every point looked at every time.

namespace KM::Test {

void PlainTriangulateConcavePolygon(const std::vector<TPoint<double>>& polygon,
                                    std::vector<std::vector<int>>& triangles);

bool PlainMakePolygonNonSelfIntersecting(const std::vector<TPoint<double>>& polygon,
                                         std::vector<TPoint<double>>& result);

}  // namespace KM::Test
