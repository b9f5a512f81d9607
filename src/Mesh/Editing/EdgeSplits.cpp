#include "Mesh/Editing/EdgeSplits.h"

#include <cstddef>
#include <ostream>

#include "Geometry/Distances.h"
#include "Mesh/Editing/LoopChord.h"
#include "Mesh/Editing/Surroundings.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

int EdgeCount(const PIN& mesh) { return static_cast<int>(mesh.edges.size()); }

/// Appends a node with its edge. A `p2e` that is not as long as `points` would get the entry at another node's place.
int AppendNode(PIN& mesh, const TPoint<double>& pos, int edge) {
    if (mesh.p2e.size() == mesh.points.size()) mesh.p2e.push_back(edge);
    mesh.points.push_back(pos);
    return static_cast<int>(mesh.points.size()) - 1;
}

/// The new node M on e; `base` runs on from M to B, base + 1 and base + 2 are the pair between M and C.
void SplitOrphan(PIN& mesh, const Surroundings& own, const TPoint<double>& pos) {
    auto& edges = mesh.edges;
    const auto [e, ne, pe] = own;
    const int base = EdgeCount(mesh);
    const int C = edges[pe].P0;
    const int M = AppendNode(mesh, pos, base);

    edges.insert(edges.end(), {{ne, -1, M}, {pe, base + 2, M}, {base, base + 1, C}});
    edges[e].NE = base + 1;
    edges[ne].NE = base + 2;
}

/// As above on the side of e; base + 3 is the twin of `base`, base + 4 and base + 5 are the pair between D and M.
void SplitPair(PIN& mesh, const Diamond& at, const TPoint<double>& pos) {
    auto& edges = mesh.edges;
    const auto [e, ne, pe] = at.own;
    const auto [t, tn, tp] = at.other;
    const int base = EdgeCount(mesh);
    const int B = edges[ne].P0;
    const int C = edges[pe].P0;
    const int D = edges[tp].P0;
    const int M = AppendNode(mesh, pos, base);

    edges.insert(edges.end(), {{ne, base + 3, M},
                               {pe, base + 2, M},
                               {base, base + 1, C},
                               {base + 5, base, B},
                               {t, base + 5, D},
                               {tp, base + 4, M}});
    edges[t].P0 = M;
    edges[e].NE = base + 1;
    edges[ne].NE = base + 2;
    edges[tn].NE = base + 4;
    edges[tp].NE = base + 3;
    // B loses the edge t, and M keeps it rather than `base`.
    if (static_cast<std::size_t>(B) < mesh.p2e.size() && mesh.p2e[B] == t) mesh.p2e[B] = base + 3;
    NameNodeEdge(mesh, M, t);
}

bool AreNodesWithValues(const PIN& mesh, const std::vector<double>& values, int C, int D) {
    return IsNode(mesh, C) && IsNode(mesh, D) && static_cast<std::size_t>(C) < values.size() &&
           static_cast<std::size_t>(D) < values.size();
}

}  // namespace

void SplitEdge(PIN& mesh, int e, const TPoint<double>& pos) {
    const auto own = OnTriangle(mesh, e);
    if (!own) return;
    if (IsOrphan(mesh, e)) SplitOrphan(mesh, *own, pos);
    else if (const auto at = TrianglesAt(mesh, e)) SplitPair(mesh, *at, pos);
}

void SplitEdge(PIN& mesh, std::vector<double>& values, int e) {
    if (IsAliveEdge(mesh, e) && IsOrphan(mesh, e)) {
        Verbose::WriteMessage_1(Verbose::EMessageType::Error, "Try to insert on an orphan edge!");
        return;
    }
    const auto at = TrianglesAt(mesh, e);
    if (!at) return;
    const int a = mesh.edges[e].P0;
    const int b = mesh.edges[at->own.ne].P0;
    const int c = mesh.edges[at->own.pe].P0;
    const int d = mesh.edges[at->other.pe].P0;
    if (!IsNode(mesh, a) || !IsNode(mesh, b) || !AreNodesWithValues(mesh, values, c, d)) return;

    const TPoint<double> A = mesh.points[a];
    const TPoint<double> B = mesh.points[b];
    double t1 = 0.0;
    double t2 = 0.0;
    const double d1 = DistPtLn(A, B, mesh.points[c], t1, true);
    const double d2 = DistPtLn(A, B, mesh.points[d], t2, true);
    const double r = d1 / (d2 + d1);
    const TPoint<double> position = A + (B - A) * (t1 + (t2 - t1) * r);
    Application::Services::DumpStream() << "\n" << values[c] << ", " << values[d];
    values.push_back(values[c] + (values[d] - values[c]) * r);
    SplitEdge(mesh, e, position);
}

int SplitEdge2(PIN& mesh, int e, int node) {
    if (!IsAliveEdge(mesh, e) || !IsNode(mesh, node)) return -1;
    auto& edges = mesh.edges;
    const int base = EdgeCount(mesh);
    const auto [ne, t, A] = edges[e];
    if (!IsEdge(mesh, ne)) return -1;
    if (t == -1) {
        edges.push_back({ne, -1, node});
        edges[e].NE = base;
    } else {
        if (t == e || !IsAliveEdge(mesh, t)) return -1;
        edges.insert(edges.end(), {{ne, t, node}, {edges[t].NE, e, node}});
        edges[e] = {base, base + 1, A};
        edges[t] = {base + 1, base, edges[t].P0};
    }
    NameNodeEdge(mesh, node, base);
    return base;
}

int AddAlong(PIN& mesh, int e, int node) {
    if (!IsAliveEdge(mesh, e) || !IsNode(mesh, node)) return -1;
    auto& edges = mesh.edges;
    const int n1 = EdgeCount(mesh);
    const auto [ne, t, A] = edges[e];
    if (!IsEdge(mesh, ne)) return -1;
    if (t == -1) {
        edges.push_back({ne, -1, node});
        edges[e].NE = n1;
        return n1;
    }
    const auto other = OnLoop(mesh, t);
    if (!other || other->pe == e || t == e) return -1;
    const int n2 = n1 + 1;
    const int B = edges[ne].P0;
    edges.insert(edges.end(), {{ne, n2, node}, {t, n1, B}});
    edges[e].NE = n1;
    edges[t].P0 = node;
    edges[other->pe].NE = n2;
    NameNodeEdge(mesh, B, ne);
    return n1;
}

void SplitFace(PIN& mesh, int e, const TPoint<double>& pos) {
    const auto own = OnTriangle(mesh, e);
    if (!own) return;
    auto& edges = mesh.edges;
    const auto [ab, bc, ca] = *own;
    const int base = EdgeCount(mesh);
    const int A = edges[ab].P0;
    const int B = edges[bc].P0;
    const int C = edges[ca].P0;
    const int M = AppendNode(mesh, pos, base + 1);

    edges.insert(edges.end(), {{base + 5, base + 1, B},
                               {bc, base, M},
                               {base + 1, base + 3, C},
                               {ca, base + 2, M},
                               {base + 3, base + 5, A},
                               {ab, base + 4, M}});
    edges[ab].NE = base;
    edges[bc].NE = base + 2;
    edges[ca].NE = base + 4;
}

int SplitLoop(PIN& mesh, int e1, int e2) {
    const int p1 = PrevEdge(mesh, e1);
    const int p2 = PrevEdge(mesh, e2);
    if (e1 == e2 || p1 == -1 || p2 == -1) return -1;
    return AddChord(mesh, {e1, p1}, {e2, p2});
}

}  // namespace KM
