#include "Mesh/Editing/EdgeSwap.h"

#include "Mesh/Editing/Surroundings.h"

namespace KM {

void SwapEdge(PIN& mesh, int e) {
    const auto at = TrianglesAt(mesh, e);
    if (!at) return;
    auto& edges = mesh.edges;
    const auto [t, tn, tp] = at->other;
    const int ne = at->own.ne;
    const int pe = at->own.pe;
    const int A = edges[e].P0;
    const int B = edges[ne].P0;
    const int C = edges[pe].P0;
    const int D = edges[tp].P0;

    edges[ne].NE = t;
    edges[pe].NE = tn;
    edges[e].NE = pe;
    edges[tn].NE = e;
    edges[tp].NE = ne;
    edges[t].NE = tp;

    edges[e].P0 = D;
    edges[t].P0 = C;

    NameNodeEdge(mesh, C, pe);
    NameNodeEdge(mesh, B, ne);
    NameNodeEdge(mesh, D, tp);
    NameNodeEdge(mesh, A, tn);
}

}  // namespace KM
