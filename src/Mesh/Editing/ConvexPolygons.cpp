#include "Mesh/Editing/ConvexPolygons.h"

#include <cstdint>
#include <numbers>

#include "Geometry/Planar.h"
#include "Geometry/Polygons.h"
#include "Geometry/Triangulation.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Core/FanWalk.h"
#include "Mesh/Core/PreviousEdges.h"
#include "Mesh/Editing/StartPoints.h"
#include "Mesh/Editing/Surroundings.h"

namespace KM {
namespace {

/// An edge and its twin, each on its loop.
struct Pair {
    Surroundings own;
    Surroundings other;

    bool IsRemovable() const { return own.pe != -1 && other.pe != -1 && !own.Has(other.e); }
};

/// True for an alive edge that has an alive twin, and the twin knows it.
bool HasTwin(const PIN& mesh, int e) {
    return IsAliveEdge(mesh, e) && IsAliveEdge(mesh, mesh.edges[e].TE) && mesh.edges[mesh.edges[e].TE].TE == e;
}

/// @param previousOf  gives the previous edge of one, or -1
template <class PreviousOf>
Pair PairAt(const PIN& mesh, int e, PreviousOf previousOf) {
    const int t = mesh.edges[e].TE;
    return {{e, mesh.edges[e].NE, previousOf(e)}, {t, mesh.edges[t].NE, previousOf(t)}};
}

void Remove(PIN& mesh, const Pair& pair) {
    const auto& [e, ne, pe] = pair.own;
    const auto& [t, nt, pt] = pair.other;
    mesh.edges[pe].NE = nt;
    mesh.edges[pt].NE = ne;
    NameNodeEdge(mesh, mesh.edges[ne].P0, ne);
    NameNodeEdge(mesh, mesh.edges[nt].P0, nt);
    mesh.edges[t] = mesh.edges[e] = Edge();
}

class ConvexMerge {
public:
    explicit ConvexMerge(PIN& mesh) : mesh_(mesh), previous_(mesh), isTried_(mesh.edges.size(), 0) {}

    /// One round: an edge that was tried is not tried again, so a second round would find nothing to do.
    void Run(int startEdge) {
        const auto count = static_cast<std::int64_t>(mesh_.edges.size());
        for (std::int64_t i = 0; i < count; ++i) Try(static_cast<int>((count + startEdge % count + i) % count));
    }

private:
    void Try(int e) {
        if (isTried_[e] || !HasTwin(mesh_, e)) return;
        isTried_[e] = isTried_[mesh_.edges[e].TE] = 1;
        const Pair pair = PairAt(mesh_, e, [this](int edge) { return previous_.Of(edge); });
        if (!pair.IsRemovable()) return;
        if (!IsConvex(pair.own.pe, pair.other.ne) || !IsConvex(pair.other.pe, pair.own.ne)) return;
        Remove(mesh_, pair);
        previous_.Join(pair.own.pe, pair.other.ne);
        previous_.Join(pair.other.pe, pair.own.ne);
    }

    /// True if a loop that came in along one edge and went out along another would not turn right.
    bool IsConvex(int in, int out) const {
        const int nodes[] = {mesh_.edges[in].P0, EndNode(mesh_, in), mesh_.edges[out].P0, EndNode(mesh_, out)};
        for (const int node : nodes)
            if (!IsNode(mesh_, node)) return false;
        const double back = DirectionInXY(mesh_.points[nodes[1]], mesh_.points[nodes[0]]);
        const double ahead = DirectionInXY(mesh_.points[nodes[2]], mesh_.points[nodes[3]]);
        return WayRound(back, ahead) >= std::numbers::pi;
    }

    PIN& mesh_;
    PreviousEdges<PIN> previous_;
    std::vector<char> isTried_;
};

/// The loops of a mesh as points, each from its lowest edge, in the order of these.
std::vector<std::vector<TPoint<double>>> Outlines(const PIN& mesh) {
    std::vector<std::vector<TPoint<double>>> outlines;
    std::vector<char> visited(mesh.edges.size(), 0);
    for (int e = 0; IsEdge(mesh, e); ++e) {
        if (visited[e] || IsDead(mesh.edges[e])) continue;
        const std::vector<int> loop = Loop(mesh, e);
        for (const int edge : loop) visited[edge] = 1;
        outlines.push_back(StartPoints(mesh, loop));
    }
    return outlines;
}

}  // namespace

void DeleteEdgeBetweenLoops(PIN& mesh, int e) {
    if (!HasTwin(mesh, e)) return;
    const Pair pair = PairAt(mesh, e, [&mesh](int edge) { return PrevEdge(mesh, edge); });
    if (pair.IsRemovable()) Remove(mesh, pair);
}

void ToConvexPolygons(PIN& mesh, int startEdge) { ConvexMerge(mesh).Run(startEdge); }

std::vector<std::vector<TPoint<double>>> ToConvexPolygons(const std::vector<TPoint<double>>& polygon) {
    if (PointsUtils::IsConvex(polygon)) return {polygon};
    std::vector<std::vector<int>> triangles;
    PointsUtils::TriangulateConcavePolygon(polygon, triangles);
    PIN mesh;
    AddTriangles_4(mesh, polygon, triangles);
    ToConvexPolygons(mesh, 0);
    return Outlines(mesh);
}

}  // namespace KM
