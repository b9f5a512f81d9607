#include "Mesh/Core/PinTolerance.h"

#include <gtest/gtest.h>

#include <cmath>

namespace KM {
namespace {

const TPoint<double> Origin(0, 0, 0);

TEST(PINTolerance, IsThreeThousandthsOfTheLargestExtentAtAccuracyZero) {
    EXPECT_EQ(PINTolerance(Origin, TPoint<double>(1, 2, 1000), 0.0), 3.0);
    EXPECT_EQ(PINTolerance(Origin, TPoint<double>(1, 1000, 2), 0.0), 3.0);
    EXPECT_EQ(PINTolerance(Origin, TPoint<double>(1000, 1, 2), 0.0), 3.0);
}

TEST(PINTolerance, HalvesWithEachEighthOfAccuracy) {
    EXPECT_EQ(PINTolerance(Origin, TPoint<double>(1000, 1, 2), 0.125), 1.5);
    EXPECT_EQ(PINTolerance(Origin, TPoint<double>(1000, 1, 2), 1.0), 3.0 / 256.0);
}

TEST(PINTolerance, IsTheSameBitsWithEveryCompiler) {
    // exp2 in the place of pow gives another last bit for about one accuracy in a thousand.
    double (*volatile const power)(double, double) = std::pow;
    for (int i = 0; i < 20000; ++i) {
        const double accuracy = i / 20000.0;
        const double expected = 700.0 / 1000.0 / power(2.0, accuracy * 8.0) * 3.0;
        ASSERT_EQ(PINTolerance(Origin, TPoint<double>(1, 700, 2), accuracy), expected) << accuracy;
    }
}

TEST(PINTolerance, OfABoxOfZeroSizeIsZero) { EXPECT_EQ(PINTolerance(Origin, Origin, 0.5), 0.0); }

TEST(PINGridStep, IsTwiceTheMeanExtentForOneItemAtTheFineEnd) {
    EXPECT_EQ(PINGridStep(Origin, TPoint<double>(1, 2, 3), 1, 1.0), 4.0);
}

TEST(PINGridStep, IsTenTimesAsWideAtTheCoarseEnd) {
    EXPECT_EQ(PINGridStep(Origin, TPoint<double>(1, 2, 3), 4, 0.0), 20.0);
}

}  // namespace
}  // namespace KM
