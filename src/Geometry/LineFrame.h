#pragma once

#include <cmath>

#include "Geometry/Point.h"

namespace KM {

/// True for a line that is a mere point when seen along Z.
inline bool IsUpright(const TPoint<double>& A, const TPoint<double>& B) { return B.X - A.X == 0.0 && B.Y - A.Y == 0.0; }

/// Two lines in XY, seen from the first: A is the origin, and AB runs along X.
struct LineFrame {
    struct XY {
        double X, Y;
    };

    XY b, c, d;
    bool isTurned;  ///< false where AB is level already; it may then run towards -X

    LineFrame(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C, const TPoint<double>& D)
        : b{B.X - A.X, B.Y - A.Y}, c{C.X - A.X, C.Y - A.Y}, d{D.X - A.X, D.Y - A.Y}, isTurned(b.Y != 0.0) {
        if (!isTurned) return;
        const double length = std::hypot(b.X, b.Y);
        const double cosine = b.X / length;
        const double sine = -b.Y / length;
        const auto turned = [=](const XY& p) { return XY{p.X * cosine - p.Y * sine, p.Y * cosine + p.X * sine}; };
        b = turned(b);
        c = turned(c);
        d = turned(d);
    }

    /// How far CD climbs away from AB: 0 where they are parallel.
    double Climb() const { return d.Y - c.Y; }

    /// The parameters of the crossing, `t` on AB and `u` on CD.
    void Cross(double& t, double& u) const {
        u = -c.Y / Climb();
        t = ((d.X - c.X) * u + c.X) / b.X;
    }
};

}  // namespace KM
