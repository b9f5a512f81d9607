#pragma once

#include <cstdint>

namespace KM::Platform {

/// What the system tells of its memory, in bytes.
struct Memory {
    int loadPercent = 0;
    std::uint64_t totalPhysical = 0;
    std::uint64_t availablePhysical = 0;
    std::uint64_t totalPageFile = 0;  ///< physical memory and swap space together
    std::uint64_t availablePageFile = 0;
    std::uint64_t totalVirtual = 0;  ///< address space of the process
    std::uint64_t availableVirtual = 0;
};

/// Zeros where the system does not tell.
Memory MemoryNow();

}  // namespace KM::Platform
