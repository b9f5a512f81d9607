#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// What is known of a refinement before it begins.
struct RefinementSize {
    double leastTriangles;  ///< it adds that many or more, often some times as many; not finite if beyond all numbers
    double halvings;        ///< of the longest edge
};

/// @param longEdges  what the first round splits: edges on loops whose nodes exist; the ends of the edges have finite coordinates
RefinementSize SizeOfRefinement(const PIN& mesh, const std::vector<int>& longEdges, double maxLength);

}  // namespace KM
