#include "Geometry/Solids.h"

#include <cmath>

#include "Geometry/Distances.h"
#include "Geometry/Guards.h"
#include "Geometry/Solver.h"

namespace KM {

namespace {

using P = TPoint<double>;

/// A cylinder without ends, round the line from `origin` along `axis`.
struct Cylinder {
    P origin;
    P axis;
    double radius;
};

/// Where the ray from `from` along the unit vector `along` enters and leaves: the distance to the middle of the chord, and
/// half the chord, both along the ray (J. M. Cychosz, W. N. Waggenspack, "Intersecting a Ray with a Cylinder", Graphics
/// Gems IV).
bool IntRayCylinder(const P& from, const P& along, const Cylinder& cylinder, double& tIn, double& tOut) {
    const P& axis = cylinder.axis;
    const double radius = cylinder.radius;
    const P r = from - cylinder.origin;
    const P n = Cross(along, axis);
    const double sine = Length(n);
    if (sine == 0.0) {
        tIn = NoResult;
        tOut = Unbounded;
        return Length(r - axis * Dot(r, axis)) <= radius;
    }

    const P m = SafeUnit(n);
    const double distance = std::fabs(Dot(r, m));
    if (distance > radius) return false;
    const double middle = -Dot(Cross(r, axis), m) / sine;
    const P o = SafeUnit(Cross(m, axis));
    const double half = std::fabs(std::sqrt(radius * radius - distance * distance) / Dot(o, along));
    tIn = middle - half;
    tOut = middle + half;
    return true;
}

/// Keeps the segment and the axis off the coordinate planes, where the solution divides by what is nearly zero.
void Tilt(const P& A, P& B, const P& C, P& D) {
    constexpr double least = 1e-4;
    for (const auto axis : Axes) {
        D.*axis += 1e-7;
        if (std::fabs(D.*axis - C.*axis) < least) D.*axis = C.*axis + least;
        if (std::fabs(A.*axis - B.*axis) < least) B.*axis -= least;
    }
}

bool IsBetweenCaps(double t) { return 0.0 <= t && t <= 1.0; }

}  // namespace

int IntSegmSphere(double t[], const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& centre,
                  double radius) {
    const P f = A - centre;
    const P e = (B - centre) - f;
    return Solver::Quadratic(LengthSquared(e), 2.0 * Dot(e, f), LengthSquared(f) - radius * radius, t);
}

int IntSegmCylinder(double t[], const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                    const TPoint<double>& D, double radius) {
    if (t == nullptr) return 0;
    double tIn = NoResult;
    double tOut = Unbounded;
    if (!IntRayCylinder(A, SafeUnit(B - A), {C, D - C, radius}, tIn, tOut)) return 0;
    const double length = Length(B - A);
    t[0] = tIn / length;
    t[1] = tOut / length;
    return 2;
}

int IntSegmCylinderFinite(double t[], TPoint<double> A, TPoint<double> B, TPoint<double> C, TPoint<double> D,
                          double radius) {
    if (t == nullptr) return 0;
    Tilt(A, B, C, D);
    double tA = 0.5;
    double tB = 0.5;
    const double distanceA = DistPtLn(C, D, A, tA, true);
    const double distanceB = DistPtLn(C, D, B, tB, true);
    if ((tA > 1.0 && tB > 1.0) || (tA < 0.0 && tB < 0.0)) return 0;
    if (distanceA <= radius && distanceB <= radius && IsBetweenCaps(tA) && IsBetweenCaps(tB)) {
        t[0] = NoResult;
        t[1] = Unbounded;
        return 2;
    }
    if (IntSegmCylinder(t, A, B, C, D, radius) == 0) return 0;
    for (int i = 0; i < 2; ++i) {
        const double onAxis = FootOnLine(C, D, A + (B - A) * t[i]);
        if (onAxis < 0.0) t[i] = (0.0 - tA) / (tB - tA);
        if (onAxis > 1.0) t[i] = (1.0 - tA) / (tB - tA);
    }
    return 2;
}

}  // namespace KM
