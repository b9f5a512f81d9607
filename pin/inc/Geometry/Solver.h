#pragma once

#include "KmApi.h"

/// Real roots of polynomials up to degree four.
///
/// A coefficient with a magnitude below 1.05367e-8 counts as zero, so polynomials should come with coefficients about 1.
/// If the first one is zero, the polynomial goes to the function of the next lower degree.
///
/// @param roots  room for four values; null is refused with 0
/// @return       the number of roots written, in no special order. A double root of a quadratic comes once.
///
/// Coefficients that are not finite, or that overflow on the way, give roots that are not finite, or none. Constant time.
namespace KM::Solver {

/// The value of a x^4 + b x^3 + c x^2 + d x + e: 0 for a root, but for rounding.
KM_API double Check(double a, double b, double c, double d, double e, double x);

/// Roots of a x^2 + b x + c. Two roots that are closer than about 1e-4 (or than 1e-6 of their size) come as one. If a and
/// b are both zero the result is 1 and the root is not finite.
KM_API int Quadratic(double a, double b, double c, double roots[]);

/// Roots of a x^3 + b x^2 + c x + d, by the trigonometric method of D. Herbison-Evans ("Solving Quartics and Cubics for
/// Graphics"): one or three. Two that are equal come as two, or not at all, as rounding has it; in some of ten thousand
/// such cases rounding leaves the range of an arc cosine, and none of the three is a number.
KM_API int Cubic(double a, double b, double c, double d, double roots[]);

/// Roots of a x^4 + b x^3 + c x^2 + d x + e, by the resolvents of Ferrari and Neumark, chosen by the signs of the
/// coefficients (D. Herbison-Evans, as above). Where two roots are equal, or two pairs of roots have the same sum or
/// product, all can be lost: the method takes roots of squares that are then 0, or below it by a rounding.
KM_API int Quartic(double a, double b, double c, double d, double e, double roots[]);

}  // namespace KM::Solver
