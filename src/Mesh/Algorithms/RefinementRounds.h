#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "Mesh/Core/Pin.h"

namespace KM {

/// The rounds of `Refine`: each splits the edges of its list, cuts the faces that this leaves, and lists what is still too
/// long. Between two rounds the mesh is sound, and each face that was touched is a triangle.
class RefinementRounds {
public:
    /// Lists the edges of the first round.
    RefinementRounds(PIN& mesh, double maxLength);

    /// An edge that is too long and lies on no loop or has no true twin, or one that starts at a node that does not exist; or
    /// -1. With one, there must be no round: whatever face has an edge that stays long would be cut for ever, and so would one
    /// that turns long when a new node takes the index of the missing one.
    int BrokenEdge() const { return brokenEdge_; }

    /// The edges of the next round, in order; if there are none, all is done.
    const std::vector<int>& Queue() const { return queue_; }

    /// The most triangles that the next round can add to a mesh of triangles, and the most records to any mesh.
    std::int64_t MostNewTriangles() const { return sides_; }
    std::int64_t MostNewEdges() const { return 3 * sides_ + 2 * polygonEdges_; }

    /// @param watch  is told now and then which fraction of the splits is made; may be empty. If it throws, the faces are cut
    ///               first, and that passes on
    void Run(const std::function<void(double)>& watch);

private:
    bool IsLong(const TPoint<double>& a, const TPoint<double>& b) const;
    bool IsLongEdge(int edge) const;
    void List(int edge);
    void Reserve();
    void SplitAll(const std::function<void(double)>& watch);
    void Split(int edge);
    void FillAll();
    void FillLoop(int edge);
    void CutCorner(int before);

    PIN& mesh_;
    double limit_;
    double limitSquared_;
    int brokenEdge_ = -1;
    std::vector<int> queue_;
    std::vector<int> twins_;  // of the edges that the round has split
    std::vector<int> next_;
    std::int64_t sides_ = 0;         // faces at the edges of queue_, each as often as it has edges there
    std::int64_t nextSides_ = 0;     // the same of next_
    std::int64_t polygonEdges_ = 0;  // on faces of more than three edges that the first round may meet
};

}  // namespace KM
