#pragma once

#include <cstdint>
#include <vector>

#include "Geometry/EarRegion.h"
#include "Geometry/Planar.h"

namespace KM {

/// The points of an outline that can still block an ear, halved by their places in XY again and again down to leaves of at
/// most 64, whose points are found by bit masks. Time is about that of the depth, whatever the points' distribution. So few
/// points that two leaves do are not sorted at all.
class VertexTree {
public:
    struct Vertex {
        double x, y;
        int id;
    };

    /// An ear as the tree sees it.
    struct Query {
        const EarRegion& region;
        const PlaneBox& box;  ///< that no blocking point is out of; may be infinite
        int tip;              ///< the point that is not asked about: the corner itself
    };

    /// @param vertices  with ids from 0 to `bound` - 1, each at most once; no coordinate beyond 1e150
    VertexTree(std::vector<Vertex> vertices, int bound);

    /// Takes a vertex out; an id that the tree does not have is ignored.
    void Remove(int id);

    /// The id of some vertex in the region, other than the tip; -1 if there is none.
    int FindBlocker(const Query& query) const;

private:
    static constexpr int LeafSize = 64;
    static constexpr int Steps = 32;

    /// Points that lie below each of some evenly spaced bounds, one bit a point.
    class Ruler {
    public:
        void Set(const double* values, int count, double least, double most);
        std::uint64_t Between(double from, double to) const { return below_[Step(to) + 1] & ~below_[Step(from)]; }

    private:
        int Step(double value) const;

        double least_ = 0.0;
        double scale_ = 0.0;
        std::uint64_t below_[Steps + 1] = {};
    };

    struct Leaf {
        std::uint64_t alive = 0;
        Ruler x, y;
        double xs[LeafSize];
        double ys[LeafSize];
        int ids[LeafSize];
    };

    using Range = std::vector<Vertex>::iterator;

    bool IsSmall() const { return leaves_.size() <= 2; }
    void Build(std::size_t node, Range begin, Range end);
    void Halve(const PlaneBox& box, Range begin, Range middle, Range end);
    void Fill(Leaf& leaf, const PlaneBox& box, Range begin, Range end);
    static int FindInLeaf(const Leaf& leaf, const Query& query);

    // A complete binary tree: the children of node i are 2 i and 2 i + 1, the last level are the leaves.
    std::vector<PlaneBox> boxes_;
    std::vector<Leaf> leaves_;
    std::vector<int> slots_;  // by id: leaf times its size, and place in it; -1 for none
};

}  // namespace KM
