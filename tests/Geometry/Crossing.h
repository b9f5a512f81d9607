#pragma once

#include "Support/HostilePoints.h"

namespace KM::Test {

/// What a function on two lines said, and the parameters that it wrote.
struct Crossing {
    bool isFound;
    double t = NaN, u = NaN;
};

using CrossingFunction = bool(double&, double&, const P&, const P&, const P&, const P&);

inline Crossing CrossingBy(CrossingFunction function, const P& A, const P& B, const P& C, const P& D) {
    Crossing crossing{};
    crossing.isFound = function(crossing.t, crossing.u, A, B, C, D);
    return crossing;
}

inline bool SameBits(const Crossing& a, const Crossing& b) {
    return a.isFound == b.isFound && SameBits(a.t, b.t) && SameBits(a.u, b.u);
}

}  // namespace KM::Test
