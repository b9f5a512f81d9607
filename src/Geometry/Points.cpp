#include "Geometry/Points.h"

#include <cmath>

#include "Geometry/Guards.h"

namespace KM {

const TPoint<double> NearestPtOnLn(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& p) {
    return a + (b - a) * FootOnLine(a, b, p);
}

const TPoint<double> FindNearestPointOnLine(const TPoint<double>& base, const TPoint<double>& dir,
                                            const TPoint<double>& p) {
    return base + dir * Dot(dir, p - base);
}

bool AreCollinears(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c, double tol) {
    if (AgreeWithin(ZeroTest, a, b) || AgreeWithin(ZeroTest, a, c)) return true;
    const double cosine = Dot(SafeUnit(b - a), SafeUnit(c - a));
    return tol > std::fabs(std::fabs(cosine) - 1.0);
}

const TPoint<double> BisectorPoint(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c) {
    return a + (SafeUnit(c - a) + SafeUnit(b - a)) * 0.5;
}

void ClipSegmentToPlane(TPoint<double>* a, TPoint<double>* b, double value, int axis, bool clipEnd) {
    if (a == nullptr || b == nullptr || axis < 0 || axis > 2) return;
    const double from = a->*Axes[axis];
    const double width = b->*Axes[axis] - from;
    if (!(std::fabs(width) > 1e-8)) return;
    *(clipEnd ? b : a) = *a + (*b - *a) * ((value - from) / width);
}

}  // namespace KM
