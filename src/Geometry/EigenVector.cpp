#include "Geometry/EigenVector.h"

#include <cmath>
#include <numeric>
#include <utility>

namespace KM {
namespace {

using Vector = std::vector<double>;

constexpr int MostRounds = 80;
constexpr double StandsStill = 1e-18;  // squared distance between the vectors of two rounds

double RowProduct(const Matrix<double>& A, int row, const Vector& x) {
    double sum = 0.0;
    for (int column = 0; column < A.Dimension(); ++column) sum += A(row, column) * x[column];
    return sum;
}

double LengthOf(const Vector& x) { return std::sqrt(std::inner_product(x.begin(), x.end(), x.begin(), 0.0)); }

void Divide(Vector& x, double by) {
    for (double& item : x) item /= by;
}

/// The first of the items with the largest magnitude.
int IndexOfLargest(const Vector& x) {
    std::size_t largest = 0;
    for (std::size_t i = 1; i < x.size(); ++i)
        if (std::fabs(x[i]) > std::fabs(x[largest])) largest = i;
    return static_cast<int>(largest);
}

double SquaredDistance(const Vector& a, const Vector& b) {
    double sum = 0.0;
    for (std::size_t i = 0; i < a.size(); ++i) sum += (a[i] - b[i]) * (a[i] - b[i]);
    return sum;
}

/// Multiplies `x` by the matrix until it stands still. `scale(y)` brings each product to size and notes the eigenvalue.
template <class Scale>
Vector Iterate(const Matrix<double>& A, Vector x, Scale scale) {
    Vector y(x.size());
    bool standsStill = false;
    for (int round = 0; round < MostRounds && !standsStill; ++round) {
        for (int row = 0; row < A.Dimension(); ++row) y[row] = RowProduct(A, row, x);
        scale(y);
        standsStill = SquaredDistance(y, x) < StandsStill;
        x.swap(y);
    }
    return x;
}

/// What is left of `A` when an eigenpair is taken out: row and column `pivot` go, and the others lose their share.
Matrix<double> Deflated(const Matrix<double>& A, const Vector& known, int pivot) {
    Matrix<double> B(A.Dimension() - 1);
    for (int row = 0; row < B.Dimension(); ++row)
        for (int column = 0; column < B.Dimension(); ++column) {
            const int i = row + (row >= pivot);
            const int j = column + (column >= pivot);
            B(row, column) = A(i, j) - known[i] / known[pivot] * A(pivot, j);
        }
    return B;
}

}  // namespace

const Vector EigenVector(const Matrix<double>& A, double& value) {
    value = 0.0;
    if (A.Dimension() == 0) return {};
    Vector start(static_cast<std::size_t>(A.Dimension()));
    start[0] = 1.0;
    int pivot = 0;
    return Iterate(A, std::move(start), [&](Vector& y) {
        value = y[pivot];
        pivot = IndexOfLargest(y);
        Divide(y, y[pivot]);
    });
}

const Vector EigenVectorSym(const Matrix<double>& A, double& value) {
    value = 0.0;
    if (A.Dimension() == 0) return {};
    Vector start(static_cast<std::size_t>(A.Dimension()), 1.0 / std::sqrt(static_cast<double>(A.Dimension())));
    return Iterate(A, std::move(start), [&](Vector& y) {
        value = LengthOf(y);
        Divide(y, value);
    });
}

const Vector EigenVector(const Matrix<double>& A, const Vector& known, const double& knownValue, double& value) {
    const double first = knownValue;  // both values can be one variable
    value = 0.0;
    if (A.Dimension() < 2 || known.size() != static_cast<std::size_t>(A.Dimension())) return {};
    const int pivot = IndexOfLargest(known);
    Vector z = EigenVector(Deflated(A, known, pivot), value);
    z.insert(z.begin() + pivot, 0.0);
    const double share = RowProduct(A, pivot, z) / known[pivot];
    for (std::size_t i = 0; i < z.size(); ++i) z[i] = z[i] * (value - first) + known[i] * share;
    Divide(z, LengthOf(z));
    return z;
}

}  // namespace KM
