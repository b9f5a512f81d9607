#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <limits>
#include <vector>

#include "Geometry/Planar.h"
#include "Geometry/Point.h"

namespace KM {

/// The lane that a run of points keeps to: how far they reach to both sides of a direction, that of the first two. Boxes of
/// slanted runs are wide, their lanes are narrow.
class Lane {
public:
    /// Too wide for anything to be off it.
    Lane() = default;

    Lane(const TPoint<double>& a, const TPoint<double>& b) {
        const double length = std::sqrt(DistanceSquaredInXY(a, b));
        if (!HasOffset(a) || !HasOffset(b) || length < 1e-100) return;
        dx_ = (b.X - a.X) / length;
        dy_ = (b.Y - a.Y) / length;
        least_ = most_ = Offset(a);
        Add(b);
    }

    void Add(const TPoint<double>& p) {
        if (!HasOffset(p)) {
            *this = Lane();
            return;
        }
        const double offset = Offset(p);
        least_ = std::min(least_, offset);
        most_ = std::max(most_, offset);
    }

    /// True if both points lie on one side of the lane, so far off that neither rounding nor the steps by which `IntSegmSegm`
    /// parts common ends bridge the gap.
    bool IsOff(const TPoint<double>& a, const TPoint<double>& b) const {
        if (!HasOffset(a) || !HasOffset(b)) return false;
        const double offsetA = Offset(a);
        const double offsetB = Offset(b);
        const double reach = std::max({std::fabs(a.X), std::fabs(a.Y), std::fabs(b.X), std::fabs(b.Y)});
        const double margin = 2e-5 + 1e-11 * (reach + std::max(std::fabs(least_), std::fabs(most_)));
        return std::min(offsetA, offsetB) > most_ + margin || std::max(offsetA, offsetB) < least_ - margin;
    }

private:
    // Beyond that, and where a number is none, sums and differences could be none.
    static bool HasOffset(const TPoint<double>& p) { return IsWithin(p, 1e100); }
    double Offset(const TPoint<double>& p) const { return p.Y * dx_ - p.X * dy_; }

    double dx_ = 0.0;
    double dy_ = 0.0;
    double least_ = -std::numeric_limits<double>::max();
    double most_ = std::numeric_limits<double>::max();
};

/// A segment in XY, that tells what it cannot cross.
class Way {
public:
    Way(const TPoint<double>& from, const TPoint<double>& to)
        : from_(from), to_(to), dx_(to.X - from.X), dy_(to.Y - from.Y), box_(Union(At(from), At(to))) {}

    /// True if all of a box lies beyond the box of the way, or on one side of its line, so far off that neither rounding nor the
    /// steps by which `IntSegmSegm` parts common ends bridge the gap.
    bool IsOff(const PlaneBox& box) const {
        if (!box_.Meets(box)) return true;
        const double least = Offset(dy_ >= 0.0 ? box.minX : box.maxX, dx_ >= 0.0 ? box.maxY : box.minY);
        const double most = Offset(dy_ >= 0.0 ? box.maxX : box.minX, dx_ >= 0.0 ? box.minY : box.maxY);
        const double margin = Margin(std::max({std::fabs(box.minX - from_.X), std::fabs(box.maxX - from_.X),
                                               std::fabs(box.minY - from_.Y), std::fabs(box.maxY - from_.Y)}));
        return least > margin || most < -margin;
    }

    /// True if all of a lane lies that far off.
    bool IsOff(const Lane& lane) const { return lane.IsOff(from_, to_); }

    /// True if both points lie that far off on one side of the line.
    bool IsOff(const TPoint<double>& a, const TPoint<double>& b) const {
        const double margin = Margin(std::max(
            {std::fabs(a.X - from_.X), std::fabs(b.X - from_.X), std::fabs(a.Y - from_.Y), std::fabs(b.Y - from_.Y)}));
        const double offsetA = Offset(a.X, a.Y);
        const double offsetB = Offset(b.X, b.Y);
        return (offsetA > margin && offsetB > margin) || (offsetA < -margin && offsetB < -margin);
    }

private:
    /// The distance from the line times the length of the way, positive on its right.
    double Offset(double x, double y) const { return (x - from_.X) * dy_ - (y - from_.Y) * dx_; }
    double Margin(double span) const { return (1e-5 + 1e-12 * span) * (std::fabs(dx_) + std::fabs(dy_)); }

    TPoint<double> from_, to_;
    double dx_, dy_;
    PlaneBox box_;
};

/// Finds those segments of a polyline that come near a place, in order. The polyline grows, and is cut back, at its end.
class OutlineIndex {
public:
    /// @param outline  is referred to
    /// @param most     points that it can ever have
    OutlineIndex(const std::vector<TPoint<double>>& outline, std::size_t most)
        : outline_(outline),
          leaves_(std::bit_ceil(most / LeafSize + 1)),
          boxes_(2 * leaves_, EmptyBox),
          lanes_(2 * leaves_) {}

    /// To be told after each new point; points may have been cut off before.
    void TakeLastSegment() {
        const std::size_t last = outline_.size() - 2;
        std::size_t node = leaves_ + last / LeafSize;
        PlaneBox box = EmptyBox;
        for (std::size_t j = last / LeafSize * LeafSize; j <= last; ++j) box = Union(box, BoxOf(j));
        boxes_[node] = box;
        WidenLanes(node, last);
        // A left child is the last that there is, whatever its sister has kept from longer days.
        for (; node > 1; node /= 2)
            boxes_[node / 2] = node % 2 == 0 ? boxes_[node] : Union(boxes_[node - 1], boxes_[node]);
    }

    /// The first segment before `end` that the test accepts, out of those that the way can cross and some more; `end` if
    /// there is none.
    template <class Test>
    std::size_t FindFirst(std::size_t end, const Way& way, Test test) const {
        return FindBelow(1, 0, leaves_ * LeafSize, end, way, test);
    }

private:
    static constexpr std::size_t LeafSize = 8;

    /// Takes a segment into the lanes from its leaf up to the root. What is cut off again stays in them, until their first
    /// segment is another one; that does no harm.
    void WidenLanes(std::size_t leaf, std::size_t segment) {
        const TPoint<double>& a = outline_[segment];
        const TPoint<double>& b = outline_[segment + 1];
        std::size_t size = LeafSize;
        for (std::size_t node = leaf; node > 0; node /= 2, size *= 2) {
            if (segment % size == 0) {
                lanes_[node] = Lane(a, b);
            } else {
                lanes_[node].Add(b);
            }
        }
    }

    /// Wide enough for all that `IntSegmSegm` looks at. What has no place in XY meets nothing.
    PlaneBox BoxOf(std::size_t segment) const {
        const TPoint<double>& a = outline_[segment];
        const TPoint<double>& b = outline_[segment + 1];
        if (std::isnan(DistanceSquaredInXY(a, b))) return EmptyBox;
        constexpr double reach = 2e-6;
        const auto grow = [](double v) { return reach + 1e-15 * std::fabs(v); };
        const PlaneBox box = Union(At(a), At(b));
        return {box.minX - grow(box.minX), box.minY - grow(box.minY), box.maxX + grow(box.maxX),
                box.maxY + grow(box.maxY)};
    }

    template <class Test>
    std::size_t FindBelow(std::size_t node, std::size_t begin, std::size_t nodeEnd, std::size_t end, const Way& way,
                          Test& test) const {
        if (begin >= end || way.IsOff(boxes_[node]) || way.IsOff(lanes_[node])) return end;
        if (node >= leaves_) {
            for (std::size_t j = begin; j < std::min(nodeEnd, end); ++j)
                if (test(j)) return j;
            return end;
        }
        const std::size_t middle = (begin + nodeEnd) / 2;
        const std::size_t found = FindBelow(2 * node, begin, middle, end, way, test);
        return found != end ? found : FindBelow(2 * node + 1, middle, nodeEnd, end, way, test);
    }

    const std::vector<TPoint<double>>& outline_;
    // A complete binary tree: the children of node i are 2 i and 2 i + 1, the last level has a few segments each.
    std::size_t leaves_;
    std::vector<PlaneBox> boxes_;
    std::vector<Lane> lanes_;
};

}  // namespace KM
