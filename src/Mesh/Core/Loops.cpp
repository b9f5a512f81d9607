#include "Mesh/Core/Loops.h"

#include <utility>

#include "Mesh/Core/FanWalk.h"

namespace KM {
namespace {

using Flags = std::vector<char>;

/// One step of the walk along a boundary: over `edge` if it has a twin, else behind it. So the walk turns through the
/// fan at each node of the boundary, and the orphans that it meets are the boundary. -1 where a link leads nowhere.
int NextAlongBoundary(const PIN& mesh, int edge) {
    const int next = mesh.edges[edge].TE == -1 ? mesh.edges[edge].NE : NextInFan(mesh, edge);
    return IsAliveEdge(mesh, next) ? next : -1;
}

/// The orphans that a walk from `orphan` meets; none if the walk does not come round, which `mayVisit` decides edge by
/// edge.
template <class MayVisit>
std::vector<int> WalkBoundary(const PIN& mesh, int orphan, MayVisit mayVisit) {
    std::vector<int> loop;
    int e = orphan;
    do {
        if (e == -1 || !mayVisit(e)) return {};
        if (mesh.edges[e].TE == -1) loop.push_back(e);
        e = NextAlongBoundary(mesh, e);
    } while (e != orphan);
    return loop;
}

void FlagLoop(const PIN& mesh, int edge, Flags& visited) {
    for (int e = edge; IsAliveEdge(mesh, e) && !visited[e]; e = mesh.edges[e].NE) visited[e] = 1;
}

}  // namespace

std::vector<int> Loop(const PIN& mesh, int edge) {
    std::vector<int> loop;
    int e = edge;
    do {
        // A loop longer than `edges` never comes back to its beginning.
        if (!IsAliveEdge(mesh, e) || loop.size() == mesh.edges.size()) return {};
        loop.push_back(e);
        e = mesh.edges[e].NE;
    } while (e != edge);
    return loop;
}

std::vector<int> OrphanLoop(const PIN& mesh, int edge) {
    if (!IsAliveEdge(mesh, edge) || mesh.edges[edge].TE != -1) return {};
    std::size_t left = mesh.edges.size();
    return WalkBoundary(mesh, edge, [&](int) { return left-- != 0; });
}

std::vector<std::vector<int>> AllOrphanLoops(const PIN& mesh) {
    std::vector<std::vector<int>> loops;
    Flags visited(mesh.edges.size(), 0);
    const int count = static_cast<int>(mesh.edges.size());
    for (int e = 0; e < count; ++e) {
        // The twin first: nearly all edges have one, and are passed over without a look at their flags.
        if (mesh.edges[e].TE != -1 || IsMarkedDead(mesh.edges[e]) || visited[e]) continue;
        // Two walks have no edge in common on a sound mesh, so one that meets a flag will not come round.
        std::vector<int> loop = WalkBoundary(mesh, e, [&](int met) { return !std::exchange(visited[met], 1); });
        if (!loop.empty()) loops.push_back(std::move(loop));
    }
    return loops;
}

bool AreOnSameLoop(const PIN& mesh, int e1, int e2) {
    if (!IsAliveEdge(mesh, e1)) return false;
    int e = mesh.edges[e1].NE;
    for (std::size_t left = mesh.edges.size(); e != e1 && IsAliveEdge(mesh, e) && left != 0; --left) {
        if (e == e2) return true;
        e = mesh.edges[e].NE;
    }
    return false;
}

std::vector<int> CollectNonTriangularLoops(const PIN& mesh) {
    std::vector<int> found;
    Flags visited(mesh.edges.size(), 0);
    for (int i = 0; i < static_cast<int>(mesh.edges.size()); ++i) {
        if (visited[i] || IsMarkedDead(mesh.edges[i])) continue;
        if (ThirdOfTriangle(mesh, i) == -1) found.push_back(i);
        FlagLoop(mesh, i, visited);
    }
    return found;
}

double EdgeLength(const PIN& mesh, int edge) {
    if (!IsAliveEdge(mesh, edge)) return 0.0;
    const std::size_t start = static_cast<std::size_t>(mesh.edges[edge].P0);
    const std::size_t end = static_cast<std::size_t>(EndNode(mesh, edge));
    if (start >= mesh.points.size() || end >= mesh.points.size()) return 0.0;
    return Length(mesh.points[end] - mesh.points[start]);
}

double LoopLength(const PIN& mesh, const std::vector<int>& edges) {
    double sum = 0.0;
    for (const int edge : edges) sum += EdgeLength(mesh, edge);
    return sum;
}

}  // namespace KM
