#include "Mesh/Algorithms/CutTriangles.h"

#include <cstddef>
#include <memory>

#include "Mesh/Core/SafeLinks.h"
#include "Mesh/Editing/EdgeSplits.h"

namespace KM {

void CutTriangles::Split() {
    if (splits_.empty()) edges_.clear();
    if (edges_.empty()) return;
    CopyTriangles();
    for (const SplitAt& split : splits_) SplitEdge(strip_, split.edge, split.at);
}

void CutTriangles::CopyTriangles() {
    // Written and read for edges of the strip alone, so most of it never gets any memory.
    const auto ownNumber = std::make_unique_for_overwrite<int[]>(mesh_.edges.size());
    for (std::size_t k = 0; k < edges_.size(); ++k) ownNumber[edges_[k]] = static_cast<int>(k);

    std::vector<int> ownNode(mesh_.points.size(), -1);
    strip_.edges.reserve(edges_.size() + 6 * splits_.size());
    for (const int e : edges_) {
        const Edge& edge = mesh_.edges[e];
        if (ownNode[edge.P0] == -1) {
            ownNode[edge.P0] = static_cast<int>(nodes_.size());
            nodes_.push_back(edge.P0);
            strip_.points.push_back(mesh_.points[edge.P0]);
        }
        strip_.edges.push_back({ownNumber[edge.NE], -1, ownNode[edge.P0]});
    }
    for (SplitAt& split : splits_) {
        const int twin = mesh_.edges[split.edge].TE;
        split.edge = ownNumber[split.edge];
        if (!IsEdge(mesh_, twin)) continue;
        strip_.edges[split.edge].TE = ownNumber[twin];
        strip_.edges[ownNumber[twin]].TE = split.edge;
    }
}

Edge CutTriangles::Record(int edge) const {
    const Edge& own = strip_.edges[edge];
    int twin = own.TE != -1 ? EdgeNumber(own.TE) : -1;
    if (static_cast<std::size_t>(edge) < edges_.size()) {
        // Splits change no twin of an edge that was there before, and most of these twins are not in the strip.
        twin = mesh_.edges[edges_[edge]].TE;
        if (!IsEdge(mesh_, twin)) twin = -1;
    }
    return {EdgeNumber(own.NE), twin, NodeNumber(own.P0)};
}

}  // namespace KM
