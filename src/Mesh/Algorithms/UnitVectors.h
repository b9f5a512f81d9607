#pragma once

#include <cstddef>

#include "Geometry/Point.h"

namespace KM {

/// Vectors by coordinate. Roots and divisions are what a normal costs, and so the machine takes several in one instruction.
struct VectorBlock {
    /// So few that the machine still divides those of one block while it follows the links for the next one.
    static constexpr std::size_t Size = 56;

    double X[Size];
    double Y[Size];
    double Z[Size];

    void Set(std::size_t k, const TPoint<double>& v) {
        X[k] = v.X;
        Y[k] = v.Y;
        Z[k] = v.Z;
    }
    TPoint<double> Get(std::size_t k) const { return {X[k], Y[k], Z[k]}; }
};

/// Does to the first `count` vectors what `SafeUnit` does, to the bit.
void MakeSafeUnits(VectorBlock& vectors, std::size_t count);

/// Divides, or multiplies, each coordinate of the first `count` vectors by the vector's own number.
void Divide(VectorBlock& vectors, const double* divisors, std::size_t count);
void Multiply(VectorBlock& vectors, const double* factors, std::size_t count);

}  // namespace KM
