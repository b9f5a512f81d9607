#pragma once

#include <string>

#include "Verb.h"

namespace KM::Tool {

/// What `kmmesh --help` prints.
std::string HelpOfTool();

/// What `kmmesh VERB --help` prints.
std::string HelpOf(const Verb& verb);

}  // namespace KM::Tool
