#include "Support/Floors.h"

#include <algorithm>
#include <bit>

namespace KM::Bench {
namespace {

std::size_t HashOfBits(const TPoint<double>& p) {
    std::uint64_t h = std::bit_cast<std::uint64_t>(p.X) * 0x9E3779B97F4A7C15ull;
    h = (h ^ (h >> 32) ^ std::bit_cast<std::uint64_t>(p.Y)) * 0xC2B2AE3D27D4EB4Full;
    h = (h ^ (h >> 32) ^ std::bit_cast<std::uint64_t>(p.Z)) * 0x165667B19E3779F9ull;
    return static_cast<std::size_t>(h ^ (h >> 32));
}

std::size_t EndOf(std::size_t halfEdge) { return halfEdge % 3 == 2 ? halfEdge - 2 : halfEdge + 1; }

}  // namespace

MergedPoints FloorMerge(const std::vector<TPoint<double>>& soup) {
    MergedPoints merged;
    merged.nodes.resize(soup.size());
    // A closed surface has six corners a node.
    merged.points.reserve(soup.size() / 6 + 3);
    std::vector<std::int32_t> table(std::bit_ceil(soup.size() / 3 + 3), -1);
    const std::size_t mask = table.size() - 1;
    for (std::size_t i = 0; i < soup.size(); ++i) {
        std::size_t at = HashOfBits(soup[i]) & mask;
        while (table[at] != -1 && !(merged.points[table[at]] == soup[i])) at = (at + 1) & mask;
        if (table[at] == -1) {
            table[at] = static_cast<std::int32_t>(merged.points.size());
            merged.points.push_back(soup[i]);
        }
        merged.nodes[i] = table[at];
    }
    return merged;
}

std::vector<std::int32_t> FloorTwins(const std::vector<std::int32_t>& triples, std::size_t nodeCount) {
    const auto lower = [&](std::size_t h) { return std::min(triples[h], triples[EndOf(h)]); };
    std::vector<std::int32_t> bucketEnd(nodeCount + 1, 0);
    for (std::size_t h = 0; h < triples.size(); ++h) ++bucketEnd[lower(h)];
    for (std::size_t n = 1; n < nodeCount; ++n) bucketEnd[n] += bucketEnd[n - 1];
    std::vector<std::int32_t> halfEdges(triples.size());
    for (std::size_t h = triples.size(); h-- > 0;) halfEdges[--bucketEnd[lower(h)]] = static_cast<std::int32_t>(h);
    bucketEnd[nodeCount] = static_cast<std::int32_t>(triples.size());

    std::vector<std::int32_t> twins(triples.size(), -1);
    for (std::size_t n = 0; n < nodeCount; ++n)
        for (std::int32_t i = bucketEnd[n]; i < bucketEnd[n + 1]; ++i) {
            const std::int32_t h = halfEdges[i];
            if (twins[h] != -1) continue;
            for (std::int32_t j = i + 1; j < bucketEnd[n + 1]; ++j) {
                const std::int32_t t = halfEdges[j];
                if (twins[t] != -1 || triples[t] != triples[EndOf(h)] || triples[EndOf(t)] != triples[h]) continue;
                twins[h] = t;
                twins[t] = h;
                break;
            }
        }
    return twins;
}

}  // namespace KM::Bench
