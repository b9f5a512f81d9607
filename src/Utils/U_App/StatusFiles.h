#pragma once

#include <string>

namespace KM {

// The files in the cache folder whose names are the message; see CheckAbort.h.

/// "!Break(ID=12)" in its folder.
std::string AbortFileName();
/// "!Finished(ID=12)", without folder.
std::string FinishedMessage();
/// "!Finished(ID=12)" in its folder.
std::string FinishedFileName();
/// The name is one that every file system can hold, whatever the message says.
std::string MessageFileName(double global, double local, const std::string& message);
/// Deletes the message files of this tool, but of no other one.
void DeleteMessageFiles();

}  // namespace KM
