#pragma once

#include <cstddef>
#include <vector>

namespace KM {

/// A strip runs zigzag: alternately it leaves a triangle across the edge behind the one that it came in by, and across
/// the one ahead of it.
struct StripWalk {
    int edge;
    bool acrossNext = true;

    template <class Loops>
    void Step(const Loops& loops) {
        edge = loops.Twin(acrossNext ? loops.Next(edge) : loops.Previous(edge));
        acrossNext = !acrossNext;
    }
};

/// True for an edge from which a strip can grow at both ends.
template <class Loops>
bool HasFreeWays(const Loops& loops, int edge) {
    return loops.IsUntaken(loops.Twin(edge)) && loops.IsUntaken(loops.Twin(loops.Next(edge)));
}

/// Brings the triangles of the next strips into the cache before these are cut. A walk waits for memory at each step,
/// and each step waits for the one before; scouts go the ways of many strips side by side, so they wait for all of them
/// together. That halves the time of cutting a large mesh whose triangles lie about in any order.
///
/// Scouts mark nothing. Where a strip ends before its scout, or is longer than a scout goes, only time is lost.
template <class Loops>
class StripScouts {
public:
    explicit StripScouts(const Loops& loops) : loops_(loops) {}

    /// Is told of each edge, ascending, just before it is looked at.
    void Reach(int edge) {
        if (edge < scoutedTo_) return;
        SendOut(edge);
        March();
    }

private:
    // Enough to keep memory busy until the last of them have ended, and few enough for a small cache.
    static constexpr std::size_t MostWalks = 64;
    // Scouts of one batch can go the same way, and round a ring they would never end.
    static constexpr int MostSteps = 128;

    void SendOut(int edge) {
        walks_.clear();
        for (; edge < loops_.Count() && walks_.size() < MostWalks; ++edge) {
            if (!loops_.CanTake(edge) || !HasFreeWays(loops_, edge)) continue;
            // One strip takes the whole triangle.
            if (last_ != -1 && (edge == loops_.Next(last_) || edge == loops_.Previous(last_))) continue;
            last_ = edge;
            walks_.push_back({edge});
            walks_.push_back({loops_.Twin(edge)});
            loops_.Fetch(loops_.Twin(edge));
        }
        scoutedTo_ = edge;
    }

    void March() {
        for (int step = 0; step < MostSteps && !walks_.empty(); ++step) {
            std::size_t left = 0;
            for (StripWalk walk : walks_) {
                if (!loops_.CanTake(walk.edge)) continue;
                walk.Step(loops_);
                loops_.Fetch(walk.edge);
                walks_[left++] = walk;
            }
            walks_.resize(left);
        }
    }

    const Loops& loops_;
    std::vector<StripWalk> walks_;
    int scoutedTo_ = 0;
    int last_ = -1;  // from which scouts were sent out
};

}  // namespace KM
