#include "Mesh/Core/Orientation.h"

#include <algorithm>
#include <vector>

#include "Mesh/Core/Loops.h"

namespace KM {
namespace {

/// True when an edge has a twin that runs the same way.
template <class Mesh>
bool RunsWithTwin(const Mesh& mesh, int e) {
    const int twin = mesh.edges[e].TE;
    return twin != -1 && mesh.edges[twin].P0 != mesh.edges[mesh.edges[e].NE].P0;
}

template <class Mesh>
class OrientationRepair {
public:
    OrientationRepair(Mesh& mesh, VisitorOf<Mesh>& visitor)
        : mesh_(mesh), visitor_(visitor), visited_(mesh.edges.size(), 0) {}

    void Flood() {
        for (int i = 0; i < static_cast<int>(mesh_.edges.size()); ++i) {
            if (mesh_.edges[i].NE == -1 || visited_[i]) continue;
            queue_.assign(1, i);
            for (std::size_t next = 0; next < queue_.size(); ++next) Visit(queue_[next]);
        }
    }

    void CutWhatStillClashes() {
        for (int e = 0; e < static_cast<int>(mesh_.edges.size()); ++e) {
            if (mesh_.edges[e].NE == -1 || !RunsWithTwin(mesh_, e)) continue;
            const int twin = mesh_.edges[e].TE;
            SetTE(twin, -1);
            SetTE(e, -1);
        }
    }

private:
    void Visit(int e) {
        if (visited_[e]) return;
        const int ne = mesh_.edges[e].NE;
        const int pe = PrevEdge(mesh_, e);
        visited_[pe] = visited_[e] = visited_[ne] = 1;
        if (Clashes(pe) || Clashes(e) || Clashes(ne)) ReverseTriangle(e, ne, pe);
        for (const int edge : {pe, e, ne})
            if (mesh_.edges[edge].TE != -1) queue_.push_back(mesh_.edges[edge].TE);
    }

    bool Clashes(int e) const { return RunsWithTwin(mesh_, e) && visited_[mesh_.edges[e].TE]; }

    void ReverseTriangle(int e, int ne, int pe) {
        const int startOfE = mesh_.edges[e].P0;
        const int startOfNe = mesh_.edges[ne].P0;
        const int startOfPe = mesh_.edges[pe].P0;
        SetNE(ne, e);
        SetP0(pe, startOfE);
        SetNE(pe, ne);
        SetP0(e, startOfNe);
        SetNE(e, pe);
        SetP0(ne, startOfPe);
    }

    void SetNE(int e, int value) {
        visitor_.SetNE(e, mesh_.edges[e].NE, value);
        mesh_.edges[e].NE = value;
    }
    void SetP0(int e, int value) {
        visitor_.SetP0(e, mesh_.edges[e].P0, value);
        mesh_.edges[e].P0 = value;
    }
    void SetTE(int e, int value) {
        visitor_.SetTE(e, mesh_.edges[e].TE, value);
        mesh_.edges[e].TE = value;
    }

    Mesh& mesh_;
    VisitorOf<Mesh>& visitor_;
    std::vector<char> visited_;
    std::vector<int> queue_;
};

}  // namespace

template <class Mesh>
void FixOrientation(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    OrientationRepair<Mesh> repair(mesh, visitor);
    repair.Flood();
    repair.CutWhatStillClashes();

    mesh.p2e.resize(mesh.points.size(), -1);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        const std::size_t node = static_cast<std::size_t>(mesh.edges[e].P0);
        if (node < mesh.p2e.size()) mesh.p2e[node] = e;
    }
}

template KM_API void FixOrientation(PIN&, VisitorOf<PIN>&);
template KM_API void FixOrientation(SPIN&, VisitorOf<SPIN>&);

}  // namespace KM
