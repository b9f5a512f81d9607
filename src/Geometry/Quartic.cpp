#include <algorithm>
#include <cmath>

#include "Geometry/Roots.h"
#include "Geometry/Solver.h"

// The method of D. Herbison-Evans, "Solving Quartics and Cubics for Graphics". A real root y of a cubic resolvent splits
// the quartic into two quadratics,
//
//     x^4 + p x^3 + q x^2 + r x + s = (x^2 + G x + H) (x^2 + g x + h),
//
//     G + g = p,    H + h + G g = q,    G h + g H = r,    H h = s.
//
// Each pair of coefficients is a mean plus and minus half a difference. In exact arithmetic all ways to them agree; the
// one taken here avoids, by signs, to take a coefficient from the difference of two like numbers.

namespace KM::Solver {
namespace {

struct Monic {
    double p, q, r, s;
};

/// The two quadratics; nothing else is known of a quartic without real roots.
struct Quadratics {
    bool areReal = false;
    double G = 0.0, H = 0.0, g = 0.0, h = 0.0;
};

bool BothPositive(double a, double b) { return a > 0.0 && b > 0.0; }
bool BothNegative(double a, double b) { return a < 0.0 && b < 0.0; }
bool OfLikeSign(double a, double b) { return BothPositive(a, b) || BothNegative(a, b); }
bool OfOppositeSign(double a, double b) { return OfLikeSign(a, -b); }

/// Half differences e (of G and g) and f (of H and h) from their squares and their product. A root is taken of a square
/// that is a sum of positive terms, and the product gives the other one; but only a product that is itself a sum of
/// like signs is exact enough for more than its sign.
void HalfDifferences(const Monic& m, double y, double eSquared, double fSquared, double& e, double& f) {
    const double product = -(m.p * y / 4.0 + m.r / 2.0);
    const bool isProductExact = m.p == 0.0 || y == 0.0 || m.r == 0.0 || OfLikeSign(m.p * y, m.r);
    if (isProductExact && m.q < 0.0 && y < 0.0 && eSquared > 0.0) {
        e = std::sqrt(eSquared);
        f = product / e;
    } else if (isProductExact && m.s < 0.0 && fSquared > 0.0) {
        f = std::sqrt(fSquared);
        e = product / f;
    } else {
        e = std::sqrt(eSquared);
        f = product < 0.0 ? -std::sqrt(fSquared) : std::sqrt(fSquared);
    }
}

Quadratics FerrariSplit(const Monic& m) {
    const auto [p, q, r, s] = m;
    const double y = CubicMonicOneRoot(q, p * r - 4.0 * s, (p * p - 4.0 * q) * s + r * r);
    const double eSquared = p * p / 4.0 - q - y;
    const double fSquared = y * y / 4.0 - s;
    if (eSquared < 0.0 || fSquared < 0.0) return {};
    double e, f;
    HalfDifferences(m, y, eSquared, fSquared, e, f);

    Quadratics result{true, p / 2.0 + e, -y / 2.0 + f, p / 2.0 - e, -y / 2.0 - f};
    if (OfLikeSign(q, y) && e != 0.0) {
        if (p > 0.0) result.g = (q + y) / result.G;
        else result.G = (q + y) / result.g;
    }
    if (y == 0.0 && f == 0.0) result.H = result.h = 0.0;
    else if (OfOppositeSign(f, y)) result.h = s / result.H;
    else result.H = s / result.h;
    return result;
}

/// A pair of coefficients, sum and difference of a mean and half a difference. The one that is a difference of like
/// numbers is taken from the product of the pair instead, and never gets larger than the pair was before.
struct Pair {
    double sum, difference;

    Pair(double mean, double half, double product) : sum(mean + half), difference(mean - half) {
        const double most = std::max(std::fabs(sum), std::fabs(difference));
        if (OfLikeSign(mean, half)) difference = product / sum;
        else if (OfOppositeSign(mean, half)) sum = product / difference;
        sum = Within(sum, most);
        difference = Within(difference, most);
    }

private:
    static double Within(double x, double most) { return x > most ? most : x < -most ? -most : x; }
};

/// One half difference from the root of its own square, the other from the product of both.
void Halve(double root, double product, double& ofRoot, double& ofProduct) {
    ofRoot = root / 2.0;
    ofProduct = root == 0.0 ? 0.0 : product / root;
}

Quadratics NeumarkSplit(const Monic& m) {
    const auto [p, q, r, s] = m;
    const double y = CubicMonicOneRoot(-2.0 * q, q * q + p * r - 4.0 * s, (r - p * q) * r + p * p * s);
    const double g1 = p / 2.0;
    const double h1 = (q - y) / 2.0;
    const double dg = p * p - 4.0 * y;
    const double dh = (q - y) * (q - y) - 4.0 * s;
    if (dg < 0.0 || dh < 0.0) return {};

    // The root is taken of the one that lost less to cancellation, measured by what it would be as a sum.
    const double ag = p * p + 4.0 * y;
    const double ah = s > 0.0 ? (q - y) * (q - y) + 4.0 * s : dh;
    const double product = p * h1 - r;
    double g2, h2;
    if (y < 0.0 || ah * dg > ag * dh) Halve(std::sqrt(dg), product, g2, h2);
    else Halve(std::sqrt(dh), product, h2, g2);
    const Pair H(h1, h2, s);
    const Pair G(g1, g2, y);
    return {true, G.sum, H.sum, G.difference, H.difference};
}

/// Signs of (p, q, r, s), a bit each, set if negative, for which Neumark's resolvent cancels less than Ferrari's.
bool PrefersNeumark(const Monic& m) {
    const int signs = 8 * (m.p < 0.0) + 4 * (m.q < 0.0) + 2 * (m.r < 0.0) + (m.s < 0.0);
    return signs == 1 || signs == 2 || signs == 5 || signs == 8 || signs == 11;
}

/// Roots of x^4 + q x^2 + s.
int Biquadratic(double q, double s, double roots[]) {
    double squares[2];
    const int squareCount = Quadratic(1.0, q, s, squares);
    int count = 0;
    for (int i = 0; i < squareCount; ++i) {
        if (!(squares[i] > 0.0)) continue;
        const double root = std::sqrt(squares[i]);
        roots[count++] = root;
        roots[count++] = -root;
    }
    return count;
}

}  // namespace

int Quartic(double a, double b, double c, double d, double e, double roots[]) {
    if (roots == nullptr) return 0;
    if (IsZeroCoefficient(a)) return Cubic(b, c, d, e, roots);
    const Monic m{b / a, c / a, d / a, e / a};
    if ((std::fabs(m.q) + std::fabs(m.s)) * CoefficientZero > std::fabs(m.p) + std::fabs(m.r))
        return Biquadratic(m.q, m.s, roots);
    const Quadratics split = PrefersNeumark(m) ? NeumarkSplit(m) : FerrariSplit(m);
    if (!split.areReal) return 0;
    const int count = Quadratic(1.0, split.G, split.H, roots);
    return count + Quadratic(1.0, split.g, split.h, roots + count);
}

}  // namespace KM::Solver
