#pragma once

#include <string>
#include <utility>
#include <vector>

#include "MeshReport.h"

namespace KM::Tool {

/// A table of the measures that work on a part can change: a column each, under its name, as "before" and "after". The
/// lines begin with the names of the measures, and end with a line feed.
std::string Comparison(const std::vector<std::pair<std::string, MeshReport>>& columns);

}  // namespace KM::Tool
