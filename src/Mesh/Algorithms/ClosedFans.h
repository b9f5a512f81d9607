#pragma once

#include <cstddef>
#include <vector>

#include "CornerNormal.h"
#include "UnitVectors.h"

namespace KM {

/// Normals of nodes inside the surface, some hundreds at a time: nearly all nodes of a mesh are such, and get by with one
/// walk and few instructions a corner. What is not of this kind is left to a slower way.
class ClosedFans {
public:
    /// `normals` has an entry for each node, and gets those of nodes with a weight.
    ClosedFans(const PIN& mesh, bool isWeighted, std::vector<TPoint<double>>& normals)
        : edges_(mesh.edges.data()),
          points_(mesh.points.data()),
          edgeCount_(mesh.edges.size()),
          nodeCount_(mesh.points.size()),
          isWeighted_(isWeighted),
          normals_(normals.data()) {}

    /// Takes the fan that ends with `last`, an alive edge at an existing node. False, with nothing taken, if its triangles
    /// do not close around the node with all links as they should be, or are too many.
    bool Take(int last) {
        if (corners_ + LongestFan > VectorBlock::Size) Finish();
        const std::size_t end = Collect(last);
        if (end == 0) return false;
        nodes_[fans_] = edges_[last].P0;
        ends_[fans_] = end;
        ++fans_;
        corners_ = end;
        return true;
    }

    /// Writes the normals of all fans taken. To be called at the end.
    void Finish();

private:
    static constexpr std::size_t LongestFan = 64;

    //        D           One step forward, from the edge A-B over its twin t to n, of the triangle A, D, B. What makes sure
    //      m/ \n         that a step backward would undo it is in the same three records. So the walk that starts behind
    //      /   \         `last` and comes back to it has met the fan in the order in which a walk from the fan's first edge
    //     B --- A        meets it, without looking for that edge.
    //        t
    /// Puts the cross products of the corners behind those that are there. Returns where they end, or 0.
    std::size_t Collect(int last) {
        const int node = edges_[last].P0;
        if (!IsEdge(edges_[last].NE)) return 0;
        int b = edges_[edges_[last].NE].P0;
        if (!IsNode(b)) return 0;
        const TPoint<double> A = points_[node];
        TPoint<double> toB = points_[b] - A;
        int e = last;
        for (std::size_t k = corners_; k < corners_ + LongestFan;) {
            const int t = edges_[e].TE;
            if (!IsEdge(t)) return 0;
            const int n = edges_[t].NE;
            if (!IsEdge(n)) return 0;
            const int m = edges_[n].NE;
            if (!IsEdge(m)) return 0;
            const int d = edges_[m].P0;
            if (edges_[t].TE != e || edges_[t].P0 != b || edges_[n].P0 != node || edges_[m].NE != t || !IsNode(d))
                return 0;
            const TPoint<double> toD = points_[d] - A;
            crosses_.Set(k++, Cross(toD, toB));
            if (n == last) return k;
            e = n;
            b = d;
            toB = toD;
        }
        return 0;
    }

    bool IsEdge(int e) const { return static_cast<std::size_t>(e) < edgeCount_; }
    bool IsNode(int node) const { return static_cast<std::size_t>(node) < nodeCount_; }

    // What the vectors of the mesh would work out anew for each corner.
    const Edge* edges_;
    const TPoint<double>* points_;
    std::size_t edgeCount_;
    std::size_t nodeCount_;
    bool isWeighted_;
    TPoint<double>* normals_;

    VectorBlock crosses_;  // by corner; of one fan behind the other
    std::size_t corners_ = 0;
    int nodes_[VectorBlock::Size];         // by fan
    std::size_t ends_[VectorBlock::Size];  // by fan: where its corners end
    std::size_t fans_ = 0;
};

}  // namespace KM
