#pragma once

#include <string>
#include <vector>

#include "Facet/HostRecords.h"
#include "Support/Meshes.h"

// Input for the level builder that goes through all its odd corners.

namespace KM::Test {

/// One of many kinds of trouble, chosen by the seed: several sheets on one edge, duplicate and reversed facets,
/// degenerate triangles, nodes at one place, ties, flat closed solids, needles, holes, coordinates that are no numbers.
IndexedFacets HostileFacets(unsigned seed);

/// Ascending, equal, unsorted, zero, negative or large, as the seed says; one to five of them, around `size`.
std::vector<double> HostileTolerances(unsigned seed, double size);

std::vector<KsEvent> EventsOf(const IndexedFacets& facets);
std::vector<KsShadingfacet> RecordsOf(const IndexedFacets& facets);

}  // namespace KM::Test
