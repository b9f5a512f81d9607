#pragma once

#include "Mesh/Core/Pin.h"

namespace KM::Tool {

/// How far two surfaces lie apart where both were looked at: at nodes and in the middle of edges. Between these places they
/// can lie farther apart, so both numbers are least values of the largest distance.
struct Deviation {
    double ofNodes = 0.0;  ///< the largest distance of a node of the first from the second
    double ofEdges = 0.0;  ///< the largest distance of the middle of an edge of the second from the first
};

/// Coordinates as `SurfaceDistance` takes them; nodes without edge do not count. About n log n time for surfaces that lie
/// close to each other. Reports progress and can be stopped.
Deviation DeviationOf(const PIN& first, const PIN& second);

}  // namespace KM::Tool
