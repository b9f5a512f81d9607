#pragma once

#include "Mesh/Core/Pin.h"

namespace KM::Tool {

/// What to multiply a part with, so that it has a size for which the tolerances of the library, which are lengths, were
/// chosen: STL names no unit, and a part may be in metres or in microns. 1 for a diagonal from 1 to a million; else a power
/// of two, with which all coordinates keep their bits on the way there and back.
double WorkingScale(const PIN& mesh);

/// Multiplies all points.
void Scale(PIN& mesh, double factor);

}  // namespace KM::Tool
