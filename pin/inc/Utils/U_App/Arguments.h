#pragma once

#include <string>
#include <vector>

#include "KmApi.h"

namespace KM::Application {

/// The command line of the process; element 0 is the program. Empty until a tool hands it over.
KM_API std::vector<std::string>& Arguments();

/// Index in the arguments of the last configuration file that was read, 0 if there was none. The settings count their
/// references to arguments ("%1") from here.
KM_API int RedirectionShifting();
KM_API void RedirectionShifting(int index);

}  // namespace KM::Application
