#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace KM {

/// A count for each pair and each triple of nodes, whatever their order; 0 for those that never got one.
class NodeTable {
public:
    struct Key {
        int a, b, c;

        friend bool operator==(const Key&, const Key&) = default;
    };

    static Key Pair(int a, int b) { return a < b ? Key{a, b, Nothing} : Key{b, a, Nothing}; }
    static Key Triple(int a, int b, int c) {
        if (a > b) std::swap(a, b);
        if (b > c) std::swap(b, c);
        if (a > b) std::swap(a, b);
        return {a, b, c};
    }

    int Count(const Key& key) const { return slots_[SlotOf(key)].count; }

    void Add(const Key& key) {
        std::size_t at = SlotOf(key);
        if (slots_[at].count == 0 && 2 * ++used_ > slots_.size()) {
            Grow();
            at = SlotOf(key);
        }
        slots_[at].key = key;
        ++slots_[at].count;
    }

private:
    static constexpr int Nothing = -1;

    struct Slot {
        Key key{};
        int count = 0;  // 0 for a slot that is free
    };

    /// Where the key stands, or would.
    std::size_t SlotOf(const Key& key) const {
        const std::size_t mask = slots_.size() - 1;
        std::uint64_t hash = static_cast<std::uint32_t>(key.a);
        for (const int node : {key.b, key.c})
            hash = (hash ^ hash >> 29) * 0x9e3779b97f4a7c15u + static_cast<std::uint32_t>(node);
        hash *= 0xbf58476d1ce4e5b9u;
        std::size_t at = (hash ^ hash >> 32) & mask;
        while (slots_[at].count != 0 && slots_[at].key != key) at = (at + 1) & mask;
        return at;
    }

    void Grow() {
        std::vector<Slot> old(2 * slots_.size());
        old.swap(slots_);
        for (const Slot& slot : old)
            if (slot.count != 0) slots_[SlotOf(slot.key)] = slot;
    }

    std::vector<Slot> slots_ = std::vector<Slot>(64);
    std::size_t used_ = 0;
};

}  // namespace KM
