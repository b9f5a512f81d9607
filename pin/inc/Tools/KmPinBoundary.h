#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "KmApi.h"
#include "Mesh/Core/Pin.h"

namespace KM {

/// An edge of a `PinBoundary`: what the mesh stores, and what it leaves out. -1 stands for none; an index out of range,
/// or of a dead edge, counts as none.
struct PinBoundaryEdge {
    int pe = -1;      ///< previous edge. Of several edges that lead here, one on the same loop, else the lowest.
    int ne = -1;      ///< next edge
    int twin = -1;    ///< as stored in `TE`
    int node = -1;    ///< as stored in `P0`
    int loopIx = -1;  ///< number of its loop; -1 for an edge from which no walk comes back
};

struct PinBoundaryLoop {
    int first = -1;  ///< one of its edges, the lowest if the mesh is sound
    int count = 0;   ///< the cached count of its edges
};

/// A debug view of all loops of a mesh, which adds to the edges what a mesh does not store: previous links and loop
/// numbers. A snapshot; it does not follow the mesh. All may be changed by hand, to try what a check says.
struct PinBoundary {
    PinBoundary() = default;
    /// Takes any mesh, however broken. Loops are numbered in the order of the first edges that lead to them. Linear
    /// time.
    KM_API explicit PinBoundary(const PIN& mesh);

    std::vector<PinBoundaryEdge> edges;  ///< one per record of the mesh, dead ones too
    std::vector<PinBoundaryLoop> loops;
    std::vector<bool> aliveEdges;  ///< by edge
    std::vector<int> p2e;
    std::vector<TPoint<double>> points;
};

/// Something that is wrong with a mesh.
struct PinFault {
    std::string text;
    int item;  ///< the edge in texts that begin with G1, the node in G3, otherwise the loop

    friend bool operator==(const PinFault&, const PinFault&) = default;
};

/// All that is wrong, each once: first over the alive edges (G1), then over the loops (G2), then over the nodes (G3),
/// each group by index. None for a sound mesh, dead records in it or not. The texts are fixed; those that explain
/// themselves aside:
///
/// | Text | What is wrong |
/// |---|---|
/// | G1-3 | The previous edge leads to another edge. |
/// | G1-5 | The previous edge leads nowhere. |
/// | G1-6, G1-7 | The loop numbers differ although the links lead both ways. |
/// | G1-10 | The twin is neither none nor an alive edge. |
/// | G1-11 | The twin has another twin. |
/// | G1-12 | The twin does not start where the edge ends. |
/// | G1-13 | The start node does not exist. |
/// | G1-14 | The start node has a coordinate that is not finite. Told at one edge of the node. |
/// | G1-15 | The start node names no edge at all. Told at one edge of the node. |
/// | G2-2 | The walk round the loop is longer than the cached count. |
/// | G2-3 | The walk was given up after 10000 elements; so a sound loop that is longer is told as well. |
/// | G2-4 | The walk ends nowhere, or is shorter than the cached count. Behind the loop: real count, cached count. |
/// | to few elements | The loop has less than three. |
/// | G3-1 | The node names an edge that starts elsewhere, or `points` and `p2e` do not both have the node. |
/// | G3-2 | The node names an edge that is not alive. |
///
/// An empty `p2e` is passed over: so removing a node leaves it until the next compaction. Linear time on the view of a
/// mesh.
KM_API std::vector<PinFault> CheckIntegrity(const PinBoundary& view);
/// The same for the view of a mesh.
KM_API std::vector<PinFault> CheckIntegrity(const PIN& mesh);

/// Writes each loop as the list of its edges; then each alive edge as a line of its index, `pe`, `ne`, `twin`, `node`
/// and `loopIx`; then each node as a line of its index, `p2e` (-1 where it is missing) and coordinates.
KM_API std::ostream& operator<<(std::ostream& out, const PinBoundary& view);

}  // namespace KM
