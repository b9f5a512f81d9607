#pragma once

#include <cmath>

namespace KM::Caching {

// Numbers come from configurations, and from a file that anybody may have damaged. Both tests refuse a NaN: it would
// make every comparison of the cleaner false.

/// A size or a fraction. An infinite one is sound: it stands for no limit.
inline bool IsSoundAmount(double value) { return value >= 0.0; }

/// A moment or a span. What lies beyond 1e19 stands for "automatic" or "none", and is no time.
inline bool IsSoundTime(double value) { return std::fabs(value) <= 1e19; }

}  // namespace KM::Caching
