#pragma once

#include <span>

#include "Facet/StripLoops.h"
#include "Facet/StripScouts.h"

namespace KM {

/// Cuts loops into strips. Long strips come first: a triangle with fewer free neighbours waits for a later pass.
template <class Loops>
class StripCutter {
public:
    explicit StripCutter(Loops& loops) : loops_(loops) {}

    /// Calls `emit(std::span<const int> nodes, std::int32_t kind)` for each strip; the nodes are gone afterwards.
    template <class Emit>
    void Cut(Emit& emit) {
        std::vector<int> leftovers;
        StripScouts scouts(loops_);
        for (int e = 0; e < loops_.Count(); ++e) {
            scouts.Reach(e);
            if (!loops_.CanTake(e)) continue;
            if (HasFreeWays(loops_, e))
                StripFrom(e, emit);
            else
                leftovers.push_back(e);
        }
        for (const int e : leftovers)
            if (loops_.CanTake(e) && loops_.IsUntaken(loops_.Twin(e))) StripFrom(e, emit);
        for (const int e : leftovers)
            if (loops_.CanTake(e)) StripFrom(e, emit);
    }

private:
    /// Appends the nodes that a walk from `edge` finds, and returns an edge of the last triangle taken.
    int Walk(int edge, std::vector<int>& nodes) {
        int last = -1;
        for (StripWalk walk{edge}; loops_.CanTake(walk.edge); walk.Step(loops_)) {
            last = walk.edge;
            loops_.Take(last);
            nodes.push_back(loops_.Node(loops_.Third(last)));
        }
        return last;
    }

    template <class Emit>
    void StripFrom(int edge, Emit& emit) {
        back_.assign({loops_.Node(edge), loops_.Node(loops_.Next(edge))});
        front_.clear();
        Walk(edge, back_);
        const int last = Walk(loops_.Twin(edge), front_);
        std::int32_t kind = 1;
        if (front_.size() % 2 == 1) {
            // An odd number of nodes in front turns the winding of the strip. Where reading from the other end cannot
            // turn it back, the last triangle is given up and left for a later strip.
            if (back_.size() % 2 == 1) {
                front_.pop_back();
                loops_.GiveBack(last);
            } else {
                kind = 2;
            }
        }
        nodes_.assign(front_.rbegin(), front_.rend());
        nodes_.insert(nodes_.end(), back_.begin(), back_.end());
        emit(std::span<const int>(nodes_), kind);
    }

    Loops& loops_;
    std::vector<int> back_;
    std::vector<int> front_;
    std::vector<int> nodes_;
};

/// Cuts a mesh into strips, each alive triangle into exactly one, and calls `emit(std::span<const int> nodes,
/// std::int32_t kind)` for each.
template <class Emit>
void CutStrips(const std::vector<Edge>& edges, Emit emit) {
    if (std::optional<SlotTriangles> triangles = SlotTriangles::Of(edges)) {
        StripCutter(*triangles).Cut(emit);
    } else {
        AnyLoops loops(edges);
        StripCutter(loops).Cut(emit);
    }
}

}  // namespace KM
