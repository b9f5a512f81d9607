#include "Facet/Strips.h"

#include "Mesh/Core/Loops.h"

namespace KM {
namespace {

/// Cuts a mesh into strips. Long strips come first: a triangle with fewer free neighbours waits for a later pass.
class StripCutter {
public:
    explicit StripCutter(const PIN& mesh) : mesh_(mesh), taken_(mesh.edges.size(), 0) {}

    template <class Emit>
    void Cut(Emit emit) {
        std::vector<int> leftovers;
        for (int e = 0; e < static_cast<int>(mesh_.edges.size()); ++e) {
            if (mesh_.edges[e].NE == -1 || taken_[e]) continue;
            if (IsFree(mesh_.edges[e].TE) && IsFree(mesh_.edges[mesh_.edges[e].NE].TE)) emit(StripFrom(e));
            else leftovers.push_back(e);
        }
        for (const int e : leftovers)
            if (!taken_[e] && IsFree(mesh_.edges[e].TE)) emit(StripFrom(e));
        for (const int e : leftovers)
            if (!taken_[e]) emit(StripFrom(e));
    }

private:
    bool IsFree(int edge) const { return edge != -1 && !taken_[edge]; }

    void Mark(int edge, char taken) {
        taken_[edge] = taken;
        taken_[mesh_.edges[edge].NE] = taken;
        taken_[PrevEdge(mesh_, edge)] = taken;
    }

    /// Appends the nodes that a walk from `edge` finds, and returns an edge of the last triangle taken.
    int Walk(int edge, std::vector<int>& nodes) {
        int last = -1;
        bool acrossNext = true;
        while (edge != -1 && !taken_[edge] && mesh_.edges[edge].NE != -1) {
            Mark(edge, 1);
            last = edge;
            const int next = mesh_.edges[edge].NE;
            nodes.push_back(mesh_.edges[mesh_.edges[next].NE].P0);
            edge = mesh_.edges[acrossNext ? next : PrevEdge(mesh_, edge)].TE;
            acrossNext = !acrossNext;
        }
        return last;
    }

    StripFan StripFrom(int edge) {
        back_.assign({mesh_.edges[edge].P0, mesh_.edges[mesh_.edges[edge].NE].P0});
        front_.clear();
        Walk(edge, back_);
        const int last = Walk(mesh_.edges[edge].TE, front_);
        StripFan strip;
        if (front_.size() % 2 == 1) {
            // An odd number of nodes in front turns the winding of the strip. Where reading from the other end cannot turn it
            // back, the last triangle is given up and left for a later strip.
            if (back_.size() % 2 == 1) {
                front_.pop_back();
                Mark(last, 0);
            } else {
                strip.kind = 2;
            }
        }
        strip.nodes.assign(front_.rbegin(), front_.rend());
        strip.nodes.insert(strip.nodes.end(), back_.begin(), back_.end());
        return strip;
    }

    const PIN& mesh_;
    std::vector<char> taken_;
    std::vector<int> back_;
    std::vector<int> front_;
};

}  // namespace

int BuildStrips(PIN& mesh, std::vector<StripFan>& strips) {
    int words = 0;
    StripCutter(mesh).Cut([&](StripFan&& strip) {
        words += static_cast<int>(strip.nodes.size()) + 1;
        strips.push_back(std::move(strip));
    });
    return words;
}

}  // namespace KM
