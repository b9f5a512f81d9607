#pragma once

#include <cstdint>
#include <limits>

#include "KmTools.h"

namespace KM {

/// Room for `count` floats, not initialised, from `KmMemAlloc`. Returns its code, or 1 without asking it when an `int`,
/// in which hosts count floats, cannot hold the number. On failure `*block` is null.
inline int AllocateFloats(std::uint64_t count, float** block) {
    *block = nullptr;
    if (count > static_cast<std::uint64_t>(std::numeric_limits<int>::max())) return 1;
    return Host::Allocate(static_cast<std::size_t>(count), block);
}

}  // namespace KM
