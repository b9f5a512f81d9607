#pragma once

#include <string>

#include "KmApi.h"

namespace KM::Debug {

/// The folder for debug output, ending in a back-slash. The first call takes it from the setting "Debug.Path"; while
/// that is empty or still the registered default, it lies below the user's cache folder.
KM_API const std::string& Path();

/// Sets the folder, and makes it.
KM_API void Path(const std::string& path);

}  // namespace KM::Debug
