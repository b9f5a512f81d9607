#pragma once

#include <cstdio>
#include <string>

namespace KM::Platform {

// A file is written under another name beside its target, and takes the place of the target when it is complete.
// Whoever writes it holds a lock on it, which goes with the process, so that what a killed process left behind is free
// again, and two who replace the same target at once never write into the same file.

/// Opens `name`, empty, for one writer; nothing if no file can be called `target`. It can be read by those who can read
/// the target.
/// @param mode     as for `fopen`; begins with "w"
/// @param isTaken  true if it could not be opened because somebody else is writing it
std::FILE* OpenReplacement(const std::string& name, const std::string& target, const char* mode, bool& isTaken);

/// Closes what `OpenReplacement` has opened, and lets it replace the target, whose attributes it takes over. False if
/// it could not be written to its end, or cannot replace the target: then it is deleted, and the target stays as it
/// was.
bool CloseReplacement(std::FILE* file, const std::string& name, const std::string& target);

}  // namespace KM::Platform
