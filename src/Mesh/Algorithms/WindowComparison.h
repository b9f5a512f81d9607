#pragma once

#include "GeodesicWindow.h"

namespace KM {

/// Distances that differ by less than this are equal.
inline constexpr double WindowTolerance = 1e-8;

enum class Outcome {
    OldStays,  ///< on the whole overlap
    NewTakes,  ///< the whole overlap
    OldLeft,   ///< the old window keeps what lies left of the point
    OldRight   ///< the old window keeps what lies right of the point
};

/// What becomes of an old window where a new one overlaps it.
struct Comparison {
    Outcome outcome = Outcome::OldStays;
    double point = 0.0;  ///< for `OldLeft` and `OldRight`: where on the edge they change over
    double value = 0.0;  ///< and the distance from the source there
};

/// Compares two windows of one edge that overlap.
Comparison CompareWindows(const GeodesicWindow& oldOne, const GeodesicWindow& newOne);

}  // namespace KM
