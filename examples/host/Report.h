#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Levels.h"

/// Prints what was read, and a row for each level.
void PrintTable(const std::string& file, const Part& part, const std::vector<Level>& levels);

/// Writes each level that is not repeated as a binary STL file into the folder, which is made if need be.
///
/// @return the files, in the order of the levels
/// @throws std::runtime_error with one line when a file cannot be written
std::vector<std::filesystem::path> WriteLevels(const std::filesystem::path& folder, const Part& part,
                                               const std::vector<Level>& levels);
