#include "Geometry/PolygonRepair.h"

#include <utility>

#include "Geometry/OutlineIndex.h"
#include "Geometry/Planar.h"
#include "Geometry/Segments.h"

namespace KM::PointsUtils {

namespace {

using P = TPoint<double>;

/// The square of the shortest length in XY that a segment can be crossed on.
constexpr double ShortestSquared = 1e-14;

/// An outline that crosses itself nowhere, and stays so.
class CleanOutline {
public:
    explicit CleanOutline(const P& start, std::size_t most) : index_(points_, most) {
        points_.reserve(most);
        points_.push_back(start);
    }

    /// Goes on to `to`. If the way there crosses the outline, all behind the first crossing is cut off.
    /// @return  true if so
    bool GoTo(const P& to) {
        const P from = points_.back();
        P crossing;
        const std::size_t cut = FirstCrossed(from, to, crossing);
        const bool isCut = cut < points_.size();
        if (isCut) {
            points_.resize(cut + 1);
            Add(crossing);
        }
        Add(to);
        return isCut;
    }

    std::vector<P> Take() { return std::move(points_); }

private:
    void Add(const P& p) {
        points_.push_back(p);
        index_.TakeLastSegment();
    }

    /// The first segment that the way crosses; the number of points if it crosses none.
    std::size_t FirstCrossed(const P& from, const P& to, P& crossing) const {
        const std::size_t none = points_.size();
        if (points_.size() <= 2 || !(DistanceSquaredInXY(from, to) > ShortestSquared)) return none;
        const Way way(from, to);
        const auto isCrossed = [&](std::size_t j) {
            const P& a = points_[j];
            const P& b = points_[j + 1];
            double t = 0.0;
            double u = 0.0;
            if (DistanceSquaredInXY(a, b) < ShortestSquared || way.IsOff(a, b) || Way(a, b).IsOff(from, to))
                return false;
            if (!IntSegmSegm(t, u, from, to, a, b)) return false;
            crossing = from + (to - from) * t;
            return true;
        };
        // The last segment ends where the way begins.
        const std::size_t end = points_.size() - 2;
        const std::size_t found = index_.FindFirst(end, way, isCrossed);
        return found < end ? found : none;
    }

    std::vector<P> points_;
    OutlineIndex index_;
};

}  // namespace

bool MakePolygonNonSelfIntersecting(const std::vector<P>& polygon, std::vector<P>& result) {
    bool isChanged = false;
    std::vector<P> clean;
    if (!polygon.empty()) {
        const std::size_t count = polygon.size();
        CleanOutline outline(polygon[0], count + 1);
        for (std::size_t i = 1; i <= count; ++i) isChanged |= outline.GoTo(polygon[i < count ? i : 0]);
        clean = outline.Take();
    }
    result = std::move(clean);
    return isChanged;
}

void AdjustConvexPolygonVertices(const std::vector<P>& polygon, std::vector<P>& result, double factor) {
    const std::size_t count = polygon.size();
    std::vector<P> adjusted;
    adjusted.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const P& A = polygon[i];
        const P& B = polygon[(i + 1) % count];
        const P& C = polygon[(i + 2) % count];
        adjusted.push_back(TurnAt(A, B, C) <= 0.0 ? B + (A - B) * factor : B);
    }
    result = std::move(adjusted);
}

}  // namespace KM::PointsUtils
