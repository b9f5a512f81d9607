#include "Tools/KmPinBoundary.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

#include "Mesh/Core/PreviousEdges.h"
#include "Mesh/Core/SafeLinks.h"

namespace KM {
namespace {

template <class Vector>
bool Has(const Vector& items, int index) {
    return static_cast<std::size_t>(index) < items.size();  // a negative index becomes a huge one
}

bool IsAlive(const PinBoundary& view, int e) {
    return Has(view.edges, e) && Has(view.aliveEdges, e) && view.aliveEdges[e];
}

bool IsFinite(const TPoint<double>& p) { return std::isfinite(p.X) && std::isfinite(p.Y) && std::isfinite(p.Z); }

class IntegrityCheck {
public:
    explicit IntegrityCheck(const PinBoundary& view) : view_(view), isNodeMet_(view.points.size(), false) {}

    std::vector<PinFault> Run() {
        for (int e = 0; Has(view_.edges, e); ++e)
            if (IsAlive(view_, e)) CheckEdge(e);
        for (int loop = 0; Has(view_.loops, loop); ++loop) CheckLoop(loop);
        const int nodes = static_cast<int>(std::max(view_.points.size(), view_.p2e.size()));
        if (!view_.p2e.empty())
            for (int node = 0; node < nodes; ++node) CheckNode(node);
        return std::move(faults_);
    }

private:
    static constexpr int MaxElements = 10000;
    static constexpr int LeastElements = 3;

    /// How a walk round a loop went.
    struct Walk {
        int count = 0;
        bool isBack = false;
        bool isGivenUp = false;
        bool hasStranger = false;  ///< an element with another loop number
    };

    void CheckEdge(int e) {
        const PinBoundaryEdge& edge = view_.edges[e];
        const int ne = AliveOrNone(edge.ne);
        const int pe = AliveOrNone(edge.pe);
        if (ne == -1) Report(e, "G1-1: e->ne == 0 is wrong!");
        if (pe == -1) Report(e, "G1-2: e->pe == 0 is wrong!");
        CheckLinks(e, pe, ne);
        if (edge.twin != -1) CheckTwin(e, ne);
        CheckStart(e);
    }

    /// Loop numbers are compared across sound links alone; a broken link is told, and that is enough.
    void CheckLinks(int e, int pe, int ne) {
        const int back = pe != -1 ? AliveOrNone(view_.edges[pe].ne) : e;
        const int forth = ne != -1 ? AliveOrNone(view_.edges[ne].pe) : e;
        if (back != e && back != -1) Report(e, "G1-3: e != e->pe->ne doesn't check!");
        if (forth != e) Report(e, "G1-4: e != e->ne->pe doesn't check!");
        if (back == -1) Report(e, "G1-5: e != e->pe->ne doesn't check!");
        const int loop = view_.edges[e].loopIx;
        if (pe != -1 && back == e && view_.edges[pe].loopIx != loop)
            Report(e, "G1-6: e->loopIx != e->pe->loopIx doesn't check!");
        if (ne != -1 && forth == e && view_.edges[ne].loopIx != loop)
            Report(e, "G1-7: e->loopIx != e->ne->loopIx doesn't check!");
    }

    /// That the twin ends where the edge starts is told at the twin.
    void CheckTwin(int e, int ne) {
        const int twin = AliveOrNone(view_.edges[e].twin);
        if (twin == -1) Report(e, "G1-10");
        else if (view_.edges[twin].twin != e) Report(e, "G1-11");
        else if (ne != -1 && view_.edges[twin].node != view_.edges[ne].node) Report(e, "G1-12");
    }

    void CheckStart(int e) {
        const int node = view_.edges[e].node;
        if (!Has(view_.points, node)) {
            Report(e, "G1-13");
            return;
        }
        if (isNodeMet_[node]) return;
        isNodeMet_[node] = true;
        if (!IsFinite(view_.points[node])) Report(e, "G1-14");
        if (Has(view_.p2e, node) && view_.p2e[node] == -1)
            Report(e, "G1-15 Edge stored in node isn't updated for " + std::to_string(node) + "!");
    }

    void CheckLoop(int loop) {
        const Walk walk = WalkRound(loop);
        const int cached = view_.loops[loop].count;
        const std::string name = std::to_string(loop);
        const std::string real = std::to_string(walk.count);
        if (walk.hasStranger)
            Report(loop, "G2-1: Loop: " + name + " found an edge that doesn't have correct set loop index!");
        if (walk.isGivenUp) Report(loop, "G2-3: Loop: " + name + " excedes 10000 elements!");
        else if (!walk.isBack || walk.count < cached)
            Report(loop, "G2-4: Loop: " + name + ", " + real + ", " + std::to_string(cached));
        else if (walk.count > cached)
            Report(loop, "G2-2: Loop: " + name + " has more elements then the cached version! Real: " + real +
                             ", Cached: " + std::to_string(cached));
        if (walk.isBack && walk.count < LeastElements) Report(loop, name + " has to few elements! Elements: " + real);
    }

    Walk WalkRound(int loop) const {
        Walk walk;
        const int first = view_.loops[loop].first;
        for (int e = first; !walk.isBack && IsAlive(view_, e); walk.isBack = e == first) {
            walk.isGivenUp = walk.count == MaxElements;
            if (walk.isGivenUp) break;
            ++walk.count;
            walk.hasStranger |= view_.edges[e].loopIx != loop;
            e = view_.edges[e].ne;
        }
        return walk;
    }

    void CheckNode(int node) {
        const bool isComplete = Has(view_.points, node) && Has(view_.p2e, node);
        const int e = isComplete ? view_.p2e[node] : -1;
        if (isComplete && e == -1) return;
        if (isComplete && !IsAlive(view_, e)) Report(node, "G3-2: aliveEdges.find(p2e[n]) == aliveEdges.end()!");
        else if (!isComplete || view_.edges[e].node != node)
            Report(node, "G3-1: starting node isn't the same with the information stored in node!\n    NodeIx = " +
                             std::to_string(node));
    }

    int AliveOrNone(int e) const { return IsAlive(view_, e) ? e : -1; }

    void Report(int item, std::string text) { faults_.push_back({std::move(text), item}); }

    const PinBoundary& view_;
    std::vector<bool> isNodeMet_;
    std::vector<PinFault> faults_;
};

/// Numbers and counts the loops whose edges have been given their previous edges.
void NumberLoops(PinBoundary& view) {
    for (int first = 0; Has(view.edges, first); ++first) {
        if (view.edges[first].pe == -1 || view.edges[first].loopIx != -1) continue;
        PinBoundaryLoop loop{first, 0};
        for (int e = first; view.edges[e].loopIx == -1; e = view.edges[e].ne) {
            view.edges[e].loopIx = static_cast<int>(view.loops.size());
            ++loop.count;
        }
        view.loops.push_back(loop);
    }
}

/// Gives an edge on no loop, to which others lead all the same, the lowest of these as its previous edge.
void LinkBackOffLoops(PinBoundary& view) {
    for (int e = 0; Has(view.edges, e); ++e) {
        const int ne = view.edges[e].ne;
        if (IsAlive(view, ne) && view.edges[ne].pe == -1) view.edges[ne].pe = e;
    }
}

void WriteLoop(std::ostream& out, const PinBoundary& view, const PinBoundaryLoop& loop) {
    out << "\n    Loop\n    {\n      ";
    // No walk without a repetition is longer than `edges`, whatever the cached count says.
    const std::size_t count = loop.count < 0 ? 0 : std::min<std::size_t>(loop.count, view.edges.size());
    int e = loop.first;
    for (std::size_t i = 0; i < count && Has(view.edges, e); e = view.edges[e].ne) out << (i++ == 0 ? "" : ", ") << e;
    out << "\n    }";
}

}  // namespace

PinBoundary::PinBoundary(const PIN& mesh)
    : edges(mesh.edges.size()), aliveEdges(mesh.edges.size(), false), p2e(mesh.p2e), points(mesh.points) {
    PreviousEdges<PIN> previous(mesh);
    for (int e = 0; Has(edges, e); ++e) {
        const Edge& edge = mesh.edges[e];
        aliveEdges[e] = !IsMarkedDead(edge);
        if (aliveEdges[e]) edges[e] = {previous.Of(e), edge.NE, edge.TE, edge.P0, -1};
    }
    NumberLoops(*this);
    LinkBackOffLoops(*this);
}

std::vector<PinFault> CheckIntegrity(const PinBoundary& view) { return IntegrityCheck(view).Run(); }

std::vector<PinFault> CheckIntegrity(const PIN& mesh) { return CheckIntegrity(PinBoundary(mesh)); }

std::ostream& operator<<(std::ostream& out, const PinBoundary& view) {
    out << "\nBoundary\n{\n  Loops\n  {";
    for (const PinBoundaryLoop& loop : view.loops) WriteLoop(out, view, loop);
    out << "\n  }\n  Edges\n  {";
    for (int e = 0; Has(view.edges, e); ++e) {
        if (!IsAlive(view, e)) continue;
        const PinBoundaryEdge& edge = view.edges[e];
        out << "\n      " << e << ", " << edge.pe << ", " << edge.ne << ", " << edge.twin << ", " << edge.node << ", "
            << edge.loopIx;
    }
    out << "\n  }\n  Nodes\n  {";
    for (int node = 0; Has(view.points, node); ++node) {
        const TPoint<double>& at = view.points[node];
        out << "\n    NodeIx = " << node << ", " << (Has(view.p2e, node) ? view.p2e[node] : -1) << ", " << at.X << ", "
            << at.Y << ", " << at.Z;
    }
    return out << "\n  }\n}";
}

}  // namespace KM
