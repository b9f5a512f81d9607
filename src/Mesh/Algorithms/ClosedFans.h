#pragma once

#include <cstddef>
#include <vector>

#include "Mesh/Algorithms/MeshView.h"
#include "Mesh/Algorithms/UnitVectors.h"

namespace KM {

/// Normals of nodes inside the surface, some at a time: nearly all nodes of a mesh are such, and get by with one
/// walk and few instructions a corner. What is not of this kind is left to a slower way.
class ClosedFans {
public:
    /// `normals` has an entry for each node, and gets those of nodes with a weight.
    ClosedFans(const PIN& mesh, bool isWeighted, std::vector<TPoint<double>>& normals)
        : mesh_(mesh), isWeighted_(isWeighted), normals_(normals.data()) {}

    /// Takes the fan that ends with `last`, an alive edge at an existing node. False, with nothing taken, if its triangles
    /// do not close around the node with all links as they should be, or are too many.
    bool Take(int last) {
        if (corners_ + LongestFan > VectorBlock::Size) Finish();
        const std::size_t end = Collect(last);
        if (end == 0) return false;
        nodes_[fans_] = mesh_.edges[last].P0;
        ends_[fans_] = end;
        ++fans_;
        corners_ = end;
        return true;
    }

    /// Writes the normals of all fans taken. To be called at the end.
    void Finish();

private:
    static constexpr std::size_t LongestFan = 24;

    //        D           One step forward, from the edge A-B over its twin t to n, of the triangle A, D, B. What makes sure
    //      m/ \n         that a step backward would undo it is in the same three records. So the walk that starts behind
    //      /   \         `last` and comes back to it has met the fan in the order in which a walk from the fan's first edge
    //     B --- A        meets it, without looking for that edge.
    //        t
    /// Puts the cross products of the corners behind those that are there. Returns where they end, or 0.
    std::size_t Collect(int last) {
        const int node = mesh_.edges[last].P0;
        if (!mesh_.IsEdge(mesh_.edges[last].NE)) return 0;
        int b = mesh_.edges[mesh_.edges[last].NE].P0;
        if (!mesh_.IsNode(b)) return 0;
        const TPoint<double> A = mesh_.points[node];
        TPoint<double> toB = mesh_.points[b] - A;
        int e = last;
        for (std::size_t k = corners_; k < corners_ + LongestFan;) {
            const int t = mesh_.edges[e].TE;
            if (!mesh_.IsEdge(t)) return 0;
            const int n = mesh_.edges[t].NE;
            if (!mesh_.IsEdge(n)) return 0;
            const int m = mesh_.edges[n].NE;
            if (!mesh_.IsEdge(m)) return 0;
            const int d = mesh_.edges[m].P0;
            if (mesh_.edges[t].TE != e || mesh_.edges[t].P0 != b || mesh_.edges[n].P0 != node ||
                mesh_.edges[m].NE != t || !mesh_.IsNode(d))
                return 0;
            const TPoint<double> toD = mesh_.points[d] - A;
            crosses_.Set(k++, Cross(toD, toB));
            if (n == last) return k;
            e = n;
            b = d;
            toB = toD;
        }
        return 0;
    }

    MeshView mesh_;
    bool isWeighted_;
    TPoint<double>* normals_;

    VectorBlock crosses_;  // by corner; of one fan behind the other
    std::size_t corners_ = 0;
    int nodes_[VectorBlock::Size];         // by fan
    std::size_t ends_[VectorBlock::Size];  // by fan: where its corners end
    std::size_t fans_ = 0;
};

}  // namespace KM
