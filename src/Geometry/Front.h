#pragma once

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "Geometry/FrontQueue.h"
#include "Geometry/NodeTable.h"
#include "Geometry/Point.h"
#include "Utils/U_App/Progress.h"

namespace KM {

/// The border of a surface that grows over a cloud of points: closed loops of directed edges, each with the surface on
/// its left. See `PointsToTrianglesHelper::Tesselate3D`.
class Front {
public:
    /// @param triangles  receives the surface, three nodes a triangle
    /// @param neighbours  by node; it may be too short, and name nodes that do not exist
    Front(std::vector<int>& triangles, const std::vector<TPoint<double>>& points,
          const std::vector<std::vector<int>>& neighbours);

    bool IsUsed(int node) const { return isUsed_[node] != 0; }
    void Use(int node);

    /// True for a node that a surface can start from.
    bool HasNeighbours(int node) const { return NeighboursOf(node).size() >= 2; }

    /// Grows a surface from a first triangle, of a node and its first two neighbours, as far as it goes.
    void GrowFrom(int node, Progress::Auto& progress);

private:
    static constexpr int None = -1;

    /// Edges are numbered, and no number is used again, so one that is gone can be told.
    struct FrontEdge {
        int next;
        int previous;
        int third;  ///< the third node of the triangle behind the edge
        int start;
        int loop;
        bool isAlive = true;
    };

    /// The two edges that take the place of one when a node is joined to it.
    struct Advance {
        int toNode;
        int fromNode;
    };

    const std::vector<int>& NeighboursOf(int node) const;
    bool Exists(int node) const { return node >= 0 && static_cast<std::size_t>(node) < points_.size(); }

    int Next(int edge) const { return edges_[edge].next; }
    int Previous(int edge) const { return edges_[edge].previous; }
    int Start(int edge) const { return edges_[edge].start; }
    int End(int edge) const { return Start(Next(edge)); }
    int& LoopLength(int edge) { return loopLengths_[edges_[edge].loop]; }

    bool IsFull(int a, int b) const { return uses_.Count(NodeTable::Pair(a, b)) >= 2; }
    bool HasTriangle(int a, int b, int c) const { return uses_.Count(NodeTable::Triple(a, b, c)) != 0; }
    /// True for an edge of a loop of three that is a hole, and not the other side of a triangle.
    bool IsOnTriangularHole(int edge);

    int NewLoop();
    int NewEdge(int start, int third, int loop);
    void Link(int edge, int next);
    void Delete(int edge);
    void LeaveFront(int node);
    void StayOnFront(int edge);

    void StartTriangle(int a, int b, int c);
    void Emit(int a, int b, int c);

    /// Finds the nodes that may be joined to an edge, and queues the cheapest of them.
    void CollectCandidates(int edge);
    /// All neighbours of two nodes, ascending.
    void FindNodesAround(int a, int b);
    bool CanJoin(int c, int a, int b, int third) const;

    void JoinNode(int c, int edge, int third);
    /// Fills the corner between an edge and its next.
    void CloseEar(int edge);
    /// Joins a node to an edge: two edges, to the node and from it, take its place. Nothing if the edge lies on a hole of
    /// three edges, which is filled instead.
    std::optional<Advance> AdvanceTo(int c, int edge);
    /// Joins an edge to a node of the front, whose edge is `other`. If both are in one loop this is cut in two there,
    /// otherwise two loops become one. Then the sharper of the two corners at the node is filled.
    void JoinFronts(int c, int edge, int other, bool isSplit);
    /// Gives all edges of a loop its number, and counts them.
    void Renumber(int edge, int loop);

    /// Forgets the front, in the time that it took to build it.
    void Reset();

    std::vector<int>& triangles_;
    const std::vector<TPoint<double>>& points_;
    const std::vector<std::vector<int>>& neighbours_;
    std::vector<int> frontAt_;  // by node: its edge of the front
    std::vector<char> isUsed_;
    int usedCount_ = 0;
    std::vector<FrontEdge> edges_;
    std::vector<int> loopLengths_;
    NodeTable uses_;  // triangles of each pair of nodes; and the triples that have been tried
    FrontQueue queue_;
    std::vector<int> nodes_;                     // of `CollectCandidates`
    std::vector<std::pair<double, int>> costs_;  // of `CollectCandidates`
};

}  // namespace KM
