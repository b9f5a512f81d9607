#pragma once

#include <cmath>

namespace KM::Caching {

// Numbers come from configurations, and from a file that anybody may have damaged. All tests refuse a NaN: it would
// make every comparison of the cleaner false.

/// A size or a fraction. An infinite one is sound: it stands for no limit.
inline bool IsSoundAmount(double value) { return value >= 0.0; }

/// A span in seconds. What lies above 1e19 is one without end; what is not above -1e19 stands for "none", and is no span.
inline bool IsSoundSpan(double value) { return value > -1e19; }

/// A moment. One without end would be in the future for ever: nobody would clean the folder again.
inline bool IsSoundMoment(double value) { return std::fabs(value) <= 1e19; }

}  // namespace KM::Caching
