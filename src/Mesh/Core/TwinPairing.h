#pragma once

#include <cstddef>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// Makes twins among the edges from `first` on, each three consecutive ones of which are a triangle without twins, as
/// if they had come one by one through an `EdgesMap`: on each segment the first edge that runs one way pairs with the
/// first that runs the other way, the second with the second, and what is left over stays orphan.
///
/// Edges at nodes beyond `nodeCount` stay orphans. Linear time, but for nodes of high valence, whose edges are sorted.
void PairTwins(std::vector<Edge>& edges, std::size_t first, std::size_t nodeCount);

}  // namespace KM
