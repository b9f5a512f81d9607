#include "Support/Holes.h"

#include <random>

#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Loops.h"

namespace KM::Test {
namespace {

/// Takes out patches of triangles that hang together like a tree, so that each one more makes the hole one edge longer.
class HoleCutter {
public:
    HoleCutter(PIN& mesh, unsigned seed) : mesh_(mesh), random_(seed), isTaken_(mesh.points.size(), 0) {
        for (const Edge& e : mesh.edges)
            if (e.NE != -1 && e.TE == -1) isTaken_[e.P0] = 1;
    }

    int Below(std::size_t limit) { return static_cast<int>(random_() % limit); }

    void Cut(int first, int edgeCount) {
        if (mesh_.edges[first].NE == -1 || !IsFree(first)) return;
        std::vector<int> patch = {first};
        std::vector<int> border = Loop(mesh_, first);
        for (const int e : border) isTaken_[mesh_.edges[e].P0] = 1;
        for (int tries = 4 * edgeCount; tries != 0 && static_cast<int>(border.size()) < edgeCount; --tries)
            Grow(patch, border);
        for (const int e : patch) DeleteTriangle(mesh_, e);
    }

private:
    bool IsFree(int e) const {
        for (const int x : Loop(mesh_, e))
            if (isTaken_[mesh_.edges[x].P0]) return false;
        return true;
    }

    void Grow(std::vector<int>& patch, std::vector<int>& border) {
        const int at = Below(border.size());
        const int t = mesh_.edges[border[at]].TE;
        if (t == -1) return;
        const int before = PrevEdge(mesh_, t);
        char& isTaken = isTaken_[mesh_.edges[before].P0];
        if (isTaken) return;
        isTaken = 1;
        patch.push_back(t);
        border[at] = before;
        border.push_back(mesh_.edges[t].NE);
    }

    PIN& mesh_;
    std::mt19937 random_;
    std::vector<char> isTaken_;  // by node: lies on a border
};

}  // namespace

PIN WithHoles(PIN mesh, unsigned seed, int count, int fewest, int most) {
    HoleCutter cutter(mesh, seed);
    for (int i = 0; i < count; ++i) {
        const int first = cutter.Below(mesh.edges.size());
        cutter.Cut(first, fewest + cutter.Below(static_cast<std::size_t>(most - fewest) + 1));
    }
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    return mesh;
}

}  // namespace KM::Test
