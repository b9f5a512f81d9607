#pragma once

#include <bit>
#include <cstdint>
#include <utility>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// The nodes of one builder call by their coordinates: gives each point the node that stands for it.
///
/// Two points are equal when all three coordinates are the same numbers, without any tolerance: 0.0 equals -0.0, and a
/// NaN equals nothing. The earliest occurrence becomes the node. A flat table with open addressing: an ordered set
/// would read the points log n times for each look-up.
template <class Point>
class PointMerger {
public:
    /// `points` receives the nodes; those that are in it already take no part. `expectedNodes` only saves time.
    PointMerger(std::vector<Point>& points, std::size_t expectedNodes)
        : points_(points),
          table_(std::bit_ceil(2 * expectedNodes + 16)),
          shift_(32 - std::countr_zero(table_.size())) {}

    // The look-up comes in three steps, so that a caller who has many points can let the memory reads of one overlap
    // with the work on the others. The first two are only hints and may be left out.

    static std::uint32_t Hash(const Point& p) {
        // Adding zero makes one number of 0.0 and -0.0. Round numbers differ in their uppermost bits only, which a
        // product never moves down; the shifts do.
        std::uint64_t h = std::bit_cast<std::uint64_t>(static_cast<double>(p.X) + 0.0) * 0x9E3779B97F4A7C15ull;
        h = (h ^ (h >> 32) ^ std::bit_cast<std::uint64_t>(static_cast<double>(p.Y) + 0.0)) * 0xC2B2AE3D27D4EB4Full;
        h = (h ^ (h >> 32) ^ std::bit_cast<std::uint64_t>(static_cast<double>(p.Z) + 0.0)) * 0x165667B19E3779F9ull;
        h = (h ^ (h >> 32)) * 0x9E3779B97F4A7C15ull;
        return static_cast<std::uint32_t>(h >> 32);
    }
    void FetchSlot(std::uint32_t hash) const { Fetch(&table_[hash >> shift_]); }
    void FetchPoint(std::uint32_t hash) const {
        const Slot& slot = table_[hash >> shift_];
        if (slot.node != -1) Fetch(&points_[slot.node]);
    }

    /// The node of `p`, whose hash is `hash`; appended to the points if there is none yet.
    std::int32_t NodeOf(const Point& p, std::uint32_t hash) {
        std::size_t at = hash >> shift_;
        for (; table_[at].node != -1; at = (at + 1) & (table_.size() - 1))
            if (table_[at].hash == hash && points_[table_[at].node] == p) return table_[at].node;
        return Append(p, hash, at);
    }

private:
    struct Slot {
        std::uint32_t hash = 0;
        std::int32_t node = -1;
    };

    static void Fetch([[maybe_unused]] const void* address) {
#if defined(__GNUC__)
        __builtin_prefetch(address);
#endif
    }

    std::int32_t Append(const Point& p, std::uint32_t hash, std::size_t at) {
        const std::int32_t node = static_cast<std::int32_t>(points_.size());
        points_.push_back(p);
        // A point with a NaN is never found again, and a run of them in the table would be walked by each newcomer.
        if (!(p == p)) return node;
        table_[at] = {hash, node};
        if (2 * ++used_ > table_.size()) Grow();
        return node;
    }

    void Grow() {
        const std::vector<Slot> old = std::exchange(table_, std::vector<Slot>(2 * table_.size()));
        --shift_;
        for (const Slot& slot : old) {
            if (slot.node == -1) continue;
            std::size_t at = slot.hash >> shift_;
            while (table_[at].node != -1) at = (at + 1) & (table_.size() - 1);
            table_[at] = slot;
        }
    }

    std::vector<Point>& points_;
    std::vector<Slot> table_;  // the size is a power of two; a slot is found by the upper bits of the hash
    int shift_;
    std::size_t used_ = 0;
};

using PointIndexSet = PointMerger<TPoint<double>>;
using PointIndexHash = PointMerger<TPoint<float>>;

}  // namespace KM
