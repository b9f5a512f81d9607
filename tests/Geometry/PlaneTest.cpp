#include "Geometry/Plane.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <type_traits>

#include "Support/Numbers.h"

namespace KM {
namespace {

using P = TPoint<double>;
using Test::Infinity;
using Test::NaN;
using Test::Numbers;
using Test::SameBits;

static_assert(sizeof(Plane) == 56 && std::is_standard_layout_v<Plane> && std::is_trivially_copyable_v<Plane>);
static_assert(offsetof(Plane, a) == 0 && offsetof(Plane, b) == 8 && offsetof(Plane, c) == 16);
static_assert(offsetof(Plane, d) == 24 && offsetof(Plane, px) == 32 && offsetof(Plane, pz) == 48);

// The types of the interface, to the letter.
static_assert(std::is_same_v<decltype(&Plane::Normal), const P (Plane::*)() const>);
static_assert(std::is_same_v<decltype(&Plane::CachedPoint), P (Plane::*)() const>);
static_assert(
    std::is_same_v<decltype(&FindNonParallelPlanes), short (*)(const std::vector<Plane>&, std::vector<long>&)>);

P StoredPoint(const Plane& plane) { return P(plane.px, plane.py, plane.pz); }

Plane RandomPlane(Numbers& numbers) {
    const P normal = numbers.Direction();
    return Plane(normal, numbers.PointBetween(-10.0, 10.0));
}

/// An upright plane at this angle round the Z axis.
Plane UprightPlane(double degrees, double offset = 0.0) {
    const double angle = degrees * std::numbers::pi / 180.0;
    return Plane(std::cos(angle), std::sin(angle), 0.0, offset);
}

TEST(Plane, IsTheGroundByDefault) {
    const Plane plane;
    EXPECT_EQ(plane.Normal(), P(0, 0, 1));
    EXPECT_EQ(plane.d, 0.0);
    EXPECT_EQ(StoredPoint(plane), P(1e20, 1e20, 1e20));
}

TEST(Plane, RunsThroughThreePoints) {
    const Plane plane(P(1, 0, 5), P(3, 0, 5), P(1, 4, 5));
    EXPECT_EQ(plane.Normal(), P(0, 0, 1));
    EXPECT_EQ(plane.d, -5.0);
    EXPECT_EQ(StoredPoint(plane), P(3, 0, 5));
    EXPECT_EQ(Plane(P(1, 0, 5), P(1, 4, 5), P(3, 0, 5)).Normal(), P(0, 0, -1));
}

TEST(Plane, OfCollinearPointsIsLevelAtTheFirst) {
    const Plane plane(P(1, 1, 7), P(2, 2, 8), P(3, 3, 9));
    EXPECT_EQ(plane.Normal(), P(0, 0, 1));
    EXPECT_EQ(plane.d, -7.0);
    EXPECT_EQ(StoredPoint(plane), P(2, 2, 8));
}

TEST(Plane, RunsThroughAPoint) {
    const Plane plane(P(0, 3, 4), P(1, 2, 3));
    EXPECT_EQ(plane.Normal(), P(0, 3.0 / 5.0, 4.0 / 5.0));
    EXPECT_EQ(plane.d, -(2.0 * (3.0 / 5.0) + 3.0 * (4.0 / 5.0)));
    EXPECT_EQ(StoredPoint(plane), P(1, 2, 3));
}

TEST(Plane, TakesTheOffsetAsItIs) {
    EXPECT_EQ(Plane(0, 0, 0, 5).Normal(), P(0, 0, 1));
    EXPECT_EQ(Plane(0, 0, 0, 5).d, 5.0);
    const Plane scaled(0, 0, 2, 4);
    EXPECT_EQ(scaled.Normal(), P(0, 0, 1));
    EXPECT_EQ(scaled.d, 4.0);
    EXPECT_EQ(scaled.CachedPoint(), P(0, 0, -4));
    EXPECT_EQ(StoredPoint(scaled), P(1e20, 1e20, 1e20));
}

TEST(Plane, NormalTooShortIsUp) {
    EXPECT_EQ(Plane(P(4.9e-9, 0, 0), P(1, 2, 3)).Normal(), P(0, 0, 1));
    EXPECT_EQ(Plane(P(5e-9, 0, 0), P(1, 2, 3)).Normal(), P(1, 0, 0));
}

TEST(Plane, InitIsTheConstructor) {
    Plane plane(1, 2, 3, 4);
    plane.Init(P(0, 3, 4), P(1, 2, 3));
    EXPECT_EQ(plane, Plane(P(0, 3, 4), P(1, 2, 3)));
}

TEST(Plane, KnowsDistances) {
    const Plane plane(P(0, 3, 4), P(0, 0, 10));
    EXPECT_DOUBLE_EQ(plane.Dist(P(0, 0, 0)), -8.0);
    EXPECT_DOUBLE_EQ(plane.VerticalDist(P(0, 0, 0)), -10.0);
    EXPECT_DOUBLE_EQ(plane.VerticalDist(P(5, 4, 10)), 3.0);
}

TEST(Plane, HasNoVerticalDistanceWhenItIsUpright) {
    Plane plane(1, 0, 0, -3);
    EXPECT_EQ(plane.VerticalDist(P(9, 9, 9)), 0.0);
    plane.c = 1e-7;
    EXPECT_EQ(plane.VerticalDist(P(9, 9, 9)), 0.0);
    plane.c = std::nextafter(1e-7, 1.0);
    EXPECT_NE(plane.VerticalDist(P(9, 9, 9)), 0.0);
}

TEST(Plane, PointLiesInItBelowTheTolerance) {
    const Plane plane(0, 0, 1, 0);
    EXPECT_TRUE(plane.PointLiesInPlane(P(5, 5, 0.99e-7)));
    EXPECT_TRUE(plane.PointLiesInPlane(P(5, 5, -0.99e-7)));
    EXPECT_FALSE(plane.PointLiesInPlane(P(5, 5, 1e-7)));
    EXPECT_FALSE(plane.PointLiesInPlane(P(5, 5, NaN)));
}

TEST(Plane, IsValidWithAUnitNormalOnly) {
    Plane plane;
    EXPECT_TRUE(plane.IsValid());
    plane.c = 1.0 + 4e-13;
    EXPECT_TRUE(plane.IsValid());
    plane.c = 1.0 + 1e-12;
    EXPECT_FALSE(plane.IsValid());
    plane.c = NaN;
    EXPECT_FALSE(plane.IsValid());
    EXPECT_FALSE(Plane(Infinity, 0, 0, 0).IsValid());
}

TEST(Plane, WorksOutAPointOfItsOwn) {
    EXPECT_EQ(Plane(P(0, 0, 1), P(1, 2, 3)).CachedPoint(), P(0, 0, 3));  // not the stored point
    EXPECT_EQ(Plane(P(0, 0, 1), P(0, 0, 3)).CachedPoint(), P(0, 0, 3));  // unless that is on the axis
    EXPECT_EQ(Plane(P(3, 0, 4), P(0, 0, 5)).CachedPoint(), P(0, 0, 5));  // Z first,
    EXPECT_EQ(Plane(P(1, 0, 0), P(4, 5, 6)).CachedPoint(), P(4, 0, 0));  // then X,
    EXPECT_EQ(Plane(P(0, 1, 0), P(4, 5, 6)).CachedPoint(), P(0, 5, 0));  // then Y
    Plane none(0, 0, 1, 7);
    none.c = 4.9e-9;
    EXPECT_EQ(none.CachedPoint(), P(0, 0, 0));
    none.c = 5e-9;
    EXPECT_EQ(none.CachedPoint(), P(0, 0, -7 / 5e-9));
}

TEST(Plane, IntersectIsExactAlongTheNormalOnly) {
    const Plane ground;
    EXPECT_EQ(ground.Intersect(P(1, 2, 8), P(1, 2, 9)), P(1, 2, 0));
    EXPECT_EQ(ground.Intersect(P(1, 2, -8), P(1, 2, -3)), P(1, 2, 0));
    EXPECT_EQ(ground.Intersect(P(1, 2, 8), P(1, 2, 3)), P(1, 2, 16));  // against the normal it goes away from the plane
    EXPECT_EQ(ground.Intersect(P(0, 0, 10), P(3, 0, 14)), P(-6, 0, 2));
    EXPECT_EQ(ground.Intersect(P(1, 2, 8), P(1, 2, 8)), P(1, 2, 0));  // a line without direction runs along Z
}

TEST(Plane, CutsASegment) {
    const Plane plane(0, 0, 1, -1);
    const struct {
        P p, q;
        int result;
        P out;
        double t;
    } cases[] = {
        {P(0, 0, 0), P(4, 0, 4), 1, P(1, 0, 1), 0.25},  {P(4, 0, 4), P(0, 0, 0), 1, P(1, 0, 1), 0.75},
        {P(2, 3, 1), P(2, 3, 9), 1, P(2, 3, 1), 0.0},    // first end on the plane
        {P(2, 3, 9), P(2, 3, 1), 1, P(2, 3, 1), 1.0},    // second end
        {P(0, 0, 2), P(0, 0, 4), 0, P(9, 9, 9), -0.5},   // beyond the first end: `t` tells where
        {P(0, 0, 0), P(0, 0, 0.5), 0, P(9, 9, 9), 2.0},  // beyond the second
        {P(1, 2, 1), P(3, 4, 1), 2, P(1, 2, 1), 0.0},    // in the plane
        {P(1, 2, 3), P(3, 4, 3), 0, P(9, 9, 9), 9.0},    // beside it: nothing is written
        {P(1, 2, 3), P(1, 2, 3), 0, P(9, 9, 9), 9.0},   {P(1, 2, 1), P(1, 2, 1), 2, P(1, 2, 1), 0.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << "from z " << c.p.Z << " to " << c.q.Z);
        P out(9, 9, 9);
        double t = 9.0;
        EXPECT_EQ(plane.IntersectSeg(c.p, c.q, out, t), c.result);
        EXPECT_EQ(out, c.out);
        EXPECT_EQ(t, c.t);
    }
}

TEST(Plane, CutsASegmentATraceBeyondItsEnds) {
    const Plane plane;
    P out;
    double t;
    EXPECT_EQ(plane.IntersectSeg(P(0, 0, 1), P(0, 0, 5e-13), out, t), 1);
    EXPECT_GT(t, 1.0);
    EXPECT_LE(t, 1.000000000001);
    EXPECT_EQ(plane.IntersectSeg(P(0, 0, 1), P(0, 0, 2e-12), out, t), 0);
    EXPECT_EQ(plane.IntersectSeg(P(0, 0, 1e-12), P(0, 0, 1), out, t), 0);  // t is -1.000000000001e-12
    EXPECT_EQ(plane.IntersectSeg(P(0, 0, 9e-13), P(0, 0, 1), out, t), 1);
    EXPECT_LT(t, 0.0);
}

TEST(Plane, TakesASegmentForParallelBelowATrace) {
    const Plane plane;
    P out;
    double t = 9.0;
    EXPECT_EQ(plane.IntersectSeg(P(0, 0, 5e-13), P(1, 0, 1e-12), out, t), 2);
    EXPECT_EQ(out, P(0, 0, 5e-13));
    EXPECT_EQ(plane.IntersectSeg(P(0, 0, -1e-12), P(1, 0, -1e-12), out, t), 0);
    EXPECT_EQ(plane.IntersectSeg(P(0, 0, 0), P(1, 0, 1e-12), out, t), 1);
}

TEST(Plane, CutsNoSegmentThatIsNotANumber) {
    P out(9, 9, 9);
    double t = 9.0;
    EXPECT_EQ(Plane().IntersectSeg(P(0, 0, NaN), P(0, 0, 1), out, t), 0);
    EXPECT_TRUE(std::isnan(t));
    EXPECT_EQ(out, P(9, 9, 9));
}

TEST(NearestPtOnPlane, IsTheFootOfThePerpendicular) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const Plane plane = RandomPlane(numbers);
        const P p = numbers.PointBetween(-10.0, 10.0);
        const P foot = NearestPtOnPlane(plane, p);
        EXPECT_TRUE(plane.IsValid());
        EXPECT_TRUE(plane.PointLiesInPlane(foot));
        EXPECT_TRUE(plane.PointLiesInPlane(plane.CachedPoint()) || std::fabs(plane.c) < 1e-6);
        EXPECT_NEAR(Length(p - foot), std::fabs(plane.Dist(p)), 1e-13);
    }
}

TEST(IsParallel, MeasuresTheSquaredSine) {
    EXPECT_TRUE(IsParallel(Plane(1, 2, 3, 4), Plane(1, 2, 3, 5), 0.0));
    EXPECT_TRUE(IsParallel(Plane(0, 0, 1, 4), Plane(0, 0, -1, 5), 0.0));
    EXPECT_FALSE(IsParallel(Plane(1, 0, 0, 0), Plane(0, 1, 0, 0), 0.9999));
    EXPECT_TRUE(IsParallel(Plane(1, 0, 0, 0), Plane(0, 1, 0, 0), 1.0));
    EXPECT_FALSE(IsParallel(UprightPlane(0), UprightPlane(30), 0.2499));
    EXPECT_TRUE(IsParallel(UprightPlane(0), UprightPlane(30), 0.2501));
    EXPECT_FALSE(IsParallel(Plane(), Plane(NaN, 0, 0, 0), 1.0));
}

TEST(Intersect2Planes, FindsTheLine) {
    P point, dir;
    ASSERT_TRUE(Intersect2Planes(Plane(1, 0, 0, -2), Plane(0, 1, 0, -3), point, dir));
    EXPECT_EQ(point, P(2, 3, 0));
    EXPECT_EQ(dir, P(0, 0, 1));
}

TEST(Intersect2Planes, RefusesAcuteAngles) {
    P point(9, 9, 9), dir(8, 8, 8);
    for (const double degrees : {0.0, 10.0, 12.8, 170.0, 180.0})
        EXPECT_FALSE(Intersect2Planes(UprightPlane(0), UprightPlane(degrees), point, dir)) << degrees;
    EXPECT_FALSE(Intersect2Planes(Plane(), Plane(NaN, 0, 0, 0), point, dir));
    EXPECT_EQ(point, P(9, 9, 9));
    EXPECT_EQ(dir, P(8, 8, 8));
    EXPECT_TRUE(Intersect2Planes(UprightPlane(0), UprightPlane(13), point, dir));
}

TEST(Intersect2Planes, GivesAPointOfBothNearTheOrigin) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const Plane one = RandomPlane(numbers);
        const Plane other = RandomPlane(numbers);
        P point, dir;
        ASSERT_EQ(Intersect2Planes(one, other, point, dir), !IsParallel(one, other, 0.05));
        if (IsParallel(one, other, 0.05)) continue;
        EXPECT_NEAR(Length(dir), 1.0, 1e-14);
        EXPECT_NEAR(Dot(point, dir), 0.0, 1e-11);
        for (const P& p : {point, point + dir * 10.0}) {
            EXPECT_NEAR(one.Dist(p), 0.0, 1e-11);
            EXPECT_NEAR(other.Dist(p), 0.0, 1e-11);
        }
    }
}

TEST(Intersect3Planes, FindsThePoint) {
    P point;
    ASSERT_TRUE(Intersect3Planes(Plane(1, 0, 0, -2), Plane(0, 1, 0, -3), Plane(0, 0, 1, -4), point));
    EXPECT_EQ(point, P(2, 3, 4));
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const Plane planes[] = {RandomPlane(numbers), RandomPlane(numbers), RandomPlane(numbers)};
        if (!Intersect3Planes(planes[0], planes[1], planes[2], point)) continue;
        for (const Plane& plane : planes) EXPECT_NEAR(plane.Dist(point), 0.0, 1e-10);
    }
}

TEST(Intersect3Planes, RefusesAFlatBoxOfNormals) {
    P point(9, 9, 9);
    const auto leaning = [](double z) {
        Plane plane(1, 0, 0, 0);
        plane.c = z;  // the box of this normal with X and Y has exactly this volume
        return plane;
    };
    EXPECT_FALSE(Intersect3Planes(leaning(0.01), Plane(1, 0, 0, 0), Plane(0, 1, 0, 0), point));
    EXPECT_FALSE(Intersect3Planes(leaning(-0.01), Plane(1, 0, 0, 0), Plane(0, 1, 0, 0), point));
    EXPECT_FALSE(Intersect3Planes(leaning(NaN), Plane(1, 0, 0, 0), Plane(0, 1, 0, 0), point));
    EXPECT_EQ(point, P(9, 9, 9));
    EXPECT_TRUE(Intersect3Planes(leaning(0.0101), Plane(1, 0, 0, 0), Plane(0, 1, 0, 0), point));
    EXPECT_TRUE(Intersect3Planes(leaning(-0.0101), Plane(1, 0, 0, 0), Plane(0, 1, 0, 0), point));
}

TEST(FindNonParallelPlanes, KeepsTheFirstOfEachFamily) {
    std::vector<long> indices{7, 7, 7};
    const std::vector<Plane> planes = {Plane(1, 0, 0, 1), Plane(-1, 0, 0, 2), Plane(0, 1, 0, 3),
                                       UprightPlane(1.8), UprightPlane(88.5), UprightPlane(2.0)};
    EXPECT_EQ(FindNonParallelPlanes(planes, indices), 3);
    EXPECT_EQ(indices, (std::vector<long>{0, 2, 5}));
}

TEST(FindNonParallelPlanes, TakesOnePlaneOrNone) {
    std::vector<long> indices{7, 7, 7};
    EXPECT_EQ(FindNonParallelPlanes({Plane()}, indices), 1);
    EXPECT_EQ(indices, std::vector<long>{0});
    EXPECT_EQ(FindNonParallelPlanes({}, indices), 0);
    EXPECT_TRUE(indices.empty());
}

TEST(FindNonParallelPlanes, ComparesAsThePlainRuleDoes) {
    for (unsigned seed = 0; seed < 50; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        std::vector<Plane> planes(200);
        for (Plane& plane : planes) {
            const P normal = seed % 2 != 0 ? numbers.HostilePoint() : numbers.PointBetween(-0.1, 0.1) + P(0, 0, 1);
            plane = Plane(normal, P());
        }
        std::vector<long> expected{0};
        for (long i = 1; i < 200; ++i) {
            bool isDropped = false;
            for (const long j : expected)
                isDropped = isDropped || LengthSquared(Cross(planes[i].Normal(), planes[j].Normal())) <= 0.001;
            if (!isDropped) expected.push_back(i);
        }
        std::vector<long> indices;
        EXPECT_EQ(FindNonParallelPlanes(planes, indices), static_cast<short>(expected.size()));
        EXPECT_EQ(indices, expected);
    }
}

TEST(FindNonParallelPlanes, IsQuickWithMillionsOfBrokenPlanes) {
    const std::vector<Plane> planes(1000000, Plane(NaN, 0, 0, 0));
    std::vector<long> indices;
    EXPECT_EQ(FindNonParallelPlanes(planes, indices), 32767);
    EXPECT_EQ(indices.size(), planes.size());
}

// Each operation once more, from the formulas alone, on numbers of all kinds.
TEST(Plane, CalculatesInTheOrderOfItsFormulas) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const P p = numbers.HostilePoint();
        const P q = numbers.HostilePoint();
        const P normal = numbers.HostilePoint();
        Plane plane(normal, p);
        plane.d = numbers.Hostile();
        const auto [a, b, c, d, px, py, pz] = plane;

        EXPECT_TRUE(SameBits(plane.Dist(p), a * p.X + b * p.Y + c * p.Z + d));
        const double vertical = std::fabs(c) > 1e-7 ? (a * p.X + b * p.Y + d) / c + p.Z : 0.0;
        EXPECT_TRUE(SameBits(plane.VerticalDist(p), vertical));
        P u(q.X - p.X, q.Y - p.Y, q.Z - p.Z);
        const double length = std::sqrt(u.X * u.X + u.Y * u.Y + u.Z * u.Z);
        u = 5e-9 > std::fabs(length) ? P(0, 0, 1) : P(u.X / length, u.Y / length, u.Z / length);
        const double distance = plane.Dist(p);
        const P along(p.X - u.X * distance, p.Y - u.Y * distance, p.Z - u.Z * distance);
        EXPECT_TRUE(SameBits(plane.Intersect(p, q), along));
        const P foot(p.X - a * distance, p.Y - b * distance, p.Z - c * distance);
        EXPECT_TRUE(SameBits(NearestPtOnPlane(plane, p), foot));
    }
}

}  // namespace
}  // namespace KM
