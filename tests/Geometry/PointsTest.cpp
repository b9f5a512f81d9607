#include "Geometry/Points.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Support/HostilePoints.h"

namespace KM {
namespace {

using namespace Test;

TEST(NearestPtOnLn, IsTheFootOnTheInfiniteLine) {
    EXPECT_EQ(NearestPtOnLn(P(0, 0, 0), P(2, 0, 0), P(1, 3, 4)), P(1, 0, 0));
    EXPECT_EQ(NearestPtOnLn(P(0, 0, 0), P(2, 0, 0), P(-5, 3, 4)), P(-5, 0, 0));
    EXPECT_EQ(NearestPtOnLn(P(1, 1, 1), P(1, 1, 3), P(8, 8, 7)), P(1, 1, 7));
}

TEST(NearestPtOnLn, IsTheMidpointOfAShortLine) {
    EXPECT_EQ(NearestPtOnLn(P(0, 0, 0), P(0.0008, 0, 0), P(9, 0, 0)), P(0.0004, 0, 0));
    EXPECT_EQ(NearestPtOnLn(P(4, 5, 6), P(4, 5, 6), P(9, 0, 0)), P(4, 5, 6));
    EXPECT_NEAR(NearestPtOnLn(P(0, 0, 0), P(0.0011, 0, 0), P(9, 0, 0)).X, 9.0, 1e-12);
}

TEST(FindNearestPointOnLine, IsTheFootWhereTheDirectionHasUnitLength) {
    EXPECT_EQ(FindNearestPointOnLine(P(1, 1, 1), P(0, 0, 1), P(8, 8, 7)), P(1, 1, 7));
    // Nothing checks the length: twice as long goes four times as far.
    EXPECT_EQ(FindNearestPointOnLine(P(1, 1, 1), P(0, 0, 2), P(8, 8, 7)), P(1, 1, 25));
}

TEST(FindNearestPointOnLine, AgreesWithNearestPtOnLn) {
    for (unsigned seed = 0; seed < 4000; seed += 4) {
        HostilePoints next(seed);
        const P a = next(), b = next(), p = next();
        EXPECT_LT(Length(FindNearestPointOnLine(a, SafeUnit(b - a), p) - NearestPtOnLn(a, b, p)), 1e-9) << seed;
    }
}

TEST(AreCollinears, TakesBothDirections) {
    EXPECT_TRUE(AreCollinears(P(0, 0, 0), P(1, 2, 3), P(2, 4, 6), 1e-12));
    EXPECT_TRUE(AreCollinears(P(0, 0, 0), P(1, 2, 3), P(-2, -4, -6), 1e-12));
    EXPECT_FALSE(AreCollinears(P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), 0.5));
}

TEST(AreCollinears, MeasuresTheToleranceOnTheCosine) {
    // The cosine of 60 degrees is 0.5.
    const P a(0, 0, 0), b(1, 0, 0), c(std::cos(1.0471975511965976), std::sin(1.0471975511965976), 0);
    EXPECT_TRUE(AreCollinears(a, b, c, 0.5001));
    EXPECT_FALSE(AreCollinears(a, b, c, 0.4999));
    EXPECT_FALSE(AreCollinears(a, b, b, 0.0)) << "a difference as great as the tolerance is too much";
    EXPECT_TRUE(AreCollinears(a, b, P(0, 1, 0), 1.0001));
}

TEST(AreCollinears, IsTrueWherePointsPassForOne) {
    const P a(1, 1, 1), c(5, 5, 0);
    EXPECT_TRUE(AreCollinears(a, a, c, 0.0));
    EXPECT_TRUE(AreCollinears(a, c, a, 0.0));
    EXPECT_TRUE(AreCollinears(a, a + P(4e-9, -4e-9, 4e-9), c, -1.0));
    EXPECT_FALSE(AreCollinears(a, a + P(4e-9, -4e-9, 6e-9), c, 1e-3));
    // b and c on each other, but not on a, is for the cosine to say.
    EXPECT_FALSE(AreCollinears(a, c, c, -1.0));
}

TEST(AreCollinears, IsFalseForNaN) {
    EXPECT_FALSE(AreCollinears(P(0, 0, 0), P(NaN, 0, 0), P(1, 0, 0), 1.0));
    EXPECT_FALSE(AreCollinears(P(0, 0, 0), P(2, 0, 0), P(1, 0, 0), NaN));
}

TEST(BisectorPoint, LiesBetweenTheUnitDirections) {
    EXPECT_EQ(BisectorPoint(P(1, 1, 1), P(5, 1, 1), P(1, 9, 1)), P(1.5, 1.5, 1));
    EXPECT_EQ(BisectorPoint(P(0, 0, 0), P(5, 0, 0), P(-7, 0, 0)), P(0, 0, 0));
}

TEST(BisectorPoint, TakesZForADirectionThatIsNone) {
    EXPECT_EQ(BisectorPoint(P(0, 0, 0), P(0, 0, 0), P(0, 0, 0)), P(0, 0, 1));
    EXPECT_EQ(BisectorPoint(P(0, 0, 0), P(4e-9, 0, 0), P(3, 0, 0)), P(0.5, 0, 0.5));
}

TEST(BisectorPoint, HasTheSameAngleToBothSides) {
    for (unsigned seed = 0; seed < 4000; seed += 4) {
        HostilePoints next(seed);
        const P a = next(), b = next(), c = next();
        const P way = BisectorPoint(a, b, c) - a;
        EXPECT_NEAR(Dot(way, SafeUnit(b - a)), Dot(way, SafeUnit(c - a)), 1e-12) << seed;
    }
}

TEST(ClipSegmentToPlane, MovesOneEnd) {
    P a(0, 0, 0), b(4, 8, 16);
    ClipSegmentToPlane(&a, &b, 1.0, 0, true);
    EXPECT_EQ(a, P(0, 0, 0));
    EXPECT_EQ(b, P(1, 2, 4));
    ClipSegmentToPlane(&a, &b, 0.5, 1, false);
    EXPECT_EQ(a, P(0.25, 0.5, 1));
    EXPECT_EQ(b, P(1, 2, 4));
    ClipSegmentToPlane(&a, &b, 7.0, 2, false);  // beyond the ends
    EXPECT_EQ(a, P(1.75, 3.5, 7));
}

TEST(ClipSegmentToPlane, LeavesASegmentThatIsLevelAlongTheAxis) {
    const P level(5, 5, 1e-8);
    P a(0, 0, 0), b = level;
    ClipSegmentToPlane(&a, &b, 3.0, 2, true);
    ClipSegmentToPlane(&a, &b, 3.0, 2, false);
    EXPECT_EQ(a, P(0, 0, 0));
    EXPECT_EQ(b, level);
    b.Z = 2e-8;
    ClipSegmentToPlane(&a, &b, 1e-8, 2, true);
    EXPECT_NEAR(b.X, 2.5, 1e-12);
}

TEST(ClipSegmentToPlane, LeavesWhatItCannotClip) {
    const P from(1, 2, 3), to(NaN, 5, 6);
    P a = from, b = to;
    ClipSegmentToPlane(&a, &b, 3.0, 0, true);
    ClipSegmentToPlane(&a, &b, 4.0, 3, true);
    ClipSegmentToPlane(&a, &b, 4.0, -1, false);
    ClipSegmentToPlane(nullptr, &b, 4.0, 1, true);
    ClipSegmentToPlane(&a, nullptr, 4.0, 1, false);
    EXPECT_TRUE(SameBits(a, from));
    EXPECT_TRUE(SameBits(b, to));
}

}  // namespace
}  // namespace KM
