#pragma once

#include <array>
#include <vector>

#include "Part.h"

/// One level of detail, taken out of the level stream.
struct Level {
    double tolerance = 0.0;     ///< in the units of the part
    double milliseconds = 0.0;  ///< from the records to this level: a call of the library that ends with it
    int strips = 0;
    int words = 0;                              ///< of the stream, with the header of the level
    std::vector<std::array<int, 3>> triangles;  ///< indices of events, in winding order; empty for a repeated level
    bool isRepeated = false;  ///< nothing could go since the level before, so the stream leaves it out
};

/// Reduces the part to one level for each tolerance. `tolerances` must ascend.
///
/// @throws std::runtime_error with one line when the library gives no levels
std::vector<Level> MakeLevels(const Part& part, const std::vector<double>& tolerances);
