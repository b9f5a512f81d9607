#include "Geometry/Determinant.h"

#include <gtest/gtest.h>

namespace KM {
namespace {

using P = TPoint<double>;

TEST(Determinant, IsTheVolumeOfItsRows) {
    EXPECT_EQ(Determinant(P(1, 0, 0), P(0, 1, 0), P(0, 0, 1)), 1.0);
    EXPECT_EQ(Determinant(P(0, 1, 0), P(1, 0, 0), P(0, 0, 1)), -1.0);
    EXPECT_EQ(Determinant(P(2, 0, 1), P(1, 3, 2), P(1, 1, 1)), 0.0);
    EXPECT_EQ(Determinant(P(1, 2, 3), P(4, 5, 6), P(7, 8, 10)), -3.0);
}

TEST(Determinant, IsExpandedAlongTheFirstRow) {
    const P b(0, -1, 1), c(1, -1, 0);                      // their product is (1, 1, 1)
    EXPECT_EQ(Determinant(P(1e16, 1, -1e16), b, c), 0.0);  // 1e16 swallows the 1
    EXPECT_EQ(Determinant(P(1e16, -1e16, 1), b, c), 1.0);
}

}  // namespace
}  // namespace KM
