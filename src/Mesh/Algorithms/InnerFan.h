#pragma once

#include <algorithm>
#include <vector>

#include "CircleGuard.h"
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

/// The same where twins do not name each other, step by step as `AllStartingEdges` goes: back to where the fan begins, and
/// forward from there. False for a node that lies on a border, and for a walk that leaves the node or never comes back. So
/// no walk is longer than the edges at its node are many, but for a few turns.
inline bool CollectOddFan(const PIN& mesh, int node, std::vector<Surroundings>& fan) {
    CircleGuard backward, forward;
    const auto visit = [&](int e, CircleGuard& guard) {
        auto face = OnTriangle(mesh, e);
        if (face && (mesh.edges[e].P0 != node || guard.IsMetAgain(e))) face.reset();
        return face;
    };

    const int entry = mesh.p2e[node];
    int first = entry;
    for (int e = entry;;) {
        const auto face = visit(e, backward);
        if (!face) return false;
        first = e;
        e = mesh.edges[face->pe].TE;
        if (e == -1 || e == entry) break;
    }

    fan.clear();
    int e = first;
    do {
        const auto face = visit(e, forward);
        if (!face) return false;
        fan.push_back(*face);
        const int twin = mesh.edges[e].TE;
        if (!IsEdge(mesh, twin)) return false;
        e = mesh.edges[twin].NE;
    } while (e != first);
    std::reverse(fan.begin(), fan.end());
    return true;
}

}  // namespace KM
