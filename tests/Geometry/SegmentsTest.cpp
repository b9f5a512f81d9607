#include "Geometry/Segments.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "Geometry/Crossing.h"

namespace KM {
namespace {

using namespace Test;

Crossing Meet(const P& A, const P& B, const P& C, const P& D) { return CrossingBy(IntSegmSegm, A, B, C, D); }

TEST(IntSegmSegm, GivesTheParametersFromAToBAndFromCToD) {
    const P A(0, 0, 0), B(4, 0, 0), C(1, -1, 0), D(1, 3, 0);
    const struct {
        P A, B, C, D;
        double t, u;
    } cases[] = {{A, B, C, D, 0.25, 0.25}, {B, A, C, D, 0.75, 0.25}, {A, B, D, C, 0.25, 0.75},
                 {B, A, D, C, 0.75, 0.75}, {C, D, A, B, 0.25, 0.25}, {C, D, B, A, 0.25, 0.75},
                 {D, C, A, B, 0.75, 0.25}, {D, C, B, A, 0.75, 0.75}};
    for (const auto& c : cases) {
        const Crossing meeting = Meet(c.A, c.B, c.C, c.D);
        EXPECT_TRUE(meeting.isFound);
        EXPECT_EQ(meeting.t, c.t);
        EXPECT_EQ(meeting.u, c.u);
    }
}

TEST(IntSegmSegm, DoesNotLookAtZ) { EXPECT_TRUE(Meet(P(0, 0, 7), P(4, 0, -2), P(1, -1, 100), P(1, 3, NaN)).isFound); }

TEST(IntSegmSegm, GivesTheCrossingOfTheLinesWhereTheSegmentsMiss) {
    const Crossing meeting = Meet(P(0, 0, 0), P(4, 4, 0), P(3, 1, 0), P(5, -3, 0));
    EXPECT_FALSE(meeting.isFound);
    EXPECT_DOUBLE_EQ(meeting.t, 7.0 / 12.0);
    EXPECT_DOUBLE_EQ(meeting.u, -1.0 / 3.0);
}

TEST(IntSegmSegm, DoesNotLookAtLinesWhoseBoxesAreApart) {
    const P A(0, 0, 0), B(4, 2, 0);
    const std::pair<P, P> apart[] = {
        {P(5, 1, 0), P(6, 0, 0)}, {P(-1, 1, 0), P(-2, 0, 0)}, {P(1, 3, 0), P(2, 4, 0)}, {P(1, -3, 0), P(2, -4, 0)}};
    for (const auto& [C, D] : apart) {
        const Crossing meeting = Meet(A, B, C, D);
        EXPECT_FALSE(meeting.isFound);
        EXPECT_EQ(meeting.t, 0.5);
        EXPECT_EQ(meeting.u, 0.5);
    }
}

TEST(IntSegmSegm, LooksAtLinesWhoseBoxesAreApartByLessThanTheMargin) {
    EXPECT_NE(Meet(P(0, 0, 0), P(4, 0, 0), P(2, 9e-7, 0), P(3, 1, 0)).t, 0.5);
    EXPECT_EQ(Meet(P(0, 0, 0), P(4, 0, 0), P(2, 11e-7, 0), P(3, 1, 0)).t, 0.5);
    EXPECT_NE(Meet(P(0, 0, 0), P(4, 1, 0), P(4 + 9e-7, 0.5, 0), P(5, 0.75, 0)).t, 0.5);
    EXPECT_EQ(Meet(P(0, 0, 0), P(4, 1, 0), P(4 + 11e-7, 0.5, 0), P(5, 0.75, 0)).t, 0.5);
}

TEST(IntSegmSegm, FindsNothingOnUprightOrParallelSegments) {
    const P A(0, 0, 0), B(4, 0, 0);
    const std::pair<P, P> others[] = {{P(1, 0, 0), P(1, 0, 9)}, {P(1, 0, 0), P(3, 0, 0)}, {P(-1, 0, 0), P(3, 0, 0)}};
    for (const auto& [C, D] : others)
        for (const bool isFirst : {false, true}) {
            const Crossing meeting = isFirst ? Meet(C, D, A, B) : Meet(A, B, C, D);
            EXPECT_FALSE(meeting.isFound);
            EXPECT_EQ(meeting.t, -1e20);
            EXPECT_EQ(meeting.u, -1e20);
        }
}

TEST(IntSegmSegm, DoesNotCountIdenticalSegments) {
    for (unsigned seed = 0; seed < 4000; seed += 4) {
        HostilePoints next(seed);
        const P A = next(), B = next();
        EXPECT_FALSE(Meet(A, B, A, B).isFound) << seed;
        EXPECT_FALSE(Meet(A, B, B, A).isFound) << seed;
    }
}

//       D
//       |
// A --- B,C
TEST(IntSegmSegm, DoesNotCountASharedEnd) {
    const P A(0, 0, 0), B(4, 0, 0), D(4, 3, 0);
    EXPECT_FALSE(Meet(A, B, B, D).isFound);
    EXPECT_FALSE(Meet(A, B, D, B).isFound);
    EXPECT_FALSE(Meet(B, A, B, D).isFound);
    EXPECT_FALSE(Meet(B, A, D, B).isFound);
    EXPECT_FALSE(Meet(A, B, B, P(9, -7, 0)).isFound);
    EXPECT_FALSE(Meet(A, B, A, P(-9, 7, 0)).isFound);
}

// C moves up and to the right, whichever way the segments run. Where that takes it to the other side of AB than D, the
// segments do meet, close to their joint.
TEST(IntSegmSegm, CountsASharedEndWhoseMoveLeadsAcrossTheOtherSegment) {
    const P A(0, 0, 0), B(4, 0, 0);
    const Crossing meeting = Meet(A, B, A, P(2, -3, 0));
    EXPECT_TRUE(meeting.isFound);
    EXPECT_NEAR(meeting.t, 0.25e-7 * (1.0 + 2.0 / 3.0), 1e-10);
    EXPECT_NEAR(meeting.u, 1e-7 / 3.0, 1e-12);
    // D moves twice as far.
    EXPECT_NEAR(Meet(A, B, P(2, -3, 0), A).t, 0.5e-7 * (1.0 + 2.0 / 3.0), 1e-10);
}

TEST(IntSegmSegm, MovesOnlyWhatIsSharedInAllCoordinates) {
    const P A(0, 0, 0), B(4, 0, 0);
    EXPECT_EQ(Meet(P(-1, 0, 0), B, P(0, 0, 0), P(0, 3, 0)).u, 0.0);
    // B and D agree in XY, not in Z: the crossing is that of the lines as they are.
    const Crossing meeting = Meet(A, B, P(3, -1, 0), P(4, 0, 1));
    EXPECT_EQ(meeting.t, 1.0);
    EXPECT_EQ(meeting.u, 1.0);
}

// A segment owns its first end and not its last: along a level one the other keeps its direction, across any other
// one it runs upwards, as seen with that one running to the right.
TEST(IntSegmSegm, OwnsTheFirstEndOfTheSegmentAndNotTheLast) {
    const P A(-1, 0, 0), B(1, 0, 0), foot(0, 0, 0), top(0, 1, 0);
    EXPECT_TRUE(Meet(A, B, foot, top).isFound);
    EXPECT_FALSE(Meet(A, B, top, foot).isFound);

    const P C(-1, -1, 0), D(1, 1, 0), left(-1, 1, 0), right(1, -1, 0);
    EXPECT_TRUE(Meet(C, D, foot, left).isFound);
    EXPECT_TRUE(Meet(C, D, left, foot).isFound);
    EXPECT_FALSE(Meet(C, D, foot, right).isFound);
    EXPECT_FALSE(Meet(C, D, right, foot).isFound);
}

TEST(IntSegmSegm, LetsTheSecondSegmentDecideNearAnEndOfTheFirst) {
    // Seen along the second segment, upwards, the first lies to its left or to its right; it owns its right-hand end.
    const P low(0, -1, 0), high(0, 1, 0), foot(0, 0, 0), left(-2, 0, 0), right(2, 0, 0);
    EXPECT_TRUE(Meet(left, foot, low, high).isFound);
    EXPECT_TRUE(Meet(foot, left, low, high).isFound);
    EXPECT_FALSE(Meet(right, foot, low, high).isFound);
    EXPECT_FALSE(Meet(foot, right, low, high).isFound);
}

TEST(IntSegmSegm, CountsTheJointOfAChainOnce) {
    // Lines through the common point of two segments that follow each other, in all directions but along them.
    const P left(-3, -1, 0), joint(0, 0, 0), right(3, 2, 0);
    for (int i = 0; i < 40; ++i) {
        const double angle = 1.0 + 0.04 * i;
        const P way(std::cos(angle), std::sin(angle), 0);
        const int hits =
            Meet(way * -2.0, way * 2.0, left, joint).isFound + Meet(way * -2.0, way * 2.0, joint, right).isFound;
        EXPECT_EQ(hits, 1) << i;
    }
}

TEST(IntSegmSegm, DoesNotDependOnTheOrderWithinTheFirstSegment) {
    for (unsigned seed = 0; seed < 8000; seed += 4) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), D = next();
        const Crossing there = Meet(A, B, C, D), back = Meet(B, A, C, D), exchanged = Meet(C, D, A, B);
        EXPECT_EQ(there.isFound, back.isFound) << seed;
        EXPECT_EQ(there.isFound, exchanged.isFound) << seed;
        if (!there.isFound) continue;
        EXPECT_NEAR(there.t, 1.0 - back.t, 1e-12) << seed;
        const P apart = A + (B - A) * there.t - (C + (D - C) * there.u);
        EXPECT_LT(std::hypot(apart.X, apart.Y), 1e-10) << seed;
    }
}

TEST(IntSegmSegm, SeesWhetherTheEndsLieOnBothSides) {
    const auto side = [](const P& a, const P& b, const P& p) {
        return (b.X - a.X) * (p.Y - a.Y) - (b.Y - a.Y) * (p.X - a.X);
    };
    for (unsigned seed = 0; seed < 40000; seed += 4) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), D = next();
        const bool isHit = side(A, B, C) * side(A, B, D) < 0.0 && side(C, D, A) * side(C, D, B) < 0.0;
        EXPECT_EQ(Meet(A, B, C, D).isFound, isHit) << seed;
    }
}

/// The rule, written down number by number.
bool PlainOnce(double& t, double& u, P A, P B, P C, P D) {
    t = u = 0.5;
    const double m = 1e-6;
    if (A.X > C.X + m && A.X > D.X + m && B.X > C.X + m && B.X > D.X + m) return false;
    if (A.X < C.X - m && A.X < D.X - m && B.X < C.X - m && B.X < D.X - m) return false;
    if (A.Y > C.Y + m && A.Y > D.Y + m && B.Y > C.Y + m && B.Y > D.Y + m) return false;
    if (A.Y < C.Y - m && A.Y < D.Y - m && B.Y < C.Y - m && B.Y < D.Y - m) return false;
    const bool movesC = A == C || B == C, movesD = A == D || B == D;
    if (movesC) C.X += 1e-7, C.Y += 1e-7;
    if (movesD) D.X += 2e-7, D.Y += 2e-7;

    bool flipFirst = false, flipSecond = false;
    if (A.X > B.X || (A.X == B.X && A.Y > B.Y) || (A.X == B.X && A.Y == B.Y && A.Z > B.Z)) {
        std::swap(A, B);
        flipFirst = true;
    }
    t = u = -1e20;
    double bx = B.X - A.X, by = B.Y - A.Y;
    if (bx == 0.0 && by == 0.0) return false;
    if (D.X - C.X == 0.0 && D.Y - C.Y == 0.0) return false;
    double cx = C.X - A.X, cy = C.Y - A.Y, dx = D.X - A.X, dy = D.Y - A.Y;
    if (by != 0.0) {
        const double length = std::hypot(bx, by);
        const double c = bx / length, s = -by / length;
        const double x = bx * c - by * s, x1 = cx * c - cy * s, x2 = dx * c - dy * s;
        cy = cy * c + cx * s;
        dy = dy * c + dx * s;
        bx = x, cx = x1, dx = x2;
        flipSecond = cy > dy;
    }
    const double den = dy - cy;
    if (den == 0.0) return false;
    u = -cy / den;
    t = ((dx - cx) * u + cx) / bx;
    if (flipSecond) u = 1.0 - u;
    const bool isHit = 0.0 <= t && t < 1.0 && 0.0 <= u && u < 1.0;
    if (flipSecond) u = 1.0 - u;
    if (flipFirst) t = 1.0 - t;
    return isHit;
}

bool PlainIntSegmSegm(double& t, double& u, const P& A, const P& B, const P& C, const P& D) {
    const bool isHit = PlainOnce(t, u, A, B, C, D);
    if (std::fabs(t) < 1e-8 || std::fabs(t - 1.0) < 1e-8) return PlainOnce(u, t, C, D, A, B);
    return isHit;
}

TEST(IntSegmSegm, FollowsThePlainRuleBitByBit) {
    int hits = 0;
    for (unsigned seed = 0; seed < 160000; ++seed) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next();
        const P ends[] = {next(), A, B};
        for (const P& D : ends) {
            const Crossing expected = CrossingBy(PlainIntSegmSegm, A, B, C, D);
            ASSERT_TRUE(SameBits(Meet(A, B, C, D), expected)) << seed;
            hits += expected.isFound;
        }
    }
    EXPECT_GT(hits, 10000);
}

}  // namespace
}  // namespace KM
