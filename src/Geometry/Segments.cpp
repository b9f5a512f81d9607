#include "Geometry/Segments.h"

#include <cmath>

#include "Geometry/Guards.h"
#include "Geometry/LineFrame.h"

namespace KM {

namespace {

using P = TPoint<double>;

/// Which of the two segments were looked at from their other end.
struct Flips {
    bool first = false;
    bool second = false;
};

/// True if `a`, `b` lie both above or both below `c`, `d`, by more than rounding could bridge.
bool AreApart(double a, double b, double c, double d) {
    constexpr double margin = 1e-6;
    if (a > c + margin && a > d + margin && b > c + margin && b > d + margin) return true;
    return a < c - margin && a < d - margin && b < c - margin && b < d - margin;
}

bool ComesAfter(const P& a, const P& b) {
    if (a.X != b.X) return a.X > b.X;
    if (a.Y != b.Y) return a.Y > b.Y;
    return a.Z > b.Z;
}

/// The crossing of the lines, with the first segment from its first end to its last, and the second from below the first
/// to above it, so that the order in which the ends were given does not decide who owns an end.
bool IntSegmentsCanonical(double& t, double& u, const P& A, const P& B, const P& C, const P& D, Flips& flips) {
    flips.first = ComesAfter(A, B);
    const P& first = flips.first ? B : A;
    const P& last = flips.first ? A : B;

    t = u = NoResult;
    if (IsUpright(first, last) || IsUpright(C, D)) return false;
    const LineFrame frame(first, last, C, D);
    if (frame.Climb() == 0.0) return false;
    frame.Cross(t, u);
    // A level first segment leaves the second one its direction: hosts compare cut outlines between runs.
    flips.second = frame.isTurned && frame.c.Y > frame.d.Y;
    if (flips.second) u = 1.0 - u;
    return true;
}

bool OwnsPoint(double parameter) { return 0.0 <= parameter && parameter < 1.0; }

bool IntSegmSegmOnce(double& t, double& u, const P& A, const P& B, const P& C, const P& D) {
    t = u = 0.5;
    if (AreApart(A.X, B.X, C.X, D.X) || AreApart(A.Y, B.Y, C.Y, D.Y)) return false;

    P c = C;
    P d = D;
    // Two different steps, so that a segment which shares both ends is turned as well as moved.
    if (A == C || B == C) c += P(1e-7, 1e-7, 0.0);
    if (A == D || B == D) d += P(2e-7, 2e-7, 0.0);

    Flips flips;
    if (!IntSegmentsCanonical(t, u, A, B, c, d, flips)) return false;
    const bool isHit = OwnsPoint(t) && OwnsPoint(u);
    if (flips.second) u = 1.0 - u;
    if (flips.first) t = 1.0 - t;
    return isHit;
}

}  // namespace

bool IntSegmSegm(double& t, double& u, const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                 const TPoint<double>& D) {
    const bool isHit = IntSegmSegmOnce(t, u, A, B, C, D);
    constexpr double margin = 1e-8;
    // Near an end of the first segment the second one decides.
    if (std::fabs(t) < margin || std::fabs(t - 1.0) < margin) return IntSegmSegmOnce(u, t, C, D, A, B);
    return isHit;
}

}  // namespace KM
