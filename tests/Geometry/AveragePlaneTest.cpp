#include "Geometry/AveragePlane.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Support/Numbers.h"

namespace KM {
namespace {

using P = TPoint<double>;
using Points = std::vector<P>;
using Test::Infinity;
using Test::NaN;
using Test::Numbers;
using Test::SameBits;

static_assert(std::is_same_v<decltype(&AveragePlane), const Tuple2<int, Plane> (*)(const Points&, double)>);

double Determinant(const double m[3][3]) {
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) + m[0][1] * (m[1][2] * m[2][0] - m[1][0] * m[2][2]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

double Unknown(const double m[3][3], const double right[3], int column) {
    double replaced[3][3];
    for (int i = 0; i < 3; ++i)
        for (int k = 0; k < 3; ++k) replaced[i][k] = k == column ? right[i] : m[i][k];
    const double det = Determinant(m);
    const double numerator = Determinant(replaced);
    return std::fabs(numerator) < std::fabs(det) * 1e20 ? numerator / det : numerator;
}

/// The rule, written out without a thought of elegance.
Tuple2<int, Plane> PlainAveragePlane(const Points& points, double tol) {
    const std::size_t n = points.size();
    double mean = 0.0;
    for (const P& p : points) mean += p.Z;
    mean /= static_cast<double>(n);
    bool isLevel = true;
    for (const P& p : points) isLevel = isLevel && std::fabs(p.Z - mean) <= tol;
    if (isLevel) {
        if (n < 3) return {-2, Plane()};
        for (std::size_t i = 1; i <= n - 2; ++i) {
            const double cross = (points[i + 1].X - points[i].X) * (points[i - 1].Y - points[i].Y) -
                                 (points[i - 1].X - points[i].X) * (points[i + 1].Y - points[i].Y);
            if (std::fabs(cross) > tol) return {2, Plane()};
        }
        return {-2, Plane()};
    }

    double N = 0, Sx = 0, Sy = 0, Sz = 0, Sxx = 0, Syy = 0, Szz = 0, Sxy = 0, Syz = 0, Sxz = 0;
    for (const P& p : points) {
        N += 1.0;
        Sx += p.X;
        Sy += p.Y;
        Sz += p.Z;
        Sxx += p.X * p.X;
        Syy += p.Y * p.Y;
        Szz += p.Z * p.Z;
        Sxy += p.X * p.Y;
        Syz += p.Y * p.Z;
        Sxz += p.X * p.Z;
    }
    const double forms[3][3][3] = {{{Sxx, Sxy, Sx}, {Sxy, Syy, Sy}, {Sx, Sy, N}},
                                   {{Syy, Syz, Sy}, {Syz, Szz, Sz}, {Sy, Sz, N}},
                                   {{Szz, Sxz, Sz}, {Sxz, Sxx, Sx}, {Sz, Sx, N}}};
    const double rights[3][3] = {{Sxz, Syz, Sz}, {Sxy, Sxz, Sx}, {Syz, Sxy, Sy}};
    int form = 0;
    double largest = 0.0;
    for (int i = 0; i < 3; ++i)
        if (std::fabs(Determinant(forms[i])) > largest) {
            form = i;
            largest = std::fabs(Determinant(forms[i]));
        }
    const double A = Unknown(forms[form], rights[form], 0);
    const double B = Unknown(forms[form], rights[form], 1);
    const double C = Unknown(forms[form], rights[form], 2);
    const double L = std::sqrt(A * A + 1.0 + B * B);
    P normal;
    if (form == 0) normal = P(A / L, B / L, -1.0 / L);
    if (form == 1) normal = P(-1.0 / L, A / L, B / L);
    if (form == 2) normal = P(B / L, -1.0 / L, A / L);
    const double d = C / L;
    int code = 1;
    for (const P& p : points)
        if (std::fabs(normal.X * p.X + normal.Y * p.Y + normal.Z * p.Z + d) > tol) code = 0;
    Plane plane;
    normal = SafeUnit(normal);
    plane.a = normal.X;
    plane.b = normal.Y;
    plane.c = normal.Z;
    plane.d = d;
    return {code, plane};
}

void ExpectAsThePlainRule(const Points& points, double tol) {
    const auto expected = PlainAveragePlane(points, tol);
    const auto actual = AveragePlane(points, tol);
    EXPECT_EQ(actual.First, expected.First);
    EXPECT_TRUE(SameBits(actual.Second.Normal(), expected.Second.Normal()));
    EXPECT_TRUE(SameBits(actual.Second.d, expected.Second.d));
    EXPECT_EQ(actual.Second.px, 1e20);
    EXPECT_EQ(actual.Second.py, 1e20);
    EXPECT_EQ(actual.Second.pz, 1e20);
}

TEST(AveragePlane, OfLevelPointsIsTheGround) {
    const auto fit = AveragePlane({P(0, 0, 7), P(1, 0, 7), P(0, 1, 7)}, 0.001);
    EXPECT_EQ(fit.First, 2);
    EXPECT_EQ(fit.Second, Plane());
}

TEST(AveragePlane, OfLevelPointsOnALineHasNoCode) {
    const Points cases[] = {{},
                            {P(1, 2, 7)},
                            {P(1, 2, 7), P(3, 4, 7)},
                            {P(0, 0, 7), P(1, 1, 7), P(2, 2, 7), P(-5, -5, 7)},
                            Points(10, P(1, 2, 3))};
    for (const Points& points : cases) {
        const auto fit = AveragePlane(points, 0.001);
        EXPECT_EQ(fit.First, -2) << points.size();
        EXPECT_EQ(fit.Second, Plane()) << points.size();
    }
}

TEST(AveragePlane, OfLevelPointsMeasuresAreaByTheTolerance) {
    const Points triangle = {P(0, 0, 7), P(1, 0, 7), P(1, 0.5, 7)};
    EXPECT_EQ(AveragePlane(triangle, 0.49).First, 2);
    EXPECT_EQ(AveragePlane(triangle, 0.5).First, -2);
}

TEST(AveragePlane, TakesPointsForLevelUpToTheTolerance) {
    const Points points = {P(0, 0, 0), P(8, 0, 0), P(8, 8, 0), P(0, 8, 1)};  // mean 0.25, furthest 0.75
    EXPECT_EQ(AveragePlane(points, 0.75).First, 2);
    EXPECT_EQ(AveragePlane(points, 0.74).First, 1);
    EXPECT_EQ(AveragePlane(points, 0.2).First, 0);
}

TEST(AveragePlane, FitsTwoPointsAtDifferentHeights) {
    EXPECT_EQ(AveragePlane({P(0, 0, 0), P(1, 2, 3)}, 1e-6).First & ~1, 0);
    ExpectAsThePlainRule({P(0, 0, 0), P(1, 2, 3)}, 1e-6);
    ExpectAsThePlainRule({P(0, 0, 0), P(0, 0, 3)}, 1e-6);
}

TEST(AveragePlane, FitsUprightPoints) {
    const auto x = AveragePlane({P(5, 0, 0), P(5, 1, 0), P(5, 1, 1), P(5, 0, 1)}, 1e-9);
    EXPECT_EQ(x.First, 1);
    EXPECT_EQ(x.Second.Normal(), P(-1, 0, 0));
    EXPECT_EQ(x.Second.d, 5.0);
    const auto y = AveragePlane({P(0, 5, 0), P(1, 5, 0), P(1, 5, 1), P(0, 5, 1)}, 1e-9);
    EXPECT_EQ(y.First, 1);
    EXPECT_EQ(y.Second.Normal(), P(0, -1, 0));
    EXPECT_EQ(y.Second.d, 5.0);
}

TEST(AveragePlane, TakesTheFirstOfEqualForms) {
    // The coordinates change places in a circle, so all three determinants are the same.
    const auto fit = AveragePlane({P(1, 0, 0), P(0, 1, 0), P(0, 0, 1)}, 1e-9);
    EXPECT_EQ(fit.First, 1);
    EXPECT_LT(fit.Second.c, 0.0);  // only the form that solves for Z turns the normal down
    EXPECT_NEAR(fit.Second.d, 1.0 / std::sqrt(3.0), 1e-15);
}

TEST(AveragePlane, RecoversThePlaneOfItsPoints) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const P normal = numbers.Direction();
        const Plane plane(normal, numbers.PointBetween(-5.0, 5.0));
        Points points;
        for (int i = 0; i < 20; ++i) points.push_back(NearestPtOnPlane(plane, numbers.PointBetween(-5.0, 5.0)));
        const auto fit = AveragePlane(points, 1e-9);
        EXPECT_EQ(fit.First, 1);
        EXPECT_NEAR(std::fabs(Dot(fit.Second.Normal(), plane.Normal())), 1.0, 1e-10);
        EXPECT_TRUE(fit.Second.IsValid());
    }
}

TEST(AveragePlane, MakesTheErrorAlongTheAxisLeast) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        Points points;
        for (int i = 0; i < 30; ++i) {
            const P p = numbers.PointBetween(-1.0, 1.0);
            points.push_back(P(10.0 * p.X, 10.0 * p.Y, p.Z + 0.3 * p.X));
        }
        const Plane fit = AveragePlane(points, 0.0).Second;
        const auto error = [&](const Plane& plane) {
            double sum = 0.0;
            for (const P& p : points) sum += plane.VerticalDist(p) * plane.VerticalDist(p);
            return sum;
        };
        for (const double nudge : {-1e-4, 1e-4}) {
            Plane tilted = fit, turned = fit, raised = fit;
            tilted.a += nudge;
            turned.b += nudge;
            raised.d += nudge;
            EXPECT_LT(error(fit), error(tilted));
            EXPECT_LT(error(fit), error(turned));
            EXPECT_LT(error(fit), error(raised));
        }
    }
}

TEST(AveragePlane, GivesTheBitsOfThePlainRule) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const double scale = std::ldexp(1.0, numbers.Below(40) - 20);
        Points points;
        for (int i = numbers.Below(12); i > 0; --i) points.push_back(numbers.PointBetween(-scale, scale));
        // Some are flat, upright or on a line.
        const int kind = numbers.Below(6);
        for (P& p : points) {
            if (kind == 0) p.Z = 3.0;
            if (kind == 1) p.X = 3.0;
            if (kind == 2) p = P(1.0, 2.0, 3.0) * p.X;
            if (kind == 3) p = P(std::round(p.X), std::round(p.Y), std::round(p.Z));
        }
        ExpectAsThePlainRule(points, numbers.Between(0.0, scale * 0.1));
    }
}

TEST(AveragePlane, GivesTheBitsOfThePlainRuleOnHostilePoints) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const bool isFinite = seed % 2 == 0;
        Points points;
        for (int i = numbers.Below(8); i > 0; --i) points.push_back(numbers.HostilePoint(isFinite));
        ExpectAsThePlainRule(points, numbers.Hostile(isFinite));
    }
    // One coordinate that is no number leaves one form with a determinant.
    for (const double bad : {NaN, Infinity, -Infinity})
        for (const P& p : {P(bad, 0, 1), P(1, bad, 2), P(2, 1, bad)})
            ExpectAsThePlainRule({P(0, 0, 0), P(1, 2, 1), P(5, 3, 0), p, P(7, 1, 2)}, 0.1);
}

TEST(AveragePlane, TakesTenMillionPointsOnALine) {
    Points points(10000000);
    for (std::size_t i = 0; i < points.size(); ++i) points[i] = P(1, 2, 3) * static_cast<double>(i);
    EXPECT_EQ(AveragePlane(points, 1.0).First & ~1, 0);
    for (P& p : points) p.Z = 0.0;
    EXPECT_EQ(AveragePlane(points, 1.0).First, -2);
}

}  // namespace
}  // namespace KM
