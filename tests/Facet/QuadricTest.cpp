#include "Facet/Quadric.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace KM {
namespace {

using P = TPoint<double>;

TEST(Quadric, KeepsTheTermsInOrder) {
    Quadric q;
    q.AddPlane(P(2, 3, 5), P(1, 1, -1.6), 1.0);  // d = -(2 + 3 - 8) = 3
    const double expected[10] = {4, 6, 9, 10, 15, 25, 6, 9, 15, 9};
    for (int i = 0; i < 10; ++i) EXPECT_EQ(q.terms[i], expected[i]) << "term " << i;
}

TEST(Quadric, IsTheSumOfWeightedSquaredDistances) {
    Quadric q;
    q.AddPlane(P(0, 0, 1), P(7, 7, 2), 1.0);
    EXPECT_EQ(q.At(P(100, -3, 5)), 9.0);
    EXPECT_EQ(q.At(P(1, 1, 2)), 0.0);
    q.AddPlane(P(1, 0, 0), P(1, 0, 0), 10000.0);
    EXPECT_EQ(q.At(P(3, 0, 5)), 9.0 + 40000.0);
    Quadric twice = q;
    twice.Add(q);
    twice.Add(twice);
    EXPECT_EQ(twice.At(P(3, 0, 5)), 4 * 40009.0);
}

TEST(Quadric, IsNeverNegative) {
    Quadric q;
    q.terms[9] = -1e-17;
    EXPECT_EQ(q.At(P(0, 0, 0)), 0.0);
}

TEST(Quadric, CarriesWhatIsNoNumber) {
    Quadric q;
    q.AddPlane(P(0, 0, 1), P(0, 0, 0), 1.0);
    EXPECT_TRUE(std::isnan(q.At(P(0, 0, std::numeric_limits<double>::quiet_NaN()))));
}

}  // namespace
}  // namespace KM
