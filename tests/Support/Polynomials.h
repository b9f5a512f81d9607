#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "Geometry/Solver.h"
#include "Support/Numbers.h"

namespace KM::Test {

/// a x^4 + b x^3 + c x^2 + d x + e, beginning with a. Lower degrees have zeros in front.
using Coefficients = std::array<double, 5>;

/// The roots that `solve(roots)` gives, ascending.
template <class Solve>
std::vector<double> Sorted(Solve solve) {
    double roots[4];
    const int count = solve(roots);
    std::vector<double> sorted(roots, roots + count);
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

inline std::vector<double> QuadraticRoots(double a, double b, double c) {
    return Sorted([&](double* roots) { return Solver::Quadratic(a, b, c, roots); });
}

inline std::vector<double> CubicRoots(double a, double b, double c, double d) {
    return Sorted([&](double* roots) { return Solver::Cubic(a, b, c, d, roots); });
}

inline std::vector<double> QuarticRoots(const Coefficients& k) {
    return Sorted([&](double* roots) { return Solver::Quartic(k[0], k[1], k[2], k[3], k[4], roots); });
}

/// What the polynomial leaves at `x`, in units of its largest term there.
inline double Residue(const Coefficients& k, double x) {
    double largest = 0.0;
    for (std::size_t i = 0; i < 5; ++i)
        largest = std::max(largest, std::fabs(k[i] * std::pow(x, static_cast<double>(4 - i))));
    return std::fabs(Solver::Check(k[0], k[1], k[2], k[3], k[4], x)) / std::max(largest, 1e-300);
}

inline Coefficients Times(const Coefficients& k, double root) {
    Coefficients product{};
    for (std::size_t i = 0; i < 5; ++i) product[i] = (i < 4 ? k[i + 1] : 0.0) - root * k[i];
    return product;
}

/// A polynomial with the leading coefficient 1, and its real roots, ascending.
struct Product {
    Coefficients coefficients{0, 0, 0, 0, 1};
    std::vector<double> roots;
};

/// The product of `linear` factors with roots in -10..10, at least 0.1 apart, and `quadratic` factors with complex roots
/// whose imaginary part is from 0.5 to 10.
inline Product RandomProduct(Numbers& numbers, int linear, int quadratic) {
    Product product;
    while (static_cast<int>(product.roots.size()) < linear) {
        const double root = numbers.Between(-10.0, 10.0);
        const bool isClose = std::any_of(product.roots.begin(), product.roots.end(),
                                         [&](double other) { return std::fabs(root - other) < 0.1; });
        if (isClose) continue;
        product.roots.push_back(root);
        product.coefficients = Times(product.coefficients, root);
    }
    for (int i = 0; i < quadratic; ++i) {
        const double real = numbers.Between(-10.0, 10.0);
        const double imaginary = numbers.Between(0.5, 10.0);
        // (x - real)^2 + imaginary^2
        Coefficients k = Times(Times(product.coefficients, real), real);
        for (std::size_t j = 0; j < 5; ++j) k[j] += imaginary * imaginary * product.coefficients[j];
        product.coefficients = k;
    }
    std::sort(product.roots.begin(), product.roots.end());
    return product;
}

/// The error of the worst root, relative where roots are above 1; infinite if their number is wrong.
inline double WorstError(const std::vector<double>& found, const std::vector<double>& expected) {
    if (found.size() != expected.size()) return Infinity;
    double worst = 0.0;
    for (std::size_t i = 0; i < found.size(); ++i)
        worst = std::max(worst, std::fabs(found[i] - expected[i]) / std::max(1.0, std::fabs(expected[i])));
    return worst;
}

}  // namespace KM::Test
