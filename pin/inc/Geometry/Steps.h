#pragma once

#include <vector>

#include "KmApi.h"

namespace KM::Steps {

/// Lays out levels from just below `to` down to `from`, no further apart than `step`, with those of `levels` that lie
/// between the two among them.
///
/// @param levels  in any order; is replaced by the result, which descends
/// @param step    the largest gap. A gap that is up to 0.001 larger than a multiple of it gets no level more
/// @param minGap  of given levels that are closer than this the upper one is kept; `from` can go in that way, too
/// @param from,to the ends. `to` itself is not in the result, unless nothing else is
///
/// A gap below 0.001 that `minGap` lets pass is too small to be a step: the level at its lower end is left out. With a
/// negative `step` that of each larger gap is. Where a result could not be laid out (an end or `step` is not a number,
/// or there would be more than 100 million levels, as with a step of 0), `levels` stays as it was.
KM_API void CreateLevels(std::vector<double>& levels, double step, double minGap, double from, double to);

}  // namespace KM::Steps
