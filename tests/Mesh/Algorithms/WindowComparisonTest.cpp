#include "Mesh/Algorithms/WindowComparison.h"

#include <gtest/gtest.h>

#include "Support/Numbers.h"

namespace KM::Test {
namespace {

GeodesicWindow From(const FlatPoint& source, double b0, double b1, double sigma = 0.0) {
    const std::int8_t tau = source.y < 0.0 ? -1 : 1;
    return {b0, b1, DistanceFrom(source, b0), DistanceFrom(source, b1), sigma, tau, 0};
}

TEST(WindowComparison, EqualDistancesLeaveTheOldWindow) {
    const GeodesicWindow w = From({1.0, 2.0}, 0.0, 3.0);
    EXPECT_EQ(CompareWindows(w, w).outcome, Outcome::OldStays);
    EXPECT_EQ(CompareWindows(w, From({1.0, -2.0}, 0.0, 3.0)).outcome, Outcome::OldStays);
    // Nearer, but by less than the tolerance.
    EXPECT_EQ(CompareWindows(w, From({1.0, 2.0}, 0.0, 3.0, -5e-9)).outcome, Outcome::OldStays);
}

TEST(WindowComparison, NearerOnTheWholeOverlap) {
    const FlatPoint s{1.0, 2.0};
    const struct {
        double oldBegin, oldEnd, newBegin, newEnd;
        Outcome outcome;
        double point;
    } cases[] = {{0, 3, 0, 3, Outcome::NewTakes, 0}, {0, 3, 1, 2, Outcome::NewTakes, 0},
                 {1, 2, 0, 3, Outcome::NewTakes, 0}, {0, 2, 1, 3, Outcome::OldLeft, 1},
                 {1, 3, 0, 2, Outcome::OldRight, 2}, {0, 2, 5e-9, 3, Outcome::NewTakes, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << c.oldBegin << ' ' << c.oldEnd << ' ' << c.newBegin << ' ' << c.newEnd);
        const GeodesicWindow O = From(s, c.oldBegin, c.oldEnd, 1.0);
        const GeodesicWindow W = From(s, c.newBegin, c.newEnd);
        const Comparison result = CompareWindows(O, W);
        EXPECT_EQ(result.outcome, c.outcome);
        EXPECT_EQ(result.point, c.point);
        if (c.point != 0.0) {
            EXPECT_NEAR(result.value, DistanceFrom(s, c.point), 1e-12);
        }
        EXPECT_EQ(CompareWindows(W, O).outcome, Outcome::OldStays);
    }
}

TEST(WindowComparison, CrossingOfMirroredSources) {
    const GeodesicWindow left = From({0.0, 1.0}, 0.0, 4.0);
    const GeodesicWindow right = From({4.0, 1.0}, 0.0, 4.0);
    const Comparison oldLeft = CompareWindows(left, right);
    EXPECT_EQ(oldLeft.outcome, Outcome::OldLeft);
    EXPECT_NEAR(oldLeft.point, 2.0, 1e-12);
    EXPECT_NEAR(oldLeft.value, std::sqrt(5.0), 1e-12);
    const Comparison oldRight = CompareWindows(right, left);
    EXPECT_EQ(oldRight.outcome, Outcome::OldRight);
    EXPECT_NEAR(oldRight.point, 2.0, 1e-12);
}

/// The outcome must leave, at each place where the two differ clearly at most once, the nearer of the two.
TEST(WindowComparison, TheNearerOneStays) {
    int changes = 0;
    for (unsigned seed = 0; seed < 5000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const auto window = [&] {
            const double x = numbers.Between(-3.0, 6.0);
            const double y = numbers.Between(-3.0, 3.0);
            const double b0 = numbers.Between(0.0, 1.4);
            const double b1 = numbers.Between(1.6, 3.0);
            return From({x, y}, b0, b1, numbers.Between(0.0, 1.0));
        };
        const GeodesicWindow O = window();
        const GeodesicWindow W = window();
        const Comparison result = CompareWindows(O, W);
        const double lo = std::max(O.b0, W.b0);
        const double hi = std::min(O.b1, W.b1);
        const auto lead = [&](double p) { return O.sigma + WindowDistance(O, p) - W.sigma - WindowDistance(W, p); };
        // Two hyperbola branches can cross the overlap twice; then one of the crossings is taken, by the rule.
        if ((lead(lo) > 0.0) == (lead(hi) > 0.0)) continue;
        ++changes;
        const Outcome expected = lead(lo) > 0.0 ? Outcome::OldRight : Outcome::OldLeft;
        EXPECT_EQ(result.outcome, expected);
        EXPECT_NEAR(lead(result.point), 0.0, 1e-7);
        EXPECT_NEAR(result.value, O.sigma + WindowDistance(O, result.point), 1e-12);
    }
    EXPECT_GT(changes, 500);
}

}  // namespace
}  // namespace KM::Test
