#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "Mesh/Algorithms/PlainAnalysis.h"
#include "Mesh/Editing/PlainEdits.h"

// The reductions as plainly as they can be said, step by step, for meshes with sound links only.

namespace KM::Test::Plain {

inline double Norm(const P& v) { return std::sqrt(v.X * v.X + v.Y * v.Y + v.Z * v.Z); }
inline P EndPoint(const PIN& m, int e) { return m.points[m.edges[m.edges[e].NE].P0]; }

inline bool MayGo(const PIN& m, int n, double tolerance) {
    std::vector<int> S = Fan(m, m.p2e[n]);
    std::reverse(S.begin(), S.end());
    if (S.empty() || m.edges[S[0]].TE == -1) return false;
    const int count = static_cast<int>(m.points.size());
    for (const int e : S)  // a node that is no more
        if (m.edges[e].P0 >= count || m.edges[m.edges[e].NE].P0 >= count) return false;
    for (const int e : S) {
        const P d = EndPoint(m, e) - m.points[m.edges[e].P0];
        if (d.X * d.X + d.Y * d.Y + d.Z * d.Z > tolerance * tolerance * 100.0 * 100.0) return false;
    }
    for (int k = 1; k <= static_cast<int>(S.size()) - 2; ++k) {
        const P A = EndPoint(m, S[0]), B = EndPoint(m, S[k]), C = EndPoint(m, S[k + 1]);
        P normal = Cross(B - A, C - A);
        const double length = Norm(normal);
        normal = 5e-9 > std::fabs(length) ? P(0, 0, 1) : P(normal.X / length, normal.Y / length, normal.Z / length);
        const double d = -(A.X * normal.X + A.Y * normal.Y + A.Z * normal.Z);
        const P& p = m.points[n];
        if (std::fabs(normal.X * p.X + normal.Y * p.Y + normal.Z * p.Z + d) > tolerance) return false;
    }
    return true;
}

/// The number of nodes that have gone.
inline int DecimateNodes(PIN& m, double tolerance) {
    VisitorOf<PIN> nobody;
    KM::Compact(m, nobody);
    int gone = 0;
    for (int n = 0; n < static_cast<int>(m.points.size()); ++n) {
        if (!MayGo(m, n, tolerance) || !Plain::RemoveNode(m, n)) continue;
        ++gone;
        --n;
    }
    KM::Compact(m, nobody);
    return gone;
}

inline double Area(const P& a, const P& b, const P& c) {
    return std::fabs((b.X - a.X) * (c.Y - a.Y) - (b.Y - a.Y) * (c.X - a.X)) / 2.0;
}

inline bool MaySwap(const PIN& m, int e, double tolerance, double ratio) {
    const Around at(m, e);
    const P A = m.points[at.A], B = m.points[at.B], C = m.points[at.C], D = m.points[at.D];
    const P ab = B - A, cd = D - C, ca = A - C;
    const double det = Dot(ab, ab) * Dot(cd, cd) - Dot(ab, cd) * Dot(ab, cd);
    const double s = (Dot(ab, cd) * Dot(cd, ca) - Dot(cd, cd) * Dot(ab, ca)) / det;
    const double u = (Dot(ab, ab) * Dot(cd, ca) - Dot(ab, cd) * Dot(ab, ca)) / det;
    if (!(Norm(ab) * ratio > Norm(cd))) return false;
    if (!(Norm(cd) < tolerance * 100 && Norm(ab) < tolerance * 100))
        if (!(u < 0.02 || u > 0.98)) return false;
    if (!(u > -0.05 && u < 1.05 && s > -0.05 && s < 1.05)) return false;
    const double T1 = Area(A, B, C), T2 = Area(A, B, D), T3 = Area(A, C, D), T4 = Area(B, C, D);
    if (!(std::min(T3, T4) / std::max(T3, T4) > std::min(T1, T2) / std::max(T1, T2))) return false;
    const P X = A + ab * s, Y = C + cd * u;
    return Norm(X - Y) < tolerance + tolerance;
}

/// The number of swaps.
inline int SwapEdges(PIN& m, double tolerance, double ratio) {
    int all = 0;
    for (int round = 0; round < 5; ++round) {
        int swaps = 0;
        for (int e = 0; e < EdgeCount(m); ++e) {
            if (m.edges[e].TE == -1 || e >= m.edges[e].TE || !MaySwap(m, e, tolerance, ratio)) continue;
            ++swaps;
            Plain::SwapEdge(m, e);
        }
        all += swaps;
        if (swaps < 2) break;
    }
    return all;
}

/// The number of triangles that have gone.
inline int Decimate(PIN& m, double tolerance) {
    int gone = 0;
    for (int e = 0; e < EdgeCount(m); ++e) {
        if (m.edges[e].NE == -1 || m.edges[e].TE == -1 || m.edges[m.edges[e].TE].P0 != m.edges[e].P0) continue;
        const int ne = m.edges[e].NE, pe = Plain::PrevEdge(m, e);
        for (const int x : {e, ne, pe})
            if (m.edges[x].TE != -1) m.edges[m.edges[x].TE].TE = -1;
        m.edges[e] = m.edges[ne] = m.edges[pe] = Edge();
        ++gone;
    }
    VisitorOf<PIN> nobody;
    KM::Compact(m, nobody);
    for (int i = 0; i < 3; ++i) Plain::SwapEdges(m, tolerance, 0.9);
    return gone;
}

/// The text that is logged, or an empty one.
inline std::string Keep(PIN& m, int count) {
    const std::vector<std::vector<int>> solids = PlainSolids(m);
    std::vector<std::pair<int, int>> sizes;
    for (std::size_t i = 0; i < solids.size(); ++i)
        sizes.emplace_back(static_cast<int>(solids[i].size()), static_cast<int>(i));
    std::sort(sizes.begin(), sizes.end());
    const auto erase = [&](std::size_t rank) {
        for (const int e : solids[static_cast<std::size_t>(sizes[rank].second)]) m.edges[e] = Edge();
    };
    long keep = -1;
    if (count == -1) {
        for (std::size_t rank = 0; rank < sizes.size(); ++rank) {
            if (static_cast<unsigned>(sizes[rank].first) >= m.edges.size() / 20) continue;
            erase(rank);
            if (keep == -1) keep = static_cast<long>(rank) + 1;
        }
    } else {
        keep = static_cast<long>(std::min<std::size_t>(static_cast<unsigned>(count), solids.size()));
        for (std::size_t rank = 0; rank < solids.size() - static_cast<std::size_t>(keep); ++rank) erase(rank);
    }
    VisitorOf<PIN> nobody;
    KM::Compact(m, nobody);
    if (keep < 0) return "";
    return "Keep will erase: " + std::to_string(static_cast<long>(solids.size()) - keep) +
           " and will keep: " + std::to_string(keep) + " solids;";
}

}  // namespace KM::Test::Plain
