#include "Facet/EdgePrices.h"

#include "Facet/BoundaryNormal.h"

namespace KM {
namespace {

/// Weight of the plane that stands upright on a boundary edge, so that boundaries hardly move.
constexpr double BoundaryWeight = 10000.0;

}  // namespace

EdgePrices::EdgePrices(const PIN& mesh, CollapseQueue& queue)
    : mesh_(mesh), queue_(queue), quadrics_(mesh.points.size()) {
    AddTrianglePlanes();
    AddBoundaryPlanes();
    PriceAll();
    FillQueue();
}

void EdgePrices::AddTrianglePlanes() {
    for (std::size_t i = 0; i < mesh_.edges.size(); i += 3) {
        const Edge& first = mesh_.edges[i];
        const Edge& second = mesh_.edges[first.NE];
        const int nodes[3] = {first.P0, second.P0, mesh_.edges[second.NE].P0};
        const TPoint<double>& a = mesh_.points[nodes[0]];
        const TPoint<double> normal = SafeUnit(Cross(mesh_.points[nodes[1]] - a, mesh_.points[nodes[2]] - a));
        // Not weighted by area: a sliver across a fillet says as much about the surface as a large triangle.
        for (const int node : nodes) quadrics_[node].AddPlane(normal, a, 1.0);
    }
}

void EdgePrices::AddBoundaryPlanes() {
    for (int e = 0; e < static_cast<int>(mesh_.edges.size()); ++e) {
        const Edge& edge = mesh_.edges[e];
        if (edge.TE != -1) continue;
        const TPoint<double> normal = BoundaryNormal(mesh_, e);
        const TPoint<double>& start = mesh_.points[edge.P0];
        quadrics_[edge.P0].AddPlane(normal, start, BoundaryWeight);
        quadrics_[mesh_.edges[edge.NE].P0].AddPlane(normal, start, BoundaryWeight);
    }
}

void EdgePrices::PriceAll() {
    for (int e = 0; e < static_cast<int>(mesh_.edges.size()); ++e) {
        const int start = mesh_.edges[e].P0;
        const int end = mesh_.edges[mesh_.edges[e].NE].P0;
        double cost = Price(start, end);
        if (mesh_.edges[e].TE == -1) {
            const double back = Price(end, start);
            queue_.SetKeepsStart(e, cost > back);
            cost = (cost + back) * 0.5;
        }
        queue_.SetCost(e, cost);
    }
}

void EdgePrices::FillQueue() {
    for (int e = 0; e < static_cast<int>(mesh_.edges.size()); ++e) {
        const int twin = mesh_.edges[e].TE;
        // Of a pair only the cheaper half waits. Where both cost the same, neither does until a collapse nearby prices
        // them anew: on a flat patch that keeps the edges out which no collapse has yet shown to be worth it.
        if (twin == -1 || queue_.Cost(twin) > queue_.Cost(e)) queue_.Move(e, queue_.Cost(e));
    }
}

void EdgePrices::Reprice(int edge, bool force) {
    const int start = mesh_.edges[edge].P0;
    const int end = mesh_.edges[mesh_.edges[edge].NE].P0;
    const int twin = mesh_.edges[edge].TE;
    const double own = Price(start, end);
    if (twin == -1) {
        const double back = Price(end, start);
        queue_.SetKeepsStart(edge, own > back);
        const double cost = (own + back) * 0.5;
        queue_.Move(edge, cost);
        queue_.SetCost(edge, cost);
        return;
    }

    const double back = force ? Price(end, start) : queue_.Cost(twin);
    if (back > own) {
        queue_.Remove(twin);
        queue_.Move(edge, own);
    } else {
        queue_.Remove(edge);
        queue_.Move(twin, back);
    }
    queue_.SetCost(edge, own);
    // On a mesh that has folded onto itself an edge can be its own twin; then this value is the one that stays.
    if (force) queue_.SetCost(twin, back);
}

}  // namespace KM
