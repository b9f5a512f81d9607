#include "Geometry/Curves.h"

#include <algorithm>

#include "Geometry/Distances.h"
#include "Geometry/Lines.h"

namespace KM {

const TPoint<double> GetSplinePoint(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                                    const TPoint<double>& D, double t) {
    const double t2 = t * t;
    const double t3 = t2 * t;
    return A * (1.0 - 4.0 * t + 5.0 * t2 - 2.0 * t3) + (A + B) * (4.0 * t - 8.0 * t2 + 4.0 * t3) +
           (C + D) * (4.0 * t2 - 4.0 * t3) + C * (2.0 * t3 - t2);
}

const Tuple2<double, TPoint<double>> Simplify(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C,
                                              const TPoint<double>& D, double tol) {
    const auto errorOf = [&](const TPoint<double>& x) {
        return std::max(DistPtLn(A, x, B, true), DistPtLn(x, D, C, true));
    };
    Tuple2<double, TPoint<double>> best{1e20, MidOfMinSegmentBetweenTwoLines(A, B, C, D)};

    // Where B-C is too short for a parameter, that is 0.5, and the distance alone decides.
    double t = 0.5;
    if (DistPtLn(B, C, best.Second, t, true) < 5.0 * tol && -0.1 < t && t < 1.1) best.First = errorOf(best.Second);

    for (int k = 0; k <= 6; ++k) {
        const TPoint<double> x = B + (C - B) * static_cast<double>(k) / 6.0;
        const double error = errorOf(x);
        if (error < best.First) best = {error, x};
    }
    return best;
}

}  // namespace KM
