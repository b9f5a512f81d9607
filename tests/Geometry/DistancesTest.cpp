#include "Geometry/Distances.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "Support/HostilePoints.h"

namespace KM {
namespace {

using namespace Test;

// p             The line runs from a to b along X, so the right-hand side is that of negative Y.
// |
// a ---- b
const P a(0, 0, 0), b(2, 0, 0);

TEST(DistPtLn, MeasuresIn3D) {
    double t = NaN;
    EXPECT_EQ(DistPtLn(a, b, P(1, 3, 4), t, true), 5.0);
    EXPECT_EQ(t, 0.5);
    EXPECT_EQ(DistPtLn(a, b, P(-6, 3, 4), t, true), 5.0);
    EXPECT_EQ(t, -3.0);
}

TEST(DistPtLn, GivesTheSquareBelowAThousandthIn3D) {
    double t = NaN;
    EXPECT_DOUBLE_EQ(DistPtLn(a, b, P(1, 0.0005, 0), t, true), 2.5e-07);
    EXPECT_DOUBLE_EQ(DistPtLn(a, b, P(1, 0, 0.00099), t, true), 0.00099 * 0.00099);
    EXPECT_DOUBLE_EQ(DistPtLn(a, b, P(1, 0, 0.00101), t, true), 0.00101);
    EXPECT_EQ(DistPtLn(a, b, P(1, 0, 0), t, true), 0.0);
}

TEST(DistPtLn, TakesTheDistanceFromAWhereTheLineIsShortIn3D) {
    double t = NaN;
    EXPECT_EQ(DistPtLn(a, P(0.0009, 0, 0), P(7, 0, 0), t, true), 7.0);
    EXPECT_EQ(t, 0.5);
    EXPECT_DOUBLE_EQ(DistPtLn(a, a, P(0.0005, 0, 0), t, true), 2.5e-07);
    EXPECT_EQ(t, 0.5);
    EXPECT_NEAR(DistPtLn(a, P(0.0011, 0, 0), P(7, 0, 0), t, true), 0.0, 1e-24);
    EXPECT_NEAR(t, 7 / 0.0011, 1e-9);
}

TEST(DistPtLn, IsPositiveOnTheRightIn2D) {
    double t = NaN;
    EXPECT_DOUBLE_EQ(DistPtLn(a, b, P(1, -3, 100), t, false), 3.0);
    EXPECT_DOUBLE_EQ(t, 0.5);
    EXPECT_DOUBLE_EQ(DistPtLn(a, b, P(4, 3, -100), t, false), -3.0);
    EXPECT_DOUBLE_EQ(t, 2.0);
    EXPECT_DOUBLE_EQ(DistPtLn(P(1, 1, 0), P(1, 5, 0), P(4, 4, 0), t, false), 3.0);
    EXPECT_DOUBLE_EQ(t, 0.75);
}

TEST(DistPtLn, IsExactlyZeroWhereItPassesForZeroIn2D) {
    double t = NaN;
    EXPECT_EQ(DistPtLn(a, b, P(4e-9, 4e-9, 0), t, false), 0.0);
    EXPECT_EQ(t, 0.0);
    EXPECT_NE(DistPtLn(a, b, P(2e-8, 6e-9, 0), t, false), 0.0);
    EXPECT_NE(t, 0.0);
}

TEST(DistPtLn, TakesTheDistanceFromBIn3DWhereTheEndsAgreeIn2D) {
    double t = NaN;
    EXPECT_EQ(DistPtLn(P(9e-9, 9e-9, 9e-9), a, P(1, 2, 2), t, false), 3.0);
    EXPECT_EQ(t, 0.5);
    // One coordinate is enough to make a line of it.
    EXPECT_DOUBLE_EQ(DistPtLn(a, P(2e-8, 0, 0), P(0, 2, 7), t, false), -2.0);
    EXPECT_NEAR(t, 0.0, 1e-7);
}

TEST(DistPtLn, HasNoFootOnAnUprightLineIn2D) {
    double t = 0.0;
    EXPECT_DOUBLE_EQ(DistPtLn(a, P(0, 0, 1), P(3, 4, 0), t, false), -4.0);
    EXPECT_FALSE(std::isfinite(t));
}

TEST(DistPtLn, NeedNotGiveTheFoot) {
    double t = NaN;
    for (unsigned seed = 0; seed < 400; ++seed) {
        HostilePoints next(seed);
        const P p = next(), q = next(), r = next();
        for (const bool in3D : {false, true})
            EXPECT_TRUE(SameBits(DistPtLn(p, q, r, in3D), DistPtLn(p, q, r, t, in3D)));
    }
}

TEST(DistPtLn, SeesTheLineFromBothEndsAlike) {
    for (unsigned seed = 0; seed < 4000; seed += 4) {
        HostilePoints next(seed);
        const P p = next(), q = next(), r = next();
        double t = NaN, back = NaN;
        EXPECT_NEAR(DistPtLn(p, q, r, t, true), DistPtLn(q, p, r, back, true), 1e-9) << seed;
        EXPECT_NEAR(t, 1.0 - back, 1e-9 * (1.0 + std::fabs(t))) << seed;
        EXPECT_NEAR(DistPtLn(p, q, r, t, false), -DistPtLn(q, p, r, back, false), 1e-9) << seed;
        EXPECT_NEAR(t, 1.0 - back, 1e-9 * (1.0 + std::fabs(t))) << seed;
    }
}

TEST(DistPtLn, AgreesWithItsFoot) {
    for (unsigned seed = 0; seed < 4000; seed += 4) {
        HostilePoints next(seed);
        const P p = next(), q = next(), r = next();
        double t = NaN;
        const double distance = DistPtLn(p, q, r, t, true);
        const P foot = p + (q - p) * t;
        EXPECT_NEAR(distance, Length(r - foot), 1e-9) << seed;
        EXPECT_NEAR(Dot(r - foot, q - p), 0.0, 1e-9) << seed;
    }
}

/// The rule, written down number by number.
double PlainDistPtLn(const P& p, const P& q, const P& r, double& t, bool in3D) {
    t = 0.5;
    if (in3D) {
        const double ex = q.X - p.X, ey = q.Y - p.Y, ez = q.Z - p.Z;
        double x = p.X - r.X, y = p.Y - r.Y, z = p.Z - r.Z;
        const double square = ex * ex + ey * ey + ez * ez;
        if (!(square < 1e-6)) {
            t = -(ex * x + ey * y + ez * z) / square;
            x = x + ex * t;
            y = y + ey * t;
            z = z + ez * t;
        }
        const double result = x * x + y * y + z * z;
        if (result > 1e-6) return std::sqrt(result);
        return result;
    }
    if (std::fabs(p.X - q.X) < 1e-8 && std::fabs(p.Y - q.Y) < 1e-8 && std::fabs(p.Z - q.Z) < 1e-8) {
        const double x = r.X - q.X, y = r.Y - q.Y, z = r.Z - q.Z;
        return std::sqrt(x * x + y * y + z * z);
    }
    const double dx = q.X - p.X, dy = q.Y - p.Y;
    const double phi = std::atan2(dy, dx) + 3.14159265358979323846;
    const double s = std::sin(phi), c = std::cos(phi);
    double distance = (r.Y - p.Y) * c - (r.X - p.X) * s;
    if (5e-9 > std::fabs(distance)) distance = 0.0;
    t = ((r.X - p.X) * c + (r.Y - p.Y) * s) / (dx * c + dy * s);
    if (5e-9 > std::fabs(t)) t = 0.0;
    return distance;
}

double PlainDistPtSegm(const P& p, const P& q, const P& r, double& t, bool in3D) {
    const double d = PlainDistPtLn(p, q, r, t, in3D);
    P end;
    if (t < 1e-8) {
        t = 1e-8;
        end = p;
    } else if (t > 0.99999999) {
        t = 0.99999999;
        end = q;
    } else {
        return d;
    }
    const double x = r.X - end.X, y = r.Y - end.Y, z = r.Z - end.Z;
    if (in3D) return std::sqrt(x * x + y * y + z * z);
    double sign = 0.0;
    if (d + 1e-8 < 0.0) sign = -1.0;
    if (d + 1e-8 > 0.0) sign = 1.0;
    return std::hypot(x, y) * sign;
}

TEST(DistPtSegm, AndDistPtLnFollowThePlainRuleBitByBit) {
    for (unsigned seed = 0; seed < 40000; ++seed) {
        HostilePoints next(seed);
        const P p = next(), q = next(), r = next();
        for (const bool in3D : {false, true}) {
            double t = NaN, expected = NaN;
            ASSERT_TRUE(SameBits(DistPtLn(p, q, r, t, in3D), PlainDistPtLn(p, q, r, expected, in3D))) << seed;
            ASSERT_TRUE(SameBits(t, expected)) << seed;
            ASSERT_TRUE(SameBits(DistPtSegm(p, q, r, t, in3D, 0.0), PlainDistPtSegm(p, q, r, expected, in3D))) << seed;
            ASSERT_TRUE(SameBits(t, expected)) << seed;
        }
    }
}

TEST(DistPtSegm, IsTheDistanceFromTheLineBetweenTheEnds) {
    double t = NaN;
    EXPECT_DOUBLE_EQ(DistPtSegm(a, b, P(0.5, 3, 0), t, false, 0.0), -3.0);
    EXPECT_NEAR(t, 0.25, 1e-15);
    EXPECT_EQ(DistPtSegm(a, b, P(0.5, 3, 4), t, true, 0.0), 5.0);
    EXPECT_EQ(t, 0.25);
    EXPECT_DOUBLE_EQ(DistPtSegm(a, b, P(1, 0.0005, 0), t, true, 0.0), 2.5e-07);
}

TEST(DistPtSegm, IsTheDistanceFromTheEndBeyondIt) {
    double t = NaN;
    EXPECT_EQ(DistPtSegm(a, b, P(-3, 4, 12), t, true, 0.0), 13.0);
    EXPECT_EQ(t, 1e-8);
    EXPECT_EQ(DistPtSegm(a, b, P(5, 4, 12), t, true, 0.0), 13.0);
    EXPECT_EQ(t, 0.99999999);
    EXPECT_EQ(DistPtSegm(a, b, P(-3, 4, 12), t, false, 0.0), -5.0);
    EXPECT_EQ(t, 1e-8);
    EXPECT_EQ(DistPtSegm(a, b, P(5, -4, 12), t, false, 0.0), 5.0);
    EXPECT_EQ(t, 0.99999999);
}

TEST(DistPtSegm, IsNoSquareBeyondTheEnds) {
    double t = NaN;
    EXPECT_EQ(DistPtSegm(a, b, P(-0.0005, 0, 0), t, true, 0.0), 0.0005);
}

TEST(DistPtSegm, TakesTheRightHandSideForAPointOnTheLineBeyondTheEnd) {
    double t = NaN;
    EXPECT_EQ(DistPtSegm(a, b, P(-3, 0, 0), t, false, 0.0), 3.0);
    EXPECT_EQ(DistPtSegm(b, a, P(-3, 0, 0), t, false, 0.0), 3.0);
    EXPECT_EQ(DistPtSegm(a, b, P(-3, 9e-9, 0), t, false, 0.0), 3.0);
    EXPECT_EQ(DistPtSegm(a, b, P(-3, 2e-8, 0), t, false, 0.0), -3.0);
}

TEST(DistPtSegm, HasNoSideAtExactlyTheMarginToTheLeft) {
    double t = NaN;
    EXPECT_EQ(DistPtSegm(a, b, P(0, 1e-8, 0), t, false, 0.0), 0.0);
    EXPECT_EQ(t, 1e-8);
}

TEST(DistPtSegm, KeepsTheParameterInsideTheOpenInterval) {
    for (unsigned seed = 0; seed < 4000; ++seed) {
        HostilePoints next(seed);
        const P p = next(), q = next(), r = next();
        for (const bool in3D : {false, true}) {
            double t = 0.0;
            DistPtSegm(p, q, r, t, in3D, 0.0);
            EXPECT_TRUE(std::isnan(t) || (1e-8 <= t && t <= 0.99999999)) << seed << ": " << t;
        }
    }
}

TEST(DistPtSegm, DoesNotReadItsLastArgument) {
    double t = NaN, u = NaN;
    EXPECT_EQ(DistPtSegm(a, b, P(5, -4, 12), t, false, NaN), DistPtSegm(a, b, P(5, -4, 12), u, false, 1e300));
    EXPECT_EQ(t, u);
}

TEST(DistToPlane, IsPositiveWhereThePointsAreSeenCounterClockwise) {
    const P A(0, 0, 5), B(4, 0, 5), C(0, 3, 5);
    EXPECT_EQ(DistToPlane(A, B, C, P(7, 7, 7)), 2.0);
    EXPECT_EQ(DistToPlane(A, B, C, P(7, 7, 1)), -4.0);
    EXPECT_EQ(DistToPlane(A, C, B, P(7, 7, 7)), -2.0);
}

TEST(DistToPlane, TakesTheLevelPlaneThroughAWherePointsLieOnALine) {
    EXPECT_EQ(DistToPlane(P(1, 1, 1), P(2, 2, 2), P(3, 3, 3), P(9, 9, 4)), 3.0);
    // Half of 4e-9 in area: too small to have a normal, although it stands upright.
    EXPECT_EQ(DistToPlane(P(0, 0, 0), P(1e-4, 0, 0), P(0, 0, 4e-5), P(9, 9, 4)), 4.0);
}

TEST(DistPointToPlan, IsSixTimesTheVolumeOfTheTetrahedron) {
    const P A(0, 0, 0), B(2, 0, 0), C(0, 3, 0);
    EXPECT_EQ(DistPointToPlan(A, B, C, P(0, 0, 5)), 30.0);
    EXPECT_EQ(DistPointToPlan(A, C, B, P(0, 0, 5)), -30.0);
    EXPECT_EQ(DistPointToPlan(P(1, 1, 1), P(2, 2, 2), P(3, 3, 3), P(9, 8, 4)), 0.0);
}

TEST(DistPointToPlan, HasTheSignOfDistToPlaneAndItsSizeByTheArea) {
    for (unsigned seed = 0; seed < 4000; seed += 4) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), p = next();
        const double area = Length(Cross(B - A, C - A));
        EXPECT_NEAR(DistPointToPlan(A, B, C, p), DistToPlane(A, B, C, p) * area, 1e-9 * area) << seed;
    }
}

TEST(DistPointAboveSegment, IsMeasuredAlongY) {
    const P from(1, 1, 9), to(5, 3, -9);
    EXPECT_EQ(DistPointAboveSegment(P(3, 7, 0), from, to), 5.0);
    EXPECT_EQ(DistPointAboveSegment(P(3, 0, 0), to, from), -2.0);
    EXPECT_EQ(DistPointAboveSegment(P(-3, 0, 0), from, to), 1.0);
}

TEST(DistPointAboveSegment, TakesTheUpperEndOfAnUprightSegment) {
    EXPECT_EQ(DistPointAboveSegment(P(8, 7, 0), P(1, 1, 0), P(1, 3, 0)), 4.0);
    EXPECT_EQ(DistPointAboveSegment(P(8, 7, 0), P(1, 3, 0), P(1, 1, 0)), 4.0);
    EXPECT_EQ(DistPointAboveSegment(P(0, 7, 0), P(0, 1, 0), P(1e-8, 3, 0)), 4.0);
    EXPECT_EQ(DistPointAboveSegment(P(0, 7, 0), P(0, 1, 0), P(2e-8, 3, 0)), 6.0);
}

}  // namespace
}  // namespace KM
