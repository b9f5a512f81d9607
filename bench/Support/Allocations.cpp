#include "Support/Allocations.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace KM::Bench {
namespace {

// Plain loads and stores of an atomic: benchmarks run on one thread, and a locked addition would cost more than the
// allocation that it counts.
std::atomic<std::size_t> liveBytes = 0;
std::atomic<std::size_t> peakBytes = 0;

std::size_t Get(const std::atomic<std::size_t>& a) { return a.load(std::memory_order_relaxed); }
void Set(std::atomic<std::size_t>& a, std::size_t value) { a.store(value, std::memory_order_relaxed); }

void* Counted(void* memory) {
    if (memory == nullptr) throw std::bad_alloc();
    Set(liveBytes, Get(liveBytes) + malloc_usable_size(memory));
    Set(peakBytes, std::max(Get(peakBytes), Get(liveBytes)));
    return memory;
}

void Release(void* memory) noexcept {
    Set(liveBytes, Get(liveBytes) - (memory != nullptr ? malloc_usable_size(memory) : 0));
    std::free(memory);
}

}  // namespace

std::size_t LiveBytes() { return Get(liveBytes); }
std::size_t PeakBytes() { return Get(peakBytes); }
void ForgetPeak() { Set(peakBytes, LiveBytes()); }

}  // namespace KM::Bench

// The array forms and the forms that do not throw end in these by themselves.
void* operator new(std::size_t size) { return KM::Bench::Counted(std::malloc(size != 0 ? size : 1)); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    const std::size_t step = static_cast<std::size_t>(alignment);
    return KM::Bench::Counted(std::aligned_alloc(step, (std::max<std::size_t>(size, 1) + step - 1) / step * step));
}
void operator delete(void* memory) noexcept { KM::Bench::Release(memory); }
void operator delete(void* memory, std::size_t) noexcept { KM::Bench::Release(memory); }
void operator delete(void* memory, std::align_val_t) noexcept { KM::Bench::Release(memory); }
void operator delete(void* memory, std::size_t, std::align_val_t) noexcept { KM::Bench::Release(memory); }
