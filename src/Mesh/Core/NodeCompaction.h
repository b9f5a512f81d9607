#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Mesh/Core/PinVisitor.h"
#include "Mesh/Core/SafeLinks.h"

namespace KM {

/// Fills each gap in the nodes from the end. Needs compact edges and an exact `p2e`.
///
/// Since the number of alive nodes is known, so are the nodes that move: the alive ones beyond that number. Edges are
/// listed for those alone, and not at all when there is no gap.
template <class Mesh>
class NodeCompaction {
public:
    NodeCompaction(Mesh& mesh, VisitorOf<Mesh>& visitor) : mesh_(mesh), visitor_(visitor) {}

    void Run() {
        const auto& p2e = mesh_.p2e;
        alive_ = static_cast<int>(p2e.size() - static_cast<std::size_t>(std::count(p2e.begin(), p2e.end(), -1)));
        const int firstGap = static_cast<int>(std::find(p2e.begin(), p2e.end(), -1) - p2e.begin());
        if (firstGap < alive_) {
            ListEdgesOfMovers();
            for (int n = firstGap; n < alive_; ++n) {
                if (mesh_.p2e[n] != -1) continue;
                DropDeadEnd();
                MoveLastTo(n);
            }
        }
        DropDeadEnd();
    }

private:
    /// One flat list for all nodes that move: the edges of node `alive_ + i` end at `listEnd_[i]`, and begin where
    /// those of the node before it end. All edges at a node are in it, so the fans of a non-manifold node move
    /// together.
    void ListEdgesOfMovers() {
        listEnd_.assign(mesh_.points.size() - alive_ + 1, 0);
        for (const Edge& edge : mesh_.edges)
            if (edge.P0 >= alive_) ++listEnd_[edge.P0 - alive_ + 1];
        for (std::size_t i = 1; i < listEnd_.size(); ++i) listEnd_[i] += listEnd_[i - 1];
        list_.resize(static_cast<std::size_t>(listEnd_.back()));
        for (int e = 0; IsEdge(mesh_, e); ++e)
            if (mesh_.edges[e].P0 >= alive_) list_[listEnd_[mesh_.edges[e].P0 - alive_]++] = e;
    }

    /// Dead nodes at the end are worth no report: nothing refers to them, and nothing moves.
    void DropDeadEnd() {
        while (!mesh_.p2e.empty() && mesh_.p2e.back() == -1) {
            mesh_.points.pop_back();
            mesh_.p2e.pop_back();
        }
    }

    void MoveLastTo(int n) {
        const int last = static_cast<int>(mesh_.points.size()) - 1;
        const int mover = last - alive_;
        for (int i = mover == 0 ? 0 : listEnd_[mover - 1]; i < listEnd_[mover]; ++i) {
            const int e = list_[i];
            visitor_.SetP0(e, mesh_.edges[e].P0, n);
            mesh_.edges[e].P0 = n;
        }
        visitor_.MoveNode(mesh_.points[n], last, n);
        mesh_.points[n] = mesh_.points[last];
        mesh_.points.pop_back();
        mesh_.p2e[n] = mesh_.p2e[last];
        mesh_.p2e.pop_back();
    }

    Mesh& mesh_;
    VisitorOf<Mesh>& visitor_;
    int alive_ = 0;
    std::vector<std::int32_t> listEnd_;
    std::vector<std::int32_t> list_;
};

template <class Mesh>
void CompactNodes(Mesh& mesh, VisitorOf<Mesh>& visitor) {
    NodeCompaction<Mesh>(mesh, visitor).Run();
}

}  // namespace KM
