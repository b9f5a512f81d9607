#include "Mesh/Algorithms/EdgeSwaps.h"

#include <algorithm>
#include <optional>

#include "CornerNormal.h"
#include "Geometry/Lines.h"
#include "Mesh/Editing/EdgeSwap.h"
#include "Mesh/Editing/Surroundings.h"

namespace KM {
namespace {

using P = TPoint<double>;

//          C
//        /   \        AB is the diagonal that is, CD the one that may be.
//       A --- B       .
//        \   /
//          D
struct Quadrilateral {
    const P& A;
    const P& B;
    const P& C;
    const P& D;
};

/// Nothing for an edge that has not a triangle on each side, and for the higher one of two twins.
std::optional<Quadrilateral> QuadrilateralAt(const PIN& mesh, int e) {
    if (mesh.edges[e].TE <= e) return std::nullopt;
    const auto at = TrianglesAt(mesh, e);
    if (!at) return std::nullopt;
    const int a = mesh.edges[e].P0;
    const int b = mesh.edges[at->own.ne].P0;
    const int c = mesh.edges[at->own.pe].P0;
    const int d = mesh.edges[at->other.pe].P0;
    if (!IsNode(mesh, a) || !IsNode(mesh, b) || !IsNode(mesh, c) || !IsNode(mesh, d)) return std::nullopt;
    return Quadrilateral{mesh.points[a], mesh.points[b], mesh.points[c], mesh.points[d]};
}

double AreaInXY(const P& a, const P& b, const P& c) { return FlatArea(Cross(b - a, c - a).Z); }

/// 1 for two equal triangles; NaN for two without area.
double Balance(double area, double other) { return std::min(area, other) / std::max(area, other); }

/// Who is to pass is asked for, and not who is to fail: so what is no number fails.
class SwapRule {
public:
    SwapRule(double tolerance, double ratio) : tolerance_(tolerance), ratio_(ratio) {}

    bool Allows(const Quadrilateral& at) const {
        const auto& [A, B, C, D] = at;
        const double present = Length(B - A);
        const double other = Length(D - C);
        // Most edges fail here.
        if (!(present * ratio_ > other)) return false;
        const auto [s, u] = MinSegmentBetweenTwoLines(A, B, C, D);
        const bool isSmall = other < tolerance_ * 100.0 && present < tolerance_ * 100.0;
        if (!isSmall && !(u < 0.02 || u > 0.98)) return false;
        return IsOnDiagonal(u) && IsOnDiagonal(s) && BalancesBetter(at) && MeetAt(at, s, u);
    }

private:
    static bool IsOnDiagonal(double t) { return t > -0.05 && t < 1.05; }

    static bool BalancesBetter(const Quadrilateral& at) {
        const auto& [A, B, C, D] = at;
        return Balance(AreaInXY(A, C, D), AreaInXY(B, C, D)) > Balance(AreaInXY(A, B, C), AreaInXY(A, B, D));
    }

    bool MeetAt(const Quadrilateral& at, double s, double u) const {
        const auto& [A, B, C, D] = at;
        const P X = A + (B - A) * s;
        const P Y = C + (D - C) * u;
        return Length(X - Y) < tolerance_ + tolerance_;
    }

    double tolerance_;
    double ratio_;
};

/// The number of swaps.
int SwapOnce(PIN& mesh, const SwapRule& rule) {
    int swaps = 0;
    for (int e = 0; IsEdge(mesh, e); ++e) {
        const auto at = QuadrilateralAt(mesh, e);
        if (!at || !rule.Allows(*at)) continue;
        SwapEdge(mesh, e);
        ++swaps;
    }
    return swaps;
}

}  // namespace

void SwapEdges(PIN& mesh, double tolerance, double ratio) {
    constexpr int mostRounds = 5;
    const SwapRule rule(tolerance, ratio);
    for (int round = 0; round < mostRounds && SwapOnce(mesh, rule) >= 2; ++round) {}
}

}  // namespace KM
