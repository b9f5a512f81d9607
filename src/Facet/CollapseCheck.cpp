#include "Facet/CollapseCheck.h"

#include "Facet/BoundaryNormal.h"
#include "Mesh/Core/Loops.h"

namespace KM {
namespace {

/// The share of a triangle's height that must survive.
constexpr double HeightToKeep = 0.5;

/// The triangles round the node that leaves, each named by its *link edge*, the one on the far side of that node.
///
/// Walking round a node steps from an edge to its twin and on inside the triangle. Twins name each other, so the walk
/// never meets an edge twice before it is back at its first one, and ends on any mesh, however folded.
class LeavingFan {
public:
    LeavingFan(const PIN& mesh, int stay, int leave)
        : mesh_(mesh),
          stay_(mesh.points[stay]),
          leave_(mesh.points[leave]),
          hasNoLength_(Length(stay_ - leave_) < NullLength) {}

    /// Of an edge inside the surface: the node must be inside too, since it may slide along a boundary edge only.
    bool LeavesAcross(int edge) const {
        const int stop = PrevEdge(mesh_, mesh_.edges[edge].TE);
        for (int x = edge;;) {
            x = mesh_.edges[PrevEdge(mesh_, x)].TE;
            if (x == -1) return false;
            if (x == edge) return true;
            // The triangle behind the last link edge dies with the collapse.
            const int link = mesh_.edges[x].NE;
            if (link != stop && !Keeps(link)) return false;
        }
    }

    /// Of a boundary edge whose start goes.
    bool LeavesForward(int edge) const {
        for (int x = mesh_.edges[PrevEdge(mesh_, edge)].TE; x != -1; x = mesh_.edges[PrevEdge(mesh_, x)].TE)
            if (!Keeps(mesh_.edges[x].NE)) return false;
        return true;
    }

    /// Of a boundary edge whose end goes.
    bool LeavesBackward(int edge) const {
        for (int x = mesh_.edges[mesh_.edges[edge].NE].TE; x != -1; x = mesh_.edges[mesh_.edges[x].NE].TE)
            if (!Keeps(PrevEdge(mesh_, x))) return false;
        return true;
    }

private:
    bool Keeps(int link) const {
        if (hasNoLength_) return true;
        const TPoint<double> n = BoundaryNormal(mesh_, link);
        const double base = Dot(n, mesh_.points[mesh_.edges[link].P0]);
        const double heightOfStay = base - Dot(n, stay_);
        const double heightOfLeave = base - Dot(n, leave_);
        return !(heightOfStay < 0.0) && !(heightOfLeave * HeightToKeep > heightOfStay);
    }

    const PIN& mesh_;
    const TPoint<double> stay_;
    const TPoint<double> leave_;
    const bool hasNoLength_;
};

}  // namespace

bool MayCollapse(const PIN& mesh, int edge, bool keepsStart) {
    const int start = mesh.edges[edge].P0;
    const int end = mesh.edges[mesh.edges[edge].NE].P0;
    if (keepsStart) return LeavingFan(mesh, start, end).LeavesBackward(edge);
    const LeavingFan fan(mesh, end, start);
    return mesh.edges[edge].TE != -1 ? fan.LeavesAcross(edge) : fan.LeavesForward(edge);
}

}  // namespace KM
