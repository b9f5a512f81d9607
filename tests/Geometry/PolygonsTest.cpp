#include "Geometry/Polygons.h"

#include <gtest/gtest.h>

#include "Support/HostilePoints.h"
#include "Support/Polygons.h"

namespace KM {
namespace {

using namespace PointsUtils;
using namespace Test;
using P = TPoint<double>;
using Polygon = std::vector<P>;

const Polygon CounterClockwiseSquare{P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(0, 1, 0)};
const Polygon ClockwiseSquare = Reversed(CounterClockwiseSquare);

Polygon Closed(const Polygon& polygon, double tol, bool in3D) {
    std::vector<Polygon> polygons{polygon};
    Close(polygons, tol, in3D);
    return polygons[0];
}

Polygon WithoutCoincident(Polygon points, double tol, bool in3D) {
    RemoveCoincidentPoints(points, tol, in3D);
    return points;
}

Polygon WithoutCollinear(Polygon points, double tol, double blend, bool twoPass) {
    RemoveCollinearPoints(points, tol, blend, twoPass);
    return points;
}

TEST(Close, AddsTheFirstPointWhereTheEndsAreNear) {
    const Polygon open{P(0, 0, 0), P(1, 0, 0), P(0.05, 0.05, 0.05)};
    Polygon closed = open;
    closed.push_back(open[0]);
    EXPECT_EQ(Closed(open, 0.1, true), closed);
    EXPECT_EQ(Closed(open, 0.05, true), open);     // not less
    EXPECT_EQ(Closed(closed, 0.1, true), closed);  // is closed already
    EXPECT_EQ(Closed({}, 0.1, true), Polygon());
    EXPECT_EQ(Closed({P(1, 2, 3)}, 0.1, true), Polygon{P(1, 2, 3)});
}

TEST(Close, MeasuresEachCoordinateApart) {
    // Further than 0.1 in a straight line, not so along any axis.
    EXPECT_EQ(Closed({P(0, 0, 0), P(1, 0, 0), P(0.09, 0.09, 0.09)}, 0.1, true).size(), 4u);
    for (const P& end : {P(0.2, 0, 0), P(0, -0.2, 0), P(0, 0, 0.2)})
        EXPECT_EQ(Closed({P(0, 0, 0), P(1, 0, 0), end}, 0.1, true).size(), 3u);
}

TEST(Close, LooksAtHeightsIn3DOnly) {
    const Polygon upright{P(0, 0, 0), P(1, 0, 0), P(0, 0, 5)};
    EXPECT_EQ(Closed(upright, 0.1, true).size(), 3u);
    EXPECT_EQ(Closed(upright, 0.1, false).size(), 4u);
}

TEST(Close, ServesEachPolygon) {
    std::vector<Polygon> polygons{{}, {P(0, 0, 0), P(1, 0, 0), P(0.01, 0, 0)}, CounterClockwiseSquare};
    Close(polygons, 0.1, true);
    EXPECT_TRUE(polygons[0].empty());
    EXPECT_EQ(polygons[1].size(), 4u);
    EXPECT_EQ(polygons[2].size(), 4u);
}

TEST(RemoveCoincidentPoints, ComparesWithTheLastPointKept) {
    // Small steps are not added up away: each is measured from where the last kept point is.
    EXPECT_EQ(WithoutCoincident({P(0, 0, 0), P(0.6, 0, 0), P(1.2, 0, 0), P(1.8, 0, 0), P(9, 0, 0)}, 1.0, true),
              (Polygon{P(0, 0, 0), P(1.2, 0, 0), P(9, 0, 0)}));
    EXPECT_EQ(WithoutCoincident({P(0, 0, 0), P(1, 0, 0), P(5, 0, 0)}, 1.0, true).size(), 3u);  // not less
}

TEST(RemoveCoincidentPoints, LooksAtHeightsIn3DOnly) {
    const Polygon steps{P(0, 0, 0), P(0, 0, 5), P(9, 0, 0)};
    EXPECT_EQ(WithoutCoincident(steps, 1.0, true).size(), 3u);
    EXPECT_EQ(WithoutCoincident(steps, 1.0, false).size(), 2u);
}

TEST(RemoveCoincidentPoints, ClosesWhatIsNearlyClosed) {
    EXPECT_EQ(WithoutCoincident({P(0, 0, 0), P(9, 0, 0), P(9, 9, 0), P(1.5, 0, 0)}, 1.0, true),
              (Polygon{P(0, 0, 0), P(9, 0, 0), P(9, 9, 0), P(1.5, 0, 0), P(0, 0, 0)}));
    EXPECT_EQ(WithoutCoincident({P(0, 0, 0), P(9, 0, 0), P(9, 9, 0), P(2, 0, 0)}, 1.0, true).size(), 4u);
    EXPECT_EQ(WithoutCoincident({P(0, 0, 0), P(9, 0, 0), P(0, 0, 0)}, 1.0, true).size(), 3u);
}

TEST(RemoveCoincidentPoints, TakesShortListsAndManyPolygons) {
    EXPECT_EQ(WithoutCoincident({}, 1.0, true), Polygon());
    EXPECT_EQ(WithoutCoincident({P(1, 2, 3)}, 1.0, true), Polygon{P(1, 2, 3)});
    EXPECT_EQ(WithoutCoincident(Polygon(1000, P(1, 2, 3)), 1.0, true), Polygon{P(1, 2, 3)});
    EXPECT_EQ(WithoutCoincident(Polygon(5, P(NaN, 0, 0)), 1.0, true).size(), 5u);
    std::vector<Polygon> polygons{{}, Polygon(3, P()), CounterClockwiseSquare};
    RemoveCoincidentPoints(polygons, 0.5, true);
    EXPECT_TRUE(polygons[0].empty());
    EXPECT_EQ(polygons[1].size(), 1u);
    EXPECT_EQ(polygons[2].size(), 4u);
}

TEST(RemoveCollinearPoints, KeepsTheEndsOfALine) {
    EXPECT_EQ(WithoutCollinear({P(0, 0, 0), P(1, 0, 0), P(2, 0, 0), P(3, 0, 0)}, 0.01, 0.0, false),
              (Polygon{P(0, 0, 0), P(3, 0, 0)}));
    const Polygon three{P(0, 0, 0), P(1, 0, 0), P(2, 0, 0)};
    EXPECT_EQ(WithoutCollinear(three, 0.01, 0.0, true), three);
}

TEST(RemoveCollinearPoints, KeepsCorners) {
    const Polygon outline{P(0, 0, 0), P(1, 0, 0), P(2, 0, 0), P(2, 1, 0), P(2, 2, 0), P(2, 3, 0), P(9, 9, 0)};
    const Polygon corners{P(0, 0, 0), P(2, 0, 0), P(2, 3, 0), P(9, 9, 0)};
    EXPECT_EQ(WithoutCollinear(outline, 0.01, 0.0, false), corners);
    EXPECT_EQ(WithoutCollinear(outline, 0.01, 1.0, true), corners);
}

TEST(RemoveCollinearPoints, BlendsPlaneAndSpace) {
    // Straight in XY, with a peak of 1 in space.
    const Polygon peak{P(0, 0, 0), P(1, 0, 0), P(2, 0, 1), P(3, 0, 0), P(4, 0, 0)};
    EXPECT_EQ(WithoutCollinear(peak, 0.01, 0.0, false).size(), 2u);
    EXPECT_EQ(WithoutCollinear(peak, 0.01, 1.0, false).size(), 5u);
    // Half and half, the peak is 0.5 off the line.
    const Polygon low{P(0, 0, 0), P(1, 0, 0), P(2, 0, 1), P(3, 0, 0)};
    EXPECT_EQ(WithoutCollinear(low, 0.6, 0.5, false).size(), 2u);
    EXPECT_EQ(WithoutCollinear(low, 0.4, 0.5, false).size(), 4u);
}

TEST(RemoveCollinearPoints, KeepsWhatEitherPassFinds) {
    // Forward, each point is near the line of the first two; backward, the last two show where the run bends.
    const Polygon bend{P(0, 0, 0), P(10, 0, 0), P(11, 0.5, 0), P(12, 1.0, 0), P(13, 1.5, 0)};
    EXPECT_EQ(WithoutCollinear(bend, 1.6, 0.0, false), (Polygon{P(0, 0, 0), P(13, 1.5, 0)}));
    EXPECT_EQ(WithoutCollinear(bend, 1.6, 0.0, true), (Polygon{P(0, 0, 0), P(10, 0, 0), P(13, 1.5, 0)}));
}

TEST(RemoveCollinearPoints, ClosesAClosedListExactly) {
    const Polygon square{P(0, 0, 0), P(5, 0, 0), P(10, 0, 0), P(10, 10, 0), P(0, 10, 0), P(0, 0.15, 0)};
    EXPECT_EQ(WithoutCollinear(square, 0.1, 0.0, false),
              (Polygon{P(0, 0, 0), P(10, 0, 0), P(10, 10, 0), P(0, 10, 0), P(0, 0, 0)}));
}

TEST(RemoveCollinearPoints, NeverEmptiesAList) {
    const Polygon needle{P(0, 0, 0), P(5, 0, 0), P(9, 0, 0), P(5, 0, 0), P(0, 0, 0)};
    for (const bool twoPass : {false, true}) EXPECT_FALSE(WithoutCollinear(needle, 0.1, 0.0, twoPass).empty());
    const Polygon dot(6, P(1, 2, 3));
    EXPECT_EQ(WithoutCollinear(dot, 0.1, 0.0, true), Polygon{P(1, 2, 3)});
    // All that is left lies within the tolerance of the start.
    const Polygon small{P(0, 0, 0), P(0.15, 0, 0), P(0.15, 0.15, 0), P(0, 0.15, 0)};
    EXPECT_EQ(WithoutCollinear(small, 0.1, 0.0, false), small);
}

TEST(RemoveCollinearPoints, EndsOnAnyInput) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        HostilePoints random(seed);
        const Polygon points = RandomOutline(seed, static_cast<int>(seed % 20));
        const Polygon thinned = WithoutCollinear(points, random.Number(), 0.5 * (seed % 3), seed % 2 == 0);
        EXPECT_EQ(thinned.empty(), points.empty());
        EXPECT_LE(thinned.size(), points.size() + 1);
    }
}

TEST(IsConvex, TellsConvexFromConcave) {
    EXPECT_TRUE(IsConvex({}));
    EXPECT_TRUE(IsConvex(CounterClockwiseSquare));
    EXPECT_FALSE(IsConvex(ClockwiseSquare));
    EXPECT_FALSE(IsConvex({P(0, 0, 0), P(4, 0, 0), P(1, 1, 0), P(0, 4, 0)}));
    EXPECT_TRUE(IsConvex({P(0, 0, 7), P(1, 0, -7), P(2, 0, 3), P(2, 2, NaN), P(0, 2, 0)}));  // straight on at point 1
    EXPECT_TRUE(IsConvex(Circle(57)));
    EXPECT_FALSE(IsConvex(Reversed(Circle(57))));
    EXPECT_FALSE(IsConvex(SpikyStar(10)));
}

TEST(SignedArea, IsTwiceTheAreaAndNegativeCounterClockwise) {
    EXPECT_EQ(SignedArea(CounterClockwiseSquare), -2.0);
    EXPECT_EQ(SignedArea(ClockwiseSquare), 2.0);
    Polygon closed = ClockwiseSquare;
    closed.push_back(closed[0]);
    EXPECT_EQ(SignedArea(closed), 2.0);
    EXPECT_EQ(SignedArea(Polygon()), 0.0);
    EXPECT_EQ(SignedArea(Polygon{P(NaN, 1, 1)}), 0.0);
    EXPECT_EQ(SignedArea(Polygon{P(1, 1, 1), P(5, 2, 3)}), 0.0);
}

TEST(SignedArea, AddsPolygonsUp) {
    EXPECT_EQ(SignedArea(std::vector<Polygon>{ClockwiseSquare, ClockwiseSquare, CounterClockwiseSquare, {}}), 2.0);
    EXPECT_EQ(SignedArea(std::vector<Polygon>{}), 0.0);
}

}  // namespace
}  // namespace KM
