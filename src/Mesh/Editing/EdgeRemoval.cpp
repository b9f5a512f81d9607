#include "Mesh/Editing/EdgeRemoval.h"

#include "Mesh/Core/FanWalk.h"
#include "Mesh/Editing/Surroundings.h"

namespace KM {
namespace {

constexpr double Corpse = -1e20;

/// One side of the edge, with the edges beyond its neighbours, as all stand before the first change.
struct Side {
    Surroundings at;
    int nt;
    int pt;
};

Side SideOf(const PIN& mesh, const Surroundings& at) { return {at, mesh.edges[at.ne].TE, mesh.edges[at.pe].TE}; }

bool IsEdgeOrNone(const PIN& mesh, int e) { return e == -1 || IsEdge(mesh, e); }

bool IsUsable(const PIN& mesh, const Side& side) { return IsEdgeOrNone(mesh, side.nt) && IsEdgeOrNone(mesh, side.pt); }

/// Makes twins of the two edges beyond the triangle; one that is alone becomes an orphan.
void CloseTriangle(PIN& mesh, const Side& side, int keep) {
    const auto& [e, ne, pe] = side.at;
    if (side.nt != -1) mesh.edges[side.nt].TE = side.pt;
    if (side.pt != -1) {
        mesh.edges[side.pt].TE = side.nt;
        NameNodeEdge(mesh, keep, side.pt);
    }
    for (const int edge : {e, ne, pe}) mesh.edges[edge] = Edge();
}

/// Takes the edge out of its loop.
void ShortenLoop(PIN& mesh, const Side& side, int keep) {
    const auto& [e, ne, pe] = side.at;
    mesh.edges[pe].NE = ne;
    mesh.edges[e] = Edge();
    NameNodeEdge(mesh, keep, ne);
}

void CloseSide(PIN& mesh, const Side& side, int keep) {
    if (ThirdOfTriangle(mesh, side.at.e) != -1) CloseTriangle(mesh, side, keep);
    else ShortenLoop(mesh, side, keep);
}

void MergeNodes(PIN& mesh, int keep, int gone, int edgeOfGone, const TPoint<double>& pos) {
    for (const int e : FanWalk<PIN>::Through(mesh, edgeOfGone)) mesh.edges[e].P0 = keep;
    mesh.points[keep] = pos;
    mesh.points[gone] = TPoint<double>(Corpse, Corpse, Corpse);
}

}  // namespace

void RemoveEdge(PIN& mesh, int e, const TPoint<double>& pos) {
    const auto own = OnLoop(mesh, e);
    if (!own) return;
    const int keep = mesh.edges[e].P0;
    const int gone = mesh.edges[own->ne].P0;
    const Side near = SideOf(mesh, *own);
    if (!IsNode(mesh, keep) || !IsNode(mesh, gone) || !IsUsable(mesh, near)) return;

    if (IsOrphan(mesh, e)) {
        MergeNodes(mesh, keep, gone, own->ne, pos);
        CloseSide(mesh, near, keep);
        return;
    }
    const int t = mesh.edges[e].TE;
    const auto other = OnLoop(mesh, t);
    // Between an edge and a twin that follows it on the loop there is no face to close.
    if (!other || own->Has(t)) return;
    const Side far = SideOf(mesh, *other);
    if (!IsUsable(mesh, far)) return;
    MergeNodes(mesh, keep, gone, own->ne, pos);
    CloseSide(mesh, near, keep);
    CloseSide(mesh, far, keep);
}

}  // namespace KM
