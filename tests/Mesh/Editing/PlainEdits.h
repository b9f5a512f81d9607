#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "Mesh/Core/PlainBuild.h"

// The edits in their plainest form: each table of new records as it stands, each link written where the rule names it, and
// nothing checked. The standard that the library is compared with, bit for bit.

namespace KM::Test::Plain {

using P = TPoint<double>;

inline int EdgeCount(const PIN& mesh) { return static_cast<int>(mesh.edges.size()); }

/// An edge with all that lies round it.
struct Around {
    Around(const PIN& m, int edge) : e(edge), ne(m.edges[e].NE), pe(Plain::PrevEdge(m, e)), t(m.edges[e].TE) {
        A = m.edges[e].P0;
        B = m.edges[ne].P0;
        C = m.edges[pe].P0;
        if (t == -1) return;
        tn = m.edges[t].NE;
        tp = Plain::PrevEdge(m, t);
        D = m.edges[tp].P0;
    }
    int e, ne, pe, t, tn = -1, tp = -1;
    int A, B, C, D = -1;
};

inline void SplitEdge(PIN& m, int e, const P& pos) {
    const Around x(m, e);
    const int base = EdgeCount(m);
    const int M = static_cast<int>(m.points.size());
    m.points.push_back(pos);
    m.p2e.push_back(base);
    m.edges.push_back({x.ne, x.t == -1 ? -1 : base + 3, M});
    m.edges.push_back({x.pe, base + 2, M});
    m.edges.push_back({base, base + 1, x.C});
    m.edges[e].NE = base + 1;
    m.edges[x.ne].NE = base + 2;
    if (x.t == -1) return;
    m.edges.push_back({base + 5, base, x.B});
    m.edges.push_back({x.t, base + 5, x.D});
    m.edges.push_back({x.tp, base + 4, M});
    m.edges[x.t].P0 = M;
    m.edges[x.tn].NE = base + 4;
    m.edges[x.tp].NE = base + 3;
    if (m.p2e[x.B] == x.t) m.p2e[x.B] = base + 3;
    m.p2e[M] = x.t;
}

inline int SplitEdge2(PIN& m, int e, int node) {
    const Around x(m, e);
    const int base = EdgeCount(m);
    m.p2e[node] = base;
    m.edges[e].NE = base;
    m.edges.push_back({x.ne, x.t, node});
    if (x.t == -1) return base;
    m.edges[e].TE = base + 1;
    m.edges[x.t].NE = base + 1;
    m.edges[x.t].TE = base;
    m.edges.push_back({x.tn, e, node});
    return base;
}

inline int AddAlong(PIN& m, int e, int node) {
    const Around x(m, e);
    const int n1 = EdgeCount(m);
    if (x.t != -1) m.p2e[x.B] = x.ne;
    m.edges.push_back({x.ne, -1, node});
    m.edges[e].NE = n1;
    if (x.t == -1) return n1;
    m.edges[n1].TE = EdgeCount(m);
    m.edges[x.t].P0 = node;
    m.edges.push_back({x.t, n1, x.B});
    m.edges[x.tp].NE = EdgeCount(m) - 1;
    return n1;
}

inline void SplitFace(PIN& m, int e, const P& pos) {
    const Around x(m, e);
    const int base = EdgeCount(m);
    const int M = static_cast<int>(m.points.size());
    m.points.push_back(pos);
    m.p2e.push_back(base + 1);
    m.edges.push_back({base + 5, base + 1, x.B});
    m.edges.push_back({x.ne, base, M});
    m.edges.push_back({base + 1, base + 3, x.C});
    m.edges.push_back({x.pe, base + 2, M});
    m.edges.push_back({base + 3, base + 5, x.A});
    m.edges.push_back({e, base + 4, M});
    m.edges[e].NE = base;
    m.edges[x.ne].NE = base + 2;
    m.edges[x.pe].NE = base + 4;
}

inline void SwapEdge(PIN& m, int e) {
    const Around x(m, e);
    if (x.t == -1) return;
    m.edges[x.ne].NE = x.t;
    m.edges[x.pe].NE = x.tn;
    m.edges[x.e].NE = x.pe;
    m.edges[x.tn].NE = x.e;
    m.edges[x.tp].NE = x.ne;
    m.edges[x.t].NE = x.tp;
    m.edges[x.e].P0 = x.D;
    m.edges[x.t].P0 = x.C;
    if (m.p2e.empty()) return;
    m.p2e[x.C] = x.pe;
    m.p2e[x.B] = x.ne;
    m.p2e[x.D] = x.tp;
    m.p2e[x.A] = x.tn;
}

inline int SplitLoop(PIN& m, int e1, int e2) {
    const int p1 = Plain::PrevEdge(m, e1);
    const int p2 = Plain::PrevEdge(m, e2);
    const int f1 = EdgeCount(m);
    const int f2 = f1 + 1;
    m.edges.push_back({e1, f2, m.edges[e2].P0});
    m.edges.push_back({e2, f1, m.edges[e1].P0});
    m.edges[p2].NE = f1;
    m.edges[p1].NE = f2;
    return f2;
}

inline int AddTriangleOrphanEdge(PIN& m, int e, int node) {
    const Around x(m, e);
    const int base = EdgeCount(m);
    m.p2e[node] = base + 2;
    m.edges.push_back({base + 1, e, x.B});
    m.edges.push_back({base + 2, -1, x.A});
    m.edges.push_back({base, -1, node});
    m.edges[e].TE = base;
    return base;
}

inline int AddTriangleWith2Edges(PIN& m, int e1, int e2) {
    const Around x(m, e1);
    const int C = m.edges[m.edges[e2].NE].P0;
    const int base = EdgeCount(m);
    m.p2e[C] = base + 2;
    m.p2e[x.B] = base;
    m.edges.push_back({base + 1, e2, C});
    m.edges.push_back({base + 2, e1, x.B});
    m.edges.push_back({base, -1, x.A});
    m.edges[e1].TE = base + 1;
    m.edges[e2].TE = base;
    return base + 2;
}

inline int StartingEdge(const PIN& m, int s) {
    if (s == -1) return -1;
    int t = m.edges[Plain::PrevEdge(m, s)].TE;
    if (t == -1) return s;
    int best = t;
    while (t != -1 && t != s) {
        best = t;
        t = m.edges[Plain::PrevEdge(m, t)].TE;
    }
    return best;
}

/// The fan of an edge, in forward rotation from its starting edge.
inline std::vector<int> Fan(const PIN& m, int edge) {
    std::vector<int> fan;
    const int first = Plain::StartingEdge(m, edge);
    for (int x = first; x != -1;) {
        fan.push_back(x);
        const int t = m.edges[x].TE;
        x = t == -1 ? -1 : m.edges[t].NE;
        if (x == first) break;
    }
    return fan;
}

inline void MoveNode(PIN& m, int from, int to, VisitorOf<PIN>& visitor) {
    if (from == to) return;
    visitor.MoveNode(m.points[to], from, to);
    m.points[to] = m.points[from];
    m.p2e[to] = Plain::StartingEdge(m, m.p2e[from]);
    for (const int x : Fan(m, m.p2e[from])) {
        visitor.SetP0(x, m.edges[x].P0, to);
        m.edges[x].P0 = to;
    }
}

inline void CompactNode(PIN& m, int n, VisitorOf<PIN>& visitor) {
    while (!m.p2e.empty() && m.p2e.back() == -1) {
        m.points.pop_back();
        m.p2e.pop_back();
    }
    if (n >= static_cast<int>(m.points.size())) return;
    Plain::MoveNode(m, static_cast<int>(m.points.size()) - 1, n, visitor);
    m.points.pop_back();
    m.p2e.pop_back();
}

inline double RingAngle(const PIN& m, int si, int sj) {
    const auto start = [&](int e) { return m.points[m.edges[e].P0]; };
    const P u = start(m.edges[si].NE) - start(m.edges[m.edges[si].NE].NE);
    const P v = start(m.edges[m.edges[sj].NE].NE) - start(m.edges[sj].NE);
    const double dot = u.X * v.X + u.Y * v.Y + u.Z * v.Z;
    const double lu = std::sqrt(u.X * u.X + u.Y * u.Y + u.Z * u.Z);
    const double lv = std::sqrt(v.X * v.X + v.Y * v.Y + v.Z * v.Z);
    if (!(lu > 1e-8 && lv > 1e-8)) return dot > 0.0 ? 0.0 : 3.14159265358979323846;
    double cosine = dot / (lu * lv);
    if (cosine < -0.99999999) cosine = -0.99999999;
    if (cosine > 0.99999999) cosine = 0.99999999;
    return std::acos(cosine);
}

/// The ring a[0] .. a[n - 1] as triangles.
inline void FillRing(PIN& m, const std::vector<int>& a) {
    const int n = static_cast<int>(a.size());
    const auto name = [&](int k) { m.p2e[m.edges[a[k]].P0] = a[k]; };
    const int apex = m.edges[a[0]].P0;
    m.edges[a[0]].NE = a[1];
    name(0);
    name(1);
    if (n == 3) {
        m.edges[a[1]].NE = a[2];
        m.edges[a[2]].NE = a[0];
        name(2);
        return;
    }
    int c = EdgeCount(m);
    m.edges[a[1]].NE = c;
    m.edges.push_back({a[0], c + 1, m.edges[a[2]].P0});
    for (int k = 2; k <= n - 3; ++k) {
        c = EdgeCount(m);
        m.edges.push_back({a[k], c - 1, apex});
        m.edges[a[k]].NE = c + 1;
        m.edges.push_back({c, c + 2, m.edges[a[k + 1]].P0});
        name(k);
    }
    m.edges[a[n - 2]].NE = a[n - 1];
    m.edges.push_back({a[n - 2], EdgeCount(m) - 1, apex});
    m.edges[a[n - 1]].NE = EdgeCount(m) - 1;
    name(n - 1);
}

inline bool RemoveNode(PIN& m, int node) {
    std::vector<int> S = Fan(m, m.p2e[node]);
    std::reverse(S.begin(), S.end());
    const int n = static_cast<int>(S.size());
    if (n < 3) return false;
    int first = 0;
    double best = 1e10;
    for (int i = 0; i < n; ++i) {
        const double angle = RingAngle(m, S[i], S[(i + 1) % n]);
        if (angle < best) {
            best = angle;
            first = i;
        }
    }
    std::rotate(S.begin(), S.begin() + first, S.end());
    std::vector<int> a, b, all;
    for (const int s : S) {
        a.push_back(m.edges[s].NE);
        b.push_back(Plain::PrevEdge(m, s));
        if (m.edges[s].TE == -1 || m.edges[b.back()].TE == -1 || m.edges[s].P0 != node) return false;
        all.insert(all.end(), {s, a.back(), b.back()});
    }
    std::sort(all.begin(), all.end());
    if (std::adjacent_find(all.begin(), all.end()) != all.end()) return false;
    FillRing(m, a);
    VisitorOf<PIN> nobody;
    for (int k = 0; k < n; ++k) m.edges[S[k]] = m.edges[b[k]] = Edge();
    for (int k = 0; k < n; ++k) {
        Plain::CompactEdge(m, S[k], nobody);
        Plain::CompactEdge(m, b[k], nobody);
    }
    Plain::CompactNode(m, node, nobody);
    return true;
}

inline bool IsTriangle(const PIN& m, int e) { return m.edges[m.edges[m.edges[e].NE].NE].NE == e; }

inline void RemoveEdge(PIN& m, int e, const P& pos) {
    const Around x(m, e);
    const int nt = m.edges[x.ne].TE;
    const int pt = m.edges[x.pe].TE;
    const int tnt = x.t == -1 ? -1 : m.edges[x.tn].TE;
    const int tpt = x.t == -1 ? -1 : m.edges[x.tp].TE;
    for (const int f : Fan(m, x.ne)) m.edges[f].P0 = x.A;
    m.points[x.A] = pos;
    m.points[x.B] = P(-1e20, -1e20, -1e20);
    if (IsTriangle(m, e)) {
        if (nt != -1) m.edges[nt].TE = pt;
        if (pt != -1) m.edges[pt].TE = nt;
        if (pt != -1 && !m.p2e.empty()) m.p2e[x.A] = pt;
        m.edges[e] = m.edges[x.ne] = m.edges[x.pe] = Edge();
    } else {
        m.edges[x.pe].NE = x.ne;
        m.edges[e] = Edge();
        if (!m.p2e.empty()) m.p2e[x.A] = x.ne;
    }
    if (x.t == -1) return;
    if (!IsTriangle(m, x.t)) {
        m.edges[x.tp].NE = x.tn;
        m.edges[x.t] = Edge();
        if (!m.p2e.empty()) m.p2e[x.A] = x.tn;
    } else {
        if (tnt != -1) m.edges[tnt].TE = tpt;
        if (tpt != -1) m.edges[tpt].TE = tnt;
        if (tpt != -1 && !m.p2e.empty()) m.p2e[x.A] = tpt;
        m.edges[x.t] = m.edges[x.tn] = m.edges[x.tp] = Edge();
    }
}

inline void DeleteLoop(PIN& m, int e) {
    m.p2e.clear();
    for (int x = e; m.edges[x].NE != -1;) {
        if (m.edges[x].TE != -1) m.edges[m.edges[x].TE].TE = -1;
        const int next = m.edges[x].NE;
        m.edges[x] = Edge();
        x = next;
    }
}

inline void RemovePoint(PIN& m, int node, bool scanAll) {
    if (scanAll) {
        for (int e = 0; e < EdgeCount(m); ++e)
            if (m.edges[e].NE != -1 && m.edges[e].P0 == node) Plain::DeleteLoop(m, e);
    } else {
        for (int x = m.p2e[node]; x != -1;) {
            const int t = m.edges[x].TE;
            const int next = t == -1 ? -1 : m.edges[t].NE;
            Plain::DeleteLoop(m, x);
            x = next;
        }
    }
    while (!m.p2e.empty() && m.p2e.back() == -1) {
        m.p2e.pop_back();
        m.points.pop_back();
    }
    while (!m.edges.empty() && m.edges.back().NE == -1) m.edges.pop_back();
}

}  // namespace KM::Test::Plain
