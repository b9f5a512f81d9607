#pragma once

#include <string>
#include <vector>

#include "KmApi.h"

namespace KM::IO {

/// Runs a program, which is looked up in the search path, and waits for it.
///
/// @param arguments  words, in double quotes where they hold blanks; or a list of words, handed over as they are
/// @return           its exit code, 128 plus the number of the signal that ended it, or -1 if it could not be started
///
/// The last argument is not read.
KM_API int Execute(const std::string& program, const std::string& arguments, int);
KM_API int Execute(const std::string& program, const std::vector<std::string>& arguments, int);

/// What `MonitoredSpawn` saw.
struct MonitoredSpawnStatistics {
    double elapsed = -1.0;  ///< seconds
    int memoryUsed = -1;    ///< Mb by which the free memory of the machine fell, at most
    int exitCode = -1;
};

/// Runs a program, looks at the machine's memory twice a second while it runs, and waits for it. A program that cannot
/// be started leaves an `Error` in the log, and the exit code -1.
KM_API MonitoredSpawnStatistics MonitoredSpawn(const std::string& program, const std::string& arguments);

/// The memory of the machine, as it is at construction. In Mb, but for the load.
struct KM_API MemoryStatus {
    MemoryStatus();

    int memoryLoad;  ///< per cent
    int totalPhysical;
    int availablePhysical;
    int totalPageFile;
    int availablePageFile;
    int totalVirtual;
    int availableVirtual;
};

/// Bytes of the disk that a path lies on; 0.0 when they cannot be told.
namespace Disk {

KM_API double Free(const std::string& path);
/// As far as this user may use it.
KM_API double UserFree(const std::string& path);
KM_API double Total(const std::string& path);

}  // namespace Disk

/// A menu on the console: logs the items, waits for a digit, and returns the index of the chosen one. Items beyond the
/// tenth are shown but have no key.
/// @throws int when Esc is pressed, when there is nothing to choose, or when no keyboard is there (or is gone)
/// @throws XUserAbort when the user wants the work to stop, by other means than a key
KM_API int Choice(const std::vector<std::string>& items);

}  // namespace KM::IO
