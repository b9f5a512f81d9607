#pragma once

#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <random>

#include "Geometry/Point.h"

namespace KM::Test {

/// True for the same bits; all NaNs count as one, since their bits depend on the order in which a compiler takes operands.
inline bool SameBits(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

inline bool SameBits(const TPoint<double>& a, const TPoint<double>& b) {
    return SameBits(a.X, b.X) && SameBits(a.Y, b.Y) && SameBits(a.Z, b.Z);
}

/// Points that try guards: of a seed come sound ones, points of a coarse lattice, where many coincide or lie on one line,
/// near copies of earlier points, and points of NaN, infinities, denormals, signed zeros, and huge or tiny numbers.
class HostilePoints {
public:
    explicit HostilePoints(unsigned seed) : random_(seed), kind_(seed % 4) {}

    TPoint<double> operator()() {
        const TPoint<double> earlier = last_;
        last_ = TPoint<double>(Number(), Number(), Below(3) == 0 ? 0.0 : Number());
        if (kind_ != 0 && Below(4) == 0) last_ = earlier + Step();
        return last_;
    }

    /// One number of the seed's kind.
    double Number() {
        if (kind_ == 1) return static_cast<double>(Below(5)) - 2.0;
        if (kind_ == 3 && Below(3) == 0) return Special();
        return Uniform(-10.0, 10.0);
    }

    double Uniform(double from, double to) {
        return from + (to - from) * static_cast<double>(random_() >> 11) * 0x1p-53;
    }
    std::size_t Below(std::size_t count) { return random_() % count; }

private:
    double Special() {
        constexpr double inf = std::numeric_limits<double>::infinity();
        constexpr double values[] = {std::numeric_limits<double>::quiet_NaN(),
                                     inf,
                                     -inf,
                                     0.0,
                                     -0.0,
                                     1.0,
                                     5e-324,
                                     -3e-310,
                                     1e-300,
                                     1e300,
                                     -1e300,
                                     1e150,
                                     1e-150,
                                     1e-20,
                                     1e20,
                                     1e-8,
                                     5e-9,
                                     1e-6,
                                     1e-3,
                                     1e-4};
        return values[Below(std::size(values))];
    }

    /// None, or a short way in any direction.
    TPoint<double> Step() {
        constexpr double lengths[] = {0.0, 0.0, 1e-12, 4e-9, 1e-8, 1e-7, 1e-6, 1e-4, 1e-3};
        const double length = lengths[Below(std::size(lengths))];
        return TPoint<double>(Uniform(-1.0, 1.0), Uniform(-1.0, 1.0), Uniform(-1.0, 1.0)) * length;
    }

    std::mt19937_64 random_;
    unsigned kind_;
    TPoint<double> last_;
};

}  // namespace KM::Test
