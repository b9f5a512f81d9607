#include "Mesh/Algorithms/UnitVectors.h"

#include <cmath>

namespace KM {

void MakeSafeUnits(VectorBlock& vectors, std::size_t count) {
    auto& [X, Y, Z] = vectors;
    double lengths[VectorBlock::Size];
    for (std::size_t k = 0; k < count; ++k) lengths[k] = std::sqrt(X[k] * X[k] + Y[k] * Y[k] + Z[k] * Z[k]);
    // In a loop of its own, since compilers vectorise loops without branches only.
    for (std::size_t k = 0; k < count; ++k) {
        if (!IsZero(lengths[k])) continue;
        vectors.Set(k, TPoint<double>(0.0, 0.0, 1.0));
        lengths[k] = 1.0;
    }
    Divide(vectors, lengths, count);
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

void Multiply(VectorBlock& vectors, const double* factors, std::size_t count) {
    auto& [X, Y, Z] = vectors;
    for (std::size_t k = 0; k < count; ++k) {
        const double factor = factors[k];
        X[k] *= factor;
        Y[k] *= factor;
        Z[k] *= factor;
    }
}

}  // namespace KM
