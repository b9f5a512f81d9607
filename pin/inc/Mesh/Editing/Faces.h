#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// Replaces `faces` by the triangles of the mesh as coordinates, *once for each edge*: three times each triangle, with
/// the corners rotated so that the edge comes first, in the order of the edges. An edge of a longer loop gives the
/// triangle of its own ends and the node before it. Dead records are left out, and so are edges on no loop, and next to
/// a node that does not exist. Linear time.
KM_API void PinToFaces(const PIN& mesh, std::vector<std::vector<TPoint<double>>>& faces);

}  // namespace KM
