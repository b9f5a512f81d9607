#include "Geometry/Circles.h"

#include <cmath>

#include "Geometry/Guards.h"

namespace KM {

namespace {

using P = TPoint<double>;

double SquareInXY(const P& p) { return p.X * p.X + p.Y * p.Y; }

/// Turns a plane onto the level of XY, by its unit normal: round Z until the normal stands over X, then round Y until it
/// stands upright.
class Levelling {
public:
    explicit Levelling(const P& normal) : tiltCosine_(normal.Z), tiltSine_(std::hypot(normal.X, normal.Y)) {
        if (tiltSine_ < 1e-6) return;
        cosine_ = normal.X / tiltSine_;
        sine_ = normal.Y / tiltSine_;
    }

    P Down(const P& p) const {
        const double x = p.X * cosine_ + p.Y * sine_;
        const double y = p.Y * cosine_ - p.X * sine_;
        return P(x * tiltCosine_ - p.Z * tiltSine_, y, x * tiltSine_ + p.Z * tiltCosine_);
    }

    P Back(const P& p) const {
        const double x = p.X * tiltCosine_ + p.Z * tiltSine_;
        const double z = p.Z * tiltCosine_ - p.X * tiltSine_;
        return P(x * cosine_ - p.Y * sine_, x * sine_ + p.Y * cosine_, z);
    }

private:
    // An upright normal has no azimuth; this one is as good as any.
    double cosine_ = -1.0;
    double sine_ = 0.0;
    double tiltCosine_;
    double tiltSine_;
};

}  // namespace

const TPoint<double> Circle3P2D(const TPoint<double>& a, const TPoint<double>& b, const TPoint<double>& c) {
    const P ab = a - b;
    const P bc = b - c;
    const double determinant = ab.X * bc.Y - bc.X * ab.Y;
    if (std::fabs(determinant) < 1e-8) return P(NoResult, NoResult, NoResult);
    const double p = (SquareInXY(a) - SquareInXY(b)) / 2.0;
    const double q = (SquareInXY(b) - SquareInXY(c)) / 2.0;
    return P((bc.Y * p - ab.Y * q) / determinant, (ab.X * q - bc.X * p) / determinant, 0.0);
}

const TPoint<double> Circle3P3D(TPoint<double> a, TPoint<double> b, TPoint<double> c) {
    const Levelling levelling(SafeUnit(Cross(b - a, c - a)));
    return levelling.Back(Circle3P2D(P(), levelling.Down(b - a), levelling.Down(c - a))) + a;
}

}  // namespace KM
