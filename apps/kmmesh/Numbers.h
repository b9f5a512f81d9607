#pragma once

#include <string>
#include <vector>

#include "Geometry/Point.h"

namespace KM::Tool {

// What options of several numbers hold. All numbers have to be finite.
// @throws Failure  for a text that does not fit

/// Numbers with commas or blanks between them, one at least.
std::vector<double> NumbersOf(const std::string& text);

/// Three numbers, as in "10,0,2.5".
TPoint<double> PointOf(const std::string& text);

/// Of unit length, from three numbers that are not all zero, or from one of x, y, z, -x, -y and -z.
TPoint<double> DirectionOf(const std::string& text);

/// One or several of x, y and z, as in "xz", as the sum of 1, 2 and 4 that the library takes.
int AxesOf(const std::string& text);

/// A place on a part: a node, or what is nearest to a point.
struct Place {
    int node = -1;  ///< -1 if the point counts
    TPoint<double> point;
};

/// Places with blanks between them, one at least: a whole number is a node, three numbers with commas are a point. So
/// "12 10,0,2.5" is two places.
std::vector<Place> PlacesOf(const std::string& text);

}  // namespace KM::Tool
