#pragma once

#include "Mesh/Core/Pin.h"

namespace KM {

/// Cuts a mesh of triangles by a plane into two meshes. Triangles that the plane crosses are split; the cut becomes an open
/// border of both parts, and each node on the plane gets into both. Triangles that lie in the plane go above.
///
/// @param point   three coordinates of a point of the plane
/// @param normal  three components, of any length; too short to be a direction they count as (0, 0, 1)
/// @param below   gets the part on the negative side
/// @param above   gets the part on the side to which the normal points. Points and edges are appended to both, in the order
///                of `mesh`, so hand over two empty ones; `p2e` is exact afterwards, but 0 for a node without edges
/// @return        0 if divided. 1, with both parts untouched, if there was nothing to do: the mesh has no edges or no
///                points, or no edge crosses the plane or has an end within 1e-7 of it. Also 1 for what cannot be divided: a
///                null pointer, one mesh for both parts, an edge whose next edge or nodes do not exist, a crossed edge whose
///                faces are no triangles, or are not two that agree on their common edge
///
/// A mesh that touches the plane without crossing it is divided all the same. Dead records stay behind. Nodes closer to
/// the plane than 1e-5 count as on it, as new nodes do; so coordinates should stay below some 1e10: beyond, rounding
/// moves new nodes off the plane, and links between records that then part are -1. Linear time; beside both parts it takes
/// 4 bytes an edge and 9 a node.
KM_API int PlnDivMesh(const PIN& mesh, const double* point, const double* normal, PIN& below, PIN& above);

}  // namespace KM
