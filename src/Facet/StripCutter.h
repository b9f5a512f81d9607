#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// For each edge on a loop the one before it on that loop; -1 for an edge whose `NE` never leads back to it, or leads
/// out of the mesh. Linear time, whatever the links are.
std::vector<int> PreviousOnLoops(const std::vector<Edge>& edges);

/// Cuts a mesh into strips. Long strips come first: a triangle with fewer free neighbours waits for a later pass.
///
/// Dead records are skipped, and so are those from which `NE` does not lead round a loop.
template <class Mesh>
class StripCutter {
public:
    explicit StripCutter(const Mesh& mesh)
        : edges_(mesh.edges), count_(static_cast<int>(mesh.edges.size())), taken_(mesh.edges.size(), 0) {}

    /// Calls `emit(std::span<const int> nodes, std::int32_t kind)` for each strip; the nodes are gone afterwards.
    template <class Emit>
    void Cut(Emit emit) {
        std::vector<int> leftovers;
        for (int e = 0; e < count_; ++e) {
            if (taken_[e]) continue;
            const Links links = LinksOf(e);
            if (links.previous == -1) continue;
            if (IsFree(edges_[e].TE) && IsFree(edges_[links.next].TE))
                StripFrom(e, emit);
            else
                leftovers.push_back(e);
        }
        for (const int e : leftovers)
            if (!taken_[e] && IsFree(edges_[e].TE)) StripFrom(e, emit);
        for (const int e : leftovers)
            if (!taken_[e]) StripFrom(e, emit);
    }

private:
    //      P0(third)
    //       /    \        On a triangle `third` is the previous edge too.
    //   third    next
    //     /        \ .
    //   P0 - edge - P0(next)
    struct Links {
        int next = -1;
        int third = -1;
        int previous = -1;  ///< -1: the edge is dead, or on no loop
    };

    Links LinksOf(int edge) {
        const int next = edges_[edge].NE;
        if (!Exists(next)) return {};
        const int third = edges_[next].NE;
        if (!Exists(third)) return {};
        if (edges_[third].NE == edge) return {next, third, third};
        // A walk round each loop would not end on broken links, and takes quadratic time round a long one.
        if (previous_.empty()) previous_ = PreviousOnLoops(edges_);
        return {next, third, previous_[edge]};
    }

    bool Exists(int edge) const { return edge >= 0 && edge < count_; }
    bool IsFree(int edge) const { return Exists(edge) && !taken_[edge]; }

    void Mark(int edge, const Links& links, char taken) {
        taken_[edge] = taken;
        taken_[links.next] = taken;
        taken_[links.previous] = taken;
    }

    /// Appends the nodes that a walk from `edge` finds, and returns an edge of the last triangle taken.
    int Walk(int edge, std::vector<int>& nodes) {
        int last = -1;
        for (bool acrossNext = true; IsFree(edge); acrossNext = !acrossNext) {
            const Links links = LinksOf(edge);
            if (links.previous == -1) break;
            Mark(edge, links, 1);
            last = edge;
            nodes.push_back(edges_[links.third].P0);
            edge = edges_[acrossNext ? links.next : links.previous].TE;
        }
        return last;
    }

    template <class Emit>
    void StripFrom(int edge, Emit& emit) {
        back_.assign({edges_[edge].P0, edges_[edges_[edge].NE].P0});
        front_.clear();
        Walk(edge, back_);
        const int last = Walk(edges_[edge].TE, front_);
        std::int32_t kind = 1;
        if (front_.size() % 2 == 1) {
            // An odd number of nodes in front turns the winding of the strip. Where reading from the other end cannot
            // turn it back, the last triangle is given up and left for a later strip.
            if (back_.size() % 2 == 1) {
                front_.pop_back();
                Mark(last, LinksOf(last), 0);
            } else {
                kind = 2;
            }
        }
        nodes_.assign(front_.rbegin(), front_.rend());
        nodes_.insert(nodes_.end(), back_.begin(), back_.end());
        emit(std::span<const int>(nodes_), kind);
    }

    const std::vector<Edge>& edges_;
    const int count_;
    std::vector<char> taken_;    // per edge; a triangle is taken by all of its edges
    std::vector<int> previous_;  // per edge; empty as long as all loops are triangles
    std::vector<int> back_;
    std::vector<int> front_;
    std::vector<int> nodes_;
};

}  // namespace KM
