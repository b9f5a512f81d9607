#include "Geometry/Roots.h"

#include <algorithm>
#include <cmath>

namespace KM::Solver {
namespace {

/// Beyond it squares and cubes of coefficients would leave the range of doubles.
constexpr double Overflow = 1e50;

bool Overflows(double x) { return x > Overflow || x < -Overflow; }

/// The real cube root. Not `std::cbrt`, whose last bit differs from this one.
double CubeRoot(double x) {
    const double sign = x > 0.0 ? 1.0 : x < 0.0 ? -1.0 : 0.0;
    return sign * std::exp(std::log(std::fabs(x)) / 3.0);
}

/// Cardano's root of y^3 + 3 v y + u, for D = u^2 + 4 v^3 not negative: y = c - v / c, where c^3 is the root of a
/// quadratic that needs no subtraction of like numbers.
double CardanoRoot(double u, double v, double D) {
    const double z = u <= 0.0 ? (std::sqrt(D) - u) / 2.0 : (-u - std::sqrt(D)) / 2.0;
    const double c = CubeRoot(z);
    return c - (c == 0.0 ? 0.0 : v / c);
}

/// Roots of y^3 + 3 v y + u, each less s, when all three are real: on a circle, a third of a turn apart.
int ThreeRoots(double u, double v, double s, double roots[]) {
    const double t = std::sqrt(-v);
    const double c = std::cos(std::acos(-u / (2.0 * t * -v)) / 3.0);
    const double g = std::sqrt(std::max(0.0, 1.0 - c * c)) * std::sqrt(3.0);
    roots[0] = 2.0 * t * c - s;
    roots[1] = (-c - g) * t - s;
    roots[2] = (g - c) * t - s;
    return 3;
}

}  // namespace

int CubicMonic(double p, double q, double r, double roots[]) {
    if (Overflows(p)) return OneRoot(-p, roots);
    if (Overflows(q)) return OneRoot(q > 0.0 ? -r / q : -std::sqrt(-q), roots);
    if (Overflows(r)) return OneRoot(-CubeRoot(r), roots);
    // With x = y - s the square term goes: y^3 + 3 v y + u.
    const double s = p / 3.0;
    const double squared = s * s;
    const double u = (2.0 * squared - q) * s + r;
    if (squared > Overflow || Overflows(u)) return OneRoot(-p, roots);
    const double v = q / 3.0 - squared;
    const double w = 2.0 * v;
    const double D = w * w * v + u * u;
    if (D >= 0.0) return OneRoot(CardanoRoot(u, v, D) - s, roots);
    // A negative D needs a negative v; no rounding can bring it about in another way.
    return ThreeRoots(u, v, s, roots);
}

double CubicMonicOneRoot(double p, double q, double r) {
    double roots[3];
    if (CubicMonic(p, q, r, roots) == 1) return roots[0];
    return p / 3.0 >= 0.0 ? roots[1] : roots[0];
}

}  // namespace KM::Solver
