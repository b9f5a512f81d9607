#pragma once

#include <cstdint>
#include <vector>

#include "Mesh/Core/SafeLinks.h"

namespace KM {

/// Gives the previous edge of one edge after another. A walk for each edge of a long loop would be quadratic; here the
/// first loop that is no triangle costs one pass over all edges, and each later question is a read.
template <class Mesh>
class PreviousEdges {
public:
    explicit PreviousEdges(const Mesh& mesh) : mesh_(mesh) {}

    /// What `PrevEdge` gives, or -1 when `e` lies on no loop. Between the questions loops of more than three edges may
    /// change only by what is told.
    std::int32_t Of(std::int32_t e) {
        const std::int32_t third = ThirdOfTriangle(mesh_, e);
        if (third != -1) return third;
        if (previous_.empty()) FindLoops();
        return previous_[e];
    }

    /// The record of `from` has been moved to `to`, where no loop passed.
    void Follow(std::int32_t from, std::int32_t to) {
        if (previous_.empty()) return;
        previous_[to] = previous_[from];
        const std::int32_t next = mesh_.edges[to].NE;
        if (IsEdge(mesh_, next) && previous_[next] == from) previous_[next] = to;
    }

    /// `NE` of `from`, an edge of a loop, now is `to`, and they lie on one loop.
    void Join(std::int32_t from, std::int32_t to) {
        if (!previous_.empty()) previous_[to] = from;
    }

private:
    /// Each walk ends where it, or an earlier one, has been; only a walk that meets itself has found a loop.
    void FindLoops() {
        previous_.assign(mesh_.edges.size(), -1);
        std::vector<std::int32_t> walk(mesh_.edges.size(), -1);
        for (std::int32_t first = 0; IsEdge(mesh_, first); ++first) {
            std::int32_t e = first;
            for (; IsEdge(mesh_, e) && walk[e] == -1; e = mesh_.edges[e].NE) walk[e] = first;
            if (!IsEdge(mesh_, e) || walk[e] != first) continue;
            for (; previous_[mesh_.edges[e].NE] == -1; e = mesh_.edges[e].NE) previous_[mesh_.edges[e].NE] = e;
        }
    }

    const Mesh& mesh_;
    std::vector<std::int32_t> previous_;  // by edge; empty until a loop turns up that is no triangle
};

}  // namespace KM
