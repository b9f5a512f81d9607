#pragma once

#include "KmApi.h"

namespace KM {

/// True for a factor that limits the memory: 0.1 to 0.9.
KM_API bool IsMemoryLimit(double factor);

/// Throws `XRestartMe` if `percent` of the memory is more than `factor` of it.
KM_API void JudgeMemoryLoad(double factor, double percent);

}  // namespace KM
