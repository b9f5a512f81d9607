#pragma once

#include <cstdint>
#include <functional>

#include "Mesh/Core/Pin.h"

namespace KM {

/// `WatchedRefine` with another limit.
///
/// @param watch  may be empty
void RefineWithin(PIN& mesh, double maxLength, std::int64_t mostTriangles, const std::function<void(double)>& watch);

}  // namespace KM
