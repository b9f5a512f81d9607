#include "Geometry/Triangulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "Geometry/PlainPolygons.h"
#include "Geometry/Polygons.h"
#include "Support/Numbers.h"
#include "Support/Polygons.h"

namespace KM {
namespace {

using namespace PointsUtils;
using namespace Test;
using P = TPoint<double>;
using Polygon = std::vector<P>;
using Triangles = std::vector<std::vector<int>>;

Triangles Concave(const Polygon& polygon) {
    Triangles triangles;
    TriangulateConcavePolygon(polygon, triangles);
    return triangles;
}

Triangles Convex(const Polygon& polygon) {
    Triangles triangles;
    TriangulateConvexPolygon(polygon, triangles);
    return triangles;
}

void ExpectAsPlain(const Polygon& polygon) {
    Triangles plain;
    PlainTriangulateConcavePolygon(polygon, plain);
    ASSERT_EQ(Concave(polygon), plain);
}

double AreaOf(const Polygon& polygon, const std::vector<int>& triangle) {
    return SignedArea(Polygon{polygon[triangle[0]], polygon[triangle[1]], polygon[triangle[2]]});
}

/// Two triangles less than points, all counter-clockwise, and no area lost or covered twice.
void ExpectWhole(const Polygon& polygon) {
    const Triangles triangles = Concave(polygon);
    ASSERT_EQ(triangles.size(), polygon.size() - 2);
    const double area = std::fabs(SignedArea(polygon));
    double sum = 0.0;
    std::set<int> used;
    for (const auto& t : triangles) {
        ASSERT_EQ(t.size(), 3u);
        EXPECT_LE(AreaOf(polygon, t), 1e-6) << t[0] << " " << t[1] << " " << t[2];
        sum -= AreaOf(polygon, t);
        used.insert(t.begin(), t.end());
    }
    EXPECT_EQ(used.size(), polygon.size());
    EXPECT_NEAR(sum, area, 1e-9 * area + 1e-6);
}

TEST(TriangulateConcavePolygon, GivesNothingForLessThanThreePoints) {
    EXPECT_EQ(Concave({}), Triangles());
    EXPECT_EQ(Concave({P(1, 2, 3)}), Triangles());
    EXPECT_EQ(Concave({P(0, 0, 0), P(1, 0, 0)}), Triangles());
}

TEST(TriangulateConcavePolygon, CutsAtTheFirstCornerThatIsFree) {
    EXPECT_EQ(Concave({P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(0, 1, 0)}), (Triangles{{0, 1, 2}, {0, 2, 3}}));
    // The corner at 1 is blocked by 3.
    EXPECT_EQ(Concave({P(0, 0, 0), P(4, 0, 0), P(0, 4, 0), P(1, 1, 0)}), (Triangles{{1, 2, 3}, {1, 3, 0}}));
}

TEST(TriangulateConcavePolygon, KeepsWhatTheListHolds) {
    Triangles triangles{{7, 7, 7}};
    TriangulateConcavePolygon({P(0, 0, 0), P(1, 0, 0), P(0, 1, 0)}, triangles);
    EXPECT_EQ(triangles, (Triangles{{7, 7, 7}, {0, 1, 2}}));
}

TEST(TriangulateConcavePolygon, TurnsTrianglesLeftWhicheverWayThePolygonRuns) {
    const Polygon square{P(0, 0, 0), P(0, 1, 0), P(1, 1, 0), P(1, 0, 0)};
    EXPECT_EQ(Concave(square), (Triangles{{3, 2, 1}, {3, 1, 0}}));
}

TEST(TriangulateConcavePolygon, ReadsNoHeights) {
    EXPECT_EQ(Concave({P(0, 0, NaN), P(1, 0, 5), P(1, 1, -Infinity), P(0, 1, 1e300)}),
              (Triangles{{0, 1, 2}, {0, 2, 3}}));
}

TEST(TriangulateConcavePolygon, CutsThreePointsOnALineOnce) {
    EXPECT_EQ(Concave({P(0, 0, 0), P(1, 0, 0), P(2, 0, 0)}), (Triangles{{0, 1, 2}}));
}

TEST(TriangulateConcavePolygon, UsesEveryPointOfAStraightRun) {
    const Polygon polygon{P(0, 0, 0), P(1, 0, 0), P(2, 0, 0), P(3, 0, 0), P(3, 3, 0), P(0, 3, 0)};
    // Going on behind each cut, the first round leaves point 2 to the second.
    EXPECT_EQ(Concave(polygon), (Triangles{{0, 1, 2}, {0, 2, 3}, {0, 3, 4}, {0, 4, 5}}));
    ExpectWhole(polygon);
}

TEST(TriangulateConcavePolygon, CutsAllOfAKeyHole) {
    for (const int holes : {1, 2, 5}) {
        SCOPED_TRACE(holes);
        ExpectWhole(KeyHoles(holes, 1e-4));
    }
}

// Two lobes that hang together at a point: it blocks none of the corners beside it, and the two points that are left
// of a lobe in the end go off by themselves.
TEST(TriangulateConcavePolygon, CutsLobesThatMeetInADoubledPoint) {
    const Polygon lobes{P(0, 0, 0), P(2, -1, 0), P(2, 1, 0), P(0, 0, 0), P(-2, 1, 0), P(-2, -1, 0)};
    ExpectWhole(lobes);
    EXPECT_EQ(Concave(lobes), (Triangles{{0, 1, 2}, {0, 2, 3}, {0, 3, 4}, {0, 4, 5}}));
}

TEST(TriangulateConcavePolygon, CoversSimplePolygonsOnce) {
    const Polygon polygons[] = {Circle(100),         Spiral(300, 4),      SpikyStar(200),
                                Digitised(500, 1.0), Digitised(500, 0.1), Comb(40)};
    for (const Polygon& polygon : polygons) {
        SCOPED_TRACE(testing::Message() << "polygon " << &polygon - polygons);
        ExpectWhole(polygon);
        ExpectWhole(Reversed(polygon));
    }
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        ExpectWhole(StarShaped(seed, 3 + static_cast<int>(seed)));
    }
}

// A point in the place of the corner itself blocks it. Here each corner either has such a fellow, or is blocked by the hole.
TEST(TriangulateConcavePolygon, StopsAtADeadEnd) {
    const Polygon bridge{P(0, 0, 0), P(4, 0, 0), P(4, 4, 0), P(0, 4, 0), P(0, 0, 0),
                         P(1, 1, 0), P(1, 3, 0), P(3, 3, 0), P(3, 1, 0), P(1, 1, 0)};
    EXPECT_EQ(Concave(bridge), Triangles());
    ExpectAsPlain(bridge);
}

TEST(TriangulateConcavePolygon, IsThePlainRuleOnRandomPoints) {
    for (unsigned seed = 0; seed < 6000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const Polygon polygon = RandomOutline(seed, static_cast<int>(seed % 41));
        ExpectAsPlain(polygon);
        if (HasFatalFailure()) return;
    }
}

TEST(TriangulateConcavePolygon, IsThePlainRuleOnStars) {
    for (unsigned seed = 0; seed < 400; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const int count = 3 + static_cast<int>(seed % 150);
        ExpectAsPlain(StarShaped(seed, count));
        ExpectAsPlain(SpikyStar(count));
        if (HasFatalFailure()) return;
    }
}

TEST(TriangulateConcavePolygon, IsThePlainRuleOnOutlinesOfParts) {
    for (int size = 1; size < 60; ++size) {
        SCOPED_TRACE(testing::Message() << "size " << size);
        for (const Polygon& polygon :
             {Circle(7 * size), Spiral(12 * size, 1 + size / 4), Digitised(10 * size, 1.0), Digitised(10 * size, 0.1),
              Comb(2 * size), KeyHoles(1 + size / 12, 0.0), KeyHoles(1 + size / 12, 1e-3), ThereAndBack(9 * size)}) {
            ExpectAsPlain(polygon);
            ExpectAsPlain(Reversed(polygon));
            if (HasFatalFailure()) return;
        }
    }
}

// Needles, of which rounding makes wide fans: all points on one line in a slanted direction, some of them out of place by
// the last bits, and too far apart to count as straight.
TEST(TriangulateConcavePolygon, IsThePlainRuleOnNeedles) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Polygon polygon = RandomOutline(4 * seed, 4 + static_cast<int>(seed % 90));  // sound ones
        for (P& p : polygon) {
            p.Y = p.X / 3.0;
            if (std::fabs(p.Z) < 3.0) p.Y = std::nextafter(p.Y, p.Z);
            p = p * 1e5;
        }
        ExpectAsPlain(polygon);
        if (HasFatalFailure()) return;
    }
}

TEST(TriangulateConcavePolygon, IsThePlainRuleFarFromTheOriginAndAtAnySize) {
    for (const double scale : {1e-170, 1e-12, 1e-3, 1e9, 1e140, 1e149, 1e151, 1e160, 1e307})
        for (const double offset : {0.0, 1.0, 1e8}) {
            SCOPED_TRACE(testing::Message() << "scale " << scale << " offset " << offset);
            for (Polygon polygon : {StarShaped(3, 100), Spiral(150, 3), Digitised(200, 1.0)}) {
                for (P& p : polygon) p = p * scale + P(offset, offset, 0) * scale;
                ExpectAsPlain(polygon);
            }
        }
}

TEST(TriangulateConcavePolygon, IsThePlainRuleWhereCoordinatesAreNotFinite) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Polygon polygon = StarShaped(seed, 40);
        const double values[] = {NaN, Infinity, -Infinity, 1e308, -1e308, 1e200};
        for (unsigned i = 0; i < 1 + seed % 5; ++i) {
            P& p = polygon[(seed * 7 + i * 11) % 40];
            ((seed + i) % 3 == 0 ? p.X : p.Y) = values[(seed / 3 + i) % 6];
        }
        ExpectAsPlain(polygon);
        if (HasFatalFailure()) return;
    }
}

TEST(TriangulateConcavePolygon, EndsOnLongInputWithoutArea) {
    EXPECT_EQ(Concave(Polygon(100000, P(1, 2, 3))).size(), 99998u);
    EXPECT_TRUE(Concave(Polygon(100000, P(NaN, NaN, NaN))).empty());
    EXPECT_TRUE(Concave(Polygon(100000, P(Infinity, 0, 0))).empty());
    Polygon line;
    for (int i = 0; i < 300000; ++i) line.push_back(P(i, 2.0 * i, 0));
    EXPECT_EQ(Concave(line).size(), 299998u);
    EXPECT_EQ(Concave(ThereAndBack(100000)).size(), 99998u);
}

TEST(TriangulateConvexPolygon, MakesAFanAboutPointZero) {
    const Polygon square{P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(0, 1, 0)};
    EXPECT_EQ(Convex(square), (Triangles{{0, 1, 2}, {0, 2, 3}}));
    // A wider angle elsewhere does not move the middle.
    EXPECT_EQ(Convex({P(0, 0, 0), P(1, 0, 0), P(1.6, 0.5, 0), P(1, 1, 0), P(0, 1, 0)}),
              (Triangles{{0, 1, 2}, {0, 2, 3}, {0, 3, 4}}));
}

TEST(TriangulateConvexPolygon, TakesThreePointsAsTheyAreAndFewerNotAtAll) {
    EXPECT_EQ(Convex({P(NaN, 0, 0), P(), P()}), (Triangles{{0, 1, 2}}));
    EXPECT_EQ(Convex({P(), P()}), Triangles());
    EXPECT_EQ(Convex({}), Triangles());
}

TEST(TriangulateConvexPolygon, HasNoMiddleWhereThereIsNoAngle) {
    EXPECT_EQ(Convex(Polygon(5, P(NaN, NaN, NaN))), (Triangles{{-1, 0, 1}, {-1, 1, 2}, {-1, 2, 3}}));
    // Points in one place have angles of pi, one with the other.
    EXPECT_EQ(Convex(Polygon(4, P(1, 1, 1))), (Triangles{{0, 1, 2}, {0, 2, 3}}));
}

// A bow-tie has sharp corners only; in a small one they have no angle, if their sides count as zero.
TEST(TriangulateConvexPolygon, TellsSidesWithoutLengthByTheZeroTest) {
    const auto bowTie = [](double size) { return Polygon{P(0, 0, 0), P(size, size, 0), P(size, 0, 0), P(0, size, 0)}; };
    EXPECT_EQ(Convex(bowTie(5.5e-9)), (Triangles{{0, 1, 2}, {0, 2, 3}}));
    EXPECT_EQ(Convex(bowTie(4.5e-9)), (Triangles{{-1, 0, 1}, {-1, 1, 2}}));
}

TEST(TriangulateConvexPolygon, KeepsWhatTheListHolds) {
    Triangles triangles{{7}};
    TriangulateConvexPolygon({P(0, 0, 0), P(1, 0, 0), P(0, 1, 0)}, triangles);
    EXPECT_EQ(triangles, (Triangles{{7}, {0, 1, 2}}));
}

}  // namespace
}  // namespace KM
