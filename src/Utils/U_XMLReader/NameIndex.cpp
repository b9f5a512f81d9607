#include "Utils/U_XMLReader/NameIndex.h"

#include <algorithm>
#include <bit>
#include <functional>

#include "Utils/U_XMLReader/Limits.h"

namespace KM::XML {
namespace {

// Up to here a walk along the row beats a hash.
constexpr std::size_t ShortRow = 12;
constexpr std::size_t FirstEntries = 4;

std::size_t HashOf(std::string_view name) { return std::hash<std::string_view>()(name); }

}  // namespace

std::size_t NameIndex::PlaceOf(std::string_view name) const {
    if (!slots_.empty()) return HashedPlaceOf(name);
    // Siblings tend to be called alike, up to a number at the end.
    const char last = name.empty() ? '\0' : name.back();
    for (std::size_t place = 0; place < entries_.size(); ++place) {
        const std::string& entry = entries_[place].name;
        const bool mayFit = entry.size() == name.size() && (name.empty() || entry.back() == last);
        if (mayFit && entry == name) return place;
    }
    return NoPlace;
}

std::size_t NameIndex::HashedPlaceOf(std::string_view name) const {
    const std::size_t mask = slots_.size() - 1;
    for (std::size_t slot = HashOf(name) & mask; slots_[slot] != 0; slot = (slot + 1) & mask)
        if (entries_[slots_[slot] - 1].name == name) return slots_[slot] - 1;
    return NoPlace;
}

void NameIndex::EnterSlot(std::size_t place) {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = HashOf(entries_[place].name) & mask;
    while (slots_[slot] != 0) slot = (slot + 1) & mask;
    slots_[slot] = static_cast<std::uint32_t>(place + 1);
}

void NameIndex::Grow() {
    std::erase_if(entries_, [](const Entry& entry) { return entry.element == nullptr; });
    slots_.clear();
    if (entries_.size() < ShortRow) return;
    slots_.resize(std::bit_ceil(4 * entries_.size()));
    for (std::size_t place = 0; place < entries_.size(); ++place) EnterSlot(place);
}

void NameIndex::Set(const std::string& name, Element* element) {
    if (const std::size_t place = PlaceOf(name); place != NoPlace) {
        entries_[place].element = element;
        return;
    }
    CheckMapRoom(entries_.size());
    if (entries_.size() >= std::max(ShortRow, slots_.size() / 2)) Grow();
    if (entries_.capacity() == 0) entries_.reserve(FirstEntries);
    entries_.push_back({name, element});
    if (!slots_.empty()) EnterSlot(entries_.size() - 1);
}

void NameIndex::Erase(std::string_view name) {
    if (const std::size_t place = PlaceOf(name); place != NoPlace) entries_[place].element = nullptr;
}

void NameIndex::EraseElement(const Element* element) {
    for (Entry& entry : entries_)
        if (entry.element == element) entry.element = nullptr;
}

}  // namespace KM::XML
