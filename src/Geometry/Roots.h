#pragma once

#include <cmath>

namespace KM::Solver {

/// The one zero test of all coefficients.
inline constexpr double CoefficientZero = 1.05367e-8;

inline bool IsZeroCoefficient(double x) { return CoefficientZero > std::fabs(x); }

inline int OneRoot(double root, double roots[]) {
    roots[0] = root;
    return 1;
}

/// Roots of x^3 + p x^2 + q x + r: one or three, which it returns.
int CubicMonic(double p, double q, double r, double roots[]);

/// One of these roots: of three, the lowest if p is not negative, else the highest, which loses least to rounding.
double CubicMonicOneRoot(double p, double q, double r);

}  // namespace KM::Solver
