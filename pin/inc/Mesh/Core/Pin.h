#pragma once

#include <cstdint>
#include <vector>

#include "Geometry/Point.h"
#include "KmApi.h"

namespace KM {

/// A directed half-edge: three links and nothing else. -1 is the only "no index" value.
///
/// The end node is `P0` of `NE`, the previous edge is found by a walk (`PrevEdge`); neither is stored.
struct Edge {
    std::int32_t NE = -1;  ///< Next edge of the same loop; -1 marks a dead record, whatever `TE` still holds.
    std::int32_t TE = -1;  ///< Twin: the edge that runs the same segment the other way, or -1 (an orphan).
    std::int32_t P0 = -1;  ///< Start node.

    friend constexpr bool operator==(const Edge&, const Edge&) = default;
};
static_assert(sizeof(Edge) == 12);

/// A surface as three flat vectors that refer to each other by index.
///
/// - *node*: an entry of `points` and `p2e`; *dead* when its `p2e` entry is -1. A dead node keeps its coordinates.
/// - *loop*: the cycle that `NE` makes. A loop is the only notion of face; a loop of three edges is a triangle.
/// - *orphan*: an alive edge without twin, that is an edge of the boundary. No record exists on its far side.
/// - *fan*: the edges that start at one node, linked by `NE(TE(e))` forward and `TE(PrevEdge(e))` backward.
///
/// A sound mesh holds: `NE` of an alive edge is alive and leads back to it; `TE` is -1 or an alive edge whose twin is
/// this one and which runs the other way; `P0` is an existing node; `p2e` is as long as `points`, and names for each
/// alive node an edge that starts there (which one is free). Dead records may lie anywhere; each scan skips them.
///
/// Indices are the only references into a mesh, and compaction renumbers. The mesh owns its vectors and copies by
/// value. It has no lock: two threads may work on two meshes.
template <class Point, class PointVector, class EdgeVector, class IndexVector>
struct TPIN {
    using PointType = Point;

    PointVector points;  ///< One per node.
    EdgeVector edges;    ///< One per half-edge.
    IndexVector p2e;     ///< One per node: an edge that starts there, or -1.
};

/// The mesh of all algorithms and all editing.
using PIN = TPIN<TPoint<double>, std::vector<TPoint<double>>, std::vector<Edge>, std::vector<std::int32_t>>;
/// The compact single-precision mesh of the display road.
using SPIN = TPIN<TPoint<float>, std::vector<TPoint<float>>, std::vector<Edge>, std::vector<std::int32_t>>;

}  // namespace KM
