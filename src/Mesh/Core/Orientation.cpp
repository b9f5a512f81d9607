#include "Mesh/Core/Orientation.h"

#include <vector>

#include "Mesh/Core/PreviousEdges.h"
#include "Mesh/Core/SafeLinks.h"

namespace KM {
namespace {

template <class Mesh>
class OrientationRepair {
public:
    OrientationRepair(Mesh& mesh, VisitorOf<Mesh>& visitor) : mesh_(mesh), visitor_(visitor), previous_(mesh) {}

    void Run() {
        // Most meshes have no twins that run the same way; nothing would be turned or cut there.
        if (!HasClash()) return;
        Flood();
        Cut();
    }

private:
    /// True for an alive edge that has a twin which does not start where the edge ends.
    bool RunsWithTwin(int e) const {
        const Edge& edge = mesh_.edges[e];
        return IsEdge(mesh_, edge.NE) && IsEdge(mesh_, edge.TE) && mesh_.edges[edge.TE].P0 != mesh_.edges[edge.NE].P0;
    }

    bool HasClash() const {
        for (int e = 0; IsEdge(mesh_, e); ++e)
            if (RunsWithTwin(e)) return true;
        return false;
    }

    void Flood() {
        visited_.assign(mesh_.edges.size(), 0);
        for (int i = 0; IsEdge(mesh_, i); ++i) {
            queue_.assign(1, i);
            for (std::size_t next = 0; next < queue_.size(); ++next) Visit(queue_[next]);
        }
    }

    void Visit(int e) {
        if (visited_[e]) return;
        const int ne = mesh_.edges[e].NE;
        const int pe = previous_.Of(e);
        if (pe == -1) return;  // dead, or on no loop
        visited_[pe] = visited_[e] = visited_[ne] = 1;
        // Only triangles are turned; the surgery below would tear a longer loop apart.
        const bool isTriangle = mesh_.edges[ne].NE == pe;
        if (isTriangle && (Clashes(pe) || Clashes(e) || Clashes(ne))) ReverseTriangle(e, ne, pe);
        for (const int edge : {pe, e, ne})
            if (IsEdge(mesh_, mesh_.edges[edge].TE)) queue_.push_back(mesh_.edges[edge].TE);
    }

    bool Clashes(int e) const { return RunsWithTwin(e) && visited_[mesh_.edges[e].TE]; }

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

    void Cut() {
        for (int e = 0; IsEdge(mesh_, e); ++e) {
            if (!RunsWithTwin(e)) continue;
            SetTE(mesh_.edges[e].TE, -1);
            SetTE(e, -1);
        }
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
    PreviousEdges<Mesh> previous_;
};

}  // namespace

template <class Mesh>
void FixOrientation(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    OrientationRepair<Mesh>(mesh, visitor).Run();
    mesh.p2e.resize(mesh.points.size(), -1);
    NameNodeEdges(mesh);
}

template KM_API void FixOrientation(PIN&, VisitorOf<PIN>&);
template KM_API void FixOrientation(SPIN&, VisitorOf<SPIN>&);

}  // namespace KM
