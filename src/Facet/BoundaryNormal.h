#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// A vector counts as null unless it is longer than this; an edge also if its length, or the square of it, is below this.
inline constexpr double NullLength = 1e-12;

/// What `BoundaryNormal` gives where the triangle of `edge` has no height over it; `u` and `w` run from the edge's
/// start to its end and to the third node.
TPoint<double> BorrowedBoundaryNormal(const PIN& mesh, int edge, const TPoint<double>& u, const TPoint<double>& w);

/// The unit vector in the plane of the edge's triangle that stands at right angles to the edge and points away from the
/// third node. A degenerate triangle borrows from a neighbour; null where that fails too. Triangles only.
inline TPoint<double> BoundaryNormal(const PIN& mesh, int edge) {
    const Edge& first = mesh.edges[edge];
    const Edge& second = mesh.edges[first.NE];
    const TPoint<double>& start = mesh.points[first.P0];
    const TPoint<double> u = mesh.points[second.P0] - start;
    const TPoint<double> w = mesh.points[mesh.edges[second.NE].P0] - start;
    const TPoint<double> outward = Cross(u, Cross(u, w));
    const double length = Length(outward);
    if (length > NullLength) return outward / length;
    return BorrowedBoundaryNormal(mesh, edge, u, w);
}

}  // namespace KM
