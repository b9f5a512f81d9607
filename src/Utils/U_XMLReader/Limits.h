#pragma once

#include <cstddef>
#include <stdexcept>

namespace KM::XML {

/// Entries that a list and a map of a tree hold at most.
inline constexpr std::size_t MaxListEntries = 357'913'940;
inline constexpr std::size_t MaxMapEntries = 97'612'892;

/// To be called with the present size before an entry is added.
inline void CheckListRoom(std::size_t entries) {
    if (entries >= MaxListEntries) throw std::length_error("list<T> too long");
}
inline void CheckMapRoom(std::size_t entries) {
    if (entries >= MaxMapEntries) throw std::length_error("map/set<T> too long");
}

}  // namespace KM::XML
