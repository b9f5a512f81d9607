#include "Facet/StripCutter.h"

namespace KM {

std::vector<int> PreviousOnLoops(const std::vector<Edge>& edges) {
    const int count = static_cast<int>(edges.size());
    const auto exists = [&](int edge) { return edge >= 0 && edge < count; };
    std::vector<int> previous(edges.size(), -1);
    std::vector<int> metFrom(edges.size(), -1);
    for (int start = 0; start < count; ++start) {
        int e = start;
        for (; exists(e) && metFrom[e] == -1; e = edges[e].NE) metFrom[e] = start;
        // Meeting an edge of the same walk again closes a loop; one of an earlier walk leads to what is known already.
        if (!exists(e) || metFrom[e] != start) continue;
        for (int x = e; previous[edges[x].NE] == -1; x = edges[x].NE) previous[edges[x].NE] = x;
    }
    return previous;
}

}  // namespace KM
