#include "Geometry/Distances.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "Geometry/Guards.h"

namespace KM {

namespace {

using P = TPoint<double>;

constexpr double EndMargin = 1e-8;

double WithoutDust(double x) { return IsZero(x) ? 0.0 : x; }

double DistPtLnIn3D(const P& a, const P& b, const P& p, double& t) {
    const P along = b - a;
    const P toA = a - p;
    t = FootOnLine(a, b, p);
    const P toFoot = IsShort(along) ? toA : toA + along * t;
    const double squared = LengthSquared(toFoot);
    // The square is enough for what lies on the line: tolerances are far above 1e-3, and tuned with squares below it.
    return squared > 1e-6 ? std::sqrt(squared) : squared;
}

double DistPtLnIn2D(const P& a, const P& b, const P& p, double& t) {
    t = 0.5;
    if (AgreeWithin(1e-8, a, b)) return Length(p - b);

    const double dx = b.X - a.X;
    const double dy = b.Y - a.Y;
    // The half turn gives the right-hand side the positive sign.
    const double angle = std::atan2(dy, dx) + std::numbers::pi;
    const double sine = std::sin(angle);
    const double cosine = std::cos(angle);
    const double px = p.X - a.X;
    const double py = p.Y - a.Y;
    t = WithoutDust((px * cosine + py * sine) / (dx * cosine + dy * sine));
    return WithoutDust(py * cosine - px * sine);
}

double SignOf(double x) {
    if (x < 0.0) return -1.0;
    return x > 0.0 ? 1.0 : 0.0;
}

P NormalOf(const P& A, const P& B, const P& C) { return Cross(B - A, C - A); }

}  // namespace

double DistPtLn(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& p, double& t, bool in3D) {
    return in3D ? DistPtLnIn3D(a, b, p, t) : DistPtLnIn2D(a, b, p, t);
}

double DistPtLn(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& p, bool in3D) {
    double t = 0.5;
    return DistPtLn(a, b, p, t, in3D);
}

double DistPtSegm(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& p, double& t, bool in3D,
                  double /*unused*/) {
    const double toLine = DistPtLn(a, b, p, t, in3D);
    const bool isBeforeA = t < EndMargin;
    const bool isBehindB = t > 0.99999999;
    if (!isBeforeA && !isBehindB) return toLine;

    // Never 0 or 1: callers take these for hits of an end point that they have dealt with already.
    t = isBeforeA ? EndMargin : 0.99999999;
    const P& end = isBeforeA ? a : b;
    if (in3D) return Length(p - end);
    return std::hypot(p.X - end.X, p.Y - end.Y) * SignOf(toLine + EndMargin);
}

double DistToPlane(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C, const TPoint<double>& p) {
    const P normal = SafeUnit(NormalOf(A, B, C));
    return Dot(p, normal) - Dot(A, normal);
}

double DistPointToPlan(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                       const TPoint<double>& p) {
    return Dot(NormalOf(A, B, C), p - A);
}

double DistPointAboveSegment(const TPoint<double>& p, const TPoint<double>& a, const TPoint<double>& b) {
    const double width = b.X - a.X;
    if (!(std::fabs(width) > 1e-8)) return p.Y - std::max(a.Y, b.Y);
    return p.Y - (a.Y + (b.Y - a.Y) * ((p.X - a.X) / width));
}

}  // namespace KM
