#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Mesh/Core/Pin.h"
#include "OutputFile.h"
#include "Verb.h"

/// How a verb writes what it makes of parts.
namespace KM::Tool {

/// The option "out" of verbs that make one file of each input: the file, or a folder that is there.
Option OutputPath();

/// The option "text" of verbs that write STL files.
Option AsText();

/// The names of what is made of each input, one a file: `out` itself, or in that folder the name of the input, with
/// `ending` in place of its own one if that is not empty.
/// @throws Failure  when several inputs are to go into a file, or two of them into the same one
std::vector<std::string> TargetsOf(const std::vector<std::string>& files, const std::string& out,
                                   const std::string& ending = "");

/// The beginning of the names of all files that are made of an input.
std::string StemOf(const std::string& folder, const std::string& file);

/// The mesh as an STL file, finished and not yet in its place. Reports progress and can be stopped.
/// @param factor  that its points are multiplied with
/// @throws Failure
std::unique_ptr<StlOutput> WrittenPart(const std::string& name, const PIN& mesh, double factor, bool isText);

}  // namespace KM::Tool
