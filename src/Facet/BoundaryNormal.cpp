#include "Facet/BoundaryNormal.h"

#include "Mesh/Core/Loops.h"

namespace KM {
namespace {

/// The third side of a triangle is short when its square is below the square of the base divided by this.
constexpr double ShortSide = 10.0;

TPoint<double> UnitOrNull(const TPoint<double>& a) {
    const double length = Length(a);
    return length > NullLength ? a / length : TPoint<double>();
}

/// Without any borrowing: two degenerate neighbours would borrow from each other for ever.
TPoint<double> OwnNormalOrNull(const PIN& mesh, int edge) {
    const Edge& first = mesh.edges[edge];
    const Edge& second = mesh.edges[first.NE];
    const TPoint<double>& start = mesh.points[first.P0];
    const TPoint<double> u = mesh.points[second.P0] - start;
    const TPoint<double> w = mesh.points[mesh.edges[second.NE].P0] - start;
    return UnitOrNull(Cross(u, Cross(u, w)));
}

}  // namespace

TPoint<double> BorrowedBoundaryNormal(const PIN& mesh, int edge, const TPoint<double>& u, const TPoint<double>& w) {
    if (LengthSquared(u) < NullLength) return UnitOrNull(-w);
    if (mesh.edges[edge].TE != -1) return -OwnNormalOrNull(mesh, mesh.edges[edge].TE);

    const int next = mesh.edges[edge].NE;
    const int previous = PrevEdge(mesh, edge);
    // C - B itself, and not w - u, which differs in the last bit.
    const TPoint<double> thirdSide = mesh.points[mesh.edges[previous].P0] - mesh.points[mesh.edges[next].P0];
    // The third node lies on the line of the edge. Unless it lies behind the start, the neighbour across the previous
    // edge continues the surface; else the one across the next edge does, seen from the other side.
    const bool isShort = LengthSquared(thirdSide) < LengthSquared(u) / ShortSide;
    const bool fromPrevious = isShort || Dot(w, u) > 0.0;
    const int lender = mesh.edges[fromPrevious ? previous : next].TE;
    if (lender == -1) return {};
    const TPoint<double> borrowed = OwnNormalOrNull(mesh, lender);
    return fromPrevious ? borrowed : -borrowed;
}

}  // namespace KM
