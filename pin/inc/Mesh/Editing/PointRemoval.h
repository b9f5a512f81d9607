#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Removes every face at a node and leaves a hole. The neighbours' edges become orphans, the records of the faces stay as
/// dead ones, except at the end, and `p2e` is empty until `Compact` rebuilds it. The point stays, too. A node that does
/// not exist is refused without effect.
///
/// @param scanAll  true looks through all edges and finds each fan of the node, in linear time. False follows one fan from
///                 `p2e[node]`, forward only: of a fan at the boundary, faces on the far side of the start stay. With
///                 an empty `p2e`, as a removal leaves it, false does nothing.
KM_API void RemovePoint(PIN& mesh, int node, bool scanAll);

/// Kills the records of the loop of `e`, makes orphans of their twins and empties `p2e`: what it says is not to be trusted
/// any more. An edge that is dead or out of range is refused without effect.
KM_API void DeleteLoop(PIN& mesh, int e);

}  // namespace KM
