#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <vector>

#include "Geometry/Calls.h"
#include "Geometry/GeometryBench.h"
#include "Km.h"
#include "Support/Numbers.h"
#include "Support/Polynomials.h"

namespace KM::Bench {
namespace {

using Test::Coefficients;
using Test::Numbers;
using Test::Product;
using Test::Sorted;
using Test::WorstError;

int Solve(int degree, const Coefficients& k, double* roots) {
    if (degree == 2) return Solver::Quadratic(k[2], k[3], k[4], roots);
    if (degree == 3) return Solver::Cubic(k[1], k[2], k[3], k[4], roots);
    return Solver::Quartic(k[0], k[1], k[2], k[3], k[4], roots);
}

constexpr const char* NameOf[] = {"", "", "Quadratic", "Cubic", "Quartic"};

void MeasureRoots(Report& report) {
    Numbers numbers(1);
    std::vector<Coefficients> polynomials(InputCount);
    for (Coefficients& k : polynomials)
        for (double& item : k) item = numbers.Between(-10.0, 10.0);
    const std::string floor = "floor: value of the polynomial";
    MeasureCalls(report, floor, polynomials,
                 [](const Coefficients& k) { return Solver::Check(k[0], k[1], k[2], k[3], k[4], 0.5); });
    for (const int degree : {2, 3, 4})
        MeasureCalls(
            report, NameOf[degree], polynomials,
            [degree](const Coefficients& k) {
                double roots[4];
                return Solve(degree, k, roots);
            },
            floor);
    char speed[64];
    const double calls = static_cast<double>(InputCount) * CallsPerInput;
    std::snprintf(speed, sizeof speed, "%.1f million quartics a second", calls / report.Seconds("Quartic") / 1e6);
    report.Remark(speed);
}

void MeasureEigenVectors(Report& report) {
    Numbers numbers(2);
    std::vector<Matrix<double>> matrices(InputCount / 10, Matrix<double>(3));
    for (auto& A : matrices)
        for (int i = 0; i < 3; ++i)
            for (int k = 0; k <= i; ++k) A(i, k) = A(k, i) = numbers.Between(-1.0, 1.0);
    MeasureCalls(report, "EigenVector, 3 x 3", matrices, [](const Matrix<double>& A) {
        double value = 0.0;
        EigenVector(A, value);
        return value;
    });
    MeasureCalls(report, "EigenVectorSym, 3 x 3", matrices, [](const Matrix<double>& A) {
        double value = 0.0;
        EigenVectorSym(A, value);
        return value;
    });
}

/// How many of `count` products have another number of roots than was put in, and the errors of all others, ascending.
struct Accuracy {
    int wrong = 0;
    std::vector<double> errors;

    Accuracy(int degree, int complexPairs, int count) {
        Numbers numbers(3);
        for (int i = 0; i < count; ++i) {
            const Product product = RandomProduct(numbers, degree - 2 * complexPairs, complexPairs);
            const auto found = Sorted([&](double* roots) { return Solve(degree, product.coefficients, roots); });
            const double error = WorstError(found, product.roots);
            if (std::isfinite(error)) errors.push_back(error);
            else ++wrong;
        }
        std::sort(errors.begin(), errors.end());
    }

    double At(double share) const {
        const auto index = static_cast<std::size_t>(share * static_cast<double>(errors.size()));
        return errors.empty() ? 0.0 : errors[std::min(index, errors.size() - 1)];
    }
};

/// Products of linear factors with roots in -10..10, at least 0.1 apart, and of quadratic ones with complex roots.
void PrintAccuracy() {
    constexpr int count = 100000;
    std::printf("\n%-48s %12s %12s %12s %12s %12s\n", "error of the worst root of 100,000 products", "wrong number",
                "median", "99 %", "99.9 %", "largest");
    for (const auto& [degree, pairs] : {std::array{2, 0}, {2, 1}, {3, 0}, {3, 1}, {4, 0}, {4, 1}, {4, 2}}) {
        const Accuracy accuracy(degree, pairs, count);
        const std::string name = std::string(NameOf[degree]) + ", real roots: " + std::to_string(degree - 2 * pairs);
        std::printf("%-48s %12d %12.1e %12.1e %12.1e %12.1e\n", name.c_str(), accuracy.wrong, accuracy.At(0.5),
                    accuracy.At(0.99), accuracy.At(0.999), accuracy.At(1.0));
    }
}

}  // namespace

void MeasureSolvers() {
    Report report("solvers (read \"triangle\" as call)");
    MeasureRoots(report);
    MeasureEigenVectors(report);
    PrintAccuracy();
}

}  // namespace KM::Bench
