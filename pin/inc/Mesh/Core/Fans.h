#pragma once

#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// The canonical first edge of the fan that `edge` belongs to; the usual argument is `p2e[node]`. -1 for -1, and for an
/// edge that is dead or out of range.
///
/// On an open fan it is the edge from which a forward walk (`NE(TE(x))`) visits the whole fan. On a closed fan it is
/// the forward neighbour of `edge`, not `edge` itself unless the fan has no other. Costs the node's valence.
template <class Mesh>
KM_API int StartingEdge(const Mesh& mesh, int edge);

// A fan query for a node that does not exist, or is dead, gives an empty result, and so does every node as long as
// `p2e` is empty. A link of a mesh under edit that leads nowhere counts as the open end of the fan. A query of one node
// costs the node's valence and allocates its result, once.

/// The edges of the node's fan, against the forward walk: on an open fan the orphan that starts at the node comes
/// first, and the starting edge last. Only the fan that `p2e` leads to is visited.
KM_API std::vector<int> AllStartingEdges(const PIN& mesh, int node);

/// The edge that runs from `start` to `end`, or -1; of several the first one in the order of `AllStartingEdges`. Only
/// the fan that `p2e[start]` leads to is searched. Allocates nothing.
KM_API int EdgeOfSEVertices(const PIN& mesh, int start, int end);

/// Pairs of neighbour node and edge, in the order of the forward walk. On an open fan the first pair names the edge
/// that comes *into* the node along the boundary, so there is one pair more than the fan has edges.
KM_API std::vector<Tuple2<int, int>> Neighbors(const PIN& mesh, int node);

/// Per node all alive edges that start there, ascending, whichever fan they belong to. An edge whose start is no node
/// of the mesh is left out. Linear time; the tool for bulk work.
KM_API std::vector<std::vector<int>> EmanatingEdges(const PIN& mesh);

/// As `EmanatingEdges`, for orphans only.
KM_API std::vector<std::vector<int>> EmanatingOrphans(const PIN& mesh);

}  // namespace KM
