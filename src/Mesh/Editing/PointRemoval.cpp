#include "Mesh/Editing/PointRemoval.h"

#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/SafeLinks.h"

namespace KM {
namespace {

void DeleteAllLoopsAt(PIN& mesh, int node) {
    for (int e = 0; IsEdge(mesh, e); ++e)
        if (mesh.edges[e].P0 == node) DeleteLoop(mesh, e);
}

void DeleteFan(PIN& mesh, int e) {
    while (IsAliveEdge(mesh, e)) {
        const int twin = mesh.edges[e].TE;
        const int next = IsEdge(mesh, twin) ? mesh.edges[twin].NE : -1;
        DeleteLoop(mesh, e);
        e = next;
    }
}

}  // namespace

void RemovePoint(PIN& mesh, int node, bool scanAll) {
    if (!IsNode(mesh, node)) return;
    if (scanAll) DeleteAllLoopsAt(mesh, node);
    else if (static_cast<std::size_t>(node) < mesh.p2e.size()) DeleteFan(mesh, mesh.p2e[node]);
    else return;
    CompactQuick(mesh);
}

void DeleteLoop(PIN& mesh, int e) {
    if (!IsAliveEdge(mesh, e)) return;
    mesh.p2e.clear();
    ClearLoop(mesh, e);
}

}  // namespace KM
