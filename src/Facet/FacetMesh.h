#pragma once

#include "Facet/HostRecords.h"
#include "Mesh/Core/Pin.h"

namespace KM {

/// True if there is a mesh to be made of the records: no negative count, no null where records are announced, and no
/// facet that names an event that does not exist.
bool AreFacetRecordsValid(int eventCount, const KsEvent* events, int facetCount, const KsShadingfacet* facets);

/// A mesh of valid records. Each event is a node, also if nothing uses it; no points are merged, and the winding of the
/// facets stays. Facets that run a segment in opposite directions become neighbours, in the order of input; a facet
/// with two equal nodes is dropped. `p2e` is all -1.
PIN FacetMesh(int eventCount, const KsEvent* events, int facetCount, const KsShadingfacet* facets);

}  // namespace KM
