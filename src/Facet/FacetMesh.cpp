#include "Facet/FacetMesh.h"

#include <cstdint>

#include "Mesh/Core/Construction.h"
#include "Mesh/Core/EdgesMap.h"

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
    // The map pairs edges that run in opposite directions only, so no pair needs to be cut apart afterwards.
    EdgesMap map(eventCount);
    for (int i = 0; i < facetCount; ++i) {
        const std::int32_t* node = facets[i].node;
        AddTriangle(mesh, node[0], node[1], node[2], map, false);
    }
    return mesh;
}

}  // namespace KM
