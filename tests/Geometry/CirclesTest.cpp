#include "Geometry/Circles.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Support/HostilePoints.h"

namespace KM {
namespace {

using namespace Test;

const P None(-1e20, -1e20, -1e20);

TEST(Circle3P2D, IsTheCentreInXY) {
    EXPECT_EQ(Circle3P2D(P(0, 0, 1), P(4, 0, 2), P(0, 2, 3)), P(2, 1, 0));
    EXPECT_EQ(Circle3P2D(P(0, 2, 0), P(4, 0, 0), P(0, 0, 0)), P(2, 1, 0));
}

TEST(Circle3P2D, IsNoneForPointsOnALine) {
    EXPECT_EQ(Circle3P2D(P(0, 0, 0), P(1, 1, 5), P(2, 2, 0)), None);
    EXPECT_EQ(Circle3P2D(P(3, 3, 3), P(3, 3, 3), P(3, 3, 3)), None);
    EXPECT_EQ(Circle3P2D(P(0, 0, 0), P(0.9e-4, 0, 0), P(0, 1e-4, 0)), None) << "9e-9 is too small";
    EXPECT_NEAR(Circle3P2D(P(0, 0, 0), P(1.1e-4, 0, 0), P(0, 1e-4, 0)).X, 0.55e-4, 1e-12);
}

TEST(Circle3P2D, FollowsThePlainRuleBitByBit) {
    for (unsigned seed = 0; seed < 40000; ++seed) {
        HostilePoints next(seed);
        const P a = next(), b = next(), c = next();
        const double p = ((a.X * a.X + a.Y * a.Y) - (b.X * b.X + b.Y * b.Y)) / 2;
        const double q = ((b.X * b.X + b.Y * b.Y) - (c.X * c.X + c.Y * c.Y)) / 2;
        const double det = (a.X - b.X) * (b.Y - c.Y) - (b.X - c.X) * (a.Y - b.Y);
        P expected = None;
        if (!(std::fabs(det) < 1e-8))
            expected = P(((b.Y - c.Y) * p - (a.Y - b.Y) * q) / det, ((a.X - b.X) * q - (b.X - c.X) * p) / det, 0.0);
        ASSERT_TRUE(SameBits(Circle3P2D(a, b, c), expected)) << seed;
    }
}

TEST(Circle3P3D, AgreesWithCircle3P2DOnTheLevel) {
    for (const double z : {0.0, 7.0}) {
        EXPECT_LT(Length(Circle3P3D(P(0, 0, z), P(4, 0, z), P(0, 2, z)) - P(2, 1, z)), 1e-12);
        EXPECT_LT(Length(Circle3P3D(P(0, 2, z), P(4, 0, z), P(0, 0, z)) - P(2, 1, z)), 1e-12);
    }
}

TEST(Circle3P3D, StandsInAnyPlane) {
    EXPECT_LT(Length(Circle3P3D(P(9, 0, 0), P(9, 4, 0), P(9, 0, 2)) - P(9, 2, 1)), 1e-12);
    EXPECT_LT(Length(Circle3P3D(P(0, 9, 0), P(4, 9, 0), P(0, 9, 2)) - P(2, 9, 1)), 1e-12);
    EXPECT_LT(Length(Circle3P3D(P(1, 0, 0), P(0, 1, 0), P(0, 0, 1)) - P(1, 1, 1) / 3.0), 1e-12);
}

TEST(Circle3P3D, IsAsFarFromAllThreePointsAndInTheirPlane) {
    for (unsigned seed = 0; seed < 8000; seed += 4) {
        HostilePoints next(seed);
        const P a = next(), b = next(), c = next();
        const P normal = Cross(b - a, c - a);
        if (Length(normal) < 1.0) continue;
        const P centre = Circle3P3D(a, b, c);
        const double radius = Length(centre - a);
        const double tolerance = 1e-11 * (1.0 + radius) * (1.0 + radius);
        EXPECT_NEAR(Length(centre - b), radius, tolerance) << seed;
        EXPECT_NEAR(Length(centre - c), radius, tolerance) << seed;
        EXPECT_NEAR(Dot(centre - a, SafeUnit(normal)), 0.0, tolerance) << seed;
    }
}

TEST(Circle3P3D, StaysNearTheTruthWhereTheNormalIsNearlyUpright) {
    // Tilts on both sides of the limit below which the normal counts as upright.
    for (const double tilt : {1e-9, 5e-7, 0.99e-6, 1.01e-6, 1e-5})
        for (const double side : {-1.0, 1.0}) {
            const P centre = Circle3P3D(P(0, 0, 0), P(4, 0, 4 * tilt), P(0, 2 * side, 0));
            EXPECT_LT(Length(centre - P(2, side, 2 * tilt)), 1e-5) << tilt;
        }
}

TEST(Circle3P3D, IsEnormousForPointsOnALine) {
    for (unsigned seed = 0; seed < 4000; seed += 4) {
        HostilePoints next(seed);
        const P a = next(), way = next();
        const P lines[][2] = {{a, a}, {a, a + way}, {a + way, a}, {a + P(way.X, 0, 0), a + P(-way.X, 0, 0)}};
        for (const auto& [b, c] : lines) EXPECT_GT(Length(Circle3P3D(a, b, c) - a), 1e10) << seed;
    }
    EXPECT_GT(Length(Circle3P3D(P(0, 0, 0), P(1, 2, 3), P(2, 4, 6))), 1e10);
    EXPECT_GT(Length(Circle3P3D(P(0, 0, 0), P(0, 0, 3), P(0, 0, 6))), 1e10);
}

// The plane rises along Y. Below the limit it is turned about the wrong axis, as if it rose along X, by which the centre
// gets its height from X.
TEST(Circle3P3D, HasNoAzimuthBelowATiltOfAMillionth) {
    const P a(0, 0, 0), b(1, 0, 0);
    EXPECT_NEAR(Circle3P3D(a, b, P(0, 2, 2.2e-6)).Z, 1.1e-6, 1e-12);
    EXPECT_NEAR(Circle3P3D(a, b, P(0, 2, 1.8e-6)).Z, 0.45e-6, 1e-12);
}

TEST(Circle3P3D, TakesWhateverComes) {
    EXPECT_TRUE(std::isnan(Circle3P3D(P(NaN, 0, 0), P(1, 0, 0), P(0, 1, 0)).X));
    for (unsigned seed = 3; seed < 4000; seed += 4) {
        HostilePoints next(seed);
        const P a = next(), b = next(), c = next();
        EXPECT_TRUE(SameBits(Circle3P3D(a, b, c), Circle3P3D(a, b, c))) << seed;
    }
}

}  // namespace
}  // namespace KM
