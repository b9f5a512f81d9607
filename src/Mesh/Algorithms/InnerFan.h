#pragma once

#include <vector>

#include "Mesh/Editing/Surroundings.h"

namespace KM {

/// Puts the faces round a node into `fan`, in the order of `AllStartingEdges`. False for a node that lies on a border, or
/// has a face round it that is no triangle, or links that are not those of a sound mesh.
///
/// One step backward, from x over its face, comes to an edge from which a step forward comes to x again: that is looked at.
/// No edge can be come to on two ways then, so the walk comes back to where it began, or meets a border. And it is the order
/// of `AllStartingEdges`, which on a closed fan goes backward from the entry in `p2e`.
inline bool CollectInnerFan(const PIN& mesh, int node, std::vector<Surroundings>& fan) {
    fan.clear();
    const int first = mesh.p2e[node];
    int e = first;
    do {
        const auto face = OnTriangle(mesh, e);
        if (!face) return false;
        const int twin = mesh.edges[face->pe].TE;
        if (!IsEdge(mesh, twin) || mesh.edges[twin].TE != face->pe) return false;
        fan.push_back(*face);
        e = twin;
    } while (e != first);
    return true;
}

}  // namespace KM
