#pragma once

#include <vector>

#include "Mesh/Core/EdgesMap.h"
#include "Mesh/Core/Pin.h"

namespace KM {

/// Appends a point and its `p2e` entry, -1. No merging. Returns the new node's index.
KM_API int AddPoint(PIN& mesh, const TPoint<double>& point);

// The five builders turn facets into a connected, oriented, compact mesh. They refuse nothing: what cannot become a
// consistent surface is left as orphan edges or dropped.
//
// - A facet with two equal nodes is dropped, and so is one that names a negative node, with a line on the dump stream.
//   A facet that names a node beyond the last one goes when the mesh is compacted at the end.
// - Two facets become neighbours where they run the same segment in opposite directions; where more than two meet,
//   they pair off in the order of input and the rest stays open. No pair is made with edges already in the mesh.
// - Coordinates that are NaN are equal to nothing and so are never merged; 0.0 and -0.0 are equal.
// - Nodes that no facet uses are filled up from the end, so indices can differ from those of the input.
//
// All take linear time. An exception (memory, or more edges than 32 bits can number) leaves what was added so far,
// without the final passes.

/// Each three consecutive points are a triangle; an incomplete last one is left out. Equal points become one node,
/// which is appended where the point occurs first.
KM_API void AddTriangles_1(PIN& mesh, const std::vector<TPoint<double>>& soup);

/// The first three points of each facet are a triangle; shorter facets are left out. Merges as `AddTriangles_1` does.
KM_API void AddTriangles_2(PIN& mesh, const std::vector<std::vector<TPoint<double>>>& facets);

/// Each three consecutive indices into `nodes` are a triangle. `nodes` replaces the points of the mesh and nothing is
/// merged; meant for an empty mesh, since earlier edges are kept.
KM_API void AddTriangles_3(PIN& mesh, const std::vector<TPoint<double>>& nodes, const std::vector<int>& triples);

/// As `AddTriangles_3`, with the first three indices of each facet; shorter facets are left out.
KM_API void AddTriangles_4(PIN& mesh, const std::vector<TPoint<double>>& nodes,
                           const std::vector<std::vector<int>>& facets);

/// The single-precision builder; C linkage, so that a host finds it by its bare name.
///
/// @param pointCount     not consulted: `triples` decides which points are read
/// @param xyz            three floats a point
/// @param triangleCount  number of index triples; nothing is added when it is not positive or a pointer is null
/// @param triples        three indices a triangle, each the index of a point in `xyz`; points of equal coordinates
///                       become one node, appended in the order of first use
extern "C" KM_API void AddTrianglesSPIN(SPIN& mesh, int pointCount, float* xyz, int triangleCount, int* triples);

/// Appends one loop through `nodes`, with `twins[i]` (or -1) as the twin of the edge that starts at `nodes[i]`; that
/// can be an edge of the new loop which comes before it. Returns the new edges in order. Leaves `p2e` alone: set it, or
/// compact. The nodes need not exist yet; a loop through one that never does goes when the mesh is compacted. Does
/// nothing, and returns an empty vector, if `nodes` is empty, if `twins` is shorter, or if a twin is no edge by then.
KM_API std::vector<int> AddPolygon(PIN& mesh, const std::vector<int>& nodes, const std::vector<int>& twins);

/// One step of `AddTriangle`: appends the record of an edge and pairs it with the edge that waits for it in `map`, or
/// files it there. With `setNodeEdge`, `p2e[start]` names it; a `p2e` that is too short grows, filled with the new
/// edge.
///
/// @return the edge; -1 with nothing appended, and a line on the dump stream, when a node is negative; -1 with the
///         record appended when the waiting edge has a twin already
template <class Mesh>
KM_API int AddEdge(Mesh& mesh, int start, int end, EdgesMap& map, bool setNodeEdge);

/// Appends a triangle, pairing its edges through `map`; the step that every builder repeats. Does nothing when two
/// nodes are equal.
///
/// A failing edge takes the triangle back: one record is removed from the end of `edges` for each edge tried so far.
/// Callers count on that fixed number, also for a negative node, where the last edge was never appended and a record of
/// the triangle before goes instead. What the map has given or taken is not restored.
template <class Mesh>
KM_API void AddTriangle(Mesh& mesh, int a, int b, int c, EdgesMap& map, bool setNodeEdge);

}  // namespace KM
