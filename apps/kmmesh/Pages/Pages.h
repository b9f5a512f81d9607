#pragma once

#include <string>
#include <vector>

#include "Verb.h"

/// What a package shows of the tool outside of it, made of the same declarations as its help: `kmmesh_pages` writes these
/// texts while the tool is built.
namespace KM::Tool {

using Verbs = std::vector<const Verb*>;

/// The manual page, for section 1.
std::string ManPage(const Verbs& verbs);

/// What completes words behind `kmmesh` on a command line: verbs, options, values and files.
std::string BashCompletion(const Verbs& verbs);
std::string FishCompletion(const Verbs& verbs);
std::string ZshCompletion(const Verbs& verbs);

}  // namespace KM::Tool
