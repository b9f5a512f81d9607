#pragma once

#include <string>

#include "KmApi.h"

namespace KM::Time {

/// Seconds since the epoch, in steps of a millisecond.
KM_API double Get();

/// Suspends the calling thread.
KM_API void Sleep(unsigned milliseconds);

/// The local date and time as text, between `prefix` and `postfix`.
///
/// @param tagged            true: "Y2020M03D07H09M05S09", fit for a file name; false: "2020/03/0709:05:09"
/// @param withMilliseconds  adds "MS" and three digits to the tagged form; the other form never has them
KM_API std::string ToString(bool tagged, bool withMilliseconds, const std::string& prefix, const std::string& postfix);

}  // namespace KM::Time
