#pragma once

#include "Mesh/Core/Pin.h"
#include "Mesh/Core/PinVisitor.h"

namespace KM {

// Compaction never keeps the order of records: a gap is filled with the last record, so a removal costs the same
// whatever the size of the mesh. Indices held elsewhere follow through the visitor.

/// Removes every dead edge and every node without edge, and makes `p2e` exact: the highest-numbered edge at a node
/// wins. An edge that names a node that does not exist takes its loop with it, and the neighbours become orphans. Links
/// that lead out of the mesh are neither followed nor mended. Dead nodes at the end go without a report. Linear time.
template <class Mesh>
KM_API void Compact(Mesh& mesh, VisitorOf<Mesh>& visitor);

/// Drops dead records at the end of `edges`, then, if slot `e` is still there, overwrites it with the last record, dead
/// or not. A negative `e` does nothing. Constant time but for the dead records.
template <class Mesh>
KM_API void CompactEdge(Mesh& mesh, int e, VisitorOf<Mesh>& visitor);

/// Moves an alive edge record to another slot, with all references to it; `edges[from]` keeps its old content. Nothing
/// happens when the two are equal or out of range, or when `from` is dead.
template <class Mesh>
KM_API void MoveEdgeRecord(Mesh& mesh, int from, int to, VisitorOf<Mesh>& visitor);

/// Makes `p2e` as long as `points` and lets each entry name the highest-numbered edge at its node. Entries of nodes
/// without edge keep their old value; new ones are 0.
template <class Mesh>
KM_API void RebuildNodeEdges(Mesh& mesh);

/// Clears the three records of a triangle to (-1, -1, -1) and makes its neighbours' edges orphans. Not reported. Does
/// nothing when `e` is dead or no edge.
template <class Mesh>
KM_API void DeleteTriangle(Mesh& mesh, int e);

/// Drops dead nodes and dead edges from the ends of the vectors only. No gap is filled and nothing is renumbered.
KM_API void CompactQuick(PIN& mesh);

}  // namespace KM
