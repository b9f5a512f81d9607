#pragma once

#include <array>
#include <span>
#include <vector>

#include "Facet/Strips.h"

namespace KM::Test {

/// The nodes of a strip in the order in which they are to be read.
std::vector<int> NodesInReadingOrder(const StripFan& strip);

/// The triangles of a strip as node triples, with their winding, each begun at its lowest node, in the order of the
/// strip.
std::vector<std::array<int, 3>> TrianglesOfStrip(std::span<const int> nodes);

}  // namespace KM::Test
