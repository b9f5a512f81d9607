#pragma once

#include "KmApi.h"

namespace KM::Caching {

// The state file "Cache.Info" in the cache folder is what several processes share: parameters of the cleaner, and when
// the folder was last looked at. 36 bytes, little-endian: the format 4 as 32-bit integer, then as doubles
// `TimeBetweenAnalysis`, `LastAnalysisTime`, `CleaningSize` and `DeleteFactor`.

/// Takes the values of the file, if there is one. A file of another format, one that is cut off, and one with a value
/// that cannot be meant change nothing, and are replaced by a file with the present values.
KM_API void ReadCacheInfo();

/// Replaces the file in one step, so that others read the old values or the new ones. If it cannot be written, one
/// `Error` is logged. A missing folder is made, with a `Warning`.
KM_API void WriteCacheInfo();

}  // namespace KM::Caching
