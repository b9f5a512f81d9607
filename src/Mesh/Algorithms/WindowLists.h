#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "SurfaceEdges.h"
#include "WindowComparison.h"
#include "WindowQueue.h"

namespace KM {

/// All windows of a surface: one flat store, a list for each canonical edge, and the queue of those that are still to be
/// propagated. Once an edge has a window, its list covers the whole edge, from 0 to its length, in order and without gaps.
///
/// Windows go by their slot in the store, which moves as it grows. The lists are links from slot to slot, so that no
/// window costs an allocation. An edge that all queued windows are too far away to change is settled: of its list only the
/// distances at its ends are kept, and the slots serve anew. So memory, and the cache, hold the front of the wave alone.
class WindowLists {
public:
    /// The distances from the source at the start and at the end of an edge.
    struct EndDistances {
        double atStart;
        double atEnd;
    };

    explicit WindowLists(const SurfaceEdges& surface);

    /// Brings a window into the list of its edge, where it takes the part on which it is nearer than those before. A window
    /// that is not finite, or has no extent, changes nothing. The others are trimmed or split, and are then queued again.
    /// A list changes `MostChanges()` times at most, far more often than a shortest way needs.
    ///
    /// @param isQueued  whether what the window takes is to be propagated
    void InsertWindow(GeodesicWindow window, bool isQueued);

    bool HasQueued() const { return !queue_.IsEmpty(); }
    /// The nearest window of the queue, which it leaves. Settles edges now and then.
    GeodesicWindow TakeNearest();

    /// The distances at the two ends of a canonical edge, or nothing if no window has reached it.
    std::optional<EndDistances> DistancesAt(std::int32_t edge) const;

    // The list of a canonical edge: slots, ascending; -1 ends it. A settled edge has none.
    std::int32_t First(std::int32_t edge) const { return IsSettled(edge) ? -1 : first_[edge]; }
    std::int32_t Next(std::int32_t slot) const { return store_[slot].next; }
    const GeodesicWindow& At(std::int32_t slot) const { return store_[slot]; }

    bool IsSettled(std::int32_t edge) const { return first_[edge] <= FirstSettled; }
    /// Settles all edges that can be.
    void Settle();
    std::size_t SlotCount() const { return store_.size(); }
    static constexpr std::size_t SlotBytes = 64;
    std::int32_t MostChanges() const { return mostChanges_; }

private:
    class Placement;

    // `first_` of an edge that is settled: this, less the place of its distances in `settled_`.
    static constexpr std::int32_t FirstSettled = -2;
    // So few windows are not worth a search for edges to settle.
    static constexpr std::size_t FewWindows = 4096;

    /// A window and its link share a line of the cache, as lists are mostly walked.
    struct alignas(SlotBytes) Slot : GeodesicWindow {
        std::int32_t next = -1;  ///< of a free slot the next free one
    };

    /// An old window that the new one overlaps.
    struct Overlap {
        std::int32_t slot;
        Comparison result;
        bool wasQueued;
    };

    double LeastPossibleDistance() const;
    bool IsNearer(std::int32_t edge, double distance) const;
    void InsertFirstWindow(GeodesicWindow window, bool isQueued);
    std::int32_t CompareAll(const GeodesicWindow& window);
    bool MayChange(std::int32_t edge);
    void TrimOld(bool isQueued);

    std::int32_t Store(const GeodesicWindow& window);
    void Free(std::int32_t slot);
    void QueueIf(bool isQueued, std::int32_t slot);
    void LinkBehind(std::int32_t before, std::int32_t edge, std::int32_t slot);
    void Unlink(std::int32_t before, std::int32_t slot);

    const SurfaceEdges& surface_;
    std::vector<Slot> store_;
    std::vector<std::int32_t> first_;  // of each canonical edge
    std::vector<std::int32_t> changeCount_;
    std::int32_t mostChanges_;
    std::int32_t free_ = -1;
    std::size_t windowCount_ = 0;
    std::size_t settleAt_ = FewWindows;  // the count of windows at which the next search for edges to settle is due
    std::vector<std::int32_t> open_;     // the edges that have a list
    std::vector<EndDistances> settled_;
    WindowQueue queue_;
    std::vector<Overlap> overlaps_;  // of the insertion that is under way
};

}  // namespace KM
