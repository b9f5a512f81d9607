#pragma once

#include <cstdint>

#include "KmApi.h"

namespace KM::Time {

/// A number of calls, scaled for reading.
struct ReadableCount {
    long long count;  ///< truncated
    char unit;        ///< a blank, or K, M or B for thousands, millions and billions
};
KM_API ReadableCount Scaled(std::int64_t calls);

}  // namespace KM::Time
