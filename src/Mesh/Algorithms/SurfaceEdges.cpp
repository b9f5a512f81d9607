#include "Mesh/Algorithms/SurfaceEdges.h"

#include <algorithm>

#include "Mesh/Core/SafeLinks.h"

namespace KM {
namespace {

bool IsOnTriangle(const PIN& mesh, std::int32_t e) {
    if (IsDead(mesh.edges[e])) return false;
    const std::int32_t third = ThirdOfTriangle(mesh, e);
    if (third == -1) return false;
    const std::int32_t next = mesh.edges[e].NE;
    if (next == e || third == e || next == third) return false;
    return IsNode(mesh, mesh.edges[e].P0) && IsNode(mesh, mesh.edges[next].P0) && IsNode(mesh, mesh.edges[third].P0);
}

/// Two edges of triangles that name each other, and run along the same nodes.
bool IsPair(const PIN& mesh, std::int32_t e, std::int32_t t) {
    const Edge& edge = mesh.edges[e];
    const Edge& twin = mesh.edges[t];
    return e != t && twin.TE == e && twin.P0 == mesh.edges[edge.NE].P0 && mesh.edges[twin.NE].P0 == edge.P0;
}

}  // namespace

SurfaceEdges::SurfaceEdges(const PIN& mesh)
    : mesh_(mesh), canonical_(mesh.edges.size(), -1), length_(mesh.edges.size(), 0.0) {
    const auto count = static_cast<std::int32_t>(mesh.edges.size());
    for (std::int32_t e = 0; e < count; ++e)
        if (IsOnTriangle(mesh, e)) canonical_[e] = e;
    for (std::int32_t e = 0; e < count; ++e) {
        if (canonical_[e] == -1) continue;
        const std::int32_t twin = mesh.edges[e].TE;
        if (Canonical(twin) != -1 && twin < e && IsPair(mesh, e, twin)) canonical_[e] = twin;
        else length_[e] = KM::Length(End(e) - Start(e));
        longest_ = std::max(longest_, length_[e]);
    }
}

}  // namespace KM
