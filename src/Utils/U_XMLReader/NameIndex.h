#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace KM::XML {

class Element;

// The children of an element by name: one element a name. A row of entries that is searched from the front while it is
// short, as nearly all are, and through a table of hashes with open addressing when it is long.
class NameIndex {
public:
    /// Null if there is none.
    Element* Find(std::string_view name) const {
        const std::size_t place = PlaceOf(name);
        return place != NoPlace ? entries_[place].element : nullptr;
    }
    void Set(const std::string& name, Element* element);
    void Erase(std::string_view name);
    /// Whatever its names: in time that grows with the index.
    void EraseElement(const Element* element);

private:
    // An erased entry has no element. It keeps its place, so that no other entry moves, until the row grows.
    struct Entry {
        std::string name;
        Element* element;
    };

    static constexpr std::size_t NoPlace = static_cast<std::size_t>(-1);

    std::size_t PlaceOf(std::string_view name) const;
    std::size_t HashedPlaceOf(std::string_view name) const;
    void EnterSlot(std::size_t place);
    void Grow();

    std::vector<Entry> entries_;
    std::vector<std::uint32_t> slots_;  // place + 1, 0 is free; a power of two of them, at most half of them taken
};

}  // namespace KM::XML
