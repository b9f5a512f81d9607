#include "Facet/Strips.h"

#include <algorithm>

#include "Facet/StripCutter.h"

namespace KM {
namespace {

struct CutStrip {
    std::size_t end;  ///< behind its last node, in the nodes of all strips
    std::int32_t kind;
};

/// A vector that runs full copies its strips, because moving a queue can throw; so it gets its room beforehand. The
/// doubling is for callers that append mesh after mesh.
void MakeRoomFor(std::size_t more, std::vector<StripFan>& strips) {
    const std::size_t needed = strips.size() + more;
    if (needed > strips.capacity()) strips.reserve(std::max(needed, 2 * strips.capacity()));
}

}  // namespace

int BuildStrips(PIN& mesh, std::vector<StripFan>& strips) {
    std::vector<int> nodes;
    std::vector<CutStrip> cuts;
    CutStrips(mesh.edges, [&](std::span<const int> strip, std::int32_t kind) {
        nodes.insert(nodes.end(), strip.begin(), strip.end());
        cuts.push_back({nodes.size(), kind});
    });
    MakeRoomFor(cuts.size(), strips);
    const int* first = nodes.data();
    for (const CutStrip& cut : cuts) {
        const int* end = nodes.data() + cut.end;
        StripFan& strip = strips.emplace_back();
        strip.nodes.assign(first, end);
        strip.kind = cut.kind;
        first = end;
    }
    return static_cast<int>(nodes.size() + cuts.size());
}

}  // namespace KM
