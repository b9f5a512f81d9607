#include "Mesh/Algorithms/Normals.h"

#include <algorithm>
#include <cstddef>

#include "Mesh/Algorithms/CircleGuard.h"
#include "Mesh/Algorithms/ClosedFans.h"
#include "Mesh/Algorithms/CornerNormal.h"
#include "Mesh/Algorithms/MeshView.h"
#include "Mesh/Core/FanWalk.h"
#include "Mesh/Core/PreviousEdges.h"

namespace KM {
namespace {

/// The normals of fans of all kinds: open ones, with longer loops, with links that contradict each other.
class AnyFans {
public:
    AnyFans(const PIN& mesh, bool isWeighted)
        : mesh_(mesh), isWeighted_(isWeighted), previous_(mesh), stepsLeft_(MostSteps(mesh)) {}

    /// The zero vector if nothing has weight, and where a walk is cut.
    TPoint<double> NormalAt(int edge) {
        NormalSum sum(isWeighted_);
        const int first = FirstOfFan(edge);
        CircleGuard guard;
        for (int e = first; e != -1;) {
            if (!MayVisit(e, guard)) return TPoint<double>();
            sum.AddTriangleOf(mesh_, e);
            e = NextInFan(mesh_, e);
            if (e == first) break;
        }
        return sum.Weight() != 0.0 ? sum.Average() : TPoint<double>();
    }

    /// The same for a node at which no edge starts. There can be more of these than edges, and where `p2e` is too short they
    /// all name one edge: walked for each of them, its fan would leave no steps for the other fans.
    TPoint<double> NormalOfLonelyNode(int edge) {
        if (edge != namedByLonely_) {
            namedByLonely_ = edge;
            normalOfLonely_ = NormalAt(edge);
        }
        return normalOfLonely_;
    }

private:
    /// Sound fans have no edge in common, and all together take two steps an edge. Broken links can make each of a million
    /// walks as long as the mesh; so may they in a small mesh alone.
    static std::size_t MostSteps(const PIN& mesh) {
        const std::size_t edges = mesh.edges.size();
        return 16 * edges + std::min<std::size_t>(2 * edges * mesh.points.size(), 1'000'000);
    }

    bool MayVisit(int edge, CircleGuard& guard) {
        if (stepsLeft_ == 0 || guard.IsMetAgain(edge)) return false;
        --stepsLeft_;
        return true;
    }

    int StepBack(int edge) {
        const int previous = previous_.Of(edge);
        if (previous == -1) return -1;
        const int twin = mesh_.edges[previous].TE;
        return IsAliveEdge(mesh_, twin) ? twin : -1;
    }

    /// As `StartingEdge`, but at the cost of a read a step on loops of any length. -1 if the walk is cut.
    int FirstOfFan(int edge) {
        if (!IsAliveEdge(mesh_, edge)) return -1;
        int best = edge;
        CircleGuard guard;
        for (int e = StepBack(edge); e != -1 && e != edge; e = StepBack(e)) {
            if (!MayVisit(e, guard)) return -1;
            best = e;
        }
        return best;
    }

    const PIN& mesh_;
    bool isWeighted_;
    PreviousEdges<PIN> previous_;
    std::size_t stepsLeft_;
    int namedByLonely_ = -1;
    TPoint<double> normalOfLonely_;
};

/// What `RebuildNodeEdges` would make of `p2e`, with dead records left out.
std::vector<int> EdgesOfNodes(const PIN& mesh) {
    std::vector<int> named = mesh.p2e;
    named.resize(mesh.points.size());
    const MeshView view(mesh);
    for (std::size_t e = 0; e < view.edgeCount; ++e)
        if (view.IsNode(view.edges[e].P0) && !IsDead(view.edges[e])) named[view.edges[e].P0] = static_cast<int>(e);
    return named;
}

}  // namespace

const TPoint<double> NodeNormal(const PIN& mesh, int edge, bool weighted) {
    NormalSum sum(weighted);
    int e = IsAliveEdge(mesh, edge) ? edge : -1;
    CircleGuard guard;
    while (e != -1 && IsEdge(mesh, mesh.edges[e].TE) && !guard.IsMetAgain(e)) {
        sum.AddTriangleOf(mesh, e);
        e = NextInFan(mesh, e);
        if (e == edge) break;
    }
    return sum.Average();
}

void Normals(const PIN& mesh, std::vector<TPoint<double>>& normals, bool weighted) {
    normals.assign(mesh.points.size(), TPoint<double>());
    const std::vector<int> named = EdgesOfNodes(mesh);
    ClosedFans closed(mesh, weighted, normals);
    AnyFans others(mesh, weighted);
    // By node, though by edge would need no table: neighbours tend to have near numbers, in the order of triangles and in
    // none.
    for (std::size_t node = 0; node < named.size(); ++node) {
        const int edge = named[node];
        const bool isOwn = IsAliveEdge(mesh, edge) && mesh.edges[edge].P0 == static_cast<int>(node);
        if (!isOwn) normals[node] = others.NormalOfLonelyNode(edge);
        else if (!closed.Take(edge)) normals[node] = others.NormalAt(edge);
    }
    closed.Finish();
}

}  // namespace KM
