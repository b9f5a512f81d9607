#pragma once

#include <cmath>

namespace KM {

/// A value counts as zero when its magnitude is below this: the one zero test of the whole system.
inline constexpr double ZeroTest = 5e-9;

/// True when `x` counts as zero. False for NaN.
inline bool IsZero(double x) { return ZeroTest > std::fabs(x); }

/// A point or a vector of three components; the host's own points have the same layout.
///
/// All operations are plain component-wise arithmetic in the order X, Y, Z. That order is part of the contract: it
/// makes results the same bits on every build.
template <class T>
struct TPoint {
    T X = T(0);
    T Y = T(0);
    T Z = T(0);

    constexpr TPoint() = default;
    constexpr TPoint(T x, T y, T z) : X(x), Y(y), Z(z) {}

    constexpr TPoint& operator+=(const TPoint& b) { return *this = TPoint(X + b.X, Y + b.Y, Z + b.Z); }
    constexpr TPoint& operator-=(const TPoint& b) { return *this = TPoint(X - b.X, Y - b.Y, Z - b.Z); }
    constexpr TPoint& operator*=(T s) { return *this = TPoint(X * s, Y * s, Z * s); }
    /// Divides each component; it does not multiply by a reciprocal.
    constexpr TPoint& operator/=(T s) { return *this = TPoint(X / s, Y / s, Z / s); }

    /// Exact comparison of the stored numbers: 0.0 equals -0.0, and NaN equals nothing.
    friend constexpr bool operator==(const TPoint&, const TPoint&) = default;
    friend constexpr TPoint operator+(TPoint a, const TPoint& b) { return a += b; }
    friend constexpr TPoint operator-(TPoint a, const TPoint& b) { return a -= b; }
    friend constexpr TPoint operator-(const TPoint& a) { return TPoint(-a.X, -a.Y, -a.Z); }
    friend constexpr TPoint operator*(TPoint a, T s) { return a *= s; }
    friend constexpr TPoint operator*(T s, TPoint a) { return a *= s; }
    friend constexpr TPoint operator/(TPoint a, T s) { return a /= s; }
};

template <class T>
constexpr T Dot(const TPoint<T>& a, const TPoint<T>& b) {
    return a.X * b.X + a.Y * b.Y + a.Z * b.Z;
}

template <class T>
constexpr TPoint<T> Cross(const TPoint<T>& a, const TPoint<T>& b) {
    return TPoint<T>(a.Y * b.Z - a.Z * b.Y, a.Z * b.X - a.X * b.Z, a.X * b.Y - a.Y * b.X);
}

/// The squared length, summed from left to right.
template <class T>
constexpr T LengthSquared(const TPoint<T>& a) {
    return Dot(a, a);
}

template <class T>
T Length(const TPoint<T>& a) {
    return std::sqrt(LengthSquared(a));
}

/// The vector at unit length; a vector whose length counts as zero becomes (0, 0, 1).
inline TPoint<double> SafeUnit(const TPoint<double>& a) {
    const double length = Length(a);
    if (IsZero(length)) return TPoint<double>(0.0, 0.0, 1.0);
    return a / length;
}

/// A plain pair of values.
template <class A, class B>
struct Tuple2 {
    A First{};
    B Second{};

    friend constexpr bool operator==(const Tuple2&, const Tuple2&) = default;
};

}  // namespace KM
