#pragma once

#include "KmApi.h"

namespace KM::Progress {

/// Gives whole seconds.
using SecondsClock = long long (*)();

/// Replaces the clock by which reports are held back, so that tests need not wait. Null puts the wall clock back.
KM_API void SetSecondsClock(SecondsClock clock);

}  // namespace KM::Progress
