#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Turns an edge and its twin to the other diagonal of the two triangles at it: `e` then runs from the twin's third node
/// to its own third node. No record is added or moved; `p2e` of the four nodes names edges that start there. A second
/// swap of `e` brings back the same triangles with `e` running the other way.
///
/// Does nothing for an orphan, for an edge that is dead or out of range, and where the two sides are not two different
/// triangles. No geometric test is made: a swap can fold the surface, or double an edge that exists. Constant time.
KM_API void SwapEdge(PIN& mesh, int e);

}  // namespace KM
