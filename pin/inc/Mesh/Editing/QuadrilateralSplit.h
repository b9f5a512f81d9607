#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// Splits the two triangles at an edge, as `SplitFace` does, each at a centre of its own: seen in XY, where the
/// bisector of the corner opposite the edge meets the nearer of those of the edge's ends, which halve the angles of the
/// quadrilateral. Then the first edge of the mesh, edge 0 and not `e`, is split as `SplitEdge` does with `values`.
///
/// @param values  one for each node. Two are appended, for the two centres: the distances in XY, at least 0, of each
///                from the side at the start of `e`, first that of the triangle of `e`. The split of edge 0 appends a
///                third
///
/// An orphan is refused with an `Error` in the log; without one, an edge that is dead, out of range, or not between two
/// different triangles of existing nodes. Neither is followed by a change. If edge 0 is an orphan, that too is an
/// `Error`, and only that split is left out. Corners without bisectors give centres far away, or NaN. Constant time.
KM_API void SplitQuadrilateral(PIN& mesh, std::vector<double>& values, int e);

}  // namespace KM
