#pragma once

#include "Geometry/Point.h"

namespace KM {

/// The squared distances of a point from a bundle of weighted planes, as one symmetric form (Garland and Heckbert,
/// "Surface Simplification Using Quadric Error Metrics").
struct Quadric {
    double terms[10] = {};  ///< aa, ab, bb, ac, bc, cc, ad, bd, cd, dd

    /// Adds the plane through `point` with the unit normal `n`.
    void AddPlane(const TPoint<double>& n, const TPoint<double>& point, double weight) {
        const double d = -Dot(n, point);
        const double plane[10] = {n.X * n.X, n.X * n.Y, n.Y * n.Y, n.X * n.Z, n.Y * n.Z,
                                  n.Z * n.Z, n.X * d,   n.Y * d,   n.Z * d,   d * d};
        for (int i = 0; i < 10; ++i) terms[i] += plane[i] * weight;
    }

    void Add(const Quadric& other) {
        for (int i = 0; i < 10; ++i) terms[i] += other.terms[i];
    }

    /// Never below zero, which rounding alone could cause; not a number stays so.
    double At(const TPoint<double>& p) const {
        const double* q = terms;
        const double sum = (q[0] * p.X + q[1] * p.Y + q[3] * p.Z) * p.X + (q[1] * p.X + q[2] * p.Y + q[4] * p.Z) * p.Y +
                           (q[3] * p.X + q[4] * p.Y + q[5] * p.Z) * p.Z + 2.0 * (q[6] * p.X + q[7] * p.Y + q[8] * p.Z) +
                           q[9];
        return sum < 0.0 ? 0.0 : sum;
    }
};

}  // namespace KM
