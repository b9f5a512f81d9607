#pragma once

#include "Mesh/Core/Pin.h"
#include "Mesh/Core/PinVisitor.h"

namespace KM {

/// Makes all triangles of each connected piece run the way of its first one, cuts the surface (both edges become
/// orphans) where that cannot be done, and rebuilds `p2e`, the highest-numbered edge at a node winning. Only repairs
/// across twins that exist; a loop that is no triangle is never turned, only cut. Each change is reported before it is
/// made. Linear time.
template <class Mesh>
KM_API void FixOrientation(Mesh& mesh, VisitorOf<Mesh>& visitor);

}  // namespace KM
