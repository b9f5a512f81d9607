#include "Platform/Memory.h"

#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>

namespace KM::Platform {
namespace {

constexpr std::uint64_t AddressSpace = std::uint64_t{1} << 47;  // of a process in 64 bits

std::uint64_t MemoryInUseByProcess() {
    std::ifstream file("/proc/self/statm");
    std::uint64_t pages = 0;
    file >> pages;
    return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace

Memory MemoryNow() {
    std::uint64_t swapTotal = 0;
    std::uint64_t swapFree = 0;
    Memory memory;
    std::ifstream file("/proc/meminfo");
    std::string label;
    std::string unit;
    std::uint64_t kilobytes = 0;
    while (file >> label >> kilobytes) {
        std::getline(file, unit);
        const std::uint64_t bytes = kilobytes * 1024;
        if (label == "MemTotal:")
            memory.totalPhysical = bytes;
        else if (label == "MemAvailable:")
            memory.availablePhysical = bytes;
        else if (label == "SwapTotal:")
            swapTotal = bytes;
        else if (label == "SwapFree:")
            swapFree = bytes;
    }
    memory.totalPageFile = memory.totalPhysical + swapTotal;
    memory.availablePageFile = memory.availablePhysical + swapFree;
    memory.totalVirtual = AddressSpace;
    memory.availableVirtual = AddressSpace - std::min(AddressSpace, MemoryInUseByProcess());
    if (memory.totalPhysical != 0)
        memory.loadPercent =
            static_cast<int>((memory.totalPhysical - memory.availablePhysical) * 100 / memory.totalPhysical);
    return memory;
}

}  // namespace KM::Platform
