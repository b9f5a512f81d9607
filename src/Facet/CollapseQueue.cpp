#include "Facet/CollapseQueue.h"

#include <algorithm>
#include <cmath>

namespace KM {
namespace {

/// How much the tolerance scale grows from level to level.
constexpr double ScaleGrowth = 1.3;
/// The threshold of the last bucket.
constexpr double Beyond = 1e30;
/// Up to this cost, penalties bring an edge out of a bucket in sane time, and their sums can be taken in strides.
constexpr double WithinReach = 1e20;

/// Adds penalties to `cost` one by one, rounding each time, until it reaches `bound`; returns how many. Below
/// `WithinReach` the penalty is a multiple of the last bit, so all sums that stay below the next power of two are
/// exact, and are taken in one stride.
std::int64_t Raise(double& cost, double bound) {
    std::int64_t added = 0;
    while (cost < bound) {
        const double nextPower = cost < CollapseQueue::Penalty ? cost : std::ldexp(1.0, std::ilogb(cost) + 1);
        const double room = std::floor((std::min(nextPower, bound) - cost) / CollapseQueue::Penalty);
        const double stride = std::max(1.0, room - 1.0);
        cost += stride * CollapseQueue::Penalty;
        added += static_cast<std::int64_t>(stride);
    }
    return added;
}

}  // namespace

CollapseQueue::CollapseQueue(std::size_t edgeCount, std::span<const double> tolerances) : edges_(edgeCount) {
    thresholds_.reserve(tolerances.size() + 1);
    double scale = 1.0;
    for (const double tolerance : tolerances) {
        scale *= ScaleGrowth;
        thresholds_.push_back((tolerance * scale) * (tolerance * scale));
    }
    thresholds_.push_back(Beyond);
    ends_.resize(thresholds_.size());
}

bool CollapseQueue::RefuseAll(int bucket) {
    const double bound = thresholds_[bucket];
    if (!(bound <= WithinReach)) return false;

    struct Leaving {
        std::int64_t refusals;
        std::int32_t edge;
    };
    std::vector<Leaving> leaving;
    for (int e = ends_[bucket].back; e != -1; e = edges_[e].newer) {
        const std::int64_t firstPenalty = FreeRefusals - edges_[e].retries;
        leaving.push_back({firstPenalty + (FreeRefusals + 1) * (Raise(edges_[e].cost, bound) - 1), e});
    }
    // The edges take turns: who needs fewer refusals leaves first, and among equals who stood nearer to the back.
    std::stable_sort(leaving.begin(), leaving.end(),
                     [](const Leaving& a, const Leaving& b) { return a.refusals < b.refusals; });
    for (const Leaving& l : leaving) Move(l.edge, edges_[l.edge].cost);
    return true;
}

}  // namespace KM
