#pragma once

#include <cstddef>

// A benchmark program that links this file has all of its `operator new` counted, the library's as well. What is taken
// from the system in another way (the memory that goes to a host) is not.

namespace KM::Bench {

/// Bytes that are allocated now.
std::size_t LiveBytes();

/// The most that has been allocated at one time since the last `ForgetPeak`.
std::size_t PeakBytes();
void ForgetPeak();

}  // namespace KM::Bench
