#pragma once

#include "Support/Numbers.h"

namespace KM::Test {

using P = TPoint<double>;

/// Points that try guards. The seed chooses their kind: 0 sound ones; 1 points of a coarse lattice, where many coincide or
/// lie on one line; 2 sound ones and near copies of them; 3 the same with hostile coordinates among them.
class HostilePoints : public Numbers {
public:
    explicit HostilePoints(unsigned seed) : Numbers(seed), kind_(seed % 4) {}

    P operator()() {
        const P earlier = last_;
        last_ = P{Number(), Number(), Below(3) == 0 ? 0.0 : Number()};
        if (kind_ != 0 && Below(4) == 0) last_ = earlier + Step();
        return last_;
    }

    /// One number of the seed's kind.
    double Number() {
        if (kind_ == 1) return Below(5) - 2;
        if (kind_ == 3 && Below(3) == 0) return Hostile();
        // A quotient uses all bits, so that differences are rounded too.
        return Between(-7.0, 7.0) / 0.7;
    }

private:
    /// None, or a short way in any direction.
    P Step() {
        constexpr double lengths[] = {0.0, 0.0, 1e-12, 4e-9, 1e-8, 1e-7, 1e-6, 1e-4, 1e-3};
        const double length = lengths[Below(static_cast<int>(std::size(lengths)))];
        return PointBetween(-1.0, 1.0) * length;
    }

    unsigned kind_;
    P last_;
};

}  // namespace KM::Test
