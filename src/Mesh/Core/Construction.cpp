#include "Mesh/Core/Construction.h"

#include <limits>

#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Orientation.h"
#include "Mesh/Core/PointMerging.h"
#include "Utils/U_App/Services.h"

namespace KM {
namespace {

template <class Mesh>
void AppendPoint(Mesh& mesh, const typename Mesh::PointType& point) {
    mesh.points.push_back(point);
    mesh.p2e.push_back(-1);
}

template <class Mesh, class Merger>
int AddMergedPoint(Mesh& mesh, Merger& merger, const typename Mesh::PointType& point) {
    AppendPoint(mesh, point);
    const int candidate = static_cast<int>(mesh.points.size()) - 1;
    const int node = merger.FindOrInsert(candidate);
    if (node != candidate) {
        mesh.points.pop_back();
        mesh.p2e.pop_back();
    }
    return node;
}

template <class Mesh>
void FinishBuild(Mesh& mesh) {
    VisitorOf<Mesh> nobody;
    FixOrientation(mesh, nobody);
    Compact(mesh, nobody);
}

template <class Mesh>
void DropLastEdges(Mesh& mesh, std::size_t count) {
    mesh.edges.resize(mesh.edges.size() - std::min(count, mesh.edges.size()));
}

template <class Mesh>
void ClearTwinOf(Mesh& mesh, int edge) {
    const int twin = mesh.edges[edge].TE;
    if (twin != -1) mesh.edges[twin].TE = -1;
}

void AddFacet(PIN& mesh, int a, int b, int c, EdgesMap& map) {
    if (a < 0 || b < 0 || c < 0) return;
    AddTriangle(mesh, a, b, c, map, true);
}

}  // namespace

int AddPoint(PIN& mesh, const TPoint<double>& point) {
    AppendPoint(mesh, point);
    return static_cast<int>(mesh.points.size()) - 1;
}

template <class Mesh>
int AddEdge(Mesh& mesh, int start, int end, EdgesMap& map, bool setNodeEdge) {
    if (start < 0 || end < 0) {
        Application::Services::DumpStream() << "PIN.AddEdge: Can't create edge between non-existent nodes";
        return -1;
    }
    const int e = static_cast<int>(mesh.edges.size());
    mesh.edges.push_back({-1, -1, start});
    const int twin = map.UseEdge(start, end);
    if (twin == -1) {
        map.AddEdge(e, start, end);
    } else {
        if (mesh.edges[twin].TE != -1) return -1;
        mesh.edges[twin].TE = e;
        mesh.edges[e].TE = twin;
    }
    if (setNodeEdge) {
        const std::size_t needed = static_cast<std::size_t>(start) + 1;
        if (mesh.p2e.size() < needed) mesh.p2e.resize(needed, e);
        mesh.p2e[start] = e;
    }
    return e;
}

template <class Mesh>
void AddTriangle(Mesh& mesh, int a, int b, int c, EdgesMap& map, bool setNodeEdge) {
    if (a == b || b == c || c == a) return;
    const int e1 = AddEdge(mesh, a, b, map, setNodeEdge);
    if (e1 < 0) return DropLastEdges(mesh, 1);
    const int e2 = AddEdge(mesh, b, c, map, setNodeEdge);
    if (e2 < 0) {
        ClearTwinOf(mesh, e1);
        return DropLastEdges(mesh, 2);
    }
    const int e3 = AddEdge(mesh, c, a, map, setNodeEdge);
    if (e3 < 0) {
        ClearTwinOf(mesh, e1);
        ClearTwinOf(mesh, e2);
        return DropLastEdges(mesh, 3);
    }
    mesh.edges[e1].NE = e2;
    mesh.edges[e2].NE = e3;
    mesh.edges[e3].NE = e1;
}

void AddTriangles_1(PIN& mesh, const std::vector<TPoint<double>>& soup) {
    EdgesMap map(static_cast<int>(soup.size()));
    PointIndexSet merger(mesh);
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3) {
        const int a = AddMergedPoint(mesh, merger, soup[i]);
        const int b = AddMergedPoint(mesh, merger, soup[i + 1]);
        const int c = AddMergedPoint(mesh, merger, soup[i + 2]);
        AddFacet(mesh, a, b, c, map);
    }
    FinishBuild(mesh);
}

void AddTriangles_2(PIN& mesh, const std::vector<std::vector<TPoint<double>>>& facets) {
    EdgesMap map(static_cast<int>(3 * facets.size()));
    PointIndexSet merger(mesh);
    for (const std::vector<TPoint<double>>& facet : facets) {
        if (facet.size() < 3) continue;
        const int a = AddMergedPoint(mesh, merger, facet[0]);
        const int b = AddMergedPoint(mesh, merger, facet[1]);
        const int c = AddMergedPoint(mesh, merger, facet[2]);
        AddFacet(mesh, a, b, c, map);
    }
    FinishBuild(mesh);
}

void AddTriangles_3(PIN& mesh, const std::vector<TPoint<double>>& nodes, const std::vector<int>& triples) {
    EdgesMap map(static_cast<int>(nodes.size()));
    mesh.points = nodes;
    mesh.p2e.resize(nodes.size(), -1);
    for (std::size_t i = 0; i + 2 < triples.size(); i += 3)
        AddFacet(mesh, triples[i], triples[i + 1], triples[i + 2], map);
    FinishBuild(mesh);
}

void AddTriangles_4(PIN& mesh, const std::vector<TPoint<double>>& nodes,
                    const std::vector<std::vector<int>>& facets) {
    EdgesMap map(static_cast<int>(nodes.size()));
    mesh.points = nodes;
    mesh.p2e.resize(nodes.size(), -1);
    for (const std::vector<int>& facet : facets)
        if (facet.size() >= 3) AddFacet(mesh, facet[0], facet[1], facet[2], map);
    FinishBuild(mesh);
}

void AddTrianglesSPIN(SPIN& mesh, int /*pointCount*/, float* xyz, int triangleCount, int* triples) {
    EdgesMap map;
    PointIndexHash merger(mesh);
    if (xyz == nullptr || triples == nullptr) triangleCount = 0;
    for (int i = 0; i < triangleCount; ++i) {
        int node[3];
        for (int k = 0; k < 3; ++k) {
            const float* p = xyz + 3 * static_cast<std::ptrdiff_t>(triples[3 * static_cast<std::ptrdiff_t>(i) + k]);
            node[k] = AddMergedPoint(mesh, merger, TPoint<float>(p[0], p[1], p[2]));
        }
        AddTriangle(mesh, node[0], node[1], node[2], map, false);
    }
    FinishBuild(mesh);
}

std::vector<int> AddPolygon(PIN& mesh, const std::vector<int>& nodes, const std::vector<int>& twins) {
    const int first = static_cast<int>(mesh.edges.size());
    const int count = static_cast<int>(nodes.size());
    if (twins.size() < nodes.size()) return {};
    for (int i = 0; i < count; ++i)
        if (twins[i] < -1 || twins[i] >= first + i) return {};

    std::vector<int> added(nodes.size());
    for (int i = 0; i < count; ++i) {
        added[i] = first + i;
        mesh.edges.push_back({first + (i + 1) % count, twins[i], nodes[i]});
        if (twins[i] != -1) mesh.edges[twins[i]].TE = first + i;
    }
    return added;
}

template KM_API int AddEdge(PIN&, int, int, EdgesMap&, bool);
template KM_API int AddEdge(SPIN&, int, int, EdgesMap&, bool);
template KM_API void AddTriangle(PIN&, int, int, int, EdgesMap&, bool);
template KM_API void AddTriangle(SPIN&, int, int, int, EdgesMap&, bool);

}  // namespace KM
