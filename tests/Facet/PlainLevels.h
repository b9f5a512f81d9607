#pragma once

#include <cstdint>
#include <vector>

#include "Facet/LevelsOfDetail.h"
#include "Support/Meshes.h"

// The level builder in its plainest form: lists of the standard library, one step after the other, nothing remembered
// and nothing fast. It shares no code with the library but the strip builder, and tells what the stream must be bit by
// bit. It trusts its input, and a tolerance above some 1e8 keeps it busy for ever.

namespace KM::Test {

PIN PlainFacetMesh(const IndexedFacets& facets);

std::vector<KsLod> PlainDecimatedLods(PIN& mesh, const std::vector<double>& tolerances);

std::vector<std::int32_t> PlainStream(const std::vector<KsLod>& lods);

}  // namespace KM::Test
