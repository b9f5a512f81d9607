#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "Geometry/Point.h"

namespace KM::Tool {

/// A triangle on which a value runs evenly from corner to corner. One with a value that is not finite has none.
struct ValuedTriangle {
    std::array<TPoint<double>, 3> corners;
    std::array<double, 3> values;
};

using ValuedTriangles = std::vector<ValuedTriangle>;

/// Values in bands: band i reaches from limit i up to limit i + 1, which belongs to the next one. What lies outside counts
/// to the outermost bands, and what has no value to a band of its own behind the last.
struct Bands {
    std::vector<double> limits;  ///< ascending, two at least
    std::string quantity;        ///< what the values are, with their unit
    std::string missing;         ///< why some may have none
    std::vector<std::array<double, 3>>
        ramp;  ///< red, green and blue, 0 to 255, from the first band to the last, evenly

    std::size_t Count() const { return limits.size() - 1; }
    /// Of a number; for a text, see `NameOf`.
    std::size_t BandOf(double value) const;
    /// "0.5 .. 1", or why there is no value.
    std::string NameOf(std::size_t band) const;
};

/// Bands of equal width, a round number, of about this count: from 0 up to `highest`, or beyond it.
std::vector<double> RoundLimits(double highest, int count);

/// A part of a triangle that lies in one band: convex, with the winding of the triangle; not more than five corners.
struct BandPiece {
    std::size_t band = 0;
    std::size_t count = 0;
    std::array<TPoint<double>, 5> corners;
};

/// The parts of a triangle in all bands that it reaches, from the lowest.
/// @param pieces  is replaced
void CutByBands(const ValuedTriangle& triangle, const Bands& bands, std::vector<BandPiece>& pieces);

/// The area of each band, and at the end of what has no value. Reports progress and can be stopped.
std::vector<double> AreasOf(const ValuedTriangles& triangles, const Bands& bands);

/// A line for each band with its area, its share of all and a bar of that length; the first line names the columns.
std::string Histogram(const std::vector<double>& areas, const Bands& bands);

}  // namespace KM::Tool
