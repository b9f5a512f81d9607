#pragma once

#include <cstddef>
#include <vector>

#include "Mesh/Editing/Surroundings.h"

namespace KM {

/// Takes out one node after another, as `RemoveNode` does, without taking memory for each.
class NodeRemover {
public:
    explicit NodeRemover(PIN& mesh) : mesh_(mesh) {}

    /// @param fan  the faces round the node, in the order of `AllStartingEdges`, with nodes that exist; is turned
    bool Remove(int node, std::vector<Surroundings>& fan);

private:
    using Fan = std::vector<Surroundings>;

    std::ptrdiff_t SharpestCorner(const Fan& fan) const;
    bool IsClosed(int node, const Fan& fan) const;
    bool AreTriangles(const Fan& fan) const;
    bool IsFolded(const Fan& fan);
    void FillRing(const Fan& fan);
    void Compact(int node, const Fan& fan);

    int Third(const Surroundings& face) const { return mesh_.edges[face.ne].NE; }
    int StartOf(int e) const { return mesh_.edges[e].P0; }
    const TPoint<double>& StartPoint(int e) const { return mesh_.points[StartOf(e)]; }

    PIN& mesh_;
    std::vector<int> faces_;
    std::vector<int> ring_;
};

}  // namespace KM
