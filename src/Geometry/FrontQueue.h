#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace KM {

/// A triangle that may come next: a node, joined to an edge of the front.
struct FrontCandidate {
    double cost;
    int node;
    int edge;
    int third;            ///< of the edge
    std::int64_t number;  ///< of candidates that cost the same the first to be added comes first
};

/// The candidates, cheapest first. Those of a node are dropped in one step: all that were added before lapse, and leave
/// when they come to the head. Those of an edge lapse with it.
class FrontQueue {
public:
    explicit FrontQueue(std::size_t nodes) : lapsed_(nodes, 0) {}

    void Add(double cost, int node, int edge, int third) {
        heap_.push_back({cost, node, edge, third, next_++});
        std::push_heap(heap_.begin(), heap_.end(), ComesLater);
    }

    void DropNode(int node) { lapsed_[node] = next_; }

    /// The cheapest candidate; null if there is none.
    template <class IsAlive>
    const FrontCandidate* First(IsAlive isEdgeAlive) {
        while (!heap_.empty() && (heap_[0].number < lapsed_[heap_[0].node] || !isEdgeAlive(heap_[0].edge)))
            EraseFirst();
        return heap_.empty() ? nullptr : heap_.data();
    }

    void EraseFirst() {
        std::pop_heap(heap_.begin(), heap_.end(), ComesLater);
        heap_.pop_back();
    }

    void Clear() { heap_.clear(); }

private:
    static bool ComesLater(const FrontCandidate& a, const FrontCandidate& b) {
        return a.cost != b.cost ? a.cost > b.cost : a.number > b.number;
    }

    std::vector<FrontCandidate> heap_;
    std::vector<std::int64_t> lapsed_;  // by node: candidates with lower numbers have lapsed
    std::int64_t next_ = 0;
};

}  // namespace KM
