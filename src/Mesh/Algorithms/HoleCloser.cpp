#include "Mesh/Algorithms/HoleCloser.h"

#include <string>

#include "Geometry/Circles.h"
#include "Mesh/Core/FanWalk.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

//        B            a and b are orphans, their faces lie outside. The triangle on them gives a new orphan g, that runs
//      /   \          as the two did together.
//     a     b
//   /         \       .
//  A --- g --- C
int CutCorner(PIN& mesh, int a, int b) {
    const int base = static_cast<int>(mesh.edges.size());
    const int A = mesh.edges[a].P0;
    const int B = mesh.edges[b].P0;
    const int C = EndNode(mesh, b);
    mesh.edges.insert(mesh.edges.end(), {{base + 1, a, B}, {base + 2, -1, A}, {base, b, C}});
    mesh.edges[a].TE = base;
    mesh.edges[b].TE = base + 2;
    return base + 1;
}

void CloseTriangle(PIN& mesh, int l0, int l1, int l2) {
    const int base = static_cast<int>(mesh.edges.size());
    const int A = mesh.edges[l0].P0;
    const int B = mesh.edges[l1].P0;
    const int C = mesh.edges[l2].P0;
    mesh.edges.insert(mesh.edges.end(), {{base + 1, l0, B}, {base + 2, l2, A}, {base, l1, C}});
    mesh.edges[l0].TE = base;
    mesh.edges[l2].TE = base + 1;
    mesh.edges[l1].TE = base + 2;
}

/// Small for corners that are sharp and short.
double ScoreOfCorner(const TPoint<double>& A, const TPoint<double>& B, const TPoint<double>& C) {
    const double radius = Length(Circle3P3D(A, B, C) - A);
    // No circle goes through three points on a line. Of such corners the one with the shortest chord is the best.
    return radius > 1e10 ? 10.0 * Length(C - A) : radius;
}

}  // namespace

void HoleCloser::Close(const std::vector<int>& loop) {
    switch (loop.size()) {
        case 0:
            return;
        case 1:
            return Verbose::WriteMessage_1(Verbose::EMessageType::Error,
                                           "FillHole: found a loop with only one orphan edge.");
        case 2:
            return JoinTwins(mesh_, loop[0], loop[1]);
        case 3:
            return CloseTriangle(mesh_, loop[0], loop[1], loop[2]);
        default:
            return CloseByCorners(loop);
    }
}

void HoleCloser::CloseByCorners(const std::vector<int>& loop) {
    LayOut(loop);
    for (std::size_t left = loop.size(); left > 3; --left) {
        const int best = corners_.Find();
        if (best == -1)
            return Verbose::WriteMessage_1(
                Verbose::EMessageType::Warning,
                "FillHole: didn't find a possible candidate hole can't be filled. " + std::to_string(left));
        CutAt(best);
    }
    const Place& l0 = ring_[first_];
    const Place& l1 = ring_[l0.next];
    CloseTriangle(mesh_, l0.edge, l1.edge, ring_[l1.next].edge);
}

void HoleCloser::LayOut(const std::vector<int>& loop) {
    const int count = static_cast<int>(loop.size());
    ring_.resize(loop.size());
    for (int i = 0; i < count; ++i) ring_[i] = {loop[i], i + 1, i - 1};
    ring_.front().previous = count - 1;
    ring_.back().next = 0;
    first_ = 0;
    corners_.Reset(loop.size());
    for (int i = 0; i < count; ++i) Rate(i);
}

void HoleCloser::CutAt(int place) {
    const auto [a, behind, before] = ring_[place];
    // The new edge stands where b stood, also when the corner lies across the beginning: of equal corners that in the
    // first place is cut first, so places decide.
    ring_[behind].edge = CutCorner(mesh_, a, ring_[behind].edge);
    ring_[behind].previous = before;
    ring_[before].next = behind;
    if (place == first_) first_ = behind;
    corners_.Set(place, LowestScore::None);
    Rate(before);
    Rate(behind);
}

void HoleCloser::Rate(int place) {
    const Place& at = ring_[place];
    corners_.Set(place, ScoreOf(at.edge, ring_[at.next].edge));
}

double HoleCloser::ScoreOf(int a, int b) const {
    // The two lie on one face already; a triangle on them would be its back.
    if (mesh_.edges[a].NE == b) return LowestScore::None;
    const int A = mesh_.edges[a].P0;
    const int B = EndNode(mesh_, a);
    const int C = EndNode(mesh_, b);
    if (!IsNode(mesh_, A) || !IsNode(mesh_, B) || !IsNode(mesh_, C)) return LowestScore::None;
    return ScoreOfCorner(mesh_.points[A], mesh_.points[B], mesh_.points[C]);
}

}  // namespace KM
