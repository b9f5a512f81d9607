#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

// Scalar fields with respect to a direction, which need not have unit length; one too short to be a direction counts as
// (0, 0, 1). Linear time.

/// Replaces `values` by the dot product of each normal with the unit direction. For unit normals that is the cosine of
/// the angle; it is not clamped, and rounding can bring it beyond 1.
KM_API void DirToAnalysis(const std::vector<TPoint<double>>& normals, std::vector<double>& values,
                          const TPoint<double>& dir);

/// Replaces `angles` by one angle a node, in degrees, between `dir` and the surface's normal there, irrespective of sense:
/// 0 to 90, where areas near 90 have no draft. Normals are those of `Normals`, weighted.
///
/// The cosine is held off 1, so the least angle at a node with a normal is about 0.0081. A node without a normal, as on an
/// upright wall, gets 0.
KM_API void CriticalAreas(const PIN& mesh, std::vector<double>& angles, const TPoint<double>& dir);

}  // namespace KM
