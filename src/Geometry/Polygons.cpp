#include "Geometry/Polygons.h"

#include <cmath>
#include <numbers>

#include "Geometry/Distances.h"
#include "Geometry/Planar.h"

namespace KM::PointsUtils {

namespace {

using P = TPoint<double>;
using Polygon = std::vector<P>;

/// True if the points differ by less than `tol` in each coordinate that counts.
bool AreNear(const P& a, const P& b, double tol, bool in3D) {
    return std::fabs(a.X - b.X) < tol && std::fabs(a.Y - b.Y) < tol && (!in3D || std::fabs(a.Z - b.Z) < tol);
}

void CloseIfNear(Polygon& polygon, double tol, bool in3D) {
    if (polygon.empty() || polygon.front() == polygon.back()) return;
    if (AreNear(polygon.front(), polygon.back(), tol, in3D)) polygon.push_back(P(polygon.front()));
}

/// Finds the corners of a polyline: the ends of its straight runs.
class RunFinder {
public:
    RunFinder(const Polygon& points, double tol, double blend) : points_(points), tol_(tol), blend_(blend) {}

    /// Flags the corners that a walk from the last point to the first meets.
    std::vector<char> Backward() const {
        std::vector<char> isCorner(points_.size(), 0);
        std::size_t anchor = points_.size() - 1;
        for (std::size_t i = points_.size() - 2; i-- > 0;)
            if (LeavesLine(i, anchor, anchor - 1)) isCorner[anchor = i + 1] = 1;
        return isCorner;
    }

    /// The ends and the corners of a walk from the first point to the last, and those flagged, in order.
    Polygon Forward(const std::vector<char>& isCorner) const {
        Polygon kept{points_.front()};
        std::size_t anchor = 0;
        for (std::size_t i = 2; i < points_.size(); ++i)
            if (isCorner[i - 1] || LeavesLine(i, anchor, anchor + 1)) kept.push_back(points_[anchor = i - 1]);
        kept.push_back(points_.back());
        return kept;
    }

private:
    bool LeavesLine(std::size_t i, std::size_t from, std::size_t to) const {
        const double d2 = blend_ == 1.0 ? 0.0 : Distance(i, from, to, false);
        const double d3 = blend_ == 0.0 ? 0.0 : Distance(i, from, to, true);
        return (d3 - d2) * blend_ + d2 > tol_;
    }

    double Distance(std::size_t i, std::size_t from, std::size_t to, bool in3D) const {
        return std::fabs(DistPtLn(points_[from], points_[to], points_[i], in3D));
    }

    const Polygon& points_;
    double tol_;
    double blend_;
};

/// Ends a list that is meant to be closed exactly where it begins; empties it if nothing of it has an area.
void CloseExactly(Polygon& points, double tol) {
    const P first = points.front();
    while (!points.empty() && AreNear(points.back(), first, tol + tol, true)) points.pop_back();
    if (points.size() >= 3) {
        points.push_back(first);
    } else {
        points.clear();
    }
}

}  // namespace

void Close(std::vector<Polygon>& polygons, double tol, bool in3D) {
    for (Polygon& polygon : polygons) CloseIfNear(polygon, tol, in3D);
}

void RemoveCoincidentPoints(Polygon& points, double tol, bool in3D) {
    if (points.empty()) return;
    std::size_t last = 0;
    for (std::size_t i = 1; i < points.size(); ++i)
        if (!AreNear(points[i], points[last], tol, in3D)) points[++last] = points[i];
    points.resize(last + 1);
    CloseIfNear(points, tol + tol, in3D);
}

void RemoveCoincidentPoints(std::vector<Polygon>& polygons, double tol, bool in3D) {
    for (Polygon& polygon : polygons) RemoveCoincidentPoints(polygon, tol, in3D);
}

void RemoveCollinearPoints(Polygon& points, double tol, double blend, bool twoPass) {
    if (points.size() < 4) return;
    const bool isClosed = AreNear(points.front(), points.back(), 3.0 * tol, true);
    const RunFinder runs(points, tol, blend);
    Polygon kept = runs.Forward(twoPass ? runs.Backward() : std::vector<char>(points.size(), 0));
    RemoveCoincidentPoints(kept, tol, true);
    if (isClosed && kept.size() >= 3) CloseExactly(kept, tol);
    if (!kept.empty()) points = std::move(kept);
}

bool IsConvex(const Polygon& polygon) {
    const std::size_t count = polygon.size();
    for (std::size_t i = 0; i < count; ++i) {
        const double next = DirectionInXY(polygon[i], polygon[(i + 1) % count]);
        const double previous = DirectionInXY(polygon[i], polygon[(i + count - 1) % count]);
        double angle = previous - next;
        if (angle < 0.0) angle += TwoPi;
        if (angle > std::numbers::pi) return false;
    }
    return true;
}

double SignedArea(const Polygon& polygon) {
    if (polygon.size() < 2) return 0.0;
    double area = 0.0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        const P& from = polygon[i];
        const P& to = polygon[i + 1 < polygon.size() ? i + 1 : 0];
        area += (from.Y + to.Y) * (to.X - from.X);
    }
    return area;
}

double SignedArea(const std::vector<Polygon>& polygons) {
    double area = 0.0;
    for (const Polygon& polygon : polygons) area += SignedArea(polygon);
    return area;
}

}  // namespace KM::PointsUtils
