#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace KM {

/// The edges that wait to be collapsed, in buckets by cost, and what else is known of each half-edge.
///
/// Each level of detail has one bucket, and a last one holds what is dearer than all of them. Within a bucket the order
/// is first in, first out. All steps but the search for a bucket, which is linear in the levels, take constant time and
/// allocate nothing.
class CollapseQueue {
public:
    /// The cost that a refused collapse takes on once it has been refused too often.
    static constexpr double Penalty = 1e15;

    CollapseQueue(std::size_t edgeCount, std::span<const double> tolerances);

    /// The cost from which on an edge is too dear for this level. Level `levels` is the last bucket.
    double Threshold(int bucket) const { return thresholds_[bucket]; }
    int BucketCount() const { return static_cast<int>(thresholds_.size()); }

    double Cost(int edge) const { return edges_[edge].cost; }
    void SetCost(int edge, double cost) { edges_[edge].cost = cost; }

    /// Set for a boundary half-edge whose collapse removes its end node, and clear for one that removes its start.
    bool KeepsStart(int edge) const { return edges_[edge].keepsStart; }
    void SetKeepsStart(int edge, bool keeps) { edges_[edge].keepsStart = keeps; }

    /// The edge that has waited longest in the bucket, or -1.
    int Oldest(int bucket) const { return ends_[bucket].back; }

    /// Puts the edge into the bucket for `cost`, which need not be its own, and forgets that it was refused. In the
    /// bucket where it stands already it keeps its place.
    void Move(int edge, double cost) {
        edges_[edge].retries = 0;
        const int bucket = BucketFor(cost);
        if (edges_[edge].bucket == bucket) return;
        Remove(edge);
        Append(edge, bucket);
    }

    /// Takes the edge out of its bucket, if it stands in one.
    void Remove(int edge) {
        Entry& entry = edges_[edge];
        if (entry.bucket == -1) return;
        Ends& ends = ends_[entry.bucket];
        (entry.newer == -1 ? ends.front : edges_[entry.newer].older) = entry.older;
        (entry.older == -1 ? ends.back : edges_[entry.older].newer) = entry.newer;
        entry.bucket = -1;
    }

    /// Sends the edge to the end of the queue. Three refusals leave the cost alone, the fourth adds the penalty.
    void Refuse(int edge) {
        Entry& entry = edges_[edge];
        Remove(edge);
        if (entry.retries >= FreeRefusals) {
            entry.cost += Penalty;
            entry.retries = 0;
        } else {
            ++entry.retries;
        }
        Append(edge, BucketFor(entry.cost));
    }

    /// Does at once what refusing the edges of the bucket over and over would do until it is empty.
    ///
    /// @return false, with nothing changed, if that would take for ever
    bool RefuseAll(int bucket);

private:
    static constexpr int FreeRefusals = 3;

    struct Entry {
        double cost = 0.0;
        std::int32_t newer = -1;
        std::int32_t older = -1;
        std::int32_t bucket = -1;
        std::int16_t retries = 0;
        bool keepsStart = false;
    };
    struct Ends {
        std::int32_t front = -1;  // the newest
        std::int32_t back = -1;   // the oldest
    };

    /// The first bucket whose threshold is above the cost, else the last one.
    int BucketFor(double cost) const {
        const int last = BucketCount() - 1;
        int bucket = 0;
        while (bucket < last && !(thresholds_[bucket] > cost)) ++bucket;
        return bucket;
    }

    void Append(int edge, int bucket) {
        Entry& entry = edges_[edge];
        Ends& ends = ends_[bucket];
        entry.bucket = bucket;
        entry.newer = -1;
        entry.older = ends.front;
        (ends.front == -1 ? ends.back : edges_[ends.front].newer) = edge;
        ends.front = edge;
    }

    std::vector<Entry> edges_;
    std::vector<double> thresholds_;
    std::vector<Ends> ends_;
};

}  // namespace KM
