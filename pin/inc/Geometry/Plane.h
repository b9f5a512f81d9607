#pragma once

#include <vector>

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

/// What a coordinate of `Plane`'s stored point holds while the plane has none.
inline constexpr double NoPoint = 1e20;

/// The plane a x + b y + c z + d = 0, and one of its points if it was made through one.
///
/// A plain value. The normal has unit length after each constructor; what is too short to have a direction becomes
/// (0, 0, 1), as `SafeUnit` does. Coordinates that are not finite give a plane that is not valid, and go through all
/// operations as such.
struct KM_API Plane {
    double a = 0.0;
    double b = 0.0;
    double c = 1.0;
    double d = 0.0;
    double px = NoPoint;
    double py = NoPoint;
    double pz = NoPoint;

    /// The plane z = 0, without a stored point.
    Plane() = default;
    /// The plane through three points; its normal is on the side from which they run counter-clockwise. `B` is the
    /// stored point. Collinear points give the normal (0, 0, 1) at the height of `A`.
    Plane(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C);
    /// The plane through `point`, which is stored. `normal` need not have unit length.
    Plane(const TPoint<double>& normal, const TPoint<double>& point);
    /// The plane with the direction of (normalX, normalY, normalZ), without a stored point. `offset` is taken as it is:
    /// it is not divided by the length of the normal, so (0, 0, 2) with 4 is the plane z = -4.
    Plane(double normalX, double normalY, double normalZ, double offset);

    /// As the constructor with the same arguments.
    void Init(const TPoint<double>& normal, const TPoint<double>& point);

    const TPoint<double> Normal() const { return TPoint<double>(a, b, c); }

    /// The signed distance, positive on the side of the normal.
    double Dist(const TPoint<double>& p) const { return a * p.X + b * p.Y + c * p.Z + d; }

    /// The signed distance along Z, positive above the plane. 0.0 if the plane is upright (|c| not above 1e-7).
    double VerticalDist(const TPoint<double>& p) const;

    /// True for a distance below 1e-7 on either side.
    bool PointLiesInPlane(const TPoint<double>& p) const;

    /// True while the squared length of the normal is 1 to within 1e-12.
    bool IsValid() const;

    /// A point of the plane, worked out from a, b, c and d and not from the stored point: where the plane meets the Z
    /// axis or, when it runs along that, the X axis, else the Y axis. The origin if there is no normal.
    TPoint<double> CachedPoint() const;

    /// `p`, moved by its distance from the plane against the direction to `q`. That is on the plane only if the line
    /// p q runs along the normal; any other line is not cut, but cut short.
    TPoint<double> Intersect(const TPoint<double>& p, const TPoint<double>& q) const;

    /// Cuts the segment p q.
    ///
    /// @param out  the point on the plane, when the result is 1 or 2; else untouched
    /// @param t    where it is: 0 is `p`, 1 is `q`. Also written when the line is cut beyond the segment; untouched when
    ///             the segment runs beside the plane
    /// @return     1 if the plane cuts the segment, ends included (to within 1e-12 in `t`, so that `out` can be a trace
    ///             beyond an end); 2 if the segment lies in the plane, with `p` and 0; else 0
    int IntersectSeg(const TPoint<double>& p, const TPoint<double>& q, TPoint<double>& out, double& t) const;

    /// Exact comparison of the stored numbers.
    friend bool operator==(const Plane&, const Plane&) = default;
};

/// The foot of the perpendicular from `p`.
KM_API TPoint<double> NearestPtOnPlane(const Plane& plane, const TPoint<double>& p);

/// True if the squared sine of the angle between the planes is at most `tol`; so identical ones are parallel at 0.
KM_API bool IsParallel(const Plane& P, const Plane& Q, double tol);

/// The line that two planes have in common.
///
/// @param point  the point of the line that is nearest to the origin
/// @param dir    its direction, of unit length: the normal of `P` times that of `Q`
/// @return       false, with both untouched, for planes that meet at less than about 12.9 degrees: a line so ill
///               defined is of no use to those who ask
KM_API bool Intersect2Planes(const Plane& P, const Plane& Q, TPoint<double>& point, TPoint<double>& dir);

/// The point that three planes have in common, by Cramer's rule.
///
/// @return  false, with `point` untouched, if the box of the three normals has a volume of 0.01 or less
KM_API bool Intersect3Planes(const Plane& P, const Plane& Q, const Plane& R, TPoint<double>& point);

/// Picks one plane of each direction: the first, and each that is parallel (to within 0.001, as `IsParallel` measures)
/// to none that was picked before it.
///
/// @param indices  is replaced by the indices of the planes picked, ascending; empty if there are no planes
/// @return         their number, held at 32767, which planes with unit normals cannot reach
///
/// Each plane is compared with those picked, so time grows with planes times directions.
KM_API short FindNonParallelPlanes(const std::vector<Plane>& planes, std::vector<long>& indices);

}  // namespace KM
