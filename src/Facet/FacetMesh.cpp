#include "Facet/FacetMesh.h"

#include <cstdint>

#include "Mesh/Core/TwinPairing.h"

namespace KM {

bool AreFacetRecordsValid(int eventCount, const KsEvent* events, int facetCount, const KsShadingfacet* facets) {
    if (eventCount < 0 || facetCount < 0) return false;
    if ((events == nullptr && eventCount > 0) || (facets == nullptr && facetCount > 0)) return false;
    for (int i = 0; i < facetCount; ++i)
        for (const std::int32_t node : facets[i].node)
            if (node < 0 || node >= eventCount) return false;
    return true;
}

PIN FacetMesh(int eventCount, const KsEvent* events, int facetCount, const KsShadingfacet* facets) {
    PIN mesh;
    mesh.points.reserve(eventCount);
    mesh.edges.reserve(3 * static_cast<std::size_t>(facetCount));
    mesh.p2e.assign(eventCount, -1);
    for (int i = 0; i < eventCount; ++i) mesh.points.emplace_back(events[i].x, events[i].y, events[i].z);
    for (int i = 0; i < facetCount; ++i) {
        const auto& [a, b, c] = facets[i].node;
        if (a == b || b == c || c == a) continue;
        const int e = static_cast<int>(mesh.edges.size());
        mesh.edges.insert(mesh.edges.end(), {{e + 1, -1, a}, {e + 2, -1, b}, {e, -1, c}});
    }
    // Only edges that run in opposite directions become twins, so no pair needs to be cut apart afterwards.
    PairTwins(mesh.edges, 0, mesh.points.size());
    return mesh;
}

}  // namespace KM
