#pragma once

#include <cstddef>

namespace KM {

/// Notices when a walk over broken links circles without coming back to its beginning: Brent's algorithm, "An improved
/// Monte Carlo factorization algorithm". Takes a few turns of the circle and no memory.
class CircleGuard {
public:
    /// To be asked once for each edge of the walk. True at last if the walk circles, never if it does not.
    bool IsMetAgain(int edge) {
        if (edge == seen_) return true;
        if (++steps_ == limit_) {
            seen_ = edge;
            limit_ *= 2;
        }
        return false;
    }

private:
    int seen_ = -1;
    std::size_t steps_ = 0;
    std::size_t limit_ = 1;
};

}  // namespace KM
