#include "Geometry/Solids.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Geometry/Solver.h"
#include "Support/HostilePoints.h"

namespace KM {
namespace {

using namespace Test;

/// What a function wrote, and how many it said it wrote.
struct Hits {
    double t[4] = {7, 7, 7, 7};
    int count = -1;

    double In() const { return std::min(t[0], t[1]); }
    double Out() const { return std::max(t[0], t[1]); }
};

Hits Sphere(const P& A, const P& B, const P& centre, double radius) {
    Hits hits;
    hits.count = IntSegmSphere(hits.t, A, B, centre, radius);
    return hits;
}

Hits Tube(const P& A, const P& B, const P& C, const P& D, double radius) {
    Hits hits;
    hits.count = IntSegmCylinder(hits.t, A, B, C, D, radius);
    return hits;
}

Hits Capped(const P& A, const P& B, const P& C, const P& D, double radius) {
    Hits hits;
    hits.count = IntSegmCylinderFinite(hits.t, A, B, C, D, radius);
    return hits;
}

void ExpectMiss(const Hits& hits) {
    EXPECT_EQ(hits.count, 0);
    for (const double t : hits.t) EXPECT_EQ(t, 7.0);
}

TEST(IntSegmSphere, GivesTheTwoRoots) {
    const Hits hits = Sphere(P(-5, 0, 0), P(5, 0, 0), P(0, 3, 0), 5.0);
    EXPECT_EQ(hits.count, 2);
    EXPECT_DOUBLE_EQ(hits.In(), 0.1);
    EXPECT_DOUBLE_EQ(hits.Out(), 0.9);
    EXPECT_EQ(hits.t[2], 7.0);
}

TEST(IntSegmSphere, KeepsRootsBeyondTheSegmentFromInside) {
    const Hits hits = Sphere(P(-1, 0, 0), P(1, 0, 0), P(0, 0, 0), 3.0);
    EXPECT_EQ(hits.count, 2);
    EXPECT_DOUBLE_EQ(hits.In(), -1.0);
    EXPECT_DOUBLE_EQ(hits.Out(), 2.0);
}

TEST(IntSegmSphere, GivesOneRootWhereTheLineTouches) {
    const Hits hits = Sphere(P(-1, 1, 0), P(3, 1, 0), P(0, 0, 0), 1.0);
    EXPECT_EQ(hits.count, 1);
    EXPECT_DOUBLE_EQ(hits.t[0], 0.25);
    ExpectMiss(Sphere(P(-1, 2, 0), P(3, 2, 0), P(0, 0, 0), 1.0));
}

TEST(IntSegmSphere, TakesAShortSegmentForOneRoot) {
    const Hits hits = Sphere(P(2, 0, 0), P(2, 5e-5, 0), P(0, 0, 0), 1.0);
    EXPECT_EQ(hits.count, 1);
    EXPECT_EQ(IntSegmSphere(nullptr, P(2, 0, 0), P(-2, 0, 0), P(0, 0, 0), 1.0), 0);
}

TEST(IntSegmSphere, PutsItsPointsOnTheSphere) {
    int found = 0;
    for (unsigned seed = 0; seed < 8000; seed += 4) {
        HostilePoints next(seed);
        const P A = next(), B = next(), centre = next();
        const double radius = next.Between(1.0, 12.0);
        const Hits hits = Sphere(A, B, centre, radius);
        for (int i = 0; i < hits.count; ++i)
            EXPECT_NEAR(Length(A + (B - A) * hits.t[i] - centre), radius, 1e-4) << seed;
        found += hits.count;
    }
    EXPECT_GT(found, 1000);
}

// The tube runs along Z, the segment along X, past it at a distance of 3.
const P Foot(0, 0, 0), Top(0, 0, 1);

TEST(IntSegmCylinder, GivesTheWayInFirst) {
    const Hits hits = Tube(P(-5, 3, 7), P(5, 3, 7), Foot, Top, 5.0);
    EXPECT_EQ(hits.count, 2);
    EXPECT_DOUBLE_EQ(hits.t[0], 0.1);
    EXPECT_DOUBLE_EQ(hits.t[1], 0.9);
    EXPECT_EQ(hits.t[2], 7.0);
}

TEST(IntSegmCylinder, LeavesTheParametersOnAMiss) {
    ExpectMiss(Tube(P(-5, 3, 7), P(5, 3, 7), Foot, Top, 2.9));
    ExpectMiss(Tube(P(3, 0, 0), P(3, 0, 9), Foot, Top, 2.9));
    EXPECT_EQ(IntSegmCylinder(nullptr, P(-5, 3, 7), P(5, 3, 7), Foot, Top, 5.0), 0);
    EXPECT_EQ(IntSegmCylinderFinite(nullptr, P(-5, 3, 7), P(5, 3, 7), Foot, Top, 5.0), 0);
}

TEST(IntSegmCylinder, IsUnboundedAlongTheAxis) {
    const Hits hits = Tube(P(3, 0, 0), P(3, 0, 4), Foot, Top, 3.0);
    EXPECT_EQ(hits.count, 2);
    EXPECT_EQ(hits.t[0], -1e20 / 4.0);
    EXPECT_EQ(hits.t[1], 1e20 / 4.0);
}

TEST(IntSegmCylinder, TouchesWhereTheDistanceIsTheRadius) {
    const Hits hits = Tube(P(-5, 3, 7), P(5, 3, 7), Foot, Top, 3.0);
    EXPECT_EQ(hits.count, 2);
    EXPECT_EQ(hits.t[0], 0.5);
    EXPECT_EQ(hits.t[1], 0.5);
}

TEST(IntSegmCylinder, UsesTheAxisVectorAsItComes) {
    // An axis twice as long shifts the middle of the chord: it is found at twice the way over twice the sine ...
    const Hits square = Tube(P(-5, 3, 7), P(5, 3, 7), Foot, P(0, 0, 2), 5.0);
    EXPECT_DOUBLE_EQ(square.t[0], 0.1);
    // ... but along the axis the distance from it is no longer what it seems.
    EXPECT_EQ(Tube(P(1, 0, 1), P(1, 0, 4), Foot, Top, 2.0).count, 2);
    EXPECT_EQ(Tube(P(1, 0, 1), P(1, 0, 4), Foot, P(0, 0, 2), 2.0).count, 0);
}

TEST(IntSegmCylinder, TakesZForASegmentThatIsAPoint) {
    const Hits hits = Tube(P(1, 0, 1), P(1, 0, 1), Foot, Top, 2.0);
    EXPECT_EQ(hits.count, 2);
    EXPECT_EQ(hits.t[0], -Infinity);
    EXPECT_EQ(hits.t[1], Infinity);
}

double DistanceFromAxis(const P& p, const P& C, const P& unit) { return Length((p - C) - unit * Dot(p - C, unit)); }

TEST(IntSegmCylinder, PutsItsPointsOnTheCylinder) {
    int found = 0;
    for (unsigned seed = 0; seed < 8000; seed += 4) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), unit = SafeUnit(next());
        const double radius = next.Between(1.0, 12.0);
        if (Length(Cross(SafeUnit(B - A), unit)) < 0.01) continue;
        const Hits hits = Tube(A, B, C, C + unit, radius);
        if (hits.count == 0) continue;
        ++found;
        EXPECT_LE(hits.t[0], hits.t[1]) << seed;
        for (const double t : {hits.t[0], hits.t[1]})
            EXPECT_NEAR(DistanceFromAxis(A + (B - A) * t, C, unit), radius, 1e-8 * (1.0 + std::fabs(t))) << seed;
    }
    EXPECT_GT(found, 500);
}

TEST(IntSegmCylinderFinite, IsUnboundedForASegmentInside) {
    const Hits hits = Capped(P(0.5, 0.25, 1), P(-0.5, -0.25, 8), Foot, P(0, 0, 10), 1.0);
    EXPECT_EQ(hits.count, 2);
    EXPECT_EQ(hits.t[0], -1e20);
    EXPECT_EQ(hits.t[1], 1e20);
}

TEST(IntSegmCylinderFinite, MissesBeyondTheCapsAndBesideTheWall) {
    ExpectMiss(Capped(P(-3, 0, 11), P(3, 1, 12), Foot, P(0, 0, 10), 1.0));
    ExpectMiss(Capped(P(-3, 0, -1), P(3, 1, -2), Foot, P(0, 0, 10), 1.0));
    ExpectMiss(Capped(P(-3, 2, 5), P(3, 3, 6), Foot, P(0, 0, 10), 1.0));
}

TEST(IntSegmCylinderFinite, EntersThroughTheWall) {
    const Hits hits = Capped(P(-4, 0, 4), P(4, 0, 6), Foot, P(0, 0, 10), 1.0);
    EXPECT_EQ(hits.count, 2);
    EXPECT_NEAR(hits.t[0], 3.0 / 8.0, 1e-3);
    EXPECT_NEAR(hits.t[1], 5.0 / 8.0, 1e-3);
}

TEST(IntSegmCylinderFinite, EntersThroughTheCaps) {
    const Hits through = Capped(P(0.1, 0.2, -5), P(-0.2, -0.1, 15), Foot, P(0, 0, 10), 1.0);
    EXPECT_EQ(through.count, 2);
    EXPECT_NEAR(through.t[0], 0.25, 1e-3);
    EXPECT_NEAR(through.t[1], 0.75, 1e-3);
    const Hits down = Capped(P(-0.2, -0.1, 15), P(0.1, 0.2, -5), Foot, P(0, 0, 10), 1.0);
    EXPECT_NEAR(down.t[0], 0.25, 1e-3);
    EXPECT_NEAR(down.t[1], 0.75, 1e-3);
    // In through the foot, out through the wall.
    const Hits slanted = Capped(P(0, 0.1, -1), P(4, 0.1, 7), Foot, P(0, 0, 10), 1.0);
    EXPECT_NEAR(slanted.t[0], 0.125, 1e-3);
    EXPECT_NEAR(slanted.t[1], 0.25, 2e-3);
}

TEST(IntSegmCylinderFinite, GoesRoundInputAlongTheAxes) {
    // A segment along the axis, and an axis that is a point: both are moved to where they have all three coordinates.
    const Hits along = Capped(P(0.5, 0, -5), P(0.5, 0, 15), Foot, P(0, 0, 10), 1.0);
    EXPECT_EQ(along.count, 2);
    EXPECT_NEAR(along.t[0], 0.25, 1e-3);
    EXPECT_NEAR(along.t[1], 0.75, 1e-3);
    const Hits point = Capped(P(1, 2, 3), P(1, 2, 3), P(1, 2, 3), P(1, 2, 3), 1.0);
    EXPECT_EQ(point.count, 2);
    EXPECT_EQ(point.t[0], -1e20);
}

/// The rules, written down number by number.
bool PlainRay(const P& p, const P& e, const P& q, const P& w, double R, double& tIn, double& tOut) {
    const double rx = p.X - q.X, ry = p.Y - q.Y, rz = p.Z - q.Z;
    const double nx = e.Y * w.Z - e.Z * w.Y, ny = e.Z * w.X - e.X * w.Z, nz = e.X * w.Y - e.Y * w.X;
    const double length = std::sqrt(nx * nx + ny * ny + nz * nz);
    if (length == 0.0) {
        tIn = -1e20;
        tOut = 1e20;
        const double along = rx * w.X + ry * w.Y + rz * w.Z;
        const double x = rx - w.X * along, y = ry - w.Y * along, z = rz - w.Z * along;
        return std::sqrt(x * x + y * y + z * z) <= R;
    }
    double mx = 0.0, my = 0.0, mz = 1.0;
    if (!(5e-9 > length)) mx = nx / length, my = ny / length, mz = nz / length;
    const double d = std::fabs(rx * mx + ry * my + rz * mz);
    if (d > R) return false;
    const double kx = ry * w.Z - rz * w.Y, ky = rz * w.X - rx * w.Z, kz = rx * w.Y - ry * w.X;
    const double s = -(kx * mx + ky * my + kz * mz) / length;
    double ox = my * w.Z - mz * w.Y, oy = mz * w.X - mx * w.Z, oz = mx * w.Y - my * w.X;
    const double across = std::sqrt(ox * ox + oy * oy + oz * oz);
    if (5e-9 > across) ox = 0.0, oy = 0.0, oz = 1.0;
    else ox /= across, oy /= across, oz /= across;
    const double h = std::fabs(std::sqrt(R * R - d * d) / (ox * e.X + oy * e.Y + oz * e.Z));
    tIn = s - h;
    tOut = s + h;
    return true;
}

int PlainTube(double t[], const P& A, const P& B, const P& C, const P& D, double R) {
    const P way = B - A;
    const double L = std::sqrt(way.X * way.X + way.Y * way.Y + way.Z * way.Z);
    const P e = 5e-9 > L ? P(0.0, 0.0, 1.0) : P(way.X / L, way.Y / L, way.Z / L);
    double tIn = NaN, tOut = NaN;
    if (!PlainRay(A, e, C, D - C, R, tIn, tOut)) return 0;
    t[0] = tIn / L;
    t[1] = tOut / L;
    return 2;
}

double PlainAxisParameter(const P& C, const P& D, const P& p, double& distance) {
    const P e = D - C, w = C - p;
    const double square = e.X * e.X + e.Y * e.Y + e.Z * e.Z;
    double t = 0.5;
    P r = w;
    if (!(square < 1e-6)) {
        t = -(e.X * w.X + e.Y * w.Y + e.Z * w.Z) / square;
        r = P(w.X + e.X * t, w.Y + e.Y * t, w.Z + e.Z * t);
    }
    distance = r.X * r.X + r.Y * r.Y + r.Z * r.Z;
    if (distance > 1e-6) distance = std::sqrt(distance);
    return t;
}

int PlainCapped(double t[], P A, P B, P C, P D, double R) {
    D = P(D.X + 1e-7, D.Y + 1e-7, D.Z + 1e-7);
    if (std::fabs(D.X - C.X) < 1e-4) D.X = C.X + 1e-4;
    if (std::fabs(D.Y - C.Y) < 1e-4) D.Y = C.Y + 1e-4;
    if (std::fabs(D.Z - C.Z) < 1e-4) D.Z = C.Z + 1e-4;
    if (std::fabs(A.X - B.X) < 1e-4) B.X = B.X - 1e-4;
    if (std::fabs(A.Y - B.Y) < 1e-4) B.Y = B.Y - 1e-4;
    if (std::fabs(A.Z - B.Z) < 1e-4) B.Z = B.Z - 1e-4;
    double dA = NaN, dB = NaN, unused = NaN;
    const double tA = PlainAxisParameter(C, D, A, dA), tB = PlainAxisParameter(C, D, B, dB);
    if (tA > 1.0 && tB > 1.0) return 0;
    if (tA < 0.0 && tB < 0.0) return 0;
    if (dA <= R && dB <= R && tA >= 0.0 && tA <= 1.0 && tB >= 0.0 && tB <= 1.0) {
        t[0] = -1e20;
        t[1] = 1e20;
        return 2;
    }
    if (PlainTube(t, A, B, C, D, R) == 0) return 0;
    const double s0 = PlainAxisParameter(C, D, A + (B - A) * t[0], unused);
    const double s1 = PlainAxisParameter(C, D, A + (B - A) * t[1], unused);
    if (s0 < 0.0) t[0] = (0.0 - tA) / (tB - tA);
    if (s0 > 1.0) t[0] = (1.0 - tA) / (tB - tA);
    if (s1 < 0.0) t[1] = (0.0 - tA) / (tB - tA);
    if (s1 > 1.0) t[1] = (1.0 - tA) / (tB - tA);
    return 2;
}

TEST(IntSegmCylinderFinite, AndTheInfiniteOneFollowThePlainRuleBitByBit) {
    int found[2] = {0, 0};
    for (unsigned seed = 0; seed < 80000; ++seed) {
        HostilePoints next(seed);
        const P A = next(), B = next(), C = next(), D = next();
        const double radius = seed % 3 == 0 ? next.Number() : next.Between(0.0, 8.0);
        for (const bool isCapped : {false, true}) {
            Hits expected;
            expected.count =
                isCapped ? PlainCapped(expected.t, A, B, C, D, radius) : PlainTube(expected.t, A, B, C, D, radius);
            const Hits actual = isCapped ? Capped(A, B, C, D, radius) : Tube(A, B, C, D, radius);
            ASSERT_EQ(actual.count, expected.count) << seed;
            for (int i = 0; i < 4; ++i) ASSERT_TRUE(SameBits(actual.t[i], expected.t[i])) << seed;
            found[isCapped] += actual.count;
        }
    }
    EXPECT_GT(found[false], 10000);
    EXPECT_GT(found[true], 10000);
}

TEST(IntSegmSphere, FollowsThePlainRuleBitByBit) {
    for (unsigned seed = 0; seed < 40000; ++seed) {
        HostilePoints next(seed);
        const P A = next(), B = next(), centre = next();
        const double R = seed % 3 == 0 ? next.Number() : next.Between(0.0, 8.0);
        const P f(A.X - centre.X, A.Y - centre.Y, A.Z - centre.Z);
        const P e(B.X - centre.X - f.X, B.Y - centre.Y - f.Y, B.Z - centre.Z - f.Z);
        Hits expected;
        expected.count = Solver::Quadratic(e.X * e.X + e.Y * e.Y + e.Z * e.Z, 2.0 * (e.X * f.X + e.Y * f.Y + e.Z * f.Z),
                                           f.X * f.X + f.Y * f.Y + f.Z * f.Z - R * R, expected.t);
        const Hits actual = Sphere(A, B, centre, R);
        ASSERT_EQ(actual.count, expected.count) << seed;
        for (int i = 0; i < 4; ++i) ASSERT_TRUE(SameBits(actual.t[i], expected.t[i])) << seed;
    }
}

}  // namespace
}  // namespace KM
