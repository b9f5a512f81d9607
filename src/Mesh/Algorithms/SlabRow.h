#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

#include "SlabCut.h"

namespace KM {

/// Slabs of equal thickness, side by side in ascending order; both limits ascend.
class SlabRow {
public:
    /// A row without slabs.
    SlabRow() : SlabRow(0.0, 0.0, 0, 0.0) {}

    /// @param min, extent  what the slabs divide among them
    /// @param overlap      how far each reaches beyond its share, on both sides
    SlabRow(double min, double extent, int count, double overlap)
        : last_(std::max(count, 1) - 1), slabsPerLength_(count / extent) {
        // What no level reaches, on both ends: so a walk along the row needs no look at its ends.
        constexpr Slab end{std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN()};
        slabs_.push_back(end);
        const double n = count;
        for (int i = 0; i < count; ++i)
            slabs_.push_back({extent * (i / n) + min - overlap, extent * ((i + 1.0) / n) + min + overlap});
        slabs_.push_back(end);
    }

    /// @param i  up to the number of slabs: behind the last one is one whose limits are not numbers
    const Slab& operator[](std::size_t i) const { return slabs_[i + 1]; }

    /// The first slab whose upper limit is not below a level; their number if there is none. The first one for what is not a
    /// number. Constant time, but where the limits are so close that numbers hardly tell them apart.
    std::size_t FirstReaching(double level) const {
        // Right but for rounding. A search takes steps that no processor can foresee.
        const double guess = (level - slabs_[1].hi) * slabsPerLength_ + 1.0;
        const Slab* slab = &slabs_[1 + static_cast<std::size_t>(static_cast<int>(
                                           std::min(std::max(0.0, guess), static_cast<double>(last_))))];
        while (level <= slab[-1].hi) --slab;
        while (level > slab->hi) ++slab;
        return static_cast<std::size_t>(slab - &slabs_[1]);
    }

private:
    int last_;
    double slabsPerLength_;
    std::vector<Slab> slabs_;
};

}  // namespace KM
