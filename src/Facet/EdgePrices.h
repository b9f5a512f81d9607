#pragma once

#include <vector>

#include "Facet/CollapseQueue.h"
#include "Facet/Quadric.h"
#include "Mesh/Core/Pin.h"

namespace KM {

/// What it costs to collapse each edge: the squared distance of the surviving node from all planes that the removed
/// node stands for. Keeps the queue of a mesh up to date.
class EdgePrices {
public:
    /// Takes the planes of all triangles and of all boundary edges, prices all edges and fills the queue.
    EdgePrices(const PIN& mesh, CollapseQueue& queue);

    /// The survivor takes over the planes of the removed node.
    void Merge(int removed, int survivor) { quadrics_[survivor].Add(quadrics_[removed]); }

    /// Prices a half-edge anew and moves it, or its twin if that is cheaper, into its bucket. With `force` the twin is
    /// priced anew too, for when its far end has changed.
    void Reprice(int edge, bool force);

private:
    void AddTrianglePlanes();
    void AddBoundaryPlanes();
    void PriceAll();
    void FillQueue();

    /// The price of moving `from` onto `to`.
    double Price(int from, int to) const { return quadrics_[from].At(mesh_.points[to]); }

    const PIN& mesh_;
    CollapseQueue& queue_;
    std::vector<Quadric> quadrics_;
};

}  // namespace KM
