#pragma once

#include <cstdint>
#include <deque>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// A strip of triangles: any three consecutive nodes are one, with the winding alternating.
struct StripFan {
    std::deque<int> nodes;
    std::int32_t kind = 1;  ///< 1: read front to back; 2: read back to front, to keep the winding
};

/// Cuts the mesh into strips and appends them to `strips`. Every alive triangle lands in exactly one strip, long strips
/// first. Dead records, and edges from which `NE` leads round no loop, are skipped; the mesh is not changed.
///
/// @return the sum of n + 1 over the new strips of n nodes
KM_API int BuildStrips(PIN& mesh, std::vector<StripFan>& strips);

}  // namespace KM

using KM::StripFan;
