#include "UnitVectors.h"

#include <cmath>

namespace KM {

void MakeSafeUnits(VectorBlock& vectors, std::size_t count) {
    auto& [X, Y, Z] = vectors;
    for (std::size_t k = 0; k < count; ++k) {
        const double length = std::sqrt(X[k] * X[k] + Y[k] * Y[k] + Z[k] * Z[k]);
        const bool isZero = IsZero(length);
        // Divides in any case, and chooses afterwards: a loop without branches is one that compilers vectorise.
        const double divisor = isZero ? 1.0 : length;
        const double x = X[k] / divisor;
        const double y = Y[k] / divisor;
        const double z = Z[k] / divisor;
        X[k] = isZero ? 0.0 : x;
        Y[k] = isZero ? 0.0 : y;
        Z[k] = isZero ? 1.0 : z;
    }
}

void Divide(VectorBlock& vectors, const double* divisors, std::size_t count) {
    auto& [X, Y, Z] = vectors;
    for (std::size_t k = 0; k < count; ++k) {
        const double divisor = divisors[k];
        X[k] /= divisor;
        Y[k] /= divisor;
        Z[k] /= divisor;
    }
}

}  // namespace KM
