#include "WindowComparison.h"

#include <optional>

#include "Geometry/Solver.h"

namespace KM {
namespace {

constexpr double Eps = WindowTolerance;

/// A window that knows where its pseudo-source lies; found when it is first asked for, since most comparisons need none.
class Beam {
public:
    explicit Beam(const GeodesicWindow& window) : window_(window) {}

    const GeodesicWindow& Window() const { return window_; }
    const FlatPoint& Source() {
        if (!source_) source_ = PseudoSource(window_);
        return *source_;
    }
    double At(double p) { return window_.sigma + DistanceFrom(Source(), p); }
    double AtLow(double lo) { return lo == window_.b0 ? window_.sigma + window_.d0 : At(lo); }
    double AtHigh(double hi) { return hi == window_.b1 ? window_.sigma + window_.d1 : At(hi); }

private:
    const GeodesicWindow& window_;
    std::optional<FlatPoint> source_;
};

struct Crossing {
    double point;
    double value;
};

/// The point between `lo` and `hi` where both windows give the same distance: with s the lead of one pseudo-source,
/// |p - P1| = |p - P2| + s, squared twice.
std::optional<Crossing> WindowCrossing(Beam& oldOne, Beam& newOne, double lo, double hi) {
    const auto [x1, y1] = oldOne.Source();
    const auto [x2, y2] = newOne.Source();
    const double s = newOne.Window().sigma - oldOne.Window().sigma;
    const double ss = s * s;
    const double dx = x2 - x1;
    const double r2 = x2 * x2 + y2 * y2;
    const double g = x1 * x1 + y1 * y1 - r2 - ss;

    double roots[4];
    const int count = Solver::Quadratic(dx * dx - ss, 2.0 * x2 * ss + g * dx, g * g / 4.0 - r2 * ss, roots);
    std::optional<Crossing> crossing;
    for (int i = 0; i < count; ++i) {
        double p = roots[i];
        if (p < lo + Eps) p = lo;
        else if (p > hi - Eps) p = hi;
        const double f1 = oldOne.At(p);
        const double f2 = newOne.At(p);
        // Squaring brings in roots of the equation with -s; of two true ones the later counts.
        if (std::fabs(f1 - f2) < (f1 + f2) * Eps * 0.5) crossing = Crossing{p, f1};
    }
    return crossing;
}

bool LiesWithin(const GeodesicWindow& inner, const GeodesicWindow& outer) {
    return inner.b0 + Eps >= outer.b0 && outer.b1 + Eps >= inner.b1;
}

}  // namespace

Comparison CompareWindows(const GeodesicWindow& O, const GeodesicWindow& W) {
    Beam oldOne(O);
    Beam newOne(W);
    const double lo = std::max(O.b0, W.b0);
    const double hi = std::min(O.b1, W.b1);
    const double Olo = oldOne.AtLow(lo);
    const double Wlo = newOne.AtLow(lo);
    const double Ohi = oldOne.AtHigh(hi);
    const double Whi = newOne.AtHigh(hi);

    if (Wlo + Eps >= Olo && Whi + Eps >= Ohi) return {Outcome::OldStays};
    if (Olo + Eps >= Wlo && Ohi + Eps >= Whi) {
        if (LiesWithin(W, O) || LiesWithin(O, W)) return {Outcome::NewTakes};
        if (O.b0 <= W.b0) return {Outcome::OldLeft, W.b0, W.sigma + W.d0};
        return {Outcome::OldRight, W.b1, W.sigma + W.d1};
    }

    const auto crossing = WindowCrossing(oldOne, newOne, lo, hi);
    if (!crossing) return {Wlo + Eps > Olo || Whi + Eps > Ohi ? Outcome::OldStays : Outcome::NewTakes};
    const auto [p, v] = *crossing;
    const bool isNewBetterAtLow = Wlo <= Olo;
    if (p <= lo + Eps) return {isNewBetterAtLow ? Outcome::OldStays : Outcome::NewTakes};
    if (p >= hi - Eps) return {isNewBetterAtLow ? Outcome::NewTakes : Outcome::OldStays};
    return {isNewBetterAtLow ? Outcome::OldRight : Outcome::OldLeft, p, v};
}

}  // namespace KM
