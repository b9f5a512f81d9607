#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Geometry/PlainSolver.h"
#include "Geometry/Solver.h"
#include "Support/Numbers.h"
#include "Support/Polynomials.h"

namespace KM {
namespace {

using Test::Coefficients;
using Test::CubicRoots;
using Test::Numbers;
using Test::PlainQuartic;
using Test::Product;
using Test::QuarticRoots;
using Test::RandomProduct;
using Test::Residue;
using Test::SameBits;
using Test::WorstError;
using Roots = std::vector<double>;

void ExpectTheBitsOfThePlainRule(const Coefficients& k) {
    double roots[4] = {7, 7, 7, 7};
    double expected[4] = {7, 7, 7, 7};
    EXPECT_EQ(Solver::Quartic(k[0], k[1], k[2], k[3], k[4], roots),
              PlainQuartic(k[0], k[1], k[2], k[3], k[4], expected));
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(SameBits(roots[i], expected[i])) << i;
}

TEST(SolverQuartic, OfEvenTermsIsAQuadraticOfSquares) {
    double roots[4];
    ASSERT_EQ(Solver::Quartic(1, 0, -5, 0, 4, roots), 4);
    const double expected[] = {2, -2, 1, -1};  // in pairs, in the order of the squares
    for (int i = 0; i < 4; ++i) EXPECT_EQ(roots[i], expected[i]);
    EXPECT_EQ(QuarticRoots({3, 0, -15, 0, 12}), (Roots{-2, -1, 1, 2}));
    EXPECT_EQ(QuarticRoots({1, 0, -3, 0, -4}), (Roots{-2, 2}));  // one square is negative
    EXPECT_EQ(QuarticRoots({1, 0, 5, 0, 4}), Roots{});           // both are
    EXPECT_EQ(QuarticRoots({1, 0, -1, 0, 0}), (Roots{-1, 1}));   // a square of 0 gives nothing
    EXPECT_EQ(QuarticRoots({1, 0, -2, 0, 1}), (Roots{-1, 1}));   // two squares are one
    EXPECT_EQ(QuarticRoots({1, 0, 0, 0, 1}), Roots{});
}

TEST(SolverQuartic, IsCubicWithoutItsFirstCoefficient) {
    EXPECT_EQ(QuarticRoots({0, 1, -6, 11, -6}), CubicRoots(1, -6, 11, -6));
    EXPECT_EQ(QuarticRoots({1.05366e-8, 1, -6, 11, -6}), CubicRoots(1, -6, 11, -6));
    EXPECT_EQ(QuarticRoots({0, 0, 1, -5, 6}), (Roots{2, 3}));
    EXPECT_EQ(QuarticRoots({0, 0, 0, 2, -4}), Roots{2});
}

TEST(SolverQuartic, FindsWholeRoots) {
    EXPECT_LT(WorstError(QuarticRoots({1, -10, 35, -50, 24}), {1, 2, 3, 4}), 1e-13);
    EXPECT_LT(WorstError(QuarticRoots({1, 10, 35, 50, 24}), {-4, -3, -2, -1}), 1e-13);
    EXPECT_LT(WorstError(QuarticRoots({2, -6, -12, 16, 0}), {-2, 0, 1, 4}), 1e-13);
    EXPECT_LT(WorstError(QuarticRoots({1, -3, 3, -3, 2}), {1, 2}), 1e-13);
}

TEST(SolverQuartic, OfTheFourthPowerHasZeroTwice) { EXPECT_EQ(QuarticRoots({1, 0, 0, 0, 0}), (Roots{0, 0})); }

TEST(SolverQuartic, LosesItsRootsWhereASquareIsATraceBelowZero) {
    // -2 + 3 = 0 + 1, so the quadratics differ in one coefficient only, and the square of half the difference of the
    // other is 0 but for rounding. The method knows no tolerance here.
    EXPECT_EQ(QuarticRoots({2, -4, -10, 12, 0}), Roots{});
}

// Which resolvent is taken depends on the signs of four coefficients.
TEST(SolverQuartic, SolvesForEachChoiceOfSigns) {
    for (unsigned seed = 0; seed < 16000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        Coefficients k{1, 0, 0, 0, 0};
        for (std::size_t i = 1; i < 5; ++i) k[i] = numbers.Between(0.1, 10.0) * ((seed >> i) % 2 != 0 ? -1.0 : 1.0);
        const Roots roots = QuarticRoots(k);
        // With a negative last coefficient it is below zero at 0, and above far away on both sides.
        EXPECT_GE(roots.size(), k[4] < 0.0 ? 2u : 0u);
        for (const double root : roots) EXPECT_LT(Residue(k, root), 1e-7);
    }
}

TEST(SolverQuartic, FindsTheRootsOfProducts) {
    constexpr std::size_t count = 10000;
    Roots errors;
    for (unsigned seed = 0; seed < count; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const int pairs = numbers.Below(3);
        const Product product = RandomProduct(numbers, 4 - 2 * pairs, pairs);
        const Roots roots = QuarticRoots(product.coefficients);
        ASSERT_EQ(roots.size(), product.roots.size());
        errors.push_back(WorstError(roots, product.roots));
        for (const double root : roots) EXPECT_LT(Residue(product.coefficients, root), 1e-6);
    }
    std::sort(errors.begin(), errors.end());
    EXPECT_LT(errors[count / 2], 1.5e-15);
    EXPECT_LT(errors[count * 99 / 100], 5e-12);
    EXPECT_LT(errors.back(), 1e-6);
}

TEST(SolverQuartic, GivesTheBitsOfThePlainRule) {
    for (unsigned seed = 0; seed < 50000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        Coefficients k;
        for (double& item : k) item = numbers.Between(-10.0, 10.0);
        ExpectTheBitsOfThePlainRule(k);
        for (double& item : k) item = numbers.Below(7) - 3.0;  // zeros, double roots, equal signs
        ExpectTheBitsOfThePlainRule(k);
        ExpectTheBitsOfThePlainRule(RandomProduct(numbers, 4, 0).coefficients);
    }
}

TEST(SolverQuartic, GivesTheBitsOfThePlainRuleOnHostileCoefficients) {
    for (unsigned seed = 0; seed < 100000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        Coefficients k;
        for (double& item : k) item = numbers.Hostile(seed % 2 == 0);
        ExpectTheBitsOfThePlainRule(k);
        k[0] = 1.0;
        ExpectTheBitsOfThePlainRule(k);
    }
}

}  // namespace
}  // namespace KM
