#pragma once

#include <cmath>
#include <vector>

#include "Mesh/Editing/PlainEdits.h"

// Refinement in its plainest form: lists, and walks round each loop for each cut. It checks nothing.

namespace KM::Test::Plain {

inline double SquaredLength(const P& a, const P& b) {
    const double x = b.X - a.X;
    const double y = b.Y - a.Y;
    const double z = b.Z - a.Z;
    return x * x + y * y + z * z;
}

inline int LengthOfLoop(const PIN& m, int edge) {
    int count = 0;
    int e = edge;
    do {
        e = m.edges[e].NE;
        ++count;
    } while (e != edge);
    return count;
}

inline void CutOff(PIN& m, int a, double L2, std::vector<int>& N) {
    const int b = m.edges[m.edges[a].NE].NE;
    if (SquaredLength(m.points[m.edges[a].P0], m.points[m.edges[b].P0]) > L2) N.push_back(EdgeCount(m));
    Plain::SplitLoop(m, a, b);
}

inline void RepairLoop(PIN& m, int f, double L2, std::vector<int>& N) {
    if (LengthOfLoop(m, f) == 6) {
        const int a = m.edges[f].NE;
        const int g = m.edges[m.edges[m.edges[a].NE].NE].NE;
        CutOff(m, a, L2, N);
        f = g;
    }
    while (LengthOfLoop(m, f) > 3) CutOff(m, m.edges[f].NE, L2, N);
}

/// @return  the number of rounds
inline int Refine(PIN& m, double maxLength) {
    const double L2 = maxLength * maxLength;
    std::vector<int> Q;
    for (int e = 0; e < EdgeCount(m); ++e) {
        if (m.edges[e].NE == -1 || (m.edges[e].TE != -1 && e >= m.edges[e].TE)) continue;
        if (SquaredLength(m.points[m.edges[e].P0], m.points[m.edges[m.edges[e].NE].P0]) > L2) Q.push_back(e);
    }
    int rounds = 0;
    for (; !Q.empty(); ++rounds) {
        std::vector<int> T, N;
        for (const int e : Q) {
            const P A = m.points[m.edges[e].P0];
            const P B = m.points[m.edges[m.edges[e].NE].P0];
            const P M((A.X + B.X) / 2, (A.Y + B.Y) / 2, (A.Z + B.Z) / 2);
            if (m.edges[e].TE != -1) T.push_back(m.edges[e].TE);
            if (SquaredLength(A, M) > L2) {
                N.push_back(e);
                N.push_back(EdgeCount(m));
            }
            m.points.push_back(M);
            m.p2e.push_back(-1);
            Plain::SplitEdge2(m, e, static_cast<int>(m.points.size()) - 1);
        }
        Q.insert(Q.end(), T.begin(), T.end());
        for (const int f : Q) RepairLoop(m, f, L2, N);
        Q = N;
    }
    return rounds;
}

inline void SampleEdge(PIN& m, int edge, double step) {
    const P A = m.points[m.edges[edge].P0];
    const P B = m.points[m.edges[m.edges[edge].NE].P0];
    const int n = static_cast<int>(std::ceil(std::sqrt(SquaredLength(A, B)) / step));
    for (int k = 1; k < n; ++k) {
        m.points.push_back({A.X + (B.X - A.X) * k / n, A.Y + (B.Y - A.Y) * k / n, A.Z + (B.Z - A.Z) * k / n});
        m.p2e.push_back(-1);
        edge = Plain::SplitEdge2(m, edge, static_cast<int>(m.points.size()) - 1);
    }
}

}  // namespace KM::Test::Plain
