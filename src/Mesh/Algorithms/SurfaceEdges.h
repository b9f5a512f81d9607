#pragma once

#include <cstdint>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// The triangles of a mesh as seen from their undirected edges. Each of these goes by its canonical edge: the lower one
/// of the pair, or the only one. What is unsound in the mesh is not seen: a face that is no triangle between three nodes
/// is a hole, and a twin that does not run back along the edge is none.
class SurfaceEdges {
public:
    /// The mesh must live, and stay as it is, for as long as this object is used.
    explicit SurfaceEdges(const PIN& mesh);

    const PIN& Mesh() const { return mesh_; }
    std::size_t Count() const { return canonical_.size(); }

    /// The canonical edge of `e`, or -1 if `e` is no edge of a triangle.
    std::int32_t Canonical(std::int32_t e) const {
        return static_cast<std::size_t>(e) < canonical_.size() ? canonical_[e] : -1;
    }

    /// The other edge of a pair, or -1 at the border.
    std::int32_t Twin(std::int32_t canonical) const {
        const std::int32_t twin = mesh_.edges[canonical].TE;
        return twin != canonical && Canonical(twin) == canonical ? twin : -1;
    }

    /// Of a canonical edge.
    double Length(std::int32_t canonical) const { return length_[canonical]; }
    /// Of all edges; 0 without any. A length that is no number is left out.
    double LongestLength() const { return longest_; }

    std::int32_t Next(std::int32_t e) const { return mesh_.edges[e].NE; }
    std::int32_t Previous(std::int32_t e) const { return Next(Next(e)); }
    const TPoint<double>& Start(std::int32_t e) const { return mesh_.points[mesh_.edges[e].P0]; }
    const TPoint<double>& End(std::int32_t e) const { return Start(Next(e)); }

private:
    const PIN& mesh_;
    std::vector<std::int32_t> canonical_;
    std::vector<double> length_;  // at canonical edges
    double longest_ = 0.0;
};

}  // namespace KM
