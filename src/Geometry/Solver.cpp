#include "Geometry/Solver.h"

#include <algorithm>
#include <cmath>

#include "Geometry/Roots.h"

namespace KM::Solver {

double Check(double a, double b, double c, double d, double e, double x) {
    return a * x * x * x * x + b * x * x * x + c * x * x + d * x + e;
}

int Quadratic(double a, double b, double c, double roots[]) {
    if (roots == nullptr) return 0;
    if (IsZeroCoefficient(a)) return OneRoot(-c / b, roots);
    const double discriminant = b * b - 4.0 * a * c;
    const double zero = std::max(CoefficientZero, b * b * 1e-12);
    if (discriminant < -zero) return 0;
    if (discriminant < zero) return OneRoot(-0.5 * b / a, roots);
    // Of the two signs the one that adds like signs, so that nothing cancels; the other root follows from the product.
    const double s = std::sqrt(discriminant);
    const double root = s * b < 0.0 ? (s - b) * 0.5 / a : (-b - s) * 0.5 / a;
    const double other = c / (root * a);
    roots[0] = root;
    roots[1] = std::fabs(other) < 1e-12 ? 0.0 : other;
    return 2;
}

int Cubic(double a, double b, double c, double d, double roots[]) {
    if (roots == nullptr) return 0;
    if (IsZeroCoefficient(a)) return Quadratic(b, c, d, roots);
    return CubicMonic(b / a, c / a, d / a, roots);
}

}  // namespace KM::Solver
