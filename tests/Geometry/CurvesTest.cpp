#include "Geometry/Curves.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Geometry/Distances.h"
#include "Geometry/Lines.h"
#include "Support/HostilePoints.h"

namespace KM {
namespace {

using namespace Test;

TEST(GetSplinePoint, RunsFromAToC) {
    const P A(1, 2, 3), B(1, 0, 0), C(9, 8, 7), D(0, 1, 0);
    EXPECT_EQ(GetSplinePoint(A, B, C, D, 0.0), A);
    EXPECT_EQ(GetSplinePoint(A, B, C, D, 1.0), C);
}

TEST(GetSplinePoint, TakesTheEndVectorsFourfold) {
    const P A(0, 0, 0), B(1, 0, 0), C(4, 0, 0), D(0, 1, 0);
    // The Hermite basis at 0.5 is 1/2, 1/8, 1/2, -1/8.
    EXPECT_EQ(GetSplinePoint(A, B, C, D, 0.5), P(2.5, 0.5, 0));
    const double step = 1e-6;
    EXPECT_LT(Length((GetSplinePoint(A, B, C, D, step) - A) / step - B * 4.0), 1e-4);
    EXPECT_LT(Length((C - GetSplinePoint(A, B, C, D, 1.0 - step)) / step - D * -4.0), 1e-4);
}

TEST(GetSplinePoint, IsTheHermiteArc) {
    for (unsigned seed = 0; seed < 4000; seed += 4) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), D = next();
        const double t = next.Between(-1.0, 2.0);
        const double s = 1.0 - t;
        const P hermite =
            A * ((1 + 2 * t) * s * s) + B * (4 * t * s * s) + C * (t * t * (3 - 2 * t)) + D * (4 * t * t * s);
        EXPECT_LT(Length(GetSplinePoint(A, B, C, D, t) - hermite), 1e-11) << seed;
    }
}

TEST(Simplify, FindsTheCornerThatWasCutOff) {
    const Tuple2<double, P> corner = Simplify(P(0, 0, 0), P(9, 0, 0), P(10, 1, 0), P(10, 10, 0), 1.0);
    EXPECT_EQ(corner.First, 0.0);
    EXPECT_EQ(corner.Second, P(10, 0, 0));
}

TEST(Simplify, LeavesOutACornerThatIsFarFromBC) {
    // The corner lies 0.707 from B-C: five times 0.142 is enough, five times 0.141 is not.
    EXPECT_EQ(Simplify(P(0, 0, 0), P(9, 0, 0), P(10, 1, 0), P(10, 10, 0), 0.142).Second, P(10, 0, 0));
    const Tuple2<double, P> other = Simplify(P(0, 0, 0), P(9, 0, 0), P(10, 1, 0), P(10, 10, 0), 0.141);
    EXPECT_NE(other.Second, P(10, 0, 0));
    EXPECT_NEAR(other.Second.X - other.Second.Y, 9.0, 1e-12);
    EXPECT_GT(other.First, 0.1);
}

//  A ------ B            The lines AB and CD cross in (x, 0, 0). Along B-C, which runs upright from (10, -1) to
//            \           (10, 9), this is a tenth of the way beyond B or less, or more.
TEST(Simplify, LeavesOutACornerMoreThanATenthBeyondTheEnds) {
    const P B(10, -1, 0), C(10, 9, 0);
    const auto corner = [&](double y) {
        // AB and CD both aim at (10.5, y), which lies 0.5 from the line B-C.
        const P meeting(10.5, y, 0);
        return Simplify(B + (B - meeting) * 20.0, B, C, C + (C - meeting) * 20.0, 1.0);
    };
    EXPECT_NEAR(corner(-1.9).First, 0.0, 1e-12) << "-0.09 along B-C";
    EXPECT_GT(corner(-2.1).First, 1e-3) << "-0.11 along B-C";
    EXPECT_NEAR(corner(9.9).First, 0.0, 1e-12);
    EXPECT_GT(corner(10.1).First, 1e-3);
}

TEST(Simplify, TakesTheFirstOfSeveralAsGood) {
    // All on one line, so that every point is as good; there is no point between parallel lines.
    const Tuple2<double, P> first = Simplify(P(0, 0, 0), P(1, 0, 0), P(2, 0, 0), P(3, 0, 0), 1.0);
    EXPECT_EQ(first.First, 0.0);
    EXPECT_EQ(first.Second, P(1, 0, 0));
}

TEST(Simplify, TakesAPolylineWhoseMiddleIsAPoint) {
    const P A(0, 0, 0), B(5, 5, 0), D(10, 0, 0);
    EXPECT_EQ(Simplify(A, B, B, D, 1.0), (Tuple2<double, P>{0.0, B}));
    // Without a tolerance the point between the lines is not tried; the seven all are B.
    EXPECT_EQ(Simplify(A, B, B, D, 0.0), (Tuple2<double, P>{0.0, B}));
    // A short middle has no direction: the square of the distance from B decides. 0.02 squared is no square yet.
    const P near(5.0004, 5, 0);
    EXPECT_LT(Simplify(A, B, near, D, 1.0).First, 1e-3);
}

TEST(Simplify, GivesTheErrorOfItsPoint) {
    for (unsigned seed = 0; seed < 8000; seed += 4) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), D = next();
        const Tuple2<double, P> best = Simplify(A, B, C, D, next.Between(0.0, 2.0));
        const double error = std::max(DistPtLn(A, best.Second, B, true), DistPtLn(best.Second, D, C, true));
        EXPECT_EQ(best.First, error) << seed;
        for (int k = 0; k <= 6; ++k) {
            const P x = B + (C - B) * (k / 6.0);
            EXPECT_LE(best.First, std::max(DistPtLn(A, x, B, true), DistPtLn(x, D, C, true)) + 1e-9) << seed;
        }
    }
}

TEST(Simplify, HasNoErrorForPointsThatAreNone) {
    const Tuple2<double, P> none = Simplify(P(0, 0, 0), P(1, NaN, 0), P(2, NaN, 0), P(3, 0, 0), 1.0);
    EXPECT_EQ(none.First, 1e20);
    EXPECT_TRUE(std::isnan(none.Second.Y));
}

TEST(Simplify, MeasuresBAloneWhereDIsNoPoint) {
    const P A(0, 0, 0), B(1, 1, 0), C(2, 1, 0);
    for (const double bad : {NaN, Infinity, -Infinity})
        EXPECT_EQ(Simplify(A, B, C, P(bad, 0, 0), 1.0), (Tuple2<double, P>{0.0, B}));
}

/// The rules, written down coordinate by coordinate.
double PlainSpline(double a, double b, double c, double d, double t) {
    return a * (1 - 4 * t + 5 * (t * t) - 2 * (t * t * t)) + (a + b) * (4 * t - 8 * (t * t) + 4 * (t * t * t)) +
           (c + d) * (4 * (t * t) - 4 * (t * t * t)) + c * (2 * (t * t * t) - t * t);
}

Tuple2<double, P> PlainSimplify(const P& A, const P& B, const P& C, const P& D, double tol) {
    double best = 1e20;
    const P M = MidOfMinSegmentBetweenTwoLines(A, B, C, D);
    P X = M;
    double t = NaN;
    const double distance = DistPtLn(B, C, M, t, true);
    bool isCandidate = distance < 5 * tol;
    if (isCandidate && !(Dot(C - B, C - B) < 1e-6)) isCandidate = t > -0.1 && t < 1.1;
    const auto error = [&](const P& x) { return std::max(DistPtLn(A, x, B, true), DistPtLn(x, D, C, true)); };
    if (isCandidate) best = error(M);
    for (int k = 0; k < 7; ++k) {
        const P x(B.X + (C.X - B.X) * k / 6.0, B.Y + (C.Y - B.Y) * k / 6.0, B.Z + (C.Z - B.Z) * k / 6.0);
        if (!(error(x) < best)) continue;
        best = error(x);
        X = x;
    }
    return {best, X};
}

TEST(Simplify, AndGetSplinePointFollowThePlainRuleBitByBit) {
    for (unsigned seed = 0; seed < 40000; ++seed) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), D = next();
        const double number = seed % 3 == 0 ? next.Number() : next.Between(0.0, 1.0);
        const Tuple2<double, P> expected = PlainSimplify(A, B, C, D, number);
        const Tuple2<double, P> actual = Simplify(A, B, C, D, number);
        ASSERT_TRUE(SameBits(actual.First, expected.First)) << seed;
        ASSERT_TRUE(SameBits(actual.Second, expected.Second)) << seed;

        const P point(PlainSpline(A.X, B.X, C.X, D.X, number), PlainSpline(A.Y, B.Y, C.Y, D.Y, number),
                      PlainSpline(A.Z, B.Z, C.Z, D.Z, number));
        ASSERT_TRUE(SameBits(GetSplinePoint(A, B, C, D, number), point)) << seed;
    }
}

}  // namespace
}  // namespace KM
