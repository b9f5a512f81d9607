#pragma once

#include <string>
#include <vector>

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

// Writes points to files, for a developer at a debugger: as plain lists of coordinates, or as macros that draw them as
// polylines in the host application.
//
// Numbers have six decimals and a point, whatever the locale. Nothing tells of a failure: a file that cannot be opened
// stays unwritten. An empty list, and a null path or mode, write nothing and make no file; lists that are empty further
// inside do not count as such.

/// The folder that dumps are meant for, with a slash at its end.
KM_API const std::string PartsPath();

// Lists: a line "x, y, z" for each point. `mode` is that of `fopen`, so "a" appends.

KM_API void Pts2File(const char* path, const std::vector<TPoint<double>>& points, const char* mode);

/// Each loop below a line "Loop #1" (2, 3, ...), with an empty line behind it.
KM_API void Ptss2File(const char* path, const std::vector<std::vector<TPoint<double>>>& loops, const char* mode);

/// Each group below a line "Loops #1" (2, 3, ...), with one more empty line behind it. Its loops count from 1 again.
KM_API void Ptsss2File(const char* path, const std::vector<std::vector<std::vector<TPoint<double>>>>& groups,
                       const char* mode);

// Macros: each polyline is one command, with a press and a release at each point. Polylines without points are left out.
// An existing file is replaced.
//
// @param newFile  the macro begins with a new drawing
// @param config   the macro puts the settings of the host aside while it runs; else it hides its windows

KM_API void Pts2Macro(const char* path, const std::vector<TPoint<double>>& points, bool newFile, bool config);

/// Draws `loops[index]`; an index that is out of range writes nothing.
KM_API void Pts2Macro(const char* path, const std::vector<std::vector<TPoint<double>>>& loops, int index, bool newFile,
                      bool config);

/// All loops, in one macro.
KM_API void Ptss2Macro(const char* path, const std::vector<std::vector<TPoint<double>>>& loops, bool newFile,
                       bool config);

/// A macro for each loop that has points, named `path`, number of the loop (from 0), ".mac".
KM_API void Ptss2Macros(const char* path, const std::vector<std::vector<TPoint<double>>>& loops, bool newFile,
                        bool config);

/// All loops of all groups, in one macro.
KM_API void Ptsss2Macro(const char* path, const std::vector<std::vector<std::vector<TPoint<double>>>>& groups,
                        bool newFile, bool config);

}  // namespace KM
