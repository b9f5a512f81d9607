#include "Geometry/Lines.h"

#include <cmath>

#include "Geometry/Guards.h"
#include "Geometry/LineFrame.h"

namespace KM {

namespace {

using P = TPoint<double>;

bool AreSameInXY(const P& a, const P& b) { return a.X == b.X && a.Y == b.Y; }

/// The end points on which the lines hang together.
bool SnapToEnds(double& t, double& u, const P& B, const P& C, const P& D, const LineFrame& frame) {
    const auto snap = [&](double onAB, double onCD) {
        t = onAB;
        u = onCD;
        return true;
    };
    if (frame.c.X == 0.0 && frame.c.Y == 0.0) return snap(0.0, 0.0);
    // The Y of C and not of D: D stands square over A, and a C on the ray AB is then passed over. Geodesic windows are
    // cut with this answer.
    if (frame.d.X == 0.0 && frame.c.Y == 0.0) return snap(0.0, 1.0);
    if (AreSameInXY(B, D)) return snap(1.0, 1.0);
    return AreSameInXY(B, C) && snap(1.0, 0.0);
}

}  // namespace

bool IntLineLine(double& t, double& u, const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                 const TPoint<double>& D) {
    t = u = NoResult;
    if (IsUpright(A, B) || IsUpright(C, D)) return false;
    const LineFrame frame(A, B, C, D);
    if (frame.Climb() == 0.0) return false;
    frame.Cross(t, u);
    return true;
}

const TPoint<double> IntLineLine(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                                 const TPoint<double>& D) {
    double t = NoResult;
    double u = NoResult;
    IntLineLine(t, u, A, B, C, D);
    return A + (B - A) * t;
}

bool IntLineLine2(double& t, double& u, const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                  const TPoint<double>& D) {
    t = u = NoResult;
    if (IsUpright(A, B) || IsUpright(C, D)) return false;
    const LineFrame frame(A, B, C, D);
    if (std::fabs(frame.Climb()) < 1e-12) return false;
    if (!SnapToEnds(t, u, B, C, D, frame)) frame.Cross(t, u);
    return true;
}

// The connection stands square on both lines, which gives two linear equations in the two parameters; solved by Cramer's
// rule (D. Sunday, "Distance between 3D Lines & Segments").
const Tuple2<double, double> MinSegmentBetweenTwoLines(const TPoint<double>& A, const TPoint<double>& B,
                                                       const TPoint<double>& C, const TPoint<double>& D) {
    const P ab = B - A;
    const P cd = D - C;
    const P ca = A - C;
    const double abab = Dot(ab, ab);
    const double abcd = Dot(ab, cd);
    const double cdcd = Dot(cd, cd);
    const double abca = Dot(ab, ca);
    const double cdca = Dot(cd, ca);
    const double determinant = abab * cdcd - abcd * abcd;
    return {(abcd * cdca - cdcd * abca) / determinant, (abab * cdca - abcd * abca) / determinant};
}

void MinSegmentBetweenTwoLines(TPoint<double>& onAB, TPoint<double>& onCD, const TPoint<double>& A,
                               const TPoint<double>& B, const TPoint<double>& C, const TPoint<double>& D) {
    const Tuple2<double, double> at = MinSegmentBetweenTwoLines(A, B, C, D);
    const P first = A + (B - A) * at.First;
    onCD = C + (D - C) * at.Second;
    onAB = first;
}

const TPoint<double> MidOfMinSegmentBetweenTwoLines(const TPoint<double>& A, const TPoint<double>& B,
                                                    const TPoint<double>& C, const TPoint<double>& D) {
    P onAB;
    P onCD;
    MinSegmentBetweenTwoLines(onAB, onCD, A, B, C, D);
    return (onAB + onCD) * 0.5;
}

}  // namespace KM
