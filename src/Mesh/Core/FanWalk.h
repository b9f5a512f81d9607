#pragma once

#include <cstddef>

#include "Mesh/Core/Loops.h"
#include "Mesh/Core/Pin.h"
#include "Mesh/Core/SafeLinks.h"

namespace KM {

// Walks over loops and fans that allocate nothing. A mesh under edit can hold a link that leads nowhere: to a dead
// record, or out of the vector. Every walk takes such a link for the end of the surface.

/// The node in which an alive edge ends, or -1 where its `NE` leads nowhere.
template <class Mesh>
inline int EndNode(const Mesh& mesh, int edge) {
    const int next = mesh.edges[edge].NE;
    return static_cast<std::size_t>(next) < mesh.edges.size() ? mesh.edges[next].P0 : -1;
}

/// True if `twin` exists, is alive, names the alive edge `edge` in return, and runs the other way.
template <class Mesh>
inline bool AreTwins(const Mesh& mesh, int edge, int twin) {
    return IsAliveEdge(mesh, twin) && mesh.edges[twin].TE == edge && mesh.edges[twin].P0 == EndNode(mesh, edge) &&
           EndNode(mesh, twin) == mesh.edges[edge].P0;
}

// At its start node an edge e has the face of its own loop on one side and the face of its twin on the other. Forward
// is over the twin, NE(TE(e)); backward is over the own face, TE(PrevEdge(e)). On consistent links each step undoes the
// other.

/// One step forward from an alive edge, or -1 where the fan ends.
template <class Mesh>
inline int NextInFan(const Mesh& mesh, int edge) {
    const int twin = mesh.edges[edge].TE;
    if (static_cast<std::size_t>(twin) >= mesh.edges.size()) return -1;
    const int next = mesh.edges[twin].NE;
    return IsAliveEdge(mesh, next) ? next : -1;
}

/// One step backward from an alive edge, or -1 where the fan ends.
template <class Mesh>
inline int PreviousInFan(const Mesh& mesh, int edge) {
    const int previous = PrevEdge(mesh, edge);
    if (previous == -1) return -1;
    const int twin = mesh.edges[previous].TE;
    return IsAliveEdge(mesh, twin) ? twin : -1;
}

/// The edge from which a forward walk visits the whole fan of `edge`: the one at the open end, or, where the walk comes
/// round, the forward neighbour of `edge`. -1 for an edge that is dead or out of range.
template <class Mesh>
int FirstOfFan(const Mesh& mesh, int edge) {
    if (!IsAliveEdge(mesh, edge)) return -1;
    int best = edge;
    int e = PreviousInFan(mesh, edge);
    // Inconsistent links can make the walk circle without coming back to `edge`; no sound fan is longer than `edges`.
    for (std::size_t left = mesh.edges.size(); e != -1 && e != edge && left != 0; --left) {
        best = e;
        e = PreviousInFan(mesh, e);
    }
    return best;
}

/// The edges of one fan in forward order, for a range-based `for`. Ends after `edges.size()` edges at the latest. The
/// links of the mesh must not change during the walk; start nodes may.
template <class Mesh>
class FanWalk {
public:
    struct End {};

    class Iterator {
    public:
        Iterator(const Mesh& mesh, int first) : mesh_(mesh), first_(first), edge_(first), left_(mesh.edges.size()) {}

        int operator*() const { return edge_; }
        Iterator& operator++() {
            edge_ = NextInFan(mesh_, edge_);
            if (edge_ == first_ || --left_ == 0) edge_ = -1;
            return *this;
        }
        bool operator!=(End) const { return edge_ != -1; }

    private:
        const Mesh& mesh_;
        int first_;
        int edge_;
        std::size_t left_;
    };

    /// The fan that `p2e` leads to; it has no edges when the node is dead or does not exist.
    FanWalk(const Mesh& mesh, int node)
        : mesh_(mesh),
          first_(static_cast<std::size_t>(node) < mesh.p2e.size() ? FirstOfFan(mesh, mesh.p2e[node]) : -1) {}

    /// The fan that `edge` belongs to, whatever `p2e` says.
    static FanWalk Through(const Mesh& mesh, int edge) { return FanWalk(mesh, StartsAt{FirstOfFan(mesh, edge)}); }

    int First() const { return first_; }
    std::size_t Count() const {
        std::size_t count = 0;
        for (Iterator i = begin(); i != end(); ++i) ++count;
        return count;
    }
    Iterator begin() const { return Iterator(mesh_, first_); }
    End end() const { return {}; }

private:
    struct StartsAt {
        int edge;
    };
    FanWalk(const Mesh& mesh, StartsAt first) : mesh_(mesh), first_(first.edge) {}

    const Mesh& mesh_;
    int first_;
};

}  // namespace KM
