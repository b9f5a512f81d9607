#include "Facet/MeshReducer.h"

#include "Facet/CollapseCheck.h"
#include "Mesh/Core/Loops.h"

namespace KM {

bool IsReducible(const PIN& mesh) {
    const std::size_t edgeCount = mesh.edges.size();
    const auto exists = [edgeCount](std::int32_t e) { return static_cast<std::uint32_t>(e) < edgeCount; };
    const auto next = [&](std::int32_t e) { return mesh.edges[e].NE; };
    for (std::size_t i = 0; i < edgeCount; ++i) {
        const std::int32_t e = static_cast<std::int32_t>(i);
        const Edge& edge = mesh.edges[i];
        if (!exists(edge.NE) || edge.NE == e || !exists(next(edge.NE)) || next(next(edge.NE)) != e) return false;
        if (static_cast<std::uint32_t>(edge.P0) >= mesh.points.size()) return false;
        if (edge.TE != -1 && (!exists(edge.TE) || mesh.edges[edge.TE].TE != e)) return false;
    }
    return true;
}

void MeshReducer::TellWatch() const {
    // Away from boundaries a collapse takes two triangles.
    const double gone = 6.0 * static_cast<double>(collapses_);
    const double edges = static_cast<double>(mesh_.edges.size());
    watch_(gone < edges ? gone / edges : 1.0);
}

void MeshReducer::RunStage(int level) {
    if (watch_) TellWatch();
    const double limit = queue_.Threshold(level);
    // Between two collapses nothing changes a refusal. An edge within ordinary tolerances leaves its bucket at the
    // fourth one, so a longer series shows a bucket that the penalty cannot empty.
    const std::size_t longestSeries = 4 * mesh_.edges.size();
    std::size_t series = 0;
    for (int bucket = 0; bucket < queue_.BucketCount() && !(queue_.Threshold(bucket) > limit);) {
        CountStep();
        const int e = queue_.Oldest(bucket);
        if (e == -1) {
            ++bucket;
            series = 0;
        } else if (MayCollapse(mesh_, e, queue_.KeepsStart(e))) {
            Collapse(e);
            // An edge may have become cheaper than the bucket that is being served.
            bucket = 0;
            series = 0;
        } else if (++series <= longestSeries) {
            queue_.Refuse(e);
        } else if (!queue_.RefuseAll(bucket)) {
            return;
        }
    }
}

void MeshReducer::Collapse(int edge) {
    ++collapses_;
    const int start = mesh_.edges[edge].P0;
    const int end = mesh_.edges[mesh_.edges[edge].NE].P0;
    const bool keepsStart = queue_.KeepsStart(edge);
    prices_.Merge(keepsStart ? end : start, keepsStart ? start : end);
    const CollapsedEdge collapsed = CollapseEdge(mesh_, queue_, edge, keepsStart);
    if (collapsed.anchor != -1) TurnToSurvivor(collapsed);
}

void MeshReducer::Turn(int edge, int survivor, bool force) {
    mesh_.edges[edge].P0 = survivor;
    prices_.Reprice(edge, force);
}

/// Walks round the survivor from the anchor. The edges of the sector used to leave the removed node; the far end of
/// their twins has moved, so these are priced anew too (`force`).
void MeshReducer::TurnToSurvivor(const CollapsedEdge& collapsed) {
    const auto [survivor, anchor, first, last] = collapsed;
    Turn(anchor, survivor, anchor == first || anchor == last);
    // The sector begins at the anchor or next to it, and is looked for nowhere else.
    int twin = mesh_.edges[anchor].TE;
    bool force = anchor == first && anchor != last;
    if (twin != -1 && mesh_.edges[twin].NE == first) force = true;
    for (; twin != -1; twin = mesh_.edges[twin].TE) {
        const int x = mesh_.edges[twin].NE;
        if (x == anchor) return;
        Turn(x, survivor, force);
        if (x == last) force = false;
        twin = x;
    }
    TurnBackward(collapsed);
}

/// The rest of a fan that a boundary cuts open, and the edge that comes into the survivor along that boundary.
void MeshReducer::TurnBackward(const CollapsedEdge& collapsed) {
    const auto [survivor, anchor, first, last] = collapsed;
    bool force = anchor == last;
    int incoming = PrevEdge(mesh_, anchor);
    for (int x = mesh_.edges[incoming].TE; x != -1; x = mesh_.edges[incoming].TE) {
        if (x == last) force = true;
        Turn(x, survivor, force);
        if (x == first) force = false;
        incoming = PrevEdge(mesh_, x);
    }
    prices_.Reprice(incoming, false);
}

}  // namespace KM
