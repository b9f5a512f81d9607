#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <random>

#include "Geometry/Point.h"

namespace KM::Test {

inline constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double Infinity = std::numeric_limits<double>::infinity();

/// The same stored number, zero's sign included. One NaN is as good as another: compilers differ in them.
inline bool SameBits(double a, double b) {
    if (std::isnan(a) || std::isnan(b)) return std::isnan(a) && std::isnan(b);
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

inline bool SameBits(const TPoint<double>& a, const TPoint<double>& b) {
    return SameBits(a.X, b.X) && SameBits(a.Y, b.Y) && SameBits(a.Z, b.Z);
}

/// Random numbers that are the same for each compiler and library. Draw one a statement, or in braces: the arguments of
/// a call are evaluated in an order that the compiler chooses.
class Numbers {
public:
    explicit Numbers(unsigned seed) : random_(seed) {}

    int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
    double Between(double low, double high) {
        return low + (high - low) * (static_cast<double>(random_()) / 4294967296.0);
    }
    TPoint<double> PointBetween(double low, double high) {
        return {Between(low, high), Between(low, high), Between(low, high)};
    }
    TPoint<double> Direction() {
        const TPoint<double> p = PointBetween(-1.0, 1.0);
        return LengthSquared(p) < 0.01 ? Direction() : p / Length(p);
    }

    /// What programs forget: zeros, thresholds, few bits, many bits, any magnitude, and (if asked for) what is no number.
    double Hostile(bool isFinite = false) {
        static constexpr double edges[] = {0.0,      -0.0,   1.0,   -1.0,   0.5,   2.0,    5e-9,   -5e-9,
                                           4.999e-9, 1e-7,   1e-12, 1e-8,   1e20,  -1e20,  1e50,   -1e50,
                                           1e160,    -1e160, 1e300, -1e300, 1e-50, 1e-160, 5e-324, 1.05367e-8,
                                           1e25,     3.0,    6.0,   -11.0,  1e-3,  0.05};
        static constexpr double others[] = {NaN, -NaN, Infinity, -Infinity};
        const int kind = Below(8);
        if (kind == 0) return isFinite ? 0.0 : others[Below(4)];
        if (kind <= 2) return edges[Below(static_cast<int>(std::size(edges)))];
        if (kind == 3) return Below(21) - 10;
        if (kind == 4) return OfAnyMagnitude(100);
        if (kind == 5) return OfAnyMagnitude(1000);
        return Between(-10.0, 10.0);
    }
    TPoint<double> HostilePoint(bool isFinite = false) {
        return {Hostile(isFinite), Hostile(isFinite), Hostile(isFinite)};
    }

private:
    double OfAnyMagnitude(int exponent) {
        const double mantissa = Between(-1.0, 1.0);
        return std::ldexp(mantissa, Below(2 * exponent) - exponent);
    }

    std::mt19937 random_;
};

}  // namespace KM::Test
