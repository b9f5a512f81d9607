#include "FlatHoles.h"

#include <algorithm>
#include <cmath>

#include "Mesh/Algorithms/PlanarFilling.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;

/// Some direction at right angles to a unit vector.
Point Across(const Point& v) {
    const Point axis = std::fabs(v.X) < 0.6 ? Point(1.0, 0.0, 0.0) : Point(0.0, 1.0, 0.0);
    return SafeUnit(Cross(v, axis));
}

}  // namespace

void FlatHoles::Fill(const std::vector<int>& hole) {
    // About what single precision leaves of a plane.
    constexpr double flatShare = 1e-5;
    if (hole.size() < 4) return;
    const auto nodeOf = [&](int e) { return static_cast<std::size_t>(mesh_.edges[static_cast<std::size_t>(e)].P0); };
    const Point origin = mesh_.points[nodeOf(hole.front())];
    Point twiceArea;
    double size = 0.0;
    for (std::size_t i = 0; i < hole.size(); ++i) {
        const Point a = mesh_.points[nodeOf(hole[i])] - origin;
        const Point b = mesh_.points[nodeOf(hole[i + 1 == hole.size() ? 0 : i + 1])] - origin;
        twiceArea += Cross(a, b);
        size = std::max(size, Length(a));
    }
    // A slit has no plane of its own.
    if (!(Length(twiceArea) > flatShare * size * size)) return;
    const Point normal = twiceArea / Length(twiceArea);
    const Point right = Across(normal);
    const Point up = Cross(normal, right);
    for (const int e : hole) {
        const Point p = mesh_.points[nodeOf(e)] - origin;
        if (std::fabs(Dot(p, normal)) > flatShare * size) return;
        // With X and Y exchanged the border, which runs counter-clockwise round its own normal, runs clockwise.
        seen_[nodeOf(e)] = {Dot(p, up), Dot(p, right), 0.0};
    }
    FillHole(mesh_, seen_, hole);
}

}  // namespace KM::Tool
