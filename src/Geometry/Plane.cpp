#include "Geometry/Plane.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Geometry/Determinant.h"

namespace KM {
namespace {

/// Squares of sines of angles, and a volume made of them, below which planes count as parallel.
constexpr double CommonLineLimit = 0.05;
constexpr double CommonPointLimit = 0.01;
constexpr double SameDirectionLimit = 0.001;

constexpr double SegmentTrace = 1e-12;

void SetNormal(Plane& plane, const TPoint<double>& direction) {
    const TPoint<double> n = SafeUnit(direction);
    plane.a = n.X;
    plane.b = n.Y;
    plane.c = n.Z;
}

void SetStoredPoint(Plane& plane, const TPoint<double>& p) {
    plane.px = p.X;
    plane.py = p.Y;
    plane.pz = p.Z;
}

double SquaredSine(const Plane& P, const Plane& Q) { return LengthSquared(Cross(P.Normal(), Q.Normal())); }

/// A plane that is not valid because it is not finite is parallel to nothing.
bool HasFiniteNormal(const Plane& plane) {
    return std::isfinite(plane.a) && std::isfinite(plane.b) && std::isfinite(plane.c);
}

}  // namespace

Plane::Plane(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C) {
    SetNormal(*this, Cross(B - A, C - A));
    d = -Dot(A, Normal());
    SetStoredPoint(*this, B);
}

Plane::Plane(const TPoint<double>& normal, const TPoint<double>& point) { Init(normal, point); }

Plane::Plane(double normalX, double normalY, double normalZ, double offset) : d(offset) {
    SetNormal(*this, TPoint<double>(normalX, normalY, normalZ));
}

void Plane::Init(const TPoint<double>& normal, const TPoint<double>& point) {
    SetNormal(*this, normal);
    d = -Dot(point, Normal());
    SetStoredPoint(*this, point);
}

double Plane::VerticalDist(const TPoint<double>& p) const {
    return std::fabs(c) > 1e-7 ? (a * p.X + b * p.Y + d) / c + p.Z : 0.0;
}

bool Plane::PointLiesInPlane(const TPoint<double>& p) const { return 1e-7 > std::fabs(Dist(p)); }

bool Plane::IsValid() const { return 1e-12 > std::fabs(a * a + b * b + c * c - 1.0); }

TPoint<double> Plane::CachedPoint() const {
    if (!IsZero(c)) return TPoint<double>(0.0, 0.0, -d / c);
    if (!IsZero(a)) return TPoint<double>(-d / a, 0.0, 0.0);
    if (!IsZero(b)) return TPoint<double>(0.0, -d / b, 0.0);
    return TPoint<double>();
}

TPoint<double> Plane::Intersect(const TPoint<double>& p, const TPoint<double>& q) const {
    // No division by the cosine between line and normal: callers pass lines along the normal and rely on a step that is
    // never longer than the distance.
    return p - SafeUnit(q - p) * Dist(p);
}

int Plane::IntersectSeg(const TPoint<double>& p, const TPoint<double>& q, TPoint<double>& out, double& t) const {
    const TPoint<double> e = q - p;
    const double slope = Dot(Normal(), e);
    const double distance = Dist(p);
    if (std::fabs(slope) < SegmentTrace) {
        if (!(std::fabs(distance) < SegmentTrace)) return 0;
        out = p;
        t = 0.0;
        return 2;
    }
    t = -distance / slope;
    if (!(t >= -SegmentTrace && t <= 1.0 + SegmentTrace)) return 0;
    out = p + e * t;
    return 1;
}

TPoint<double> NearestPtOnPlane(const Plane& plane, const TPoint<double>& p) {
    return p - plane.Normal() * plane.Dist(p);
}

bool IsParallel(const Plane& P, const Plane& Q, double tol) { return tol >= SquaredSine(P, Q); }

bool Intersect2Planes(const Plane& P, const Plane& Q, TPoint<double>& point, TPoint<double>& dir) {
    const TPoint<double> k = Cross(P.Normal(), Q.Normal());
    const double D = LengthSquared(k);
    if (!(D > CommonLineLimit)) return false;
    const double r1 = P.d * Q.c - Q.d * P.c;
    const double r2 = P.d * Q.b - Q.d * P.b;
    const double r3 = Q.d * P.a - P.d * Q.a;
    point.X = (r1 * k.Y - r2 * k.Z) / D;
    point.Y = -(r3 * k.Z + r1 * k.X) / D;
    point.Z = (r3 * k.Y + r2 * k.X) / D;
    dir = SafeUnit(k);
    return true;
}

bool Intersect3Planes(const Plane& P, const Plane& Q, const Plane& R, TPoint<double>& point) {
    const double det = Determinant(P.Normal(), Q.Normal(), R.Normal());
    if (!(std::fabs(det) > CommonPointLimit)) return false;
    using Row = TPoint<double>;
    point = Row(Determinant(Row(-P.d, P.b, P.c), Row(-Q.d, Q.b, Q.c), Row(-R.d, R.b, R.c)),
                Determinant(Row(P.a, -P.d, P.c), Row(Q.a, -Q.d, Q.c), Row(R.a, -R.d, R.c)),
                Determinant(Row(P.a, P.b, -P.d), Row(Q.a, Q.b, -Q.d), Row(R.a, R.b, -R.d))) /
            det;
    return true;
}

short FindNonParallelPlanes(const std::vector<Plane>& planes, std::vector<long>& indices) {
    indices.clear();
    std::vector<Plane> directions;
    for (std::size_t i = 0; i < planes.size(); ++i) {
        // What is not finite is parallel to nothing. Millions of such planes must not be compared with each other.
        if (HasFiniteNormal(planes[i])) {
            const auto isParallel = [&](const Plane& other) {
                return IsParallel(planes[i], other, SameDirectionLimit);
            };
            if (std::any_of(directions.begin(), directions.end(), isParallel)) continue;
            directions.push_back(planes[i]);
        }
        indices.push_back(static_cast<long>(i));
    }
    constexpr std::size_t most = std::numeric_limits<short>::max();
    return static_cast<short>(std::min(indices.size(), most));
}

}  // namespace KM
