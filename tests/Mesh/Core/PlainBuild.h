#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <set>
#include <utility>
#include <vector>

#include "Mesh/Core/PinVisitor.h"

// The rules of building and compacting a mesh in their plainest form: an ordered set of nodes, a bucket of waiting
// edges per node, a list of edges per node, all links trusted. Slow, and the standard that the library is compared
// with.

namespace KM::Test::Plain {

class EdgesMap {
public:
    void AddEdge(int edge, int start, int end) {
        Reach(end);
        buckets_[end].push_back({start, edge});
    }
    int UseEdge(int start, int end) {
        Reach(start);
        for (auto& waiting : buckets_[start])
            if (waiting.first == end) return std::exchange(waiting, {-1, -1}).second;
        return -1;
    }

private:
    void Reach(int node) {
        if (static_cast<int>(buckets_.size()) <= node) buckets_.resize(static_cast<std::size_t>(node) + 1);
    }
    std::deque<std::vector<std::pair<int, int>>> buckets_;
};

template <class Mesh>
int PrevEdge(const Mesh& mesh, int e) {
    int x = e;
    while (mesh.edges[x].NE != e) x = mesh.edges[x].NE;
    return x;
}

template <class Mesh>
void AddEdge(Mesh& mesh, int start, int end, EdgesMap& map) {
    const int e = static_cast<int>(mesh.edges.size());
    mesh.edges.push_back({-1, -1, start});
    const int t = map.UseEdge(start, end);
    if (t == -1) return map.AddEdge(e, start, end);
    mesh.edges[t].TE = e;
    mesh.edges[e].TE = t;
}

template <class Mesh>
void AddTriangle(Mesh& mesh, int a, int b, int c, EdgesMap& map) {
    if (a == b || b == c || c == a) return;
    const int e = static_cast<int>(mesh.edges.size());
    Plain::AddEdge(mesh, a, b, map);
    Plain::AddEdge(mesh, b, c, map);
    Plain::AddEdge(mesh, c, a, map);
    mesh.edges[e].NE = e + 1;
    mesh.edges[e + 1].NE = e + 2;
    mesh.edges[e + 2].NE = e;
}

template <class Mesh>
void SetNodeEdges(Mesh& mesh) {
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
        if (mesh.edges[e].P0 >= 0 && mesh.edges[e].P0 < static_cast<int>(mesh.p2e.size()))
            mesh.p2e[mesh.edges[e].P0] = e;
}

template <class Mesh>
class Orientation {
public:
    Orientation(Mesh& m, VisitorOf<Mesh>& v) : mesh(m), visitor(v), visited(m.edges.size(), false) {}

    void Run() {
        for (int i = 0; i < static_cast<int>(mesh.edges.size()); ++i) {
            if (visited[i]) continue;
            queue.push_back(i);
            while (!queue.empty()) {
                const int e = queue.front();
                queue.pop_front();
                if (e != -1 && !visited[e]) Visit(e);
            }
        }
        for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
            const int t = mesh.edges[e].TE;
            if (t == -1 || mesh.edges[t].P0 == mesh.edges[mesh.edges[e].NE].P0) continue;
            Set(&VisitorOf<Mesh>::SetTE, t, mesh.edges[t].TE, -1);
            Set(&VisitorOf<Mesh>::SetTE, e, mesh.edges[e].TE, -1);
        }
        mesh.p2e.resize(mesh.points.size(), -1);
        Plain::SetNodeEdges(mesh);
    }

private:
    bool Clashes(int x) const {
        const int t = mesh.edges[x].TE;
        return t != -1 && mesh.edges[t].P0 != mesh.edges[mesh.edges[x].NE].P0 && visited[t];
    }
    template <class Report>
    void Set(Report report, int e, std::int32_t& field, int value) {
        (visitor.*report)(e, field, value);
        field = value;
    }
    void Visit(int e) {
        const int ne = mesh.edges[e].NE;
        const int pe = Plain::PrevEdge(mesh, e);
        visited[pe] = visited[e] = visited[ne] = true;
        if (Clashes(pe) || Clashes(e) || Clashes(ne)) {
            const int pE = mesh.edges[e].P0, pNe = mesh.edges[ne].P0, pPe = mesh.edges[pe].P0;
            Set(&VisitorOf<Mesh>::SetNE, ne, mesh.edges[ne].NE, e);
            Set(&VisitorOf<Mesh>::SetP0, pe, mesh.edges[pe].P0, pE);
            Set(&VisitorOf<Mesh>::SetNE, pe, mesh.edges[pe].NE, ne);
            Set(&VisitorOf<Mesh>::SetP0, e, mesh.edges[e].P0, pNe);
            Set(&VisitorOf<Mesh>::SetNE, e, mesh.edges[e].NE, pe);
            Set(&VisitorOf<Mesh>::SetP0, ne, mesh.edges[ne].P0, pPe);
        }
        for (const int x : {pe, e, ne})
            if (mesh.edges[x].TE != -1) queue.push_back(mesh.edges[x].TE);
    }

    Mesh& mesh;
    VisitorOf<Mesh>& visitor;
    std::vector<bool> visited;
    std::deque<int> queue;
};

template <class Mesh>
void FixOrientation(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    Orientation<Mesh>(mesh, visitor).Run();
}

template <class Mesh>
void MoveEdgeRecord(Mesh& mesh, int from, int to, VisitorOf<Mesh>& visitor) {
    if (from == to) return;
    const int p = Plain::PrevEdge(mesh, from);
    visitor.SetNE(p, mesh.edges[p].NE, to);
    mesh.edges[p].NE = to;
    const int t = mesh.edges[from].TE;
    if (t != -1) {
        visitor.SetTE(t, mesh.edges[t].TE, to);
        mesh.edges[t].TE = to;
    }
    visitor.MoveEdge(mesh.edges[to], from, to);
    mesh.edges[to] = mesh.edges[from];
    const int node = mesh.edges[to].P0;
    if (mesh.p2e.size() == mesh.points.size() && node >= 0 && node < static_cast<int>(mesh.p2e.size()))
        mesh.p2e[node] = to;
}

template <class Mesh>
void CompactEdge(Mesh& mesh, int e, VisitorOf<Mesh>& visitor) {
    while (!mesh.edges.empty() && mesh.edges.back().NE == -1) {
        visitor.PopEdge(mesh.edges.back());
        mesh.edges.pop_back();
    }
    if (e >= static_cast<int>(mesh.edges.size())) return;
    Plain::MoveEdgeRecord(mesh, static_cast<int>(mesh.edges.size()) - 1, e, visitor);
    mesh.edges.pop_back();
}

template <class Mesh>
void DeleteTriangle(Mesh& mesh, int e) {
    const int three[] = {e, mesh.edges[e].NE, Plain::PrevEdge(mesh, e)};
    for (const int x : three)
        if (mesh.edges[x].TE != -1) mesh.edges[mesh.edges[x].TE].TE = -1;
    for (const int x : three) mesh.edges[x] = Edge();
}

template <class Mesh>
std::vector<std::vector<int>> CompactEdges(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    for (;;) {
        bool changed = false;
        for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
            if (mesh.edges[e].NE == -1) Plain::CompactEdge(mesh, e, visitor);
        mesh.p2e.assign(mesh.points.size(), -1);
        Plain::SetNodeEdges(mesh);
        std::vector<std::vector<int>> nodeEdges(mesh.points.size());
        for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
            if (mesh.edges[e].NE == -1) continue;
            if (mesh.edges[e].P0 < static_cast<int>(mesh.points.size())) {
                nodeEdges[mesh.edges[e].P0].push_back(e);
            } else {
                Plain::DeleteTriangle(mesh, e);
                changed = true;
            }
        }
        if (!changed) return nodeEdges;
    }
}

template <class Mesh>
void Compact(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    std::vector<std::vector<int>> nodeEdges = Plain::CompactEdges(mesh, visitor);
    for (int n = 0; n < static_cast<int>(mesh.points.size()); ++n) {
        if (mesh.p2e[n] != -1) continue;
        while (!mesh.p2e.empty() && mesh.p2e.back() == -1) {
            mesh.points.pop_back();
            mesh.p2e.pop_back();
            nodeEdges.pop_back();
        }
        if (n >= static_cast<int>(nodeEdges.size())) continue;
        for (const int e : nodeEdges.back()) {
            visitor.SetP0(e, mesh.edges[e].P0, n);
            mesh.edges[e].P0 = n;
        }
        nodeEdges[n] = nodeEdges.back();
        nodeEdges.pop_back();
        visitor.MoveNode(mesh.points[n], static_cast<int>(mesh.points.size()) - 1, n);
        mesh.points[n] = mesh.points.back();
        mesh.points.pop_back();
        mesh.p2e[n] = mesh.p2e.back();
        mesh.p2e.pop_back();
    }
}

/// An ordered set of node indices that reads the coordinates through the mesh.
template <class Mesh>
class PointSet {
public:
    explicit PointSet(Mesh& mesh) : mesh_(mesh), set_(Less{&mesh}) {}

    int Add(const typename Mesh::PointType& p) {
        mesh_.points.push_back(p);
        const auto [found, isNew] = set_.insert(static_cast<int>(mesh_.points.size()) - 1);
        if (!isNew) mesh_.points.pop_back();
        return *found;
    }

private:
    struct Less {
        const Mesh* mesh;
        bool operator()(int i, int j) const {
            const auto& a = mesh->points[i];
            const auto& b = mesh->points[j];
            return a.X < b.X || (a.X == b.X && (a.Y < b.Y || (a.Y == b.Y && a.Z < b.Z)));
        }
    };
    Mesh& mesh_;
    std::set<int, Less> set_;
};

template <class Mesh>
void Finish(Mesh& mesh) {
    VisitorOf<Mesh> nobody;
    Plain::FixOrientation(mesh, nobody);
    Plain::Compact(mesh, nobody);
}

/// Builds from triangles that are given by their points.
template <class Mesh>
void BuildMerged(Mesh& mesh, const std::vector<typename Mesh::PointType>& soup) {
    PointSet<Mesh> set(mesh);
    EdgesMap map;
    for (std::size_t i = 0; i + 2 < soup.size(); i += 3) {
        const int a = set.Add(soup[i]);
        const int b = set.Add(soup[i + 1]);
        const int c = set.Add(soup[i + 2]);
        Plain::AddTriangle(mesh, a, b, c, map);
    }
    Finish(mesh);
}

/// Builds from indices; a facet with a negative one is left out.
template <class Mesh>
void BuildIndexed(Mesh& mesh, const std::vector<typename Mesh::PointType>& nodes, const std::vector<int>& triples) {
    EdgesMap map;
    mesh.points = nodes;
    for (std::size_t i = 0; i + 2 < triples.size(); i += 3)
        if (std::min({triples[i], triples[i + 1], triples[i + 2]}) >= 0)
            Plain::AddTriangle(mesh, triples[i], triples[i + 1], triples[i + 2], map);
    Finish(mesh);
}

}  // namespace KM::Test::Plain
