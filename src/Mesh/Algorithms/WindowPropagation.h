#pragma once

#include "WindowLists.h"

namespace KM {

/// Sends the light of a window across the face behind its edge, and inserts what arrives at the two other edges of that
/// face, with queueing. At a border nothing happens.
void PropagateWindow(const SurfaceEdges& surface, const GeodesicWindow& window, WindowLists& lists);

}  // namespace KM
