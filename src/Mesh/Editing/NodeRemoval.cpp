#include "Mesh/Editing/NodeRemoval.h"

#include <vector>

#include "Mesh/Core/Fans.h"
#include "Mesh/Editing/NodeRemover.h"

namespace KM {

bool RemoveNode(PIN& mesh, int node) {
    const std::vector<int> edges = AllStartingEdges(mesh, node);
    if (edges.size() < 3) return false;
    std::vector<Surroundings> fan;
    fan.reserve(edges.size());
    for (const int e : edges) {
        const auto face = OnLoop(mesh, e);
        if (!face) return false;
        const int third = mesh.edges[face->ne].NE;
        if (!IsNode(mesh, mesh.edges[face->ne].P0) || !IsNode(mesh, mesh.edges[third].P0)) return false;
        fan.push_back(*face);
    }
    return NodeRemover(mesh).Remove(node, fan);
}

}  // namespace KM
