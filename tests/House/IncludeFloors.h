#pragma once

#include <string>
#include <vector>

// The floors of the tree, and the rules for an include: it may point to its own floor or down, never up.

namespace KM::Test {

/// The floor of a file, from its path below the root of the tree ("src/Mesh/Core/Fans.cpp") or from the text of an include
/// ("Mesh/Core/Fans.h"); -1 for a path that lies on no floor.
int FloorOf(const std::string& path);

/// What is wrong with an include directive of the file `path`, or an empty text. `line` is one line of the source; a line
/// that includes nothing is never wrong. Includes without folder are those of the file's own folder.
std::string IncludeFault(const std::string& path, const std::string& line);

/// All faults of the sources and headers below `root`, each with file and line.
std::vector<std::string> IncludeFaultsOfTree(const std::string& root);

}  // namespace KM::Test
