#include "SurfaceDistance.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>

#include "Triangles.h"

namespace KM::Tool {
namespace {

using Point = TPoint<double>;
using Triangle = std::array<Point, 3>;

double SquaredToSegment(const Point& p, const Point& a, const Point& b) {
    const double squared = LengthSquared(b - a);
    const double t = squared > 0.0 ? std::clamp(Dot(p - a, b - a) / squared, 0.0, 1.0) : 0.0;
    return LengthSquared(p - (a + (b - a) * t));
}

/// A triangle without area is no more than its edges.
double SquaredToTriangle(const Point& p, const Triangle& t) {
    const auto& [a, b, c] = t;
    const Point normal = Cross(b - a, c - a);
    const double squared = LengthSquared(normal);
    const bool isAbove = squared > 0.0 && Dot(Cross(b - a, p - a), normal) >= 0.0 &&
                         Dot(Cross(c - b, p - b), normal) >= 0.0 && Dot(Cross(a - c, p - c), normal) >= 0.0;
    if (isAbove) return Dot(p - a, normal) * Dot(p - a, normal) / squared;
    return std::min({SquaredToSegment(p, a, b), SquaredToSegment(p, b, c), SquaredToSegment(p, c, a)});
}

Point MiddleOf(const Triangle& t) { return (t[0] + t[1] + t[2]) / 3.0; }

double Along(const Point& p, int axis) { return axis == 0 ? p.X : axis == 1 ? p.Y : p.Z; }

int LongestAxis(const Point& size) {
    if (size.X >= size.Y && size.X >= size.Z) return 0;
    return size.Y >= size.Z ? 1 : 2;
}

double Outside(double x, double low, double high) { return std::max({low - x, 0.0, x - high}); }

}  // namespace

/// One query: the nearer half of a range first, and no box that is too far.
class SurfaceDistance::Search {
public:
    Search(const SurfaceDistance& tree, const Point& point, double enough)
        : tree_(tree), point_(point), enough_(enough * enough) {}

    double Run() {
        if (!tree_.triangles_.empty()) Visit({1, 0, tree_.triangles_.size()});
        return std::sqrt(best_);
    }

private:
    double SquaredToBox(const Range& range) const {
        const Box& box = tree_.boxes_[range.node];
        return LengthSquared(Point(Outside(point_.X, box.low.X, box.high.X), Outside(point_.Y, box.low.Y, box.high.Y),
                                   Outside(point_.Z, box.low.Z, box.high.Z)));
    }

    void Visit(const Range& range) {
        if (range.IsLeaf()) {
            for (std::size_t i = range.begin; i < range.end; ++i)
                best_ = std::min(best_, SquaredToTriangle(point_, tree_.triangles_[i]));
            return;
        }
        Range near = range.Lower();
        Range far = range.Upper();
        double toNear = SquaredToBox(near);
        double toFar = SquaredToBox(far);
        if (toFar < toNear) {
            std::swap(near, far);
            std::swap(toNear, toFar);
        }
        if (IsWanted(toNear)) Visit(near);
        if (IsWanted(toFar)) Visit(far);
    }

    bool IsWanted(double squared) const { return best_ > enough_ && squared < best_; }

    const SurfaceDistance& tree_;
    const Point& point_;
    double enough_;
    double best_ = std::numeric_limits<double>::infinity();
};

SurfaceDistance::SurfaceDistance(const PIN& mesh, LongTask& task) {
    triangles_.reserve(mesh.edges.size() / 3);
    const auto at = [&](int node) { return mesh.points[static_cast<std::size_t>(node)]; };
    ForEachTriangle(mesh, [&](int a, int b, int c) { triangles_.push_back({at(a), at(b), at(c)}); });
    // Halves of one level differ by one triangle at most, so all leaves lie on the last two levels.
    boxes_.resize(4 * std::bit_ceil(triangles_.size() / LeafSize + 1));
    Build({1, 0, triangles_.size()}, task);
}

double SurfaceDistance::To(const Point& point, double enough) const { return Search(*this, point, enough).Run(); }

void SurfaceDistance::Build(const Range& range, LongTask& task) {
    task.Step();
    if (range.begin == range.end) return;
    const Box& box = boxes_[range.node] = BoxOf(range);
    if (range.IsLeaf()) return;
    const int axis = LongestAxis(box.high - box.low);
    const auto at = [&](std::size_t i) { return triangles_.begin() + static_cast<std::ptrdiff_t>(i); };
    std::nth_element(at(range.begin), at(range.Middle()), at(range.end), [axis](const Triangle& a, const Triangle& b) {
        return Along(MiddleOf(a), axis) < Along(MiddleOf(b), axis);
    });
    Build(range.Lower(), task);
    Build(range.Upper(), task);
}

SurfaceDistance::Box SurfaceDistance::BoxOf(const Range& range) const {
    Box box{triangles_[range.begin][0], triangles_[range.begin][0]};
    for (std::size_t i = range.begin; i < range.end; ++i) {
        for (const Point& p : triangles_[i]) {
            box.low = {std::min(box.low.X, p.X), std::min(box.low.Y, p.Y), std::min(box.low.Z, p.Z)};
            box.high = {std::max(box.high.X, p.X), std::max(box.high.Y, p.Y), std::max(box.high.Z, p.Z)};
        }
    }
    return box;
}

}  // namespace KM::Tool
