#include "Mesh/Algorithms/RefinementRounds.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "Mesh/Core/Construction.h"
#include "Mesh/Core/FanWalk.h"
#include "Mesh/Core/PreviousEdges.h"
#include "Mesh/Editing/EdgeSplits.h"
#include "Mesh/Editing/LoopChord.h"

namespace KM {
namespace {

using P = TPoint<double>;

constexpr std::size_t SplitsBetweenReports = 8192;  // about a millisecond

int EdgeCount(const PIN& mesh) { return static_cast<int>(mesh.edges.size()); }

bool IsFinite(const P& p) { return std::isfinite(p.X) && std::isfinite(p.Y) && std::isfinite(p.Z); }

/// The magnitude of a coordinate that halving would round; 0 if both ends agree in it.
double RoundedMagnitude(double a, double b) { return a == b ? 0.0 : std::max(std::fabs(a), std::fabs(b)); }

/// Halving gets somewhere. It does not at infinity, nor where the limit is less than a few roundings of the coordinates and an
/// edge is not many more: there chords come out as long as the edges that they replace, and would be halved for ever.
bool IsHalvable(const P& a, const P& b, const P& middle, double limit) {
    if (!IsFinite(middle)) return false;
    const double rounded =
        std::max({RoundedMagnitude(a.X, b.X), RoundedMagnitude(a.Y, b.Y), RoundedMagnitude(a.Z, b.Z)});
    const double step = std::nextafter(rounded, std::numeric_limits<double>::infinity()) - rounded;
    if (limit >= 4.0 * step) return true;
    const double extent = std::max({std::fabs(b.X - a.X), std::fabs(b.Y - a.Y), std::fabs(b.Z - a.Z)});
    return extent > rounded * 0x1p-48;
}

P Middle(const P& a, const P& b) { return (a + b) * 0.5; }

template <class T>
void ReserveMore(std::vector<T>& items, std::int64_t more) {
    const std::size_t needed = items.size() + static_cast<std::size_t>(more);
    // Late rounds are small. Each with room for itself alone would copy the mesh each time.
    if (needed > items.capacity()) items.reserve(std::max(needed, items.size() + items.size() / 8));
}

}  // namespace

RefinementRounds::RefinementRounds(PIN& mesh, double maxLength)
    : mesh_(mesh), limit_(std::fabs(maxLength)), limitSquared_(maxLength * maxLength) {
    PreviousEdges<PIN> previous(mesh);
    for (int e = 0; IsEdge(mesh, e); ++e) {
        if (IsDead(mesh.edges[e])) continue;
        if (!IsNode(mesh, mesh.edges[e].P0)) {
            brokenEdge_ = e;
            return;
        }
        if (ThirdOfTriangle(mesh, e) == -1) ++polygonEdges_;
        if (!IsLongEdge(e)) continue;
        const int twin = mesh.edges[e].TE;
        const bool isOpen = twin == -1;
        if (previous.Of(e) == -1 || (!isOpen && (!AreTwins(mesh, e, twin) || previous.Of(twin) == -1))) {
            brokenEdge_ = e;
            return;
        }
        if (isOpen || e < twin) List(e);
    }
    queue_.swap(next_);
    sides_ = nextSides_;
}

bool RefinementRounds::IsLong(const P& a, const P& b) const { return LengthSquared(b - a) > limitSquared_; }

bool RefinementRounds::IsLongEdge(int edge) const {
    const int end = EndNode(mesh_, edge);
    if (!IsNode(mesh_, end)) return false;
    const P& a = mesh_.points[mesh_.edges[edge].P0];
    const P& b = mesh_.points[end];
    return IsLong(a, b) && IsHalvable(a, b, Middle(a, b), limit_);
}

void RefinementRounds::List(int edge) {
    next_.push_back(edge);
    nextSides_ += mesh_.edges[edge].TE == -1 ? 1 : 2;
}

void RefinementRounds::Run(const std::function<void(double)>& watch) {
    Reserve();
    try {
        SplitAll(watch);
    } catch (...) {
        FillAll();  // so that who stops a refinement finds triangles
        throw;
    }
    FillAll();
    queue_.swap(next_);
    sides_ = nextSides_;
    polygonEdges_ = 0;
}

void RefinementRounds::Reserve() {
    const std::int64_t splits = static_cast<std::int64_t>(queue_.size());
    ReserveMore(mesh_.points, splits);
    ReserveMore(mesh_.p2e, splits);
    ReserveMore(mesh_.edges, MostNewEdges());
    twins_.clear();
    twins_.reserve(queue_.size());
    next_.clear();
    nextSides_ = 0;
}

void RefinementRounds::SplitAll(const std::function<void(double)>& watch) {
    for (std::size_t i = 0; i < queue_.size(); ++i) {
        if (watch && i % SplitsBetweenReports == 0) watch(static_cast<double>(i) / static_cast<double>(queue_.size()));
        Split(queue_[i]);
    }
}

void RefinementRounds::Split(int edge) {
    const P start = mesh_.points[mesh_.edges[edge].P0];
    const P end = mesh_.points[EndNode(mesh_, edge)];
    const P middle = Middle(start, end);
    if (!IsHalvable(start, end, middle, limit_)) return;
    const int twin = mesh_.edges[edge].TE;
    if (twin != -1) twins_.push_back(twin);
    if (IsLong(start, middle)) {
        List(edge);
        next_.push_back(EdgeCount(mesh_));  // the second half
        nextSides_ += twin == -1 ? 1 : 2;
    }
    SplitEdge2(mesh_, edge, AddPoint(mesh_, middle));
}

void RefinementRounds::FillAll() {
    for (const int edge : queue_) FillLoop(edge);
    for (const int edge : twins_) FillLoop(edge);
}

void RefinementRounds::FillLoop(int edge) {
    const auto& edges = mesh_.edges;
    std::size_t length = 1;
    for (int e = edges[edge].NE; e != edge; e = edges[e].NE) ++length;
    if (length == 6) {
        // Going on two edges further leaves a triangle between the three new nodes in the middle.
        const int opposite = edges[edges[edges[edges[edge].NE].NE].NE].NE;
        CutCorner(edge);
        edge = opposite;
        --length;
    }
    for (; length > 3; --length) CutCorner(edge);
}

/// Cuts off the triangle of the two edges that follow `before`.
void RefinementRounds::CutCorner(int before) {
    const int first = mesh_.edges[before].NE;
    const int second = mesh_.edges[first].NE;
    const int beyond = mesh_.edges[second].NE;
    if (IsLong(mesh_.points[mesh_.edges[first].P0], mesh_.points[mesh_.edges[beyond].P0])) {
        next_.push_back(EdgeCount(mesh_));
        nextSides_ += 2;
    }
    AddChord(mesh_, {first, before}, {beyond, second});
}

}  // namespace KM
