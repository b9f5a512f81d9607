#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

#include "Geometry/Point.h"

namespace KM {

/// A box in XY, with its border.
struct PlaneBox {
    double minX, minY, maxX, maxY;

    bool Meets(const PlaneBox& b) const { return minX <= b.maxX && b.minX <= maxX && minY <= b.maxY && b.minY <= maxY; }
};

/// The box without a point: it meets no box of finite size, and adds nothing to another one.
inline constexpr PlaneBox EmptyBox = {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(),
                                      -std::numeric_limits<double>::infinity(),
                                      -std::numeric_limits<double>::infinity()};

inline PlaneBox Union(const PlaneBox& a, const PlaneBox& b) {
    return {std::min(a.minX, b.minX), std::min(a.minY, b.minY), std::max(a.maxX, b.maxX), std::max(a.maxY, b.maxY)};
}

/// The box of one point.
template <class Place>
PlaneBox At(const Place& p) {
    return {p.X, p.Y, p.X, p.Y};
}

/// True if both coordinates are numbers, and neither lies beyond `most`.
template <class Place>
bool IsWithin(const Place& p, double most) {
    return std::fabs(p.X) <= most && std::fabs(p.Y) <= most;
}

/// The square of the distance in XY.
inline double DistanceSquaredInXY(const TPoint<double>& a, const TPoint<double>& b) {
    const double dx = b.X - a.X;
    const double dy = b.Y - a.Y;
    return dx * dx + dy * dy;
}

inline constexpr double TwoPi = 2.0 * std::numbers::pi;

/// The angle of a direction, from 0 to 2 pi. Points in the same place give 0.
inline double DirectionInXY(const TPoint<double>& from, const TPoint<double>& to) {
    const double angle = std::atan2(to.Y - from.Y, to.X - from.X);
    return angle < 0.0 ? angle + TwoPi : angle;
}

/// The way round from one such angle to another, counter-clockwise, from 0 to 2 pi.
inline double WayRound(double from, double to) {
    const double way = to - from;
    if (way < 0.0) return way + TwoPi;
    return way >= TwoPi ? way - TwoPi : way;
}

/// How an outline turns at B, between A and C: twice the area of the triangle, negative for a turn to the left.
template <class Place>
double TurnAt(const Place& A, const Place& B, const Place& C) {
    return (A.X - B.X) * (C.Y - B.Y) - (A.Y - B.Y) * (C.X - B.X);
}

}  // namespace KM
