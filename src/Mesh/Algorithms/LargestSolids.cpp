#include "Mesh/Algorithms/LargestSolids.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "Mesh/Algorithms/ConnectedSolids.h"
#include "Mesh/Core/Compaction.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

using Solids = std::vector<std::vector<int>>;

constexpr int Automatic = -1;

/// The indices of the solids, the smallest first, and of equal ones the first.
std::vector<std::size_t> BySize(const Solids& solids) {
    std::vector<std::pair<std::size_t, std::size_t>> sizes;
    sizes.reserve(solids.size());
    for (std::size_t i = 0; i < solids.size(); ++i) sizes.emplace_back(solids[i].size(), i);
    std::sort(sizes.begin(), sizes.end());
    std::vector<std::size_t> order;
    order.reserve(sizes.size());
    for (const auto& [size, solid] : sizes) order.push_back(solid);
    return order;
}

void Announce(std::size_t erased, std::size_t kept) {
    Verbose::WriteMessage_1(Verbose::EMessageType::Info, "Keep will erase: " + std::to_string(erased) +
                                                             " and will keep: " + std::to_string(kept) + " solids;");
}

/// How many of the smallest are to go.
std::size_t CountOfSmall(const Solids& solids, const std::vector<std::size_t>& order, std::size_t edgeCount) {
    const auto isSmall = [&](std::size_t solid) { return solids[solid].size() < edgeCount / 20; };
    return static_cast<std::size_t>(std::partition_point(order.begin(), order.end(), isSmall) - order.begin());
}

}  // namespace

void Keep(PIN& mesh, int count, TPinManipulationVisitor<TPoint<double>>& visitor) {
    Solids solids;
    CollectSolids(mesh, solids);
    const std::vector<std::size_t> order = BySize(solids);

    // The message can throw, and so comes before the first change.
    std::size_t erased = 0;
    if (count == Automatic) {
        erased = CountOfSmall(solids, order, mesh.edges.size());
        // Of the first solid to go the rank is told, whatever stays: who reads the log knows the numbers as they are.
        if (erased > 0) Announce(solids.size() - 1, 1);
    } else {
        const std::size_t kept = std::min<std::size_t>(static_cast<unsigned>(count), solids.size());
        erased = solids.size() - kept;
        Announce(erased, kept);
    }

    for (std::size_t rank = 0; rank < erased; ++rank)
        for (const int e : solids[order[rank]]) mesh.edges[e] = Edge();
    Compact(mesh, visitor);
}

}  // namespace KM
