#include "Support/MeshChecks.h"

#include <algorithm>
#include <cstring>
#include <set>

#include "Tools/KmPinBoundary.h"

namespace KM::Test {
namespace {

template <class T>
bool SameBytes(const std::vector<T>& a, const std::vector<T>& b) {
    return a.size() == b.size() && (a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0);
}

std::string At(const char* what, int index) { return std::string(what) + " " + std::to_string(index); }

template <class Mesh>
std::string EdgeFault(const Mesh& mesh, int e) {
    const int edgeCount = static_cast<int>(mesh.edges.size());
    const Edge& edge = mesh.edges[e];
    if (edge.NE < 0 || edge.NE >= edgeCount || mesh.edges[edge.NE].NE == -1) return At("NE is no alive edge at", e);
    if (edge.P0 < 0 || edge.P0 >= static_cast<int>(mesh.points.size())) return At("P0 is no node at", e);
    int steps = 0;
    for (int x = edge.NE; x != e; x = mesh.edges[x].NE)
        if (++steps > edgeCount || mesh.edges[x].NE < 0 || mesh.edges[x].NE >= edgeCount)
            return At("NE does not lead back to", e);
    if (edge.TE == -1) return "";
    if (edge.TE < 0 || edge.TE >= edgeCount || mesh.edges[edge.TE].NE == -1) return At("TE is no alive edge at", e);
    const Edge& twin = mesh.edges[edge.TE];
    if (twin.TE != e) return At("the twin has another twin at", e);
    const bool endsHere = twin.NE >= 0 && twin.NE < edgeCount && mesh.edges[twin.NE].P0 == edge.P0;
    if (twin.P0 != mesh.edges[edge.NE].P0 || !endsHere) return At("the twin runs elsewhere at", e);
    return "";
}

}  // namespace

template <class Mesh>
std::string FirstUnsoundness(const Mesh& mesh) {
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        if (mesh.edges[e].NE == -1) continue;
        const std::string fault = EdgeFault(mesh, e);
        if (!fault.empty()) return fault;
    }
    if (mesh.p2e.size() != mesh.points.size()) return "p2e is not as long as points";
    for (int n = 0; n < static_cast<int>(mesh.p2e.size()); ++n) {
        const int e = mesh.p2e[n];
        if (e == -1) continue;
        if (e < 0 || e >= static_cast<int>(mesh.edges.size()) || mesh.edges[e].NE == -1 || mesh.edges[e].P0 != n)
            return At("p2e names no edge of node", n);
    }
    return "";
}

template <class Mesh>
std::string FirstUncompactness(const Mesh& mesh) {
    const std::string fault = FirstUnsoundness(mesh);
    if (!fault.empty()) return fault;
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
        if (mesh.edges[e].NE == -1) return At("dead edge", e);
    for (int n = 0; n < static_cast<int>(mesh.p2e.size()); ++n)
        if (mesh.p2e[n] == -1) return At("dead node", n);
    return "";
}

std::string IntegrityFaults(const PIN& mesh) {
    std::string faults;
    for (const PinFault& fault : CheckIntegrity(mesh))
        if (fault.text != "G1-14") faults += At("at", fault.item) + ": " + fault.text + "\n";
    return faults;
}

template <class Mesh>
bool SameRecords(const Mesh& a, const Mesh& b) {
    return SameBytes(a.points, b.points) && SameBytes(a.edges, b.edges) && SameBytes(a.p2e, b.p2e);
}

template <class Mesh>
std::vector<std::array<int, 3>> TrianglesOf(const Mesh& mesh) {
    std::vector<std::array<int, 3>> triangles;
    std::vector<char> visited(mesh.edges.size(), 0);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        if (visited[e] || mesh.edges[e].NE == -1) continue;
        const int ne = mesh.edges[e].NE;
        const int third = mesh.edges[ne].NE;
        visited[e] = visited[ne] = visited[third] = 1;
        std::array<int, 3> nodes{mesh.edges[e].P0, mesh.edges[ne].P0, mesh.edges[third].P0};
        std::rotate(nodes.begin(), std::min_element(nodes.begin(), nodes.end()), nodes.end());
        triangles.push_back(nodes);
    }
    std::sort(triangles.begin(), triangles.end());
    return triangles;
}

int OrphanCount(const PIN& mesh) {
    return static_cast<int>(std::count_if(mesh.edges.begin(), mesh.edges.end(),
                                          [](const Edge& e) { return e.NE != -1 && e.TE == -1; }));
}

int EulerCharacteristic(const PIN& mesh) {
    std::set<int> nodes;
    int halfEdges = 0;
    int loops = 0;
    std::vector<char> visited(mesh.edges.size(), 0);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        if (mesh.edges[e].NE == -1) continue;
        nodes.insert(mesh.edges[e].P0);
        ++halfEdges;
        if (visited[e]) continue;
        ++loops;
        for (int x = e; !visited[x]; x = mesh.edges[x].NE) visited[x] = 1;
    }
    return static_cast<int>(nodes.size()) - (halfEdges + OrphanCount(mesh)) / 2 + loops;
}

template std::string FirstUnsoundness(const PIN&);
template std::string FirstUnsoundness(const SPIN&);
template std::string FirstUncompactness(const PIN&);
template std::string FirstUncompactness(const SPIN&);
template bool SameRecords(const PIN&, const PIN&);
template bool SameRecords(const SPIN&, const SPIN&);
template std::vector<std::array<int, 3>> TrianglesOf(const PIN&);
template std::vector<std::array<int, 3>> TrianglesOf(const SPIN&);

}  // namespace KM::Test
