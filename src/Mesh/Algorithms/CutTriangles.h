#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// Splits edges of a mesh that stays as it is. What changes is a narrow strip of triangles: they are copied into a small
/// mesh, split there, and looked up as if the whole mesh had been copied and split. Nodes and edges that are new have the
/// numbers behind those of the mesh.
class CutTriangles {
public:
    explicit CutTriangles(const PIN& mesh) : mesh_(mesh) {}

    /// Takes an edge of a triangle that will change. To be called with ascending numbers, for all three edges of each
    /// triangle with an edge to split.
    void AddEdge(int edge) { edges_.push_back(edge); }

    /// Remembers to split an edge; not its twin as well. The twin has to be a true one, on another triangle.
    void AddSplit(int edge, const TPoint<double>& at) { splits_.push_back({edge, at}); }

    int SplitCount() const { return static_cast<int>(splits_.size()); }

    /// Splits all edges in the order in which they were added.
    void Split();

    // From here on: after the splits.

    /// The strip, in numbers of its own: the edges that were added, then the new ones.
    const PIN& Strip() const { return strip_; }
    int EdgeCount() const { return static_cast<int>(strip_.edges.size()); }
    int NewEdgeCount() const { return EdgeCount() - static_cast<int>(edges_.size()); }

    /// From a number in the strip to one in the whole mesh.
    int EdgeNumber(int edge) const { return Number(edges_, edge, mesh_.edges.size()); }
    int NodeNumber(int node) const { return Number(nodes_, node, mesh_.points.size()); }

    /// The record of the strip's edge, with all numbers of the whole mesh.
    Edge Record(int edge) const;

    /// Calls `old(number)` for each edge of the whole mesh that has not changed, and `changed(number in the strip)` for the
    /// others, in the order of their numbers in the whole mesh.
    template <class Old, class Changed>
    void ForEachEdge(Old old, Changed changed) const {
        int number = 0;
        for (int k = 0; k < static_cast<int>(edges_.size()); ++k, ++number) {
            for (; number < edges_[k]; ++number) old(number);
            changed(k);
        }
        for (; number < static_cast<int>(mesh_.edges.size()); ++number) old(number);
        for (int k = static_cast<int>(edges_.size()); k < EdgeCount(); ++k) changed(k);
    }

private:
    struct SplitAt {
        int edge;
        TPoint<double> at;
    };

    static int Number(const std::vector<int>& old, int own, std::size_t base) {
        const std::size_t k = static_cast<std::size_t>(own);
        return k < old.size() ? old[k] : static_cast<int>(base + k - old.size());
    }

    void CopyTriangles();

    const PIN& mesh_;
    std::vector<int> edges_;  // by edge of the strip
    std::vector<int> nodes_;  // by node of the strip
    std::vector<SplitAt> splits_;
    PIN strip_;
};

}  // namespace KM
