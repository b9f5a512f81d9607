#pragma once

#include <cstdint>
#include <vector>

#include "KmApi.h"

namespace KM {

/// The directed edges that still wait for a twin while facets are added to a mesh.
///
/// Edges that run the same way between the same nodes queue up: the one that has waited longest is used first. Any
/// node index serves; memory grows with the number of waiting edges and not with the indices. Both operations take
/// constant time on average, however many edges meet at a node.
class KM_API EdgesMap {
public:
    EdgesMap() = default;
    /// Makes room for about `count` nodes. A count that is too small, or negative, costs nothing but time.
    explicit EdgesMap(int count);

    /// Files `edge`, which runs from `start` to `end`.
    void AddEdge(int edge, int start, int end);

    /// Takes the edge that has waited longest among those that run from `end` to `start`, that is against the asking
    /// edge; -1 if there is none.
    int UseEdge(int start, int end);

private:
    /// A directed segment, and the queue of edges that wait on it.
    struct Slot {
        std::int32_t start = -1;
        std::int32_t end = -1;
        std::int32_t first = -1;  // -1 when nobody waits any more
        std::int32_t last = -1;   // -1 when the slot has never been used
    };
    struct Waiting {
        std::int32_t edge;
        std::int32_t next;
    };

    std::size_t Find(int start, int end) const;
    void Grow();

    std::vector<Slot> slots_;  // open addressing; the size is 0 or a power of two
    std::vector<Waiting> waiting_;
    std::size_t used_ = 0;
    std::int32_t recycled_ = -1;  // chain of `waiting_` entries that are free again
};

}  // namespace KM
