#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace KM {

// An edge in a plane of its own: it runs along X, its start is the origin.
//
//            + pseudo-source, to which the shortest way from the source comes in `sigma`
//       d0  / \  d1
//          /   \            tau +1: the pseudo-source lies left of the edge
//   0 ----b0----b1---- L

/// An interval of an edge that is lit by one bundle of straight rays.
struct GeodesicWindow {
    double b0 = 0.0;  ///< where the interval begins and ends, as distances from the start of the edge
    double b1 = 0.0;
    double d0 = 0.0;  ///< from the pseudo-source to these two points
    double d1 = 0.0;
    double sigma = 0.0;     ///< from the source to the pseudo-source
    std::int8_t tau = 1;    ///< the side of the pseudo-source: +1 left, where the own face of the edge lies, or -1
    std::int32_t edge = 0;  ///< a canonical edge
};

struct FlatPoint {
    double x = 0.0;
    double y = 0.0;
};

inline FlatPoint operator-(const FlatPoint& a, const FlatPoint& b) { return {a.x - b.x, a.y - b.y}; }
inline FlatPoint operator+(const FlatPoint& a, const FlatPoint& b) { return {a.x + b.x, a.y + b.y}; }
inline FlatPoint operator*(const FlatPoint& a, double s) { return {a.x * s, a.y * s}; }
inline double Length(const FlatPoint& a) { return std::sqrt(a.x * a.x + a.y * a.y); }
inline double Cross(const FlatPoint& a, const FlatPoint& b) { return a.x * b.y - a.y * b.x; }

/// A direction of length 1; a vector of length 0 stays what it is.
inline FlatPoint Unit(const FlatPoint& a) {
    const double length = Length(a);
    return length == 0.0 ? a : FlatPoint{a.x / length, a.y / length};
}

/// Where the pseudo-source of a window lies in the plane of its edge.
inline FlatPoint PseudoSource(const GeodesicWindow& w) {
    const double width = w.b1 - w.b0;
    const double a = (width * width + w.d0 * w.d0 - w.d1 * w.d1) / (2.0 * width);
    const double q = w.d0 * w.d0 - a * a;
    // Rounding can leave three lengths that make no triangle; the pseudo-source then lies on the line of the edge.
    if (q < 0.0) return {w.d1 > w.d0 ? w.b1 - w.d1 : w.b1 + w.d1, 0.0};
    return {w.b0 + a, w.tau * std::sqrt(q)};
}

/// From a pseudo-source to the point `p` of the edge.
inline double DistanceFrom(const FlatPoint& source, double p) { return Length(source - FlatPoint{p, 0.0}); }

/// From the pseudo-source of a window to the point `p` of its edge.
inline double WindowDistance(const GeodesicWindow& w, double p) { return DistanceFrom(PseudoSource(w), p); }

/// The shortest distance that a window can have: what it stands in the queue by.
inline double NearestDistance(const GeodesicWindow& w) { return std::min(w.d0, w.d1) + w.sigma; }

/// The same light on another interval of the edge.
inline GeodesicWindow Lit(const GeodesicWindow& w, double b0, double b1) {
    const FlatPoint source = PseudoSource(w);
    GeodesicWindow part = w;
    part.b0 = b0;
    part.b1 = b1;
    part.d0 = DistanceFrom(source, b0);
    part.d1 = DistanceFrom(source, b1);
    return part;
}

/// A window with another end; the distance at the end that stays is not touched.
inline GeodesicWindow WithEnd(const GeodesicWindow& w, double b1) {
    GeodesicWindow part = w;
    part.b1 = b1;
    part.d1 = WindowDistance(w, b1);
    return part;
}

/// As `WithEnd`, for the beginning.
inline GeodesicWindow WithBegin(const GeodesicWindow& w, double b0) {
    GeodesicWindow part = w;
    part.b0 = b0;
    part.d0 = WindowDistance(w, b0);
    return part;
}

}  // namespace KM
