#include "Geometry/EigenVector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <type_traits>

#include "Support/Numbers.h"

namespace KM {
namespace {

using Test::NaN;
using Test::Numbers;
using Test::SameBits;
using Vector = std::vector<double>;

using Dominant = const Vector (*)(const Matrix<double>&, double&);
using Next = const Vector (*)(const Matrix<double>&, const Vector&, const double&, double&);
static_assert(std::is_same_v<decltype(static_cast<Dominant>(&EigenVector)), Dominant>);
static_assert(std::is_same_v<decltype(static_cast<Next>(&EigenVector)), Next>);
static_assert(std::is_same_v<decltype(&EigenVectorSym), Dominant>);

Matrix<double> Rows(std::initializer_list<Vector> rows) {
    Matrix<double> matrix(static_cast<int>(rows.size()));
    int row = 0;
    for (const Vector& items : rows) {
        for (int column = 0; column < matrix.Dimension(); ++column) matrix(row, column) = items[column];
        ++row;
    }
    return matrix;
}

/// A symmetric matrix with random eigenvectors and these eigenvalues: mirrored on random planes again and again.
Matrix<double> WithEigenvalues(const Vector& values, Numbers& numbers) {
    const int n = static_cast<int>(values.size());
    Matrix<double> A(n);
    for (int i = 0; i < n; ++i) A(i, i) = values[i];
    for (int mirror = 0; mirror < n; ++mirror) {
        Vector u(values.size());
        double squared = 0.0;
        for (double& item : u) {
            item = numbers.Between(-1.0, 1.0);
            squared += item * item;
        }
        Matrix<double> H(n), HA(n), HAH(n);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j) H(i, j) = (i == j ? 1.0 : 0.0) - 2.0 * u[i] * u[j] / squared;
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j)
                for (int k = 0; k < n; ++k) HA(i, j) += H(i, k) * A(k, j);
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < n; ++j)
                for (int k = 0; k < n; ++k) HAH(i, j) += HA(i, k) * H(k, j);
        A = HAH;
    }
    return A;
}

/// How far A x is from value x.
double Defect(const Matrix<double>& A, const Vector& x, double value) {
    double worst = 0.0;
    for (int i = 0; i < A.Dimension(); ++i) {
        double sum = 0.0;
        for (int k = 0; k < A.Dimension(); ++k) sum += A(i, k) * x[k];
        worst = std::max(worst, std::fabs(sum - value * x[i]));
    }
    return worst;
}

double LengthOf(const Vector& x) {
    double sum = 0.0;
    for (const double item : x) sum += item * item;
    return std::sqrt(sum);
}

TEST(EigenVector, OfTheIdentityIsTheFirstUnitVector) {
    double value = 0.0;
    EXPECT_EQ(EigenVector(Rows({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}), value), (Vector{1, 0, 0}));
    EXPECT_EQ(value, 1.0);
}

TEST(EigenVector, HasItsLargestComponentAtOne) {
    double value = 0.0;
    const Vector x = EigenVector(Rows({{2, 1}, {1, 2}}), value);
    EXPECT_NEAR(value, 3.0, 1e-8);
    EXPECT_NEAR(x[0], 1.0, 1e-8);
    EXPECT_NEAR(x[1], 1.0, 1e-8);
    const Vector y = EigenVector(Rows({{1, 0.5}, {8, 1}}), value);
    EXPECT_NEAR(value, 3.0, 1e-8);
    EXPECT_NEAR(y[0], 0.25, 1e-8);
    EXPECT_EQ(y[1], 1.0);
}

TEST(EigenVector, KeepsTheSignOfTheValue) {
    double value = 0.0;
    EXPECT_EQ(EigenVector(Rows({{-4, 0}, {0, 1}}), value), (Vector{1, 0}));
    EXPECT_EQ(value, -4.0);
}

TEST(EigenVector, StaysOnTheVectorItBeginsWith) {
    double value = 0.0;
    EXPECT_EQ(EigenVector(Rows({{1, 0}, {0, 5}}), value), (Vector{1, 0}));
    EXPECT_EQ(value, 1.0);
}

TEST(EigenVector, EndsAfterEightyRounds) {
    double value = 0.0;
    // A quarter turn in each round: after an even number of them the first unit vector is back.
    EXPECT_EQ(EigenVector(Rows({{0, -1}, {1, 0}}), value), (Vector{1, 0}));
    // The second component grows by a trace in each round, just too much to stand still.
    const Vector x = EigenVector(Rows({{1, 0}, {2e-9, 1}}), value);
    EXPECT_EQ(x[0], 1.0);
    EXPECT_NEAR(x[1], 160e-9, 1e-15);
}

TEST(EigenVectorSym, HasUnitLength) {
    double value = 0.0;
    const Vector x = EigenVectorSym(Rows({{2, 1}, {1, 2}}), value);
    EXPECT_DOUBLE_EQ(value, 3.0);
    EXPECT_DOUBLE_EQ(x[0], std::sqrt(0.5));
    EXPECT_DOUBLE_EQ(x[1], std::sqrt(0.5));
}

TEST(EigenVectorSym, TurnsRoundForANegativeValue) {
    double value = 0.0;
    const Vector x = EigenVectorSym(Rows({{-2, -1}, {-1, -2}}), value);
    EXPECT_DOUBLE_EQ(value, 3.0);
    EXPECT_GT(x[0], 0.0);  // 80 turns
    EXPECT_NEAR(LengthOf(x), 1.0, 1e-15);
}

TEST(EigenVector, NextPairIsFoundByDeflation) {
    const Matrix<double> A = Rows({{4, 1, 0}, {1, 3, 1}, {0, 1, 2}});
    double first = 0.0;
    const Vector known = EigenVector(A, first);
    double second = 0.0;
    const Vector x = EigenVector(A, known, first, second);
    EXPECT_NEAR(first, 3.0 + std::sqrt(3.0), 1e-8);
    EXPECT_NEAR(second, 3.0, 1e-7);
    EXPECT_NEAR(LengthOf(x), 1.0, 1e-15);
    EXPECT_LT(Defect(A, x, second), 1e-7);
}

TEST(EigenVector, NextPairTakesBothValuesInOneVariable) {
    const Matrix<double> A = Rows({{4, 1, 0}, {1, 3, 1}, {0, 1, 2}});
    double first = 0.0;
    const Vector known = EigenVector(A, first);
    double second = 0.0;
    const Vector expected = EigenVector(A, known, first, second);
    EXPECT_EQ(EigenVector(A, known, first, first), expected);
    EXPECT_EQ(first, second);
}

TEST(EigenVector, RefusesWhatHasNone) {
    double value = 7.0;
    EXPECT_TRUE(EigenVector(Matrix<double>(0), value).empty());
    EXPECT_EQ(value, 0.0);
    value = 7.0;
    EXPECT_TRUE(EigenVectorSym(Matrix<double>(0), value).empty());
    EXPECT_EQ(value, 0.0);
    for (const Vector& known : {Vector{}, Vector{1}, Vector{1, 0, 0}}) {
        value = 7.0;
        EXPECT_TRUE(EigenVector(Rows({{2, 1}, {1, 2}}), known, 3.0, value).empty());
        EXPECT_EQ(value, 0.0);
    }
    value = 7.0;
    EXPECT_TRUE(EigenVector(Rows({{2}}), Vector{1}, 2.0, value).empty());
    EXPECT_EQ(value, 0.0);
}

TEST(EigenVector, EndsOnNumbersThatAreNone) {
    double value = 0.0;
    EXPECT_EQ(EigenVector(Matrix<double>(2), value).size(), 2u);
    EXPECT_EQ(EigenVectorSym(Matrix<double>(2), value).size(), 2u);
    EXPECT_EQ(EigenVector(Rows({{NaN, 1}, {1, 2}}), value).size(), 2u);
    EXPECT_EQ(EigenVector(Rows({{2, 1}, {1, 2}}), Vector{0, 0}, 3.0, value).size(), 2u);
    EXPECT_EQ(EigenVector(Rows({{2, 1}, {1, 2}}), Vector{NaN, NaN}, NaN, value).size(), 2u);
}

TEST(EigenVector, FindsTheLargestTwoOfSymmetricMatrices) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        Vector values{10.0, 6.0};
        for (int i = numbers.Below(4); i > 0; --i) values.push_back(numbers.Between(-3.0, 3.0));
        const Matrix<double> A = WithEigenvalues(values, numbers);
        double first = 0.0, second = 0.0, symmetric = 0.0;
        const Vector x = EigenVector(A, first);
        EXPECT_NEAR(first, 10.0, 1e-6);
        EXPECT_LT(Defect(A, x, first), 1e-6);
        const Vector y = EigenVectorSym(A, symmetric);
        EXPECT_NEAR(symmetric, 10.0, 1e-6);
        EXPECT_LT(Defect(A, y, symmetric), 1e-6);
        const Vector z = EigenVector(A, x, first, second);
        EXPECT_NEAR(second, 6.0, 1e-5);
        EXPECT_LT(Defect(A, z, second), 1e-4);
    }
}

/// One round after another, as the rule has it, for matrices of dimension three.
Vector PlainEigenVector(const Matrix<double>& A, bool isSymmetric, double& value) {
    Vector x{1, 0, 0};
    if (isSymmetric) x = Vector(3, 1.0 / std::sqrt(3.0));
    int pivot = 0;
    for (int round = 0; round < 80; ++round) {
        Vector y(3);
        for (int i = 0; i < 3; ++i) y[i] = 0.0 + A(i, 0) * x[0] + A(i, 1) * x[1] + A(i, 2) * x[2];
        double divisor;
        if (isSymmetric) {
            divisor = value = std::sqrt(y[0] * y[0] + y[1] * y[1] + y[2] * y[2]);
        } else {
            value = y[pivot];
            pivot = 0;
            if (std::fabs(y[1]) > std::fabs(y[pivot])) pivot = 1;
            if (std::fabs(y[2]) > std::fabs(y[pivot])) pivot = 2;
            divisor = y[pivot];
        }
        const Vector next{y[0] / divisor, y[1] / divisor, y[2] / divisor};
        const double move = (next[0] - x[0]) * (next[0] - x[0]) + (next[1] - x[1]) * (next[1] - x[1]) +
                            (next[2] - x[2]) * (next[2] - x[2]);
        x = next;
        if (move < 1e-18) break;
    }
    return x;
}

TEST(EigenVector, GivesTheBitsOfThePlainRule) {
    for (unsigned seed = 0; seed < 3000; ++seed) {
        Numbers numbers(seed);
        Matrix<double> A(3);
        for (int i = 0; i < 3; ++i)
            for (int k = 0; k < 3; ++k) A(i, k) = seed % 4 == 0 ? numbers.Hostile() : numbers.Between(-1.0, 1.0);
        for (const bool isSymmetric : {false, true}) {
            SCOPED_TRACE(testing::Message() << "seed " << seed << (isSymmetric ? ", symmetric" : ""));
            double value = 0.0, plainValue = 0.0;
            const Vector x = isSymmetric ? EigenVectorSym(A, value) : EigenVector(A, value);
            const Vector plain = PlainEigenVector(A, isSymmetric, plainValue);
            EXPECT_TRUE(SameBits(value, plainValue));
            for (int i = 0; i < 3; ++i) EXPECT_TRUE(SameBits(x[i], plain[i])) << i;
        }
    }
}

}  // namespace
}  // namespace KM
