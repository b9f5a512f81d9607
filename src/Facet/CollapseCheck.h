#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// True if collapsing the edge neither turns a triangle over, nor takes more than half of a triangle's height, nor
/// pulls a boundary node inward. An edge of no length can always go, unless it would pull a boundary node inward.
///
/// @param mesh        triangles, in which `TE` of an edge's twin is the edge itself
/// @param keepsStart  the end node goes; only a boundary edge can ask for this
bool MayCollapse(const PIN& mesh, int edge, bool keepsStart);

}  // namespace KM
