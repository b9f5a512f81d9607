#pragma once

#include <functional>
#include <string>

#include "CachedResults.h"
#include "Mesh/Core/Pin.h"
#include "MeshReport.h"
#include "Verb.h"

namespace KM::Tool {

/// What a verb makes of a part: changes the mesh, whose links are sound and whose points are in the units of the file, and
/// returns the lines that the report shows between its heading and its comparison. Takes the name of the file for what it
/// has to complain of, and the measures of the mesh as it is.
using PartChange = std::function<std::string(const std::string& file, PIN& mesh, const MeshReport& before)>;

/// What all verbs do that make one part of each input: reads the files of the option "files" one after the other, changes
/// them, writes them to where the options "out" and "text" say, and prints a report with the measures before and after.
///
/// Nothing is written of a part that failed; parts that came before it stand.
/// @throws Failure      for what cannot be read or written, and for a change that leaves no triangle
/// @throws XUserAbort   if the user wants to stop
void ChangeParts(const Values& values, const PartChange& change);

/// The same for a change that is kept for later runs: takes the part in place of its mesh.
using KeptPartChange = std::function<std::string(const std::string& file, CachedPart& part, const MeshReport& before)>;

/// The same for verbs that have the option `NoCache`.
void ChangeKeptParts(const Values& values, const KeptPartChange& change);

}  // namespace KM::Tool
