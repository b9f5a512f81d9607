#include <gtest/gtest.h>

#include <cmath>

#include "Geometry/PlainSolver.h"
#include "Geometry/Solver.h"
#include "Support/Numbers.h"
#include "Support/Polynomials.h"

namespace KM {
namespace {

using Test::CubicRoots;
using Test::Numbers;
using Test::PlainCubic;
using Test::Product;
using Test::RandomProduct;
using Test::Residue;
using Test::SameBits;
using Test::WorstError;
using Roots = std::vector<double>;

void ExpectNear(const Roots& actual, const Roots& expected) { EXPECT_LT(WorstError(actual, expected), 1e-14); }

TEST(SolverCubic, HasThreeRoots) {
    ExpectNear(CubicRoots(1, -6, 11, -6), {1, 2, 3});
    ExpectNear(CubicRoots(-2, 12, -22, 12), {1, 2, 3});
}

TEST(SolverCubic, HasOneRoot) {
    ExpectNear(CubicRoots(1, 0, 0, -8), {2});
    ExpectNear(CubicRoots(1, 0, 0, 8), {-2});
    ExpectNear(CubicRoots(1, -1, 1, -1), {1});
    ExpectNear(CubicRoots(1, 1, 1, 1), {-1});
    EXPECT_EQ(CubicRoots(1, 0, 0, 0), Roots{0});
}

TEST(SolverCubic, IsQuadraticWithoutItsFirstCoefficient) {
    EXPECT_EQ(CubicRoots(0, 1, -5, 6), (Roots{2, 3}));
    EXPECT_EQ(CubicRoots(1.05366e-8, 1, -5, 6), (Roots{2, 3}));
    EXPECT_EQ(CubicRoots(0, 0, 2, -4), Roots{2});
    EXPECT_EQ(CubicRoots(1.05367e-8, 1, -5, 6).size(), 3u);
}

TEST(SolverCubic, TakesWhatRemainsOfCoefficientsThatWouldOverflow) {
    EXPECT_EQ(CubicRoots(1, 2e50, 1, 1), Roots{-2e50});
    EXPECT_EQ(CubicRoots(1, -2e50, 1, 1), Roots{2e50});
    EXPECT_EQ(CubicRoots(1, 1, 2e50, 4e50), Roots{-2});
    EXPECT_EQ(CubicRoots(1, 1, -4e50, 1), Roots{-std::sqrt(4e50)});
    EXPECT_NEAR(CubicRoots(1, 1, 1, 8e51)[0] / -2e17, 1.0, 1e-14);
    EXPECT_NEAR(CubicRoots(1, 1, 1, -8e51)[0] / 2e17, 1.0, 1e-14);
    EXPECT_EQ(CubicRoots(1, 4e25, 1, 1), Roots{-4e25});     // (p / 3)^2 is above the limit
    EXPECT_EQ(CubicRoots(1, 2e25, 1e49, 1), Roots{-2e25});  // the constant term of the reduced cubic is
}

TEST(SolverCubic, FindsTheRootsOfProducts) {
    for (unsigned seed = 0; seed < 5000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const bool isOne = seed % 2 == 0;
        const Product product = RandomProduct(numbers, isOne ? 1 : 3, isOne ? 1 : 0);
        const auto& k = product.coefficients;
        const Roots roots = CubicRoots(k[1], k[2], k[3], k[4]);
        EXPECT_LT(WorstError(roots, product.roots), 1e-10);
        for (const double root : roots) EXPECT_LT(Residue(k, root), 1e-10);
    }
}

// A third root, and two that rounding has made equal: whether these are seen at all is rounding's choice as well.
TEST(SolverCubic, FindsTheRootBesideADoubleOne) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const double twice = numbers.Below(21) - 10.0;
        const double once = twice + 1.0 + numbers.Below(10);
        const Roots roots = CubicRoots(1.0, -(2.0 * twice + once), twice * (twice + 2.0 * once), -twice * twice * once);
        ASSERT_FALSE(roots.empty());
        EXPECT_NEAR(roots.back(), once, 1e-6);
        if (roots.size() == 3) {
            EXPECT_NEAR(roots[0], twice, 1e-5);
            EXPECT_NEAR(roots[1], twice, 1e-5);
        }
    }
}

TEST(SolverCubic, GivesTheBitsOfThePlainRule) {
    for (unsigned seed = 0; seed < 50000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        double k[] = {numbers.Hostile(), numbers.Hostile(), numbers.Hostile(), numbers.Hostile()};
        if (seed % 4 == 0) {  // (x - a)^2 (x - b), where rounding decides how many roots there are
            const double a = numbers.Between(-10.0, 10.0);
            const double b = numbers.Between(-10.0, 10.0);
            k[0] = 1.0;
            k[1] = -(2.0 * a + b);
            k[2] = a * a + 2.0 * a * b;
            k[3] = -a * a * b;
        }
        double roots[4] = {7, 7, 7, 7};
        double expected[4] = {7, 7, 7, 7};
        EXPECT_EQ(Solver::Cubic(k[0], k[1], k[2], k[3], roots), PlainCubic(k[0], k[1], k[2], k[3], expected));
        for (int i = 0; i < 4; ++i) EXPECT_TRUE(SameBits(roots[i], expected[i])) << i;
    }
}

}  // namespace
}  // namespace KM
