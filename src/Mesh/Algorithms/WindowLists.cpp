#include "WindowLists.h"

#include <limits>

namespace KM {
namespace {

// Where ends are so close that a window between them would be nothing but rounding.
constexpr double EndTolerance = 1e-12;

/// False for what is not a number, or so large that its products overflow: it could never be compared.
bool IsFinite(const GeodesicWindow& w) {
    constexpr double limit = 1e100;
    const auto isBelow = [](double x) { return std::fabs(x) < limit; };
    return isBelow(w.b0) && isBelow(w.b1) && isBelow(w.d0) && isBelow(w.d1) && isBelow(w.sigma);
}

/// How far apart two places of an edge must be for a window between them.
double Margin(double x) { return x < 1.0 ? WindowTolerance : x * WindowTolerance; }

}  // namespace

// The new window W is worked into the list from its start to its end. What W takes of one old window after the other is
// carried by one slot, the open piece, for as long as W goes on taking.
class WindowLists::Placement {
public:
    Placement(WindowLists& lists, const GeodesicWindow& window, bool isQueued, std::int32_t before)
        : lists_(lists), W_(window), isQueued_(isQueued), before_(before) {}

    void Place(const Overlap& overlap) {
        const bool isOldQueued = isQueued_ || overlap.wasQueued;
        switch (overlap.result.outcome) {
            case Outcome::OldStays:
                return Pass(overlap.slot);
            case Outcome::NewTakes:
                return open_ == -1 ? TakeOver(overlap.slot, isOldQueued) : GrowOver(overlap.slot, isOldQueued);
            case Outcome::OldLeft:
                return BeginInside(overlap, isOldQueued);
            case Outcome::OldRight:
                return open_ == -1 ? EndInside(overlap, isOldQueued) : EndPiece(overlap);
        }
    }

    void Close() {
        if (open_ != -1) lists_.QueueIf(isQueued_, open_);
        open_ = -1;
    }

private:
    GeodesicWindow& At(std::int32_t slot) { return lists_.store_[slot]; }

    /// Puts a window behind the last one that is done with.
    std::int32_t Append(const GeodesicWindow& window) {
        const std::int32_t slot = lists_.Store(window);
        lists_.LinkBehind(before_, W_.edge, slot);
        return before_ = slot;
    }

    void Pass(std::int32_t old) {
        Close();
        before_ = old;
    }

    /// O loses what W overlaps. Its slot becomes the piece; what is left of O on either side becomes a copy.
    void TakeOver(std::int32_t old, bool isOldQueued) {
        const GeodesicWindow O = At(old);
        const bool isLeftKept = O.b0 < W_.b0 - Margin(W_.b0);
        const bool isRightKept = O.b1 > W_.b1 + Margin(W_.b1);
        if (isLeftKept) lists_.QueueIf(isOldQueued, Append(WithEnd(O, W_.b0)));
        At(old) = Lit(W_, isLeftKept ? W_.b0 : O.b0, isRightKept ? W_.b1 : O.b1);
        open_ = before_ = old;
        if (isRightKept) lists_.QueueIf(isOldQueued, Append(WithBegin(O, W_.b1)));
    }

    /// The open piece grows over O, whose slot goes, or carries what is left of O.
    void GrowOver(std::int32_t old, bool isOldQueued) {
        const GeodesicWindow O = At(old);
        const bool isRightKept = O.b1 > W_.b1 + WindowTolerance;
        EndPieceAt(isRightKept ? W_.b1 : O.b1);
        if (!isRightKept) return lists_.Unlink(before_, old);
        At(old) = WithBegin(O, W_.b1);
        lists_.QueueIf(isOldQueued, old);
        before_ = old;
    }

    void EndPieceAt(double b1) {
        At(open_).b1 = b1;
        At(open_).d1 = WindowDistance(W_, b1);
    }

    /// O has kept what lies left of the point; there a piece begins.
    void BeginInside(const Overlap& overlap, bool isOldQueued) {
        Pass(overlap.slot);
        const GeodesicWindow O = At(overlap.slot);
        const std::int32_t next = lists_.store_[overlap.slot].next;
        const double end = next == -1 ? lists_.surface_.Length(W_.edge) : At(next).b0;
        if (std::fabs(W_.b1 - end) < EndTolerance) W_.b1 = end;

        GeodesicWindow piece = WithEnd(W_, std::min(W_.b1, end));
        piece.b0 = overlap.result.point;
        piece.d0 = overlap.result.value - W_.sigma;
        open_ = Append(piece);
        if (!(end > W_.b1)) return;
        Close();
        lists_.QueueIf(isOldQueued, Append(Lit(O, W_.b1, end)));
    }

    /// O has kept what lies right of the point; there the open piece ends.
    void EndPiece(const Overlap& overlap) {
        At(open_).b1 = overlap.result.point;
        At(open_).d1 = overlap.result.value - W_.sigma;
        Pass(overlap.slot);
    }

    /// As `EndPiece`, for a piece that begins in O itself. What lies left of W was O's, and becomes a copy.
    void EndInside(const Overlap& overlap, bool isOldQueued) {
        const double start = before_ == -1 ? 0.0 : At(before_).b1;
        if (std::fabs(W_.b0 - start) < EndTolerance) W_.b0 = start;
        if (W_.b0 > start) lists_.QueueIf(isOldQueued, Append(Lit(At(overlap.slot), start, W_.b0)));

        GeodesicWindow piece = WithBegin(W_, std::max(start, W_.b0));
        piece.b1 = overlap.result.point;
        piece.d1 = overlap.result.value - W_.sigma;
        lists_.QueueIf(isQueued_, Append(piece));
        before_ = overlap.slot;
    }

    WindowLists& lists_;
    GeodesicWindow W_;
    bool isQueued_;
    std::int32_t before_;     // the last slot of the list that is done with
    std::int32_t open_ = -1;  // the open piece
};

// A sound mesh needs some windows an edge, about a tenth of the root of the number of edges.
WindowLists::WindowLists(const SurfaceEdges& surface)
    : surface_(surface),
      first_(surface.Count(), -1),
      changeCount_(surface.Count(), 0),
      mostChanges_(256 + 16 * static_cast<std::int32_t>(std::sqrt(static_cast<double>(surface.Count())))) {}

void WindowLists::InsertWindow(GeodesicWindow window, bool isQueued) {
    if (IsSettled(window.edge) || !IsFinite(window) || !(window.b0 <= window.b1)) return;
    if (first_[window.edge] == -1) return InsertFirstWindow(window, isQueued);
    if (window.b0 == window.b1) return;
    const std::int32_t before = CompareAll(window);
    if (!MayChange(window.edge)) return;
    TrimOld(isQueued);
    Placement placement(*this, window, isQueued, before);
    for (const Overlap& overlap : overlaps_) placement.Place(overlap);
    placement.Close();
}

/// The list must cover the edge: what the window does not light is lit by its own ends.
void WindowLists::InsertFirstWindow(GeodesicWindow window, bool isQueued) {
    const double length = surface_.Length(window.edge);
    open_.push_back(window.edge);
    if (window.b0 < EndTolerance) window.b0 = 0.0;
    if (window.b1 > length - EndTolerance) window.b1 = length;

    std::int32_t last = -1;
    const auto append = [&](const GeodesicWindow& w) {
        const std::int32_t slot = Store(w);
        LinkBehind(last, w.edge, slot);
        QueueIf(isQueued, slot);
        last = slot;
    };
    const GeodesicWindow& w = window;
    if (w.b0 != 0.0) append({0.0, w.b0, w.b0, 0.0, w.sigma + w.d0, w.tau, w.edge});
    append(w);
    if (w.b1 != length) append({w.b1, length, 0.0, length - w.b1, w.sigma + w.d1, w.tau, w.edge});
}

/// Finds what the window overlaps.
/// @return  the slot before the first of these, or -1
std::int32_t WindowLists::CompareAll(const GeodesicWindow& window) {
    overlaps_.clear();
    std::int32_t before = -1;
    std::int32_t slot = first_[window.edge];
    while (slot != -1 && window.b0 >= store_[slot].b1) {
        before = slot;
        slot = store_[slot].next;
    }
    for (; slot != -1 && store_[slot].b0 < window.b1; slot = store_[slot].next)
        overlaps_.push_back({slot, CompareWindows(store_[slot], window), false});
    return before;
}

/// False if the new window takes nothing; and where lengths are so large that their rounding exceeds the tolerance, so that
/// windows gain on each other without end.
bool WindowLists::MayChange(std::int32_t edge) {
    const auto changes = [](const Overlap& overlap) { return overlap.result.outcome != Outcome::OldStays; };
    return std::any_of(overlaps_.begin(), overlaps_.end(), changes) && ++changeCount_[edge] <= mostChanges_;
}

/// Takes all that change out of the queue, as their place in it depends on what changes, and cuts off what they lose.
void WindowLists::TrimOld(bool isQueued) {
    for (Overlap& overlap : overlaps_) {
        const auto [outcome, point, value] = overlap.result;
        if (outcome == Outcome::OldStays) continue;
        GeodesicWindow& O = store_[overlap.slot];
        overlap.wasQueued = queue_.Remove(O, overlap.slot);
        if (outcome == Outcome::NewTakes) continue;
        O = outcome == Outcome::OldLeft ? WithEnd(O, point) : WithBegin(O, point);
        // Also by an insertion that queues nothing itself: what stood in the queue still has to be propagated.
        QueueIf(isQueued || overlap.wasQueued, overlap.slot);
    }
}

GeodesicWindow WindowLists::TakeNearest() {
    if (windowCount_ >= settleAt_) {
        Settle();
        // As many windows must come as were looked at, so that the search costs each of them a constant.
        settleAt_ = std::max(FewWindows, 2 * windowCount_);
    }
    return store_[queue_.Pop()];
}

std::optional<WindowLists::EndDistances> WindowLists::DistancesAt(std::int32_t edge) const {
    if (IsSettled(edge)) return settled_[FirstSettled - first_[edge]];
    std::int32_t slot = first_[edge];
    if (slot == -1) return std::nullopt;
    const double atStart = store_[slot].sigma + store_[slot].d0;
    while (store_[slot].next != -1) slot = store_[slot].next;
    return EndDistances{atStart, store_[slot].sigma + store_[slot].d1};
}

/// No point that a queued window lights, or that the light of it will reach later, is nearer to a source than this.
double WindowLists::LeastPossibleDistance() const {
    double least = std::numeric_limits<double>::infinity();
    queue_.ForEach([&](const QueuedWindow& queued) {
        // The nearest point can lie between the ends, half the width away from both. Most windows are too far away for
        // that to matter, whatever their width, and are not looked up.
        if (queued.key - surface_.LongestLength() >= least) return;
        const GeodesicWindow& w = store_[queued.slot];
        least = std::min(least, NearestDistance(w) - 0.5 * (w.b1 - w.b0));
    });
    return least;
}

/// Whether all windows of an edge are nearer than this. Between its ends no point of a window is farther than the farther
/// end.
bool WindowLists::IsNearer(std::int32_t edge, double distance) const {
    for (std::int32_t slot = first_[edge]; slot != -1; slot = store_[slot].next)
        if (store_[slot].sigma + std::max(store_[slot].d0, store_[slot].d1) >= distance) return false;
    return true;
}

void WindowLists::Settle() {
    // Rounding must not let a window come to a settled edge that it could have changed.
    const double least = LeastPossibleDistance() * (1.0 - 1e-6);
    if (!(least > 0.0)) return;
    std::erase_if(open_, [&](std::int32_t edge) {
        if (!IsNearer(edge, least)) return false;
        const EndDistances distances = *DistancesAt(edge);
        for (std::int32_t slot = first_[edge]; slot != -1;) {
            const std::int32_t next = store_[slot].next;
            Free(slot);
            slot = next;
        }
        first_[edge] = FirstSettled - static_cast<std::int32_t>(settled_.size());
        settled_.push_back(distances);
        return true;
    });
}

std::int32_t WindowLists::Store(const GeodesicWindow& window) {
    ++windowCount_;
    const std::int32_t slot = free_;
    if (slot != -1) {
        free_ = store_[slot].next;
        static_cast<GeodesicWindow&>(store_[slot]) = window;
        return slot;
    }
    store_.push_back({window, -1});
    return static_cast<std::int32_t>(store_.size()) - 1;
}

void WindowLists::QueueIf(bool isQueued, std::int32_t slot) {
    if (isQueued) queue_.Push(store_[slot], slot);
}

void WindowLists::LinkBehind(std::int32_t before, std::int32_t edge, std::int32_t slot) {
    std::int32_t& link = before == -1 ? first_[edge] : store_[before].next;
    store_[slot].next = link;
    link = slot;
}

/// The slot becomes free; something stands before it.
void WindowLists::Unlink(std::int32_t before, std::int32_t slot) {
    store_[before].next = store_[slot].next;
    Free(slot);
}

void WindowLists::Free(std::int32_t slot) {
    store_[slot].next = free_;
    free_ = slot;
    --windowCount_;
}

}  // namespace KM
