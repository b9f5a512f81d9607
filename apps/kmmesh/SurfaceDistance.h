#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "LongTask.h"
#include "Mesh/Core/Pin.h"

namespace KM::Tool {

/// How far points lie from a surface: from the nearest point of its triangles, inside of them and on their edges. The
/// triangles lie in a tree of boxes. A query takes about log n time near to the surface, the tree n log n.
class SurfaceDistance {
public:
    /// Keeps copies of the points, so the mesh may change afterwards. Coordinates should be of a usual size, since their
    /// fourth powers are taken.
    /// @param task  gets a step for each box, of which there are at most as many as triangles
    /// @throws XUserAbort  if the user wants to stop
    SurfaceDistance(const PIN& mesh, LongTask& task);

    /// The distance; infinite from a mesh without triangles.
    /// @param enough  who looks for the largest of many distances gives the largest one up to now, and gets, much quicker,
    ///                any number up to it where the distance is not larger
    double To(const TPoint<double>& point, double enough = 0.0) const;

private:
    using Point = TPoint<double>;
    using Triangle = std::array<Point, 3>;
    static constexpr std::size_t LeafSize = 4;

    struct Box {
        Point low;
        Point high;
    };
    /// Some triangles in a row, and the box round them. The children of node i are 2 i and 2 i + 1.
    struct Range {
        std::size_t node;
        std::size_t begin;
        std::size_t end;

        bool IsLeaf() const { return end - begin <= LeafSize; }
        std::size_t Middle() const { return begin + (end - begin) / 2; }
        Range Lower() const { return {2 * node, begin, Middle()}; }
        Range Upper() const { return {2 * node + 1, Middle(), end}; }
    };
    class Search;

    void Build(const Range& range, LongTask& task);
    Box BoxOf(const Range& range) const;

    std::vector<Triangle> triangles_;
    std::vector<Box> boxes_;
};

}  // namespace KM::Tool
