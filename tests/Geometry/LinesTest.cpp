#include "Geometry/Lines.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Geometry/Crossing.h"

namespace KM {
namespace {

using namespace Test;

Crossing Cross(const P& A, const P& B, const P& C, const P& D) { return CrossingBy(IntLineLine, A, B, C, D); }
Crossing Cross2(const P& A, const P& B, const P& C, const P& D) { return CrossingBy(IntLineLine2, A, B, C, D); }

void ExpectNone(const Crossing& crossing) {
    EXPECT_FALSE(crossing.isFound);
    EXPECT_EQ(crossing.t, -1e20);
    EXPECT_EQ(crossing.u, -1e20);
}

void ExpectAt(const Crossing& crossing, double t, double u) {
    EXPECT_TRUE(crossing.isFound);
    EXPECT_DOUBLE_EQ(crossing.t, t);
    EXPECT_DOUBLE_EQ(crossing.u, u);
}

TEST(IntLineLine, CrossesALevelLineInEitherDirection) {
    ExpectAt(Cross(P(0, 0, 0), P(4, 0, 0), P(1, -1, 0), P(1, 3, 0)), 0.25, 0.25);
    ExpectAt(Cross(P(4, 0, 0), P(0, 0, 0), P(1, -1, 0), P(1, 3, 0)), 0.75, 0.25);
}

TEST(IntLineLine, CrossesASlantedLine) {
    ExpectAt(Cross(P(0, 0, 0), P(3, 4, 0), P(6, 0, 0), P(6, 16, 0)), 2.0, 0.5);
    ExpectAt(Cross(P(0, 0, 0), P(0, -2, 0), P(-1, 1, 0), P(3, 1, 0)), -0.5, 0.25);
}

TEST(IntLineLine, DoesNotLookAtZ) { ExpectAt(Cross(P(0, 0, 7), P(4, 0, -2), P(1, -1, 100), P(1, 3, NaN)), 0.25, 0.25); }

TEST(IntLineLine, FindsNothingOnUprightOrParallelLines) {
    ExpectNone(Cross(P(1, 1, 0), P(1, 1, 9), P(0, 0, 0), P(1, 0, 0)));
    ExpectNone(Cross(P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(1, 1, 9)));
    ExpectNone(Cross(P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(1, 1, 0)));
    ExpectNone(Cross(P(0, 0, 0), P(1, 0, 0), P(0, 0, 0), P(1, 0, 0)));
    EXPECT_TRUE(Cross(P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(1, 1 + 1e-15, 0)).isFound)
        << "only parallel to the last bit";
}

TEST(IntLineLine, GivesThePointOfTheFirstLineInSpace) {
    EXPECT_EQ(IntLineLine(P(0, 0, 0), P(4, 0, 8), P(1, -1, 100), P(1, 3, 200)), P(1, 0, 2));
    EXPECT_EQ(IntLineLine(P(0, 0, 0), P(1, 0, 2), P(0, 1, 0), P(1, 1, 0)), P(-1e20, 0, -2e20));
}

TEST(IntLineLine, GivesOnePointOnBothLines) {
    for (unsigned seed = 0; seed < 8000; seed += 4) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), D = next();
        const Crossing crossing = Cross(A, B, C, D);
        ASSERT_TRUE(crossing.isFound) << seed;
        const P apart = A + (B - A) * crossing.t - (C + (D - C) * crossing.u);
        const double scale = 1.0 + std::fabs(crossing.t) + std::fabs(crossing.u);
        EXPECT_LT(std::hypot(apart.X, apart.Y), 1e-11 * scale * scale) << seed;

        const Crossing exchanged = Cross(C, D, A, B);
        EXPECT_NEAR(exchanged.t, crossing.u, 1e-10 * scale * scale) << seed;
        EXPECT_NEAR(exchanged.u, crossing.t, 1e-10 * scale * scale) << seed;
    }
}

TEST(IntLineLine2, CrossesLikeIntLineLine) {
    ExpectAt(Cross2(P(0, 0, 0), P(4, 0, 0), P(1, -1, 0), P(1, 3, 0)), 0.25, 0.25);
    ExpectAt(Cross2(P(0, 0, 0), P(3, 4, 0), P(6, 0, 0), P(6, 16, 0)), 2.0, 0.5);
    ExpectNone(Cross2(P(1, 1, 0), P(1, 1, 9), P(0, 0, 0), P(1, 0, 0)));
    ExpectNone(Cross2(P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(1, 1, 9)));
}

TEST(IntLineLine2, TakesLinesNearlyParallelForParallel) {
    ExpectNone(Cross2(P(0, 0, 0), P(1, 0, 0), P(0, 0, 0), P(1, 9e-13, 0)));
    EXPECT_TRUE(Cross2(P(0, 0, 0), P(1, 0, 0), P(0, 0, 0), P(1, 1.1e-12, 0)).isFound);
}

TEST(IntLineLine2, SnapsToCommonPoints) {
    // The slopes are thirds and sevenths, so that without the snap the parameters would miss 0 and 1.
    const P A(0.1, 0.1, 0), B(3.1, 7.3, 0), far(5.7, -1.3, 9);
    const struct {
        P C, D;
        double t, u;
    } cases[] = {{A, far, 0, 0}, {far, B, 1, 1}, {B, far, 1, 0}};
    for (const auto& c : cases) {
        const Crossing crossing = Cross2(A, B, c.C, c.D);
        EXPECT_TRUE(crossing.isFound);
        EXPECT_EQ(crossing.t, c.t);
        EXPECT_EQ(crossing.u, c.u);
    }
}

TEST(IntLineLine2, SnapsByTheYOfCWhereDStandsOverA) {
    // D stands over A, and C lies on the line: (0, 1), although the lines cross in C, at t = 3.
    const Crossing crossing = Cross2(P(0, 0, 0), P(1, 0, 0), P(3, 0, 0), P(0, 5, 0));
    EXPECT_TRUE(crossing.isFound);
    EXPECT_EQ(crossing.t, 0.0);
    EXPECT_EQ(crossing.u, 1.0);
    // D lies on A itself, but C beside the line: there is no snap, and none is needed.
    ExpectAt(Cross2(P(0, 0, 0), P(1, 0, 0), P(3, 4, 0), P(0, 0, 0)), 0.0, 1.0);
}

TEST(IntLineLine2, TakesTheFirstSnapThatHolds) {
    // C on A comes before B on D, and so does the level C below the upright D; both need a line parallel to none.
    const Crossing onA = Cross2(P(0, 0, 0), P(2, 1, 0), P(0, 0, 5), P(2, 2, 0));
    EXPECT_EQ(onA.t, 0.0);
    EXPECT_EQ(onA.u, 0.0);
    // C on B, D over A: the second snap is asked before the fourth.
    const Crossing second = Cross2(P(0, 0, 0), P(1, 0, 0), P(1, 0, 0), P(0, 5, 0));
    EXPECT_EQ(second.t, 0.0);
    EXPECT_EQ(second.u, 1.0);
    // Parallel lines are refused before any snap.
    ExpectNone(Cross2(P(0, 0, 0), P(1, 0, 0), P(0, 0, 0), P(1, 0, 0)));
}

/// Both rules, written down number by number; `isSnapped` tells them apart.
bool PlainIntLineLine(double& t, double& u, const P& A, const P& B, const P& C, const P& D, bool isSnapped) {
    t = -1e20;
    u = -1e20;
    double bx = B.X - A.X, by = B.Y - A.Y;
    if (bx == 0.0 && by == 0.0) return false;
    if (D.X - C.X == 0.0 && D.Y - C.Y == 0.0) return false;
    double cx = C.X - A.X, cy = C.Y - A.Y, dx = D.X - A.X, dy = D.Y - A.Y;
    if (by != 0.0) {
        const double length = std::hypot(bx, by);
        const double c = bx / length, s = -by / length;
        double x = bx * c - by * s;
        bx = x;
        x = cx * c - cy * s;
        cy = cy * c + cx * s;
        cx = x;
        x = dx * c - dy * s;
        dy = dy * c + dx * s;
        dx = x;
    }
    const double den = dy - cy;
    if (!isSnapped && den == 0.0) return false;
    if (isSnapped) {
        if (std::fabs(den) < 1e-12) return false;
        if (cx == 0.0 && cy == 0.0) return t = 0.0, u = 0.0, true;
        if (dx == 0.0 && cy == 0.0) return t = 0.0, u = 1.0, true;
        if (B.X == D.X && B.Y == D.Y) return t = 1.0, u = 1.0, true;
        if (B.X == C.X && B.Y == C.Y) return t = 1.0, u = 0.0, true;
    }
    u = -cy / den;
    t = ((dx - cx) * u + cx) / bx;
    return true;
}

TEST(IntLineLine, AndIntLineLine2FollowThePlainRuleBitByBit) {
    for (unsigned seed = 0; seed < 80000; ++seed) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), D = next();
        Crossing plain{}, snapped{};
        plain.isFound = PlainIntLineLine(plain.t, plain.u, A, B, C, D, false);
        snapped.isFound = PlainIntLineLine(snapped.t, snapped.u, A, B, C, D, true);
        ASSERT_TRUE(SameBits(Cross(A, B, C, D), plain)) << seed;
        ASSERT_TRUE(SameBits(Cross2(A, B, C, D), snapped)) << seed;
    }
}

TEST(MinSegmentBetweenTwoLines, GivesTheParametersAndThePoints) {
    const P A(0, 0, 0), B(4, 0, 0), C(1, -2, 6), D(1, 2, 6);
    const Tuple2<double, double> at = MinSegmentBetweenTwoLines(A, B, C, D);
    EXPECT_EQ(at, (Tuple2<double, double>{0.25, 0.5}));
    P onAB, onCD;
    MinSegmentBetweenTwoLines(onAB, onCD, A, B, C, D);
    EXPECT_EQ(onAB, P(1, 0, 0));
    EXPECT_EQ(onCD, P(1, 0, 6));
    EXPECT_EQ(MidOfMinSegmentBetweenTwoLines(A, B, C, D), P(1, 0, 3));
}

TEST(MinSegmentBetweenTwoLines, DividesByZeroOnParallelLines) {
    const Tuple2<double, double> at = MinSegmentBetweenTwoLines(P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(1, 1, 0));
    EXPECT_FALSE(std::isfinite(at.First));
    EXPECT_FALSE(std::isfinite(at.Second));
    const P mid = MidOfMinSegmentBetweenTwoLines(P(0, 0, 0), P(1, 0, 0), P(0, 1, 0), P(1, 1, 0));
    EXPECT_FALSE(std::isfinite(mid.X));
}

TEST(MinSegmentBetweenTwoLines, MayWriteToWhatComesIn) {
    P A(0, 0, 0), C(1, -2, 6);
    const P B(4, 0, 0), D(1, 2, 6);
    MinSegmentBetweenTwoLines(A, C, A, B, C, D);
    EXPECT_EQ(A, P(1, 0, 0));
    EXPECT_EQ(C, P(1, 0, 6));
    P B2(4, 0, 0), D2(1, 2, 6);
    MinSegmentBetweenTwoLines(D2, B2, P(0, 0, 0), B2, P(1, -2, 6), D2);
    EXPECT_EQ(D2, P(1, 0, 0));
    EXPECT_EQ(B2, P(1, 0, 6));
}

TEST(MinSegmentBetweenTwoLines, StandsSquareOnBothLines) {
    for (unsigned seed = 0; seed < 8000; seed += 4) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), D = next();
        const double sine = Length(Cross(SafeUnit(B - A), SafeUnit(D - C)));
        if (sine < 0.01) continue;
        P onAB, onCD;
        MinSegmentBetweenTwoLines(onAB, onCD, A, B, C, D);
        EXPECT_NEAR(Dot(onCD - onAB, B - A), 0.0, 1e-6) << seed;
        EXPECT_NEAR(Dot(onCD - onAB, D - C), 0.0, 1e-6) << seed;
        EXPECT_LT(Length(MidOfMinSegmentBetweenTwoLines(C, D, A, B) - (onAB + onCD) * 0.5), 1e-6) << seed;
    }
}

TEST(MinSegmentBetweenTwoLines, TakesWhateverComes) {
    for (const double x : {NaN, Infinity, -Infinity, 1e300, 5e-324}) {
        const Tuple2<double, double> at = MinSegmentBetweenTwoLines(P(x, 0, 0), P(0, x, 0), P(0, 0, x), P(x, x, x));
        EXPECT_FALSE(std::isfinite(at.First)) << x;
    }
}

}  // namespace
}  // namespace KM
