#include "Mesh/Core/EdgesMap.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace KM {

EdgesMap::EdgesMap(int count) {
    // A closed surface has six half-edges a node, of which about one in two waits for a while. The count is a hint, so
    // an absurd one must not ask for absurd memory.
    constexpr std::size_t mostSlots = std::size_t{1} << 24;
    if (count > 0) slots_.resize(std::min(mostSlots, std::bit_ceil(static_cast<std::size_t>(count) * 4)));
}

/// The slot of the segment, or the free slot where it would go.
std::size_t EdgesMap::Find(int start, int end) const {
    const std::size_t mask = slots_.size() - 1;
    const std::uint64_t key =
        (static_cast<std::uint64_t>(static_cast<std::uint32_t>(start)) << 32) | static_cast<std::uint32_t>(end);
    // The upper half of the product alone depends on both nodes.
    const std::uint64_t hash = (key ^ (key >> 29)) * 0x9E3779B97F4A7C15ull;
    std::size_t at = static_cast<std::size_t>(hash >> 32) & mask;
    while (slots_[at].last != -1 && (slots_[at].start != start || slots_[at].end != end)) at = (at + 1) & mask;
    return at;
}

/// Makes room for another segment: by forgetting those on which nobody waits any more, if that frees half the slots.
void EdgesMap::Grow() {
    if (slots_.empty()) recycled_ = -1;  // a map that was moved away still has the number of an entry that left
    const auto isWaitedOn = [](const Slot& slot) { return slot.first != -1; };
    used_ = static_cast<std::size_t>(std::count_if(slots_.begin(), slots_.end(), isWaitedOn));
    const std::size_t size = std::max<std::size_t>(16, 4 * used_ > slots_.size() ? 2 * slots_.size() : slots_.size());
    const std::vector<Slot> old = std::exchange(slots_, std::vector<Slot>(size));
    for (const Slot& slot : old)
        if (isWaitedOn(slot)) slots_[Find(slot.start, slot.end)] = slot;
}

void EdgesMap::AddEdge(int edge, int start, int end) {
    if (2 * (used_ + 1) > slots_.size()) Grow();
    std::int32_t entry = recycled_;
    if (entry != -1) {
        recycled_ = waiting_[entry].next;
        waiting_[entry] = {edge, -1};
    } else {
        entry = static_cast<std::int32_t>(waiting_.size());
        waiting_.push_back({edge, -1});
    }
    Slot& slot = slots_[Find(start, end)];
    if (slot.last == -1) {
        slot.start = start;
        slot.end = end;
        ++used_;
    }
    if (slot.first == -1)
        slot.first = entry;
    else
        waiting_[slot.last].next = entry;
    slot.last = entry;
}

int EdgesMap::UseEdge(int start, int end) {
    if (slots_.empty()) return -1;
    Slot& slot = slots_[Find(end, start)];
    if (slot.first == -1) return -1;
    const std::int32_t entry = slot.first;
    slot.first = waiting_[entry].next;
    waiting_[entry].next = std::exchange(recycled_, entry);
    return waiting_[entry].edge;
}

}  // namespace KM
