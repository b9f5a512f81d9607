#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <vector>

#include "Geometry/Planar.h"
#include "Geometry/Point.h"

namespace KM {

/// Finds those segments of a polyline that come near a place, in order. The polyline grows, and is cut back, at its end.
class OutlineIndex {
public:
    /// @param outline  is referred to
    /// @param most     points that it can ever have
    OutlineIndex(const std::vector<TPoint<double>>& outline, std::size_t most)
        : outline_(outline), leaves_(std::bit_ceil(most / LeafSize + 1)), boxes_(2 * leaves_, Nowhere) {}

    /// To be told after each new point; points may have been cut off before.
    void TakeLastSegment() {
        const std::size_t last = outline_.size() - 2;
        std::size_t node = leaves_ + last / LeafSize;
        PlaneBox box = Nowhere;
        for (std::size_t j = last / LeafSize * LeafSize; j <= last; ++j) box = Union(box, BoxOf(j));
        boxes_[node] = box;
        // A left child is the last that there is, whatever its sister has kept from longer days.
        for (; node > 1; node /= 2) boxes_[node / 2] = node % 2 == 0 ? boxes_[node] : Union(boxes_[node - 1], boxes_[node]);
    }

    /// The first segment before `end` that the test accepts, out of those that can reach `box` and some more; `end` if
    /// there is none.
    template <class Test>
    std::size_t FindFirst(std::size_t end, const PlaneBox& box, Test test) const {
        return FindBelow(1, 0, leaves_ * LeafSize, end, box, test);
    }

private:
    static constexpr std::size_t LeafSize = 8;

    /// Wide enough for all that `IntSegmSegm` looks at. What has no place in XY meets nothing.
    PlaneBox BoxOf(std::size_t segment) const {
        const TPoint<double>& a = outline_[segment];
        const TPoint<double>& b = outline_[segment + 1];
        if (std::isnan(DistanceSquaredInXY(a, b))) return Nowhere;
        constexpr double reach = 2e-6;
        const auto grow = [](double v) { return reach + 1e-15 * std::fabs(v); };
        const PlaneBox box = Union(At(a), At(b));
        return {box.minX - grow(box.minX), box.minY - grow(box.minY), box.maxX + grow(box.maxX),
                box.maxY + grow(box.maxY)};
    }

    template <class Test>
    std::size_t FindBelow(std::size_t node, std::size_t begin, std::size_t nodeEnd, std::size_t end, const PlaneBox& box,
                          Test& test) const {
        if (begin >= end || !boxes_[node].Meets(box)) return end;
        if (node >= leaves_) {
            for (std::size_t j = begin; j < std::min(nodeEnd, end); ++j)
                if (test(j)) return j;
            return end;
        }
        const std::size_t middle = (begin + nodeEnd) / 2;
        const std::size_t found = FindBelow(2 * node, begin, middle, end, box, test);
        return found != end ? found : FindBelow(2 * node + 1, middle, nodeEnd, end, box, test);
    }

    const std::vector<TPoint<double>>& outline_;
    // A complete binary tree: the children of node i are 2 i and 2 i + 1, the last level has a few segments each.
    std::size_t leaves_;
    std::vector<PlaneBox> boxes_;
};

}  // namespace KM
