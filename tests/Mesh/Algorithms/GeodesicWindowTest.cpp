#include "Mesh/Algorithms/GeodesicWindow.h"

#include <gtest/gtest.h>

#include "Support/Numbers.h"

namespace KM::Test {
namespace {

TEST(GeodesicWindow, PseudoSourceLiesOnTheSideOfTau) {
    GeodesicWindow w{1.0, 5.0, 3.0, 5.0, 7.0, 1, 0};  // a right angle at b0
    EXPECT_EQ(PseudoSource(w).x, 1.0);
    EXPECT_EQ(PseudoSource(w).y, 3.0);
    w.tau = -1;
    EXPECT_EQ(PseudoSource(w).y, -3.0);
    EXPECT_EQ(WindowDistance(w, 5.0), 5.0) << "sigma is no part of it";
    EXPECT_EQ(NearestDistance(w), 10.0);
}

TEST(GeodesicWindow, PseudoSourceOfImpossibleLengthsLiesOnTheLine) {
    const GeodesicWindow fromLeft{1.0, 2.0, 3.0, 4.5, 0.0, 1, 0};
    EXPECT_EQ(PseudoSource(fromLeft).x, 2.0 - 4.5);
    EXPECT_EQ(PseudoSource(fromLeft).y, 0.0);
    const GeodesicWindow fromRight{1.0, 2.0, 4.5, 3.0, 0.0, 1, 0};
    EXPECT_EQ(PseudoSource(fromRight).x, 2.0 + 3.0);
    EXPECT_EQ(PseudoSource(fromRight).y, 0.0);
}

TEST(GeodesicWindow, PartsKeepTheLight) {
    for (unsigned seed = 0; seed < 1000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers numbers(seed);
        const FlatPoint source{numbers.Between(-5.0, 5.0), numbers.Between(0.1, 5.0)};
        const double b0 = numbers.Between(0.0, 1.0);
        const double b1 = numbers.Between(1.5, 3.0);
        const GeodesicWindow w{b0, b1, DistanceFrom(source, b0), DistanceFrom(source, b1), 2.0, 1, 3};
        const double middle = numbers.Between(b0 + 0.1, b1 - 0.1);
        for (const GeodesicWindow& part : {WithEnd(w, middle), WithBegin(w, middle), Lit(w, b0 + 0.05, middle)}) {
            EXPECT_NEAR(PseudoSource(part).x, source.x, 1e-9);
            EXPECT_NEAR(PseudoSource(part).y, source.y, 1e-9);
            EXPECT_EQ(part.sigma, 2.0);
            EXPECT_EQ(part.edge, 3);
        }
        EXPECT_EQ(WithEnd(w, middle).d0, w.d0);
        EXPECT_EQ(WithBegin(w, middle).d1, w.d1);
    }
}

}  // namespace
}  // namespace KM::Test
