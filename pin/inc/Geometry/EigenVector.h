#pragma once

#include <vector>

#include "Geometry/Matrix.h"
#include "KmApi.h"

namespace KM {

// Eigenvectors by power iteration (J. H. Wilkinson, "The Algebraic Eigenvalue Problem"): 80 rounds at most, each of them
// one product of matrix and vector. The dominant eigenvalue is the one of largest magnitude; the further it stands out, the
// sooner the rounds end. If none does, as with complex pairs, what comes back is the vector of the last round.
//
// `value` gets the eigenvalue. A matrix that has no such vector (of dimension 0, or 1 for the second pair) gives an empty
// vector and the value 0. A zero matrix, and items that are not finite, give numbers that are not finite.

/// The dominant pair. The vector's largest component is 1.
///
/// The start is the first unit vector. A matrix that has it for an eigenvector gives that pair, dominant or not.
KM_API const std::vector<double> EigenVector(const Matrix<double>& A, double& value);

/// The dominant pair of a symmetric matrix; the vector has unit length. The start is the diagonal.
///
/// `value` is the magnitude of the eigenvalue: for a negative one the vector turns round in each round, and all 80 are
/// made.
KM_API const std::vector<double> EigenVectorSym(const Matrix<double>& A, double& value);

/// The pair that comes next, by Wielandt's deflation; the vector has unit length.
///
/// @param known       an eigenvector of `A`, of any length but zero, as `EigenVector` gives it. A vector with another number
///                    of components is refused with an empty vector and the value 0
/// @param knownValue  the eigenvalue that belongs to it; it may be the same variable as `value`
KM_API const std::vector<double> EigenVector(const Matrix<double>& A, const std::vector<double>& known,
                                             const double& knownValue, double& value);

}  // namespace KM
