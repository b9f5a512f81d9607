#include "Geometry/Point.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <limits>
#include <type_traits>

namespace KM {
namespace {

using P = TPoint<double>;
using F = TPoint<float>;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();

// A host passes arrays of its own points through casts.
static_assert(sizeof(P) == 24 && sizeof(F) == 12);
static_assert(std::is_trivially_copyable_v<P> && std::is_standard_layout_v<P>);
static_assert(offsetof(P, X) == 0 && offsetof(P, Y) == 8 && offsetof(P, Z) == 16);

TEST(TPoint, IsZeroByDefault) {
    EXPECT_EQ(P(), P(0.0, 0.0, 0.0));
    EXPECT_EQ(F(), (F{0.0f, 0.0f, 0.0f}));
}

TEST(TPoint, TakesBracesAndParentheses) {
    const P p{1.0, 2.0, 3.0};
    EXPECT_EQ(p, P(1.0, 2.0, 3.0));
    EXPECT_EQ(p.X, 1.0);
    EXPECT_EQ(p.Y, 2.0);
    EXPECT_EQ(p.Z, 3.0);
}

TEST(TPoint, CalculatesByComponent) {
    const P a(1, 2, 3), b(10, 20, 40);
    EXPECT_EQ(a + b, P(11, 22, 43));
    EXPECT_EQ(b - a, P(9, 18, 37));
    EXPECT_EQ(-a, P(-1, -2, -3));
    EXPECT_EQ(a * 2.0, P(2, 4, 6));
    EXPECT_EQ(2.0 * a, P(2, 4, 6));
    EXPECT_EQ(b / 4.0, P(2.5, 5, 10));
    P c = a;
    c += b;
    c -= P(1, 1, 1);
    c *= 3.0;
    c /= 2.0;
    EXPECT_EQ(c, P(15, 31.5, 63));
}

TEST(TPoint, CanBeItsOwnOperand) {
    P a(1, 2, 3);
    const P& same = a;
    a += same;
    EXPECT_EQ(a, P(2, 4, 6));
    a -= same;
    EXPECT_EQ(a, P());
}

TEST(TPoint, DividesAndDoesNotMultiplyByAReciprocal) {
    EXPECT_EQ((P(5, 5, 5) / 49.0).X, 5.0 / 49.0);
    EXPECT_NE(5.0 / 49.0, 5.0 * (1.0 / 49.0));  // else the line above says nothing
}

TEST(TPoint, ComparesTheStoredNumbers) {
    EXPECT_EQ(P(0.0, 0.0, 0.0), P(-0.0, 0.0, -0.0));
    EXPECT_NE(P(1, 2, 3), P(1, 2, std::nextafter(3.0, 4.0)));
    EXPECT_FALSE(P(NaN, 0, 0) == P(NaN, 0, 0));
}

TEST(TPoint, KnowsDotAndCrossProduct) {
    EXPECT_EQ(Dot(P(1, 2, 3), P(4, 5, 6)), 32.0);
    EXPECT_EQ(Cross(P(1, 0, 0), P(0, 1, 0)), P(0, 0, 1));
    EXPECT_EQ(Cross(P(2, 3, 4), P(5, 6, 7)), P(-3, 6, -3));
    EXPECT_EQ(Dot(F(1, 2, 3), F(4, 5, 6)), 32.0f);
}

TEST(TPoint, AddsADotProductFromLeftToRight) {
    EXPECT_EQ(Dot(P(1e16, 1, -1e16), P(1, 1, 1)), 0.0);  // 1e16 swallows the 1
    EXPECT_EQ(Dot(P(1e16, -1e16, 1), P(1, 1, 1)), 1.0);
}

TEST(TPoint, KnowsItsLength) {
    EXPECT_EQ(LengthSquared(P(2, 3, 6)), 49.0);
    EXPECT_EQ(Length(P(2, 3, 6)), 7.0);
    EXPECT_EQ(Length(F(2, 3, 6)), 7.0f);
    EXPECT_EQ(Length(P()), 0.0);
}

TEST(IsZero, HoldsBelowTheThresholdOnly) {
    EXPECT_TRUE(IsZero(0.0));
    EXPECT_TRUE(IsZero(std::nextafter(5e-9, 0.0)));
    EXPECT_TRUE(IsZero(-4.9e-9));
    EXPECT_FALSE(IsZero(5e-9));
    EXPECT_FALSE(IsZero(-5e-9));
    EXPECT_FALSE(IsZero(NaN));
}

TEST(SafeUnit, HasLengthOne) {
    EXPECT_EQ(SafeUnit(P(0, 3, 4)), P(0, 3.0 / 5.0, 4.0 / 5.0));
    EXPECT_EQ(SafeUnit(P(-1e-8, 0, 0)), P(-1, 0, 0));
}

TEST(SafeUnit, OfAZeroVectorIsZ) {
    EXPECT_EQ(SafeUnit(P()), P(0, 0, 1));
    EXPECT_EQ(SafeUnit(P(4e-9, 0, 0)), P(0, 0, 1));
}

TEST(Tuple2, HoldsTwoFields) {
    const Tuple2<int, int> pair{3, 4};
    EXPECT_EQ(pair.First, 3);
    EXPECT_EQ(pair.Second, 4);
    EXPECT_EQ(pair, (Tuple2<int, int>{3, 4}));
    EXPECT_EQ((Tuple2<int, double>()), (Tuple2<int, double>{0, 0.0}));
}

}  // namespace
}  // namespace KM
