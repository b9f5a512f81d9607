#pragma once

#include "Geometry/Planar.h"

namespace KM {

/// Where another point blocks the corner B of an outline, between its neighbours A and C.
///
/// Points on AB and BC block, points on CA do not, and so neither do points in the place of A or C: outlines with doubled
/// points are cut thanks to that.
class EarRegion {
public:
    /// @tparam Place  has an X and a Y
    template <class Place>
    EarRegion(const Place& A, const Place& B, const Place& C)
        : ab_{A.X, A.Y, B.X - A.X, B.Y - A.Y},
          bc_{C.X, C.Y, C.X - B.X, C.Y - B.Y},
          ca_{C.X, C.Y, A.X - C.X, A.Y - C.Y} {}

    // Each comparison is written so that a NaN blocks: hosts count on the triangles that come of it. Most points of an
    // outline lie beyond CA.
    bool Contains(double x, double y) const {
        return !(ca_.Offset(x, y) >= 0.0) && !(ab_.Offset(x, y) > 0.0) && !(bc_.Offset(x, y) > 0.0);
    }

    /// True if `Contains` is false for each point of the box, to the last bit: rounding keeps the order of values, so each
    /// offset as it is computed is least in a corner of the box. That is true as long as no NaN comes up.
    bool IsOff(const PlaneBox& box) const {
        return ca_.Least(box) >= 0.0 || ab_.Least(box) > 0.0 || bc_.Least(box) > 0.0;
    }

private:
    struct Side {
        double x, y, dx, dy;

        double Offset(double vx, double vy) const { return (vx - x) * dy - (vy - y) * dx; }
        double Least(const PlaneBox& box) const {
            return Offset(dy >= 0.0 ? box.minX : box.maxX, dx >= 0.0 ? box.maxY : box.minY);
        }
    };

    Side ab_, bc_, ca_;
};

}  // namespace KM
