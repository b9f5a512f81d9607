#pragma once

#include <cmath>
#include <cstddef>
#include <set>

#include "GeodesicWindow.h"
#include "NodePool.h"

namespace KM {

/// What a window stands in the queue by, and its slot in the store. A copy, so that a search touches the tree alone.
struct QueuedWindow {
    double key;
    double sigma;
    double b0;
    std::int32_t edge;
    std::int32_t slot;

    QueuedWindow(const GeodesicWindow& w, std::int32_t at)
        : key(NearestDistance(w)), sigma(w.sigma), b0(w.b0), edge(w.edge), slot(at) {}
};

/// Nearest first. Keys and detours that differ by rounding alone count as equal, so that edges and positions, which do not
/// depend on rounding, decide in which order windows of the same distance come.
struct WindowLess {
    bool operator()(const QueuedWindow& a, const QueuedWindow& b) const {
        constexpr double eps = 1e-8;
        if (std::fabs(a.key - b.key) > eps) return a.key < b.key;
        if (std::fabs(a.sigma - b.sigma) > eps) return a.sigma < b.sigma;
        if (a.edge != b.edge) return a.edge < b.edge;
        return a.b0 < b.b0;
    }
};

/// The windows that are still to be propagated. A tree, because the order is not transitive: a heap would give windows of
/// nearly the same distance in another order.
class WindowQueue {
public:
    bool IsEmpty() const { return queue_.empty(); }
    std::size_t Size() const { return queue_.size(); }

    /// A window that is equivalent to a queued one is not queued.
    void Push(const GeodesicWindow& window, std::int32_t slot) { queue_.emplace(window, slot); }

    /// To be called before a field of the window changes.
    /// @return  whether it was queued
    bool Remove(const GeodesicWindow& window, std::int32_t slot) {
        const auto [first, last] = queue_.equal_range(QueuedWindow(window, slot));
        if (first == last) return false;
        queue_.erase(first, last);
        return true;
    }

    /// Calls `visit` for the copies of all queued windows.
    template <class Visit>
    void ForEach(Visit visit) const {
        for (const QueuedWindow& queued : queue_) visit(queued);
    }

    /// Takes the first window out.
    /// @return  its slot
    std::int32_t Pop() {
        const std::int32_t slot = queue_.begin()->slot;
        queue_.erase(queue_.begin());
        return slot;
    }

private:
    NodePool memory_;
    std::set<QueuedWindow, WindowLess, PoolAllocator<QueuedWindow>> queue_{PoolAllocator<QueuedWindow>(memory_)};
};

}  // namespace KM
