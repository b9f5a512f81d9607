#include <cstdint>
#include <limits>
#include <memory>

#include "Facet/LevelsOfDetail.h"
#include "KmTools.h"
#include "Utils/U_Debug/Exceptions.h"

namespace KM {
namespace {

constexpr int LevelHeader = 3;
constexpr double ToleranceUnit = 100000.0;

/// Levels are told apart by their size alone; hosts count on a level that looks like the one before it being left out.
bool IsWritten(const std::vector<KsLod>& lods, std::size_t level) {
    return level == 0 || lods[level].size != lods[level - 1].size;
}

std::int64_t WordsToWrite(const std::vector<KsLod>& lods) {
    std::int64_t words = 0;
    for (std::size_t i = 0; i < lods.size(); ++i) {
        if (!IsWritten(lods, i)) continue;
        words += LevelHeader;
        for (const StripFan& strip : lods[i].strips) words += 1 + static_cast<std::int64_t>(strip.nodes.size());
    }
    return words;
}

/// Truncated toward zero; what does not fit into a word becomes the nearest word that there is, and not-a-number 0.
std::int32_t ToleranceWord(double tolerance) {
    const double scaled = tolerance * ToleranceUnit;
    if (scaled >= std::numeric_limits<std::int32_t>::max()) return std::numeric_limits<std::int32_t>::max();
    if (scaled <= std::numeric_limits<std::int32_t>::min()) return std::numeric_limits<std::int32_t>::min();
    return scaled == scaled ? static_cast<std::int32_t>(scaled) : 0;
}

std::int32_t* WriteLevel(const KsLod& lod, std::int32_t* to) {
    *to++ = ToleranceWord(lod.tolerance);
    *to++ = lod.size;
    *to++ = static_cast<std::int32_t>(lod.strips.size());
    for (const StripFan& strip : lod.strips) {
        *to++ = static_cast<std::int32_t>(strip.nodes.size());
        to = strip.kind == 2 ? std::copy(strip.nodes.rbegin(), strip.nodes.rend(), to)
                             : std::copy(strip.nodes.begin(), strip.nodes.end(), to);
    }
    return to;
}

/// The place of throwing is a fixed text that hosts look for.
[[noreturn]] void Fail(const char* message) { throw KmException(message, "tools/inc/KmTools", 2448); }

}  // namespace

KsLodsTRI LodsToTRI(const std::vector<KsLod>& lods, int size) {
    if (size < 0 || WordsToWrite(lods) > size) Fail("In LodsToTRI. The levels do not fit into the stream");
    void* block = nullptr;
    if (KmMemAlloc(static_cast<std::size_t>(size) * sizeof(std::int32_t), &block) != 0)
        Fail("In LodsToTRI. Memory allocation");

    KsLodsTRI result{0, size, static_cast<std::int32_t*>(block)};
    std::int32_t* to = result.data;
    for (std::size_t i = 0; i < lods.size(); ++i) {
        if (!IsWritten(lods, i)) continue;
        to = WriteLevel(lods[i], to);
        ++result.lodCount;
    }
    return result;
}

}  // namespace KM
