#include "Mesh/Core/Loops.h"

namespace KM {
namespace {

bool IsAlive(const PIN& mesh, int edge) {
    return edge >= 0 && edge < static_cast<int>(mesh.edges.size()) && mesh.edges[edge].NE != -1;
}

int NextOrphan(const PIN& mesh, int orphan) {
    int edge = mesh.edges[orphan].NE;
    while (mesh.edges[edge].TE != -1) edge = mesh.edges[mesh.edges[edge].TE].NE;
    return edge;
}

}  // namespace

std::vector<int> Loop(const PIN& mesh, int edge) {
    if (!IsAlive(mesh, edge)) return {};
    std::vector<int> loop{edge};
    for (int e = mesh.edges[edge].NE; e != edge; e = mesh.edges[e].NE) loop.push_back(e);
    return loop;
}

std::vector<int> OrphanLoop(const PIN& mesh, int edge) {
    if (!IsAlive(mesh, edge) || mesh.edges[edge].TE != -1) return {};
    std::vector<int> loop{edge};
    for (int e = NextOrphan(mesh, edge); e != edge; e = NextOrphan(mesh, e)) loop.push_back(e);
    return loop;
}

std::vector<std::vector<int>> AllOrphanLoops(const PIN& mesh) {
    std::vector<std::vector<int>> loops;
    std::vector<char> visited(mesh.edges.size(), 0);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        if (visited[e] || mesh.edges[e].NE == -1 || mesh.edges[e].TE != -1) continue;
        loops.push_back(OrphanLoop(mesh, e));
        for (const int orphan : loops.back()) visited[orphan] = 1;
    }
    return loops;
}

bool AreOnSameLoop(const PIN& mesh, int e1, int e2) {
    if (!IsAlive(mesh, e1)) return false;
    for (int e = mesh.edges[e1].NE; e != e1; e = mesh.edges[e].NE)
        if (e == e2) return true;
    return false;
}

std::vector<int> CollectNonTriangularLoops(const PIN& mesh) {
    std::vector<int> found;
    std::vector<char> visited(mesh.edges.size(), 0);
    for (int i = 0; i < static_cast<int>(mesh.edges.size()); ++i) {
        if (visited[i] || mesh.edges[i].NE == -1) continue;
        const int ne = mesh.edges[i].NE;
        const int third = mesh.edges[ne].NE;
        if (mesh.edges[third].NE == i) {
            visited[i] = visited[ne] = visited[third] = 1;
            continue;
        }
        found.push_back(i);
        for (const int e : Loop(mesh, i)) visited[e] = 1;
    }
    return found;
}

double EdgeLength(const PIN& mesh, int edge) {
    const Edge& e = mesh.edges[edge];
    return Length(mesh.points[mesh.edges[e.NE].P0] - mesh.points[e.P0]);
}

double LoopLength(const PIN& mesh, const std::vector<int>& edges) {
    double sum = 0.0;
    for (const int edge : edges) sum += EdgeLength(mesh, edge);
    return sum;
}

}  // namespace KM
