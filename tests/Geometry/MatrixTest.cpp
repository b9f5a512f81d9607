#include "Geometry/Matrix.h"

#include <gtest/gtest.h>

namespace KM {
namespace {

TEST(Matrix, IsZeroAtFirst) {
    const Matrix<double> matrix(3);
    EXPECT_EQ(matrix.Dimension(), 3);
    for (int row = 0; row < 3; ++row)
        for (int column = 0; column < 3; ++column) EXPECT_EQ(matrix(row, column), 0.0);
}

TEST(Matrix, LiesRowByRow) {
    Matrix<double> matrix(2);
    matrix(0, 1) = 1.0;
    matrix(1, 0) = 2.0;
    matrix(1, 1) = 3.0;
    const double* items = &matrix(0, 0);
    EXPECT_EQ(std::vector<double>(items, items + 4), (std::vector<double>{0, 1, 2, 3}));
}

TEST(Matrix, CanBeEmpty) {
    EXPECT_EQ(Matrix<double>(0).Dimension(), 0);
    EXPECT_EQ(Matrix<double>(-5).Dimension(), 0);
}

}  // namespace
}  // namespace KM
