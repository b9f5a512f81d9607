#pragma once

#include <cmath>
#include <optional>

#include "Mesh/Core/SafeLinks.h"

// What the triangle of an edge adds to the normal at the edge's start node: its unit normal, times its weight. The corners
// are taken from that node on. Each corner of a triangle therefore rounds in its own way, and has to be computed by itself.

namespace KM {

/// (B - A) x (C - A) for the triangle of an edge that starts in A: as long as twice the area, and Z is twice that in XY.
/// Nothing where a link or a node does not exist.
inline std::optional<TPoint<double>> CornerCross(const PIN& mesh, int edge) {
    const int next = mesh.edges[edge].NE;
    if (!IsEdge(mesh, next)) return std::nullopt;
    const int third = mesh.edges[next].NE;
    if (!IsEdge(mesh, third)) return std::nullopt;
    const int a = mesh.edges[edge].P0;
    const int b = mesh.edges[next].P0;
    const int c = mesh.edges[third].P0;
    if (!IsNode(mesh, a) || !IsNode(mesh, b) || !IsNode(mesh, c)) return std::nullopt;
    return Cross(mesh.points[b] - mesh.points[a], mesh.points[c] - mesh.points[a]);
}

/// The area in XY, from the Z of the cross product.
inline double FlatArea(double crossZ) { return 0.5 * std::fabs(crossZ); }

/// The sums over the triangles around one node.
class NormalSum {
public:
    explicit NormalSum(bool isWeighted) : isWeighted_(isWeighted) {}

    void AddTriangleOf(const PIN& mesh, int edge) {
        const auto cross = CornerCross(mesh, edge);
        if (!cross) return;
        const double weight = isWeighted_ ? FlatArea(cross->Z) : 1.0;
        sum_ += SafeUnit(*cross) * weight;
        weight_ += weight;
    }

    double Weight() const { return weight_; }
    /// NaN without weight.
    TPoint<double> Average() const { return SafeUnit(sum_ / weight_); }

private:
    bool isWeighted_;
    TPoint<double> sum_;
    double weight_ = 0.0;
};

}  // namespace KM
