#include "SlabCut.h"

#include <optional>

namespace KM {
namespace {

using P = TPoint<double>;

/// The polygon of one cut, point by point.
//
//           C
//         / |      hi   ---- X(AC, hi) -- X(BC, hi)
//        /  B
//       / /        lo   ---- X(AC, lo) -- X(AB, lo)
//      A
class Cut {
public:
    Cut(Axis axis, std::vector<P>& polygon) : axis_(axis), polygon_(polygon) {}

    /// Where a side that ascends from `p` to `q` reaches a level. A side that begins there does not reach it.
    std::optional<P> Crossing(const P& p, const P& q, double level) const {
        const double from = p.*axis_;
        const double to = q.*axis_;
        if (!(level > from && to >= level)) return std::nullopt;  // so `to` is above `from`, and the quotient is sound
        return p + (q - p) * ((level - from) / (to - from));
    }

    void Push(const P& p) { polygon_.push_back(p); }

    bool PushCrossing(const P& p, const P& q, double level) {
        const std::optional<P> crossing = Crossing(p, q, level);
        if (crossing) Push(*crossing);
        return crossing.has_value();
    }

    /// What lies below the upper limit, of a triangle that begins in the slab.
    void PushLowerEnd(const AscendingCorners& t, double hi) {
        const auto& [A, B, C] = t;
        if (PushCrossing(B, C, hi)) {
            Push(B);
            Push(A);
        } else if (PushCrossing(A, B, hi)) {
            Push(A);
        }
    }

    /// What lies above the lower limit, of a triangle that ends in the slab.
    void PushUpperEnd(const AscendingCorners& t, double lo) {
        const auto& [A, B, C] = t;
        Push(C);
        if (PushCrossing(B, C, lo)) return;
        if (const std::optional<P> crossing = Crossing(A, B, lo)) {
            Push(B);
            Push(*crossing);
        }
    }

    /// The far side of what lies between both limits.
    void PushMiddle(const AscendingCorners& t, const Slab& slab) {
        const auto& [A, B, C] = t;
        if (!PushCrossing(B, C, slab.hi)) PushCrossing(A, B, slab.hi);
        if (slab.lo < B.*axis_ && B.*axis_ < slab.hi) Push(B);
        if (!PushCrossing(B, C, slab.lo)) PushCrossing(A, B, slab.lo);
    }

    void Close() {
        if (polygon_.size() > 2 && polygon_.front() != polygon_.back()) Push(polygon_.front());
    }

private:
    Axis axis_;
    std::vector<P>& polygon_;
};

}  // namespace

void CutToSlab(Axis axis, const AscendingCorners& triangle, const Slab& slab, std::vector<P>& polygon) {
    polygon.clear();
    Cut cut(axis, polygon);
    const P& A = triangle[0];
    const P& C = triangle[2];
    const bool entersThere = cut.PushCrossing(A, C, slab.lo);
    const bool leavesThere = cut.PushCrossing(A, C, slab.hi);
    if (entersThere && leavesThere) cut.PushMiddle(triangle, slab);
    else if (entersThere) cut.PushUpperEnd(triangle, slab.lo);
    else if (leavesThere) cut.PushLowerEnd(triangle, slab.hi);
    cut.Close();
}

}  // namespace KM
