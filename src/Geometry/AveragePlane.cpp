#include "Geometry/AveragePlane.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "Geometry/Determinant.h"

namespace KM {
namespace {

using Points = std::vector<TPoint<double>>;

bool IsLevel(const Points& points, double tol) {
    double sum = 0.0;
    for (const auto& p : points) sum += p.Z;
    const double mean = sum / static_cast<double>(points.size());
    return std::all_of(points.begin(), points.end(), [&](const auto& p) { return std::fabs(p.Z - mean) <= tol; });
}

/// True if some three successive points span more than `tol` in XY.
bool SpansXY(const Points& points, double tol) {
    for (std::size_t i = 1; i + 1 < points.size(); ++i) {
        const auto& before = points[i - 1];
        const auto& at = points[i];
        const auto& after = points[i + 1];
        const double cross = (after.X - at.X) * (before.Y - at.Y) - (before.X - at.X) * (after.Y - at.Y);
        if (std::fabs(cross) > tol) return true;
    }
    return false;
}

/// Sums over all points of each coordinate, and of each product of two.
struct Sums {
    double count = 0.0;
    std::array<double, 3> of{};
    std::array<std::array<double, 3>, 3> ofProduct{};

    explicit Sums(const Points& points) : count(static_cast<double>(points.size())) {
        for (const auto& p : points) {
            const double xyz[] = {p.X, p.Y, p.Z};
            for (int i = 0; i < 3; ++i) {
                of[i] += xyz[i];
                for (int k = 0; k < 3; ++k) ofProduct[i][k] += xyz[i] * xyz[k];
            }
        }
    }
};

/// The plane that gives coordinate w as A u + B v + C, where u, v, w are X, Y, Z or what these become when they are
/// exchanged in a circle. A, B and C solve three equations whose symmetric matrix holds the sums.
class Form {
public:
    Form(const Sums& sums, int first) : u_(first), v_((first + 1) % 3), w_((first + 2) % 3) {
        const auto& product = sums.ofProduct;
        column_[0] = {product[u_][u_], product[u_][v_], sums.of[u_]};
        column_[1] = {product[u_][v_], product[v_][v_], sums.of[v_]};
        column_[2] = {sums.of[u_], sums.of[v_], sums.count};
        right_ = {product[u_][w_], product[v_][w_], sums.of[w_]};
        determinant_ = RowDeterminant(column_);
    }

    double Magnitude() const { return std::fabs(determinant_); }

    /// The plane as the equations give it; rounding has left its normal a trace off unit length.
    Plane Solve() const {
        const double A = Unknown(0);
        const double B = Unknown(1);
        const double C = Unknown(2);
        const double length = std::sqrt(A * A + 1.0 + B * B);
        double normal[3];
        normal[u_] = A / length;
        normal[v_] = B / length;
        normal[w_] = -1.0 / length;
        Plane plane;
        plane.a = normal[0];
        plane.b = normal[1];
        plane.c = normal[2];
        plane.d = C / length;
        return plane;
    }

private:
    using Columns = std::array<TPoint<double>, 3>;

    static double RowDeterminant(const Columns& c) {
        return Determinant({c[0].X, c[1].X, c[2].X}, {c[0].Y, c[1].Y, c[2].Y}, {c[0].Z, c[1].Z, c[2].Z});
    }

    /// By Cramer's rule. What would become too large (or infinite, for points on a line) stays undivided.
    double Unknown(int index) const {
        Columns replaced = column_;
        replaced[index] = right_;
        const double numerator = RowDeterminant(replaced);
        return std::fabs(numerator) < Magnitude() * 1e20 ? numerator / determinant_ : numerator;
    }

    int u_, v_, w_;
    Columns column_;
    TPoint<double> right_;
    double determinant_;
};

/// The form with the largest determinant has its w nearest to the normal. Of equals the first is taken; a determinant
/// that is not a number is never the largest.
Form BestForm(const Sums& sums) {
    Form best(sums, 0);
    double largest = 0.0;
    for (int first = 0; first < 3; ++first) {
        const Form form(sums, first);
        if (!(form.Magnitude() > largest)) continue;
        largest = form.Magnitude();
        best = form;
    }
    return best;
}

}  // namespace

const Tuple2<int, Plane> AveragePlane(const Points& points, double tol) {
    if (IsLevel(points, tol)) return {SpansXY(points, tol) ? 2 : -2, Plane()};
    const Plane fit = BestForm(Sums(points)).Solve();
    const bool isFar =
        std::any_of(points.begin(), points.end(), [&](const auto& p) { return std::fabs(fit.Dist(p)) > tol; });
    return {isFar ? 0 : 1, Plane(fit.a, fit.b, fit.c, fit.d)};
}

}  // namespace KM
