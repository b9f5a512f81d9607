#pragma once

#include <string>

#include "KmApi.h"

namespace KM::Time {

/// The text of `ToString` for a given moment, in milliseconds since the epoch.
KM_API std::string TextOf(long long epochMilliseconds, bool tagged, bool withMilliseconds, const std::string& prefix,
                          const std::string& postfix);

}  // namespace KM::Time
