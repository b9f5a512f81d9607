#pragma once

#include <string>
#include <vector>

#include "Pages.h"

/// What the completions of all shells have in common.
namespace KM::Tool {

std::string Joined(const std::vector<std::string>& words, const char* between);

std::vector<std::string> VerbNames(const Verbs& verbs);

/// The values of an option that can be told, with blanks between them: the usual ones of its kind, or a handful of numbers.
std::string ValuesOf(const Option& option);

}  // namespace KM::Tool
