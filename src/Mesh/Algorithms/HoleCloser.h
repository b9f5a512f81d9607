#pragma once

#include <vector>

#include "Mesh/Algorithms/LowestScore.h"
#include "Mesh/Core/Pin.h"

namespace KM {

inline void JoinTwins(PIN& mesh, int a, int b) {
    mesh.edges[a].TE = b;
    mesh.edges[b].TE = a;
}

/// Closes holes, one after another, by cutting off the best corner again and again. See `FillHoles`.
class HoleCloser {
public:
    /// The mesh is referred to.
    explicit HoleCloser(PIN& mesh) : mesh_(mesh) {}

    /// @param loop  orphans, each starting where the one before it ends, as `AllOrphanLoops` gives them
    void Close(const std::vector<int>& loop);

private:
    /// The edges of a border stand on places in its order, and keep them as long as they are part of it.
    struct Place {
        int edge;
        int next;
        int previous;
    };

    void CloseByCorners(const std::vector<int>& loop);
    void LayOut(const std::vector<int>& loop);
    void CutAt(int place);
    void Rate(int place);
    double ScoreOf(int a, int b) const;

    PIN& mesh_;
    std::vector<Place> ring_;
    int first_ = 0;
    LowestScore corners_;  // by the place of the edge that comes to the corner
};

}  // namespace KM
