#include "Facet/StripLoops.h"

#include "Mesh/Core/SafeLinks.h"

namespace KM {

std::optional<SlotTriangles> SlotTriangles::Of(const std::vector<Edge>& edges) {
    const int count = static_cast<int>(edges.size());
    if (count % 3 != 0) return std::nullopt;
    SlotTriangles triangles;
    triangles.links_.resize(edges.size());
    triangles.states_.resize(edges.size() / 3);
    for (int e = 0; e < count; e += 3) {
        const Edge* slots = &edges[e];
        const bool isDead = IsMarkedDead(slots[0]) && IsMarkedDead(slots[1]) && IsMarkedDead(slots[2]);
        if (!isDead && (slots[0].NE != e + 1 || slots[1].NE != e + 2 || slots[2].NE != e)) return std::nullopt;
        triangles.states_[Triangle(e)] = isDead ? State::Dead : State::Free;
        for (int k = 0; k < 3; ++k) {
            const bool hasTwin = slots[k].TE >= 0 && slots[k].TE < count;
            triangles.links_[e + k] = {hasTwin ? slots[k].TE : -1, slots[k].P0};
        }
    }
    return triangles;
}

AnyLoops::AnyLoops(const std::vector<Edge>& edges)
    : edges_(edges.data()), previous_(PreviousOnLoops(edges)), taken_(edges.size(), 0) {}

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
