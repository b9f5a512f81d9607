#include "Mesh/Editing/AddedTriangles.h"

#include "Mesh/Core/FanWalk.h"
#include "Mesh/Editing/Surroundings.h"

namespace KM {
namespace {

bool IsBoundary(const PIN& mesh, int e) { return IsAliveEdge(mesh, e) && IsOrphan(mesh, e); }

}  // namespace

int AddTriangleOrphanEdge(PIN& mesh, int e, int node) {
    if (!IsBoundary(mesh, e) || !IsNode(mesh, node)) return -1;
    const int A = mesh.edges[e].P0;
    const int B = EndNode(mesh, e);
    if (B == -1) return -1;
    const int base = static_cast<int>(mesh.edges.size());
    mesh.edges.insert(mesh.edges.end(), {{base + 1, e, B}, {base + 2, -1, A}, {base, -1, node}});
    mesh.edges[e].TE = base;
    NameNodeEdge(mesh, node, base + 2);
    return base;
}

int AddTriangleWith2Edges(PIN& mesh, int e1, int e2) {
    if (e1 == e2 || !IsBoundary(mesh, e1) || !IsBoundary(mesh, e2)) return -1;
    const int A = mesh.edges[e1].P0;
    const int B = mesh.edges[e2].P0;
    const int C = EndNode(mesh, e2);
    if (EndNode(mesh, e1) != B || C == -1) return -1;
    const int base = static_cast<int>(mesh.edges.size());
    mesh.edges.insert(mesh.edges.end(), {{base + 1, e2, C}, {base + 2, e1, B}, {base, -1, A}});
    mesh.edges[e1].TE = base + 1;
    mesh.edges[e2].TE = base;
    // Both entries are one node behind their edges. Recorded fillings of holes have them so, and count on the rebuild that
    // `Compact` makes.
    NameNodeEdge(mesh, C, base + 2);
    NameNodeEdge(mesh, B, base);
    return base + 2;
}

}  // namespace KM
