#include "Geometry/Solver.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Geometry/PlainSolver.h"
#include "Support/Numbers.h"
#include "Support/Polynomials.h"

namespace KM {
namespace {

using Test::Infinity;
using Test::NaN;
using Test::Numbers;
using Test::PlainQuadratic;
using Test::Product;
using Test::QuadraticRoots;
using Test::RandomProduct;
using Test::Residue;
using Test::SameBits;
using Test::WorstError;
using Roots = std::vector<double>;

TEST(SolverCheck, IsTheValueOfThePolynomial) {
    EXPECT_EQ(Solver::Check(1, 2, 3, 4, 5, 0), 5.0);
    EXPECT_EQ(Solver::Check(1, 2, 3, 4, 5, 1), 15.0);
    EXPECT_EQ(Solver::Check(1, 2, 3, 4, 5, -2), 16.0 - 16.0 + 12.0 - 8.0 + 5.0);
    EXPECT_EQ(Solver::Check(0, 0, 0, 2, -4, 2), 0.0);
}

TEST(SolverQuadratic, HasTwoRoots) {
    double roots[4];
    ASSERT_EQ(Solver::Quadratic(1, -5, 6, roots), 2);
    EXPECT_EQ(roots[0], 3.0);  // first the one that adds up like signs
    EXPECT_EQ(roots[1], 2.0);
    ASSERT_EQ(Solver::Quadratic(1, 5, 6, roots), 2);
    EXPECT_EQ(roots[0], -3.0);
    EXPECT_EQ(roots[1], -2.0);
    ASSERT_EQ(Solver::Quadratic(-2, 0, 8, roots), 2);
    EXPECT_EQ(roots[0], 2.0);
    EXPECT_EQ(roots[1], -2.0);
}

TEST(SolverQuadratic, HasADoubleRootOnce) { EXPECT_EQ(QuadraticRoots(1, -2, 1), Roots{1.0}); }

TEST(SolverQuadratic, HasNoRealRoots) { EXPECT_EQ(QuadraticRoots(1, 0, 1), Roots{}); }

TEST(SolverQuadratic, LeavesTheRootsAloneWhereItHasNone) {
    double roots[] = {7, 7, 7, 7};
    EXPECT_EQ(Solver::Quadratic(1, 0, 1, roots), 0);
    for (const double root : roots) EXPECT_EQ(root, 7.0);
}

TEST(SolverQuadratic, IsLinearWithoutItsFirstCoefficient) {
    EXPECT_EQ(QuadraticRoots(0, 2, -4), Roots{2.0});
    EXPECT_EQ(QuadraticRoots(1.05366e-8, 2, -4), Roots{2.0});
    EXPECT_EQ(QuadraticRoots(1.05367e-8, 2, -4).size(), 2u);
}

TEST(SolverQuadratic, DividesByZeroWithoutItsFirstTwo) {
    EXPECT_EQ(QuadraticRoots(0, 0, 1), Roots{-Infinity});
    ASSERT_EQ(QuadraticRoots(0, 0, 0).size(), 1u);
    EXPECT_TRUE(std::isnan(QuadraticRoots(0, 0, 0)[0]));
}

TEST(SolverQuadratic, HasARootOfZero) {
    double roots[4];
    ASSERT_EQ(Solver::Quadratic(1, -1, 0, roots), 2);
    EXPECT_EQ(roots[0], 1.0);
    EXPECT_TRUE(SameBits(roots[1], 0.0));
    ASSERT_EQ(Solver::Quadratic(1, 1, 0.9e-12, roots), 2);
    EXPECT_TRUE(SameBits(roots[1], 0.0));  // so small a second root is one as well
    ASSERT_EQ(Solver::Quadratic(1, 1, 1.1e-12, roots), 2);
    EXPECT_NE(roots[1], 0.0);
}

TEST(SolverQuadratic, JoinsRootsThatAreClose) {
    EXPECT_EQ(QuadraticRoots(1, 0, -2.6e-9), Roots{-0.0});  // the discriminant is 1.04e-8
    EXPECT_EQ(QuadraticRoots(1, 0, 2.6e-9), Roots{-0.0});
    EXPECT_EQ(QuadraticRoots(1, 0, -2.7e-9).size(), 2u);
    EXPECT_EQ(QuadraticRoots(1, 0, 2.7e-9).size(), 0u);
    // With a large linear term the limit grows: here it is 1.
    EXPECT_EQ(QuadraticRoots(1, 1e6, 0.25e12 - 0.24).size(), 1u);
    EXPECT_EQ(QuadraticRoots(1, 1e6, 0.25e12 - 0.26).size(), 2u);
}

TEST(SolverQuadratic, LosesNoDigitsToCancellation) {
    double roots[4];
    ASSERT_EQ(Solver::Quadratic(1, 1e8, 1, roots), 2);
    EXPECT_DOUBLE_EQ(roots[0], -1e8);
    EXPECT_DOUBLE_EQ(roots[1], -1e-8);
}

TEST(Solver, RefusesNull) {
    EXPECT_EQ(Solver::Quadratic(1, -5, 6, nullptr), 0);
    EXPECT_EQ(Solver::Cubic(1, -6, 11, -6, nullptr), 0);
    EXPECT_EQ(Solver::Cubic(0, 1, -5, 6, nullptr), 0);
    EXPECT_EQ(Solver::Quartic(1, 0, -5, 0, 4, nullptr), 0);
}

TEST(SolverQuadratic, FindsTheRootsOfProducts) {
    for (unsigned seed = 0; seed < 5000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const Product product = RandomProduct(numbers, seed % 3 == 0 ? 0 : 2, seed % 3 == 0 ? 1 : 0);
        const auto& k = product.coefficients;
        const Roots roots = QuadraticRoots(k[2], k[3], k[4]);
        EXPECT_LT(WorstError(roots, product.roots), 1e-12);
        for (const double root : roots) EXPECT_LT(Residue(k, root), 1e-14);
    }
}

TEST(SolverQuadratic, GivesTheBitsOfThePlainRule) {
    for (unsigned seed = 0; seed < 50000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const double k[] = {numbers.Hostile(), numbers.Hostile(), numbers.Hostile()};
        double roots[4] = {7, 7, 7, 7};
        double expected[4] = {7, 7, 7, 7};
        EXPECT_EQ(Solver::Quadratic(k[0], k[1], k[2], roots), PlainQuadratic(k[0], k[1], k[2], expected));
        for (int i = 0; i < 4; ++i) EXPECT_TRUE(SameBits(roots[i], expected[i])) << i;
    }
}

}  // namespace
}  // namespace KM
