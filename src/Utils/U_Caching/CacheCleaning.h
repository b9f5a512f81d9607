#pragma once

#include "KmApi.h"

namespace KM::Caching {

// Both delete plain files that lie directly in the cache folder, by their exact names. Links and folders stay; so does
// a file that somebody is just writing, and one that was replaced after the look at the folder. The root and the home
// folder of the user are refused with a `Warning`.

/// If cleaning is enabled and the last look at the folder is long enough ago: looks at it, and if its files take more
/// than `CleaningSize`, deletes those that were not used for the longest time, until the fraction `DeleteFactor` of
/// that size is left. "Cache.Info" counts as a file. Constant time until the next look is due.
KM_API void CleanIfTooLarge();

/// Deletes all results, which are the files whose names begin with "$".
KM_API void DeleteResults();

}  // namespace KM::Caching
