#pragma once

#include <bit>
#include <cstdint>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// Exact lexicographic order of coordinates. There is no tolerance anywhere in point merging.
template <class Point>
bool PointLess(const Point& a, const Point& b) {
    if (a.X != b.X) return a.X < b.X;
    if (a.Y != b.Y) return a.Y < b.Y;
    return a.Z < b.Z;
}

/// A set of node indices, of which each stands for the coordinates that the mesh holds under it.
///
/// Two nodes are equal when all three coordinates are the same numbers; a point with a NaN equals no other. The set is a
/// flat table with open addressing: a tree of indices reads the points log n times for each look-up.
template <class Mesh>
class PointMerger {
public:
    explicit PointMerger(const Mesh& mesh) : mesh_(mesh), table_(16, -1) {}

    /// The node of the set with the same coordinates as `candidate`; if there is none, `candidate`, which is now in it.
    int FindOrInsert(int candidate) {
        if (2 * (used_ + 1) > table_.size()) Grow();
        std::size_t at = Hash(mesh_.points[candidate]) & (table_.size() - 1);
        while (table_[at] != -1) {
            if (mesh_.points[table_[at]] == mesh_.points[candidate]) return table_[at];
            at = (at + 1) & (table_.size() - 1);
        }
        table_[at] = candidate;
        ++used_;
        return candidate;
    }

private:
    static std::size_t Hash(const typename Mesh::PointType& p) {
        // Adding zero makes one number of 0.0 and -0.0.
        std::uint64_t h = std::bit_cast<std::uint64_t>(double(p.X) + 0.0) * 0x9E3779B97F4A7C15ull;
        h = (h ^ (h >> 32) ^ std::bit_cast<std::uint64_t>(double(p.Y) + 0.0)) * 0xC2B2AE3D27D4EB4Full;
        h = (h ^ (h >> 32) ^ std::bit_cast<std::uint64_t>(double(p.Z) + 0.0)) * 0x165667B19E3779F9ull;
        return static_cast<std::size_t>(h ^ (h >> 29));
    }

    void Grow() {
        std::vector<std::int32_t> old(2 * table_.size(), -1);
        old.swap(table_);
        for (const std::int32_t node : old) {
            if (node == -1) continue;
            std::size_t at = Hash(mesh_.points[node]) & (table_.size() - 1);
            while (table_[at] != -1) at = (at + 1) & (table_.size() - 1);
            table_[at] = node;
        }
    }

    const Mesh& mesh_;
    std::vector<std::int32_t> table_;
    std::size_t used_ = 0;
};

using PointIndexSet = PointMerger<PIN>;
using PointIndexHash = PointMerger<SPIN>;

}  // namespace KM
