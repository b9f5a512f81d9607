#pragma once

#include <cstdint>
#include <vector>

#include "Mesh/Core/Pin.h"

// Floors: the obvious hand-written loop for a bare job, without any of the care that a library owes to its input. They
// tell how far a time is from what this machine can do.

namespace KM::Bench {

struct MergedPoints {
    std::vector<TPoint<double>> points;
    std::vector<std::int32_t> nodes;  ///< one per point of the soup
};

/// Merges points of the same bits: one table with open addressing.
MergedPoints FloorMerge(const std::vector<TPoint<double>>& soup);

/// Twins of the half-edges `3 t + k` of `triples`: half-edges in buckets by lower node, searched one by one.
std::vector<std::int32_t> FloorTwins(const std::vector<std::int32_t>& triples, std::size_t nodeCount);

}  // namespace KM::Bench
