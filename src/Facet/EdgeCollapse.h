#pragma once

#include "Facet/CollapseQueue.h"
#include "Mesh/Core/Pin.h"

namespace KM {

/// Where the surface has closed over a collapsed edge.
struct CollapsedEdge {
    int survivor;  ///< the node that stays
    int anchor;    ///< an edge that leaves the survivor now, or -1 when nothing is left
    // The edges from `sectorFirst` up to `sectorLast`, walking forward, used to leave the removed node; -1 where there
    // is none.
    int sectorFirst;
    int sectorLast;
};

/// Takes an edge and its one or two triangles out of the mesh and out of the queue, and joins the twins behind them.
///
/// The edges that used to leave the removed node still name it; the caller turns them to the survivor. Records that die
/// keep their `TE`. The mesh holds triangles only, and each edge is the twin of its twin, before and after.
CollapsedEdge CollapseEdge(PIN& mesh, CollapseQueue& queue, int edge, bool keepsStart);

}  // namespace KM
