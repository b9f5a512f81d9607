#include "Mesh/Algorithms/RefinementSize.h"

#include <algorithm>
#include <cmath>

#include "Mesh/Core/FanWalk.h"

namespace KM {
namespace {

using P = TPoint<double>;

// All lengths here are in units of the longest one allowed, which keeps squares of very small and large ones in range.

/// A sum of three squares is off by less than the square of this, where squares are too small for all their digits.
constexpr double LongestRounded = 0x1p-536;

bool IsFinite(const P& p) { return std::isfinite(p.X) && std::isfinite(p.Y) && std::isfinite(p.Z); }

P Along(const PIN& mesh, int from, int to, double unit) { return (mesh.points[to] - mesh.points[from]) / unit; }

/// A third of the triangles that the triangle of `edge` becomes beyond itself, at the least; 0 for another face. Each of its
/// three edges asks, if it is long.
double ThirdOfNewTriangles(const PIN& mesh, int edge, double unit) {
    const int third = ThirdOfTriangle(mesh, edge);
    if (third == -1) return 0.0;
    const int a = mesh.edges[edge].P0;
    const int b = EndNode(mesh, edge);
    const int c = mesh.edges[third].P0;
    if (!IsFinite(mesh.points[c])) return 0.0;
    const P cross = Cross(Along(mesh, a, b, unit), Along(mesh, a, c, unit));
    // No triangle with sides of at most 1 is larger than the one whose sides are all 1; its cross product has this length.
    const double largest = std::sqrt(3.0) / 2.0;
    const double beyond = Length(cross) / largest - 1.0;
    return beyond > 0.0 ? beyond / 3.0 : 0.0;
}

}  // namespace

RefinementSize SizeOfRefinement(const PIN& mesh, const std::vector<int>& longEdges, double maxLength) {
    // Squares of lengths below some 1e-161 are rounded, to 0 in the end, so that lengths up to it pass for short enough.
    const double unit = std::hypot(maxLength, LongestRounded);
    double byLengths = 0.0;  // each new node on an edge adds a triangle on each side
    double byAreas = 0.0;
    double longest = 1.0;
    for (const int e : longEdges) {
        const double length = Length(Along(mesh, mesh.edges[e].P0, EndNode(mesh, e), unit));
        longest = std::max(longest, length);
        for (const int side : {e, mesh.edges[e].TE}) {
            if (side == -1) continue;
            byLengths += length - 1.0;
            byAreas += ThirdOfNewTriangles(mesh, side, unit);
        }
    }
    return {std::max(byLengths, byAreas), std::ceil(std::log2(longest))};
}

}  // namespace KM
