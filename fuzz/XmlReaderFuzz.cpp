// Any bytes as configuration: events and refusals must be those of the plain rules, and any tree that
// comes of them can be written.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <string>

#include "Km.h"
#include "Utils/U_XMLReader/EventJournal.h"
#include "Utils/U_XMLReader/PlainXmlReader.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

/// False if the reading was refused.
template <class Reading>
bool Succeeds(Reading reading) {
    try {
        reading();
        return true;
    } catch (const char*) { return false; } catch (const std::length_error&) {
        return false;
    }
}

std::string DumpOf(const KM::XML::Element& element) {
    std::ostringstream out;
    out << element;
    return out.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const bool translate = data[0] % 2 == 0;
    const bool merge = data[0] % 4 < 2;
    const std::string text(reinterpret_cast<const char*>(data + 1), size - 1);

    KM::Test::EventJournal journal;
    const bool isSound = Succeeds([&] { KM::XML::ReadFromString(text, journal, translate); });
    const auto [events, refusal] = KM::Test::PlainXmlReader::Read(text, translate);
    Require(journal.journal == events && isSound == refusal.empty());

    KM::XML::Element tree("");
    Require(Succeeds([&] { KM::XML::ReadElementFromString(text, tree, merge); }) == isSound);
    std::ostringstream header;
    KM::XML::ToCPPHeader(header, tree, 0);
    DumpOf(tree);
    return 0;
}
