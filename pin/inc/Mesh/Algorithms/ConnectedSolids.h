#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// Appends to `solids` one list of edges for each set of triangles that are connected through twins, in the order of
/// their lowest edges. A node in common does not connect.
///
/// The lists are in the order of a walk with a stack, three edges a triangle; a triangle that the walk reaches on several
/// ways is listed each time, so a list says how large a solid is only roughly. At most three times all.
///
/// Made for compact meshes of triangles. Dead records are passed over, and links that lead nowhere connect nothing. Linear
/// time.
KM_API void CollectSolids(const PIN& mesh, std::vector<std::vector<int>>& solids);

}  // namespace KM
