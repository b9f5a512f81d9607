#pragma once

#include <vector>

#include "KmApi.h"
#include "Mesh/Core/Pin.h"

namespace KM::appl {

// A place for a debugger: both go through one drawing routine whose switches (nodes, edges, labels) are all off, so
// that a program which calls them shows nothing until somebody turns a switch. What is drawn then goes to the host's
// drawing services.

/// Draws the mesh.
KM_API void Draw(const PIN& mesh);

/// Draws the mesh with its nodes at other places, `points[i]` for node i. Edges of a node without a place are left out.
KM_API void Draw(const PIN& mesh, const std::vector<TPoint<double>>& points);

}  // namespace KM::appl
