#include "Facet/CollapseQueue.h"

#include <algorithm>
#include <cmath>

namespace KM {
namespace {

/// How much the tolerance scale grows from level to level.
constexpr double ScaleGrowth = 1.3;
/// The threshold of the last bucket.
constexpr double Beyond = 1e30;

/// Adds penalties to `cost` one by one, rounding each time, until it reaches `bound`; returns how many. Above 1e20 the penalty
/// is no multiple of the last bit, so each sum is rounded; but behind the first one between two powers of two, which also
/// settles a tie, all are rounded alike. So the rest up to the next power is taken in one stride.
std::int64_t Raise(double& cost, double bound) {
    std::int64_t added = 0;
    while (cost < bound) {
        const double nextPower = std::ldexp(1.0, std::ilogb(cost) + 1);
        cost += CollapseQueue::Penalty;
        ++added;
        const double step = (cost + CollapseQueue::Penalty) - cost;
        const double room = std::min(nextPower, bound) - cost;
        const double stride = std::max(0.0, std::floor(room / step) - 2.0);
        cost += stride * step;
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
    // Nothing leaves the last bucket, and not far above its threshold a penalty is lost in rounding.
    if (bucket == BucketCount() - 1 || !(bound <= Beyond)) return false;

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
