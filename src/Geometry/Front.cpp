#include "Geometry/Front.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "Geometry/Circles.h"
#include "Geometry/ClampedAngle.h"
#include "Utils/U_App/Services.h"

namespace KM {

namespace {

using P = TPoint<double>;

double Circumradius(const P& A, const P& B, const P& C) { return Length(Circle3P3D(A, B, C) - A); }
P Normal(const P& A, const P& B, const P& C) { return SafeUnit(Cross(B - A, C - A)); }

/// A fold back makes a small angle, and a high cost.
double CostOf(const P& A, const P& B, const P& C, const P& normal) {
    const double cost = Circumradius(A, B, C) / ClampedAngle(normal, Normal(A, B, C), IsZero);
    return std::isnan(cost) ? std::numeric_limits<double>::infinity() : cost;
}

}  // namespace

Front::Front(std::vector<int>& triangles, const std::vector<P>& points, const std::vector<std::vector<int>>& neighbours)
    : triangles_(triangles),
      points_(points),
      neighbours_(neighbours),
      frontAt_(points.size(), None),
      isUsed_(points.size(), 0),
      queue_(points.size()) {}

void Front::Use(int node) {
    usedCount_ += isUsed_[node] == 0;
    isUsed_[node] = 1;
}

void Front::GrowFrom(int node, Progress::Auto& progress) {
    StartTriangle(node, NeighboursOf(node)[0], NeighboursOf(node)[1]);
    const auto isAlive = [this](int edge) { return edges_[edge].isAlive; };
    std::int64_t last = None;
    while (const FrontCandidate* first = queue_.First(isAlive)) {
        progress(usedCount_, static_cast<int>(points_.size()));
        if (first->number == last) {
            // It has been tried, and is still here: nothing came of it.
            queue_.EraseFirst();
            first = queue_.First(isAlive);
            if (first == nullptr) break;
        }
        last = first->number;
        JoinNode(first->node, first->edge, first->third);
    }
    Reset();
}

const std::vector<int>& Front::NeighboursOf(int node) const {
    static const std::vector<int> none;
    const auto i = static_cast<std::size_t>(node);
    return i < neighbours_.size() ? neighbours_[i] : none;
}

bool Front::IsOnTriangularHole(int edge) {
    return LoopLength(edge) == 3 && !HasTriangle(Start(edge), End(edge), Start(Previous(edge)));
}

int Front::NewLoop() {
    loopLengths_.push_back(0);
    return static_cast<int>(loopLengths_.size()) - 1;
}

int Front::NewEdge(int start, int third, int loop) {
    edges_.push_back({None, None, third, start, loop});
    return static_cast<int>(edges_.size()) - 1;
}

void Front::Link(int edge, int next) {
    edges_[edge].next = next;
    edges_[next].previous = edge;
}

void Front::Delete(int edge) {
    // The node may have got another edge by now.
    if (frontAt_[Start(edge)] == edge) frontAt_[Start(edge)] = None;
    edges_[edge].isAlive = false;
}

void Front::LeaveFront(int node) {
    frontAt_[node] = None;
    queue_.DropNode(node);
}

void Front::StayOnFront(int edge) {
    if (edges_[edge].isAlive) frontAt_[Start(edge)] = edge;
}

void Front::StartTriangle(int a, int b, int c) {
    if (!Exists(b) || !Exists(c) || a == b || b == c || c == a) return;
    const int loop = NewLoop();
    const int nodes[] = {a, b, c};
    int edges[3];
    for (int k = 0; k < 3; ++k) {
        Use(nodes[k]);
        edges[k] = NewEdge(nodes[k], nodes[(k + 2) % 3], loop);
        frontAt_[nodes[k]] = edges[k];
    }
    for (int k = 0; k < 3; ++k) Link(edges[k], edges[(k + 1) % 3]);
    loopLengths_[loop] = 3;
    for (const int edge : edges) CollectCandidates(edge);
    Emit(a, b, c);
}

void Front::Emit(int a, int b, int c) {
    const NodeTable::Key triple = NodeTable::Triple(a, b, c);
    if (uses_.Count(triple) != 0) return;
    uses_.Add(triple);
    if (IsFull(a, b) || IsFull(b, c) || IsFull(c, a)) return;
    triangles_.insert(triangles_.end(), {a, b, c});
    uses_.Add(NodeTable::Pair(a, b));
    uses_.Add(NodeTable::Pair(b, c));
    uses_.Add(NodeTable::Pair(c, a));
}

void Front::CollectCandidates(int edge) {
    const int a = Start(edge);
    const int b = End(edge);
    if (IsFull(a, b)) return;
    FindNodesAround(a, b);
    costs_.clear();
    const P& A = points_[a];
    const P& B = points_[b];
    const P normal = Normal(A, B, points_[edges_[edge].third]);
    for (const int c : nodes_)
        if (CanJoin(c, a, b, edges_[edge].third)) costs_.push_back({CostOf(A, B, points_[c], normal), c});
    std::sort(costs_.begin(), costs_.end());

    constexpr std::size_t most = 15;
    const std::size_t count = std::min(most, costs_.size());
    // Where there is a choice, what costs far more than the good ones is none.
    const double limit = count > 5 ? 5.0 * costs_[3].first : 100000.0;
    for (std::size_t i = 0; i < count && costs_[i].first < limit; ++i)
        queue_.Add(costs_[i].first, costs_[i].second, edge, edges_[edge].third);
}

void Front::FindNodesAround(int a, int b) {
    nodes_.clear();
    for (const int node : {a, b})
        for (const int c : NeighboursOf(node))
            if (Exists(c)) nodes_.push_back(c);
    std::sort(nodes_.begin(), nodes_.end());
    nodes_.erase(std::unique(nodes_.begin(), nodes_.end()), nodes_.end());
}

bool Front::CanJoin(int c, int a, int b, int third) const {
    if (c == a || c == b || c == third) return false;
    if (!isUsed_[c]) return true;  // no triangle has it
    if (frontAt_[c] == None) return false;
    return !IsFull(c, a) && !IsFull(c, b) && !HasTriangle(c, a, b);
}

void Front::JoinNode(int c, int edge, int third) {
    while (true) {
        if (isUsed_[c] && frontAt_[c] == None) return;
        if (!edges_[edge].isAlive) return;
        if (third != None && third != edges_[edge].third) {
            Application::Services::DumpStream() << '.';
            return;
        }
        Use(c);
        if (Start(Next(Next(edge))) == c) return CloseEar(edge);
        if (Start(Previous(edge)) == c) return CloseEar(Previous(edge));
        if (frontAt_[c] == None) {
            AdvanceTo(c, edge);
            return;
        }
        if (HasTriangle(Start(edge), End(edge), c)) return;

        const int other = frontAt_[c];
        const bool isSplit = edges_[other].loop == edges_[edge].loop;
        if (isSplit || (!IsOnTriangularHole(edge) && !IsOnTriangularHole(other)))
            return JoinFronts(c, edge, other, isSplit);
        // Triangular holes are filled before they can be lost in a merger.
        if (!IsOnTriangularHole(edge)) edge = other;
        c = Start(Previous(edge));
        third = None;
    }
}

//
//        m
//       /  next         a - b is `edge`; the front goes on from a to m
//  a - b
void Front::CloseEar(int edge) {
    const int next = Next(edge);
    const int behind = Next(next);
    const int previous = Previous(edge);
    const int a = Start(edge);
    const int b = Start(next);
    const int m = Start(behind);
    Emit(a, m, b);
    LeaveFront(b);
    if (behind == previous) {
        LeaveFront(a);
        LeaveFront(m);
        LoopLength(edge) -= 3;
        Delete(previous);
    } else {
        const int across = NewEdge(a, b, edges_[edge].loop);
        edges_[across].next = behind;
        CollectCandidates(across);
        Link(previous, across);
        Link(across, behind);
        --LoopLength(edge);
    }
    Delete(edge);
    Delete(next);
    if (behind != previous) frontAt_[a] = Next(previous);
}

std::optional<Front::Advance> Front::AdvanceTo(int c, int edge) {
    if (IsOnTriangularHole(edge)) {
        CloseEar(edge);
        return std::nullopt;
    }
    const int a = Start(edge);
    const int b = End(edge);
    const int toNode = NewEdge(a, b, edges_[edge].loop);
    const int fromNode = NewEdge(c, a, edges_[edge].loop);
    Link(Previous(edge), toNode);
    Link(toNode, fromNode);
    Link(fromNode, Next(edge));
    frontAt_[a] = toNode;
    frontAt_[c] = fromNode;
    CollectCandidates(toNode);
    CollectCandidates(fromNode);
    ++LoopLength(edge);
    Emit(a, c, b);
    Delete(edge);
    return Advance{toNode, fromNode};
}

void Front::JoinFronts(int c, int edge, int other, bool isSplit) {
    const int otherLoop = edges_[other].loop;
    const std::optional<Advance> advance = AdvanceTo(c, edge);
    if (!advance) return;
    const auto [toNode, fromNode] = *advance;
    const int before = Previous(other);
    Link(toNode, other);
    Link(before, fromNode);
    if (isSplit) {
        Renumber(fromNode, NewLoop());
    } else {
        loopLengths_[otherLoop] = 0;
    }
    Renumber(toNode, edges_[toNode].loop);

    const double ahead = Circumradius(points_[Start(toNode)], points_[c], points_[End(other)]);
    const double behind = Circumradius(points_[Start(before)], points_[c], points_[End(fromNode)]);
    // What is left at the node is one of two edges; filling a corner takes the node's entry away.
    if (!(behind > ahead)) {
        JoinNode(Start(before), fromNode, None);
        StayOnFront(other);
    } else {
        JoinNode(End(other), toNode, None);
        StayOnFront(fromNode);
    }
}

void Front::Renumber(int edge, int loop) {
    int count = 0;
    int at = edge;
    do {
        edges_[at].loop = loop;
        ++count;
        at = Next(at);
    } while (at != edge);
    loopLengths_[loop] = count;
}

void Front::Reset() {
    for (const FrontEdge& edge : edges_) frontAt_[edge.start] = None;
    edges_.clear();
    loopLengths_.clear();
    queue_.Clear();
}

}  // namespace KM
