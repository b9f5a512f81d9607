#pragma once

#include <cstddef>
#include <cstdint>

#include "Mesh/Core/Pin.h"

// Reading links that may be broken: meshes come from hosts and from halfway through an edit, and the passes that repair
// them must not trust what they repair.

namespace KM {

/// For whoever goes on along `NE`: -1 and -2 both mean "no edge"; other negative values only occur in broken meshes and
/// mean nothing better.
inline bool IsDead(const Edge& edge) { return edge.NE < 0; }

/// For whoever lists, prints or checks records: the mark of a dead one is -1 and nothing else. A record with any other
/// link that leads nowhere is a fault of the mesh, and must not be hidden.
inline bool IsMarkedDead(const Edge& edge) { return edge.NE == -1; }

template <class Mesh>
bool IsEdge(const Mesh& mesh, std::int32_t e) {
    return static_cast<std::size_t>(e) < mesh.edges.size();  // a negative index becomes a huge one
}

template <class Mesh>
bool IsAliveEdge(const Mesh& mesh, std::int32_t e) {
    return IsEdge(mesh, e) && !IsDead(mesh.edges[e]);
}

template <class Mesh>
bool IsNode(const Mesh& mesh, std::int32_t node) {
    return static_cast<std::size_t>(node) < mesh.points.size();
}

/// The edge after the next one of `e` if `e` lies on a triangle, else -1.
template <class Mesh>
std::int32_t ThirdOfTriangle(const Mesh& mesh, std::int32_t e) {
    const std::int32_t next = mesh.edges[e].NE;
    if (!IsEdge(mesh, next)) return -1;
    const std::int32_t third = mesh.edges[next].NE;
    return IsEdge(mesh, third) && mesh.edges[third].NE == e ? third : -1;
}

/// Makes an orphan of the twin of `e`.
template <class Mesh>
void OrphanTwin(Mesh& mesh, std::int32_t e) {
    const std::int32_t twin = mesh.edges[e].TE;
    if (IsEdge(mesh, twin)) mesh.edges[twin].TE = -1;
}

/// Clears the loop of `e` to (-1, -1, -1) and makes orphans of its twins. It clears as it goes and stops at the first dead
/// record, so it ends on broken links as well.
template <class Mesh>
void ClearLoop(Mesh& mesh, std::int32_t e) {
    while (IsAliveEdge(mesh, e)) {
        const std::int32_t next = mesh.edges[e].NE;
        OrphanTwin(mesh, e);
        mesh.edges[e] = Edge();
        e = next;
    }
}

/// Lets `p2e` name an edge at a node; a node beyond its end, as all are while it is empty, is passed over.
template <class Mesh>
void NameNodeEdge(Mesh& mesh, std::int32_t node, std::int32_t e) {
    if (static_cast<std::size_t>(node) < mesh.p2e.size()) mesh.p2e[node] = e;
}

/// Lets `p2e`, which must be as long as `points`, name the highest-numbered edge at each node that has one.
template <class Mesh>
void NameNodeEdges(Mesh& mesh) {
    for (std::size_t e = 0; e < mesh.edges.size(); ++e)
        if (IsNode(mesh, mesh.edges[e].P0)) mesh.p2e[mesh.edges[e].P0] = static_cast<std::int32_t>(e);
}

}  // namespace KM
