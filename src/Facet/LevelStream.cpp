#include "Facet/LevelStream.h"

#include <algorithm>
#include <limits>
#include <span>

#include "Facet/LevelsOfDetail.h"
#include "Facet/StripCutter.h"
#include "KmTools.h"
#include "Utils/U_Debug/Exceptions.h"

namespace KM {
namespace {

constexpr double ToleranceUnit = 100000.0;

std::int32_t StripCount(const KsLod& lod) { return static_cast<std::int32_t>(lod.strips.size()); }
std::int32_t StripCount(const FlatLod& lod) { return lod.stripCount; }

std::size_t StripWords(const FlatLod& lod) { return lod.strips.size(); }
std::size_t StripWords(const KsLod& lod) {
    std::size_t words = 0;
    for (const StripFan& strip : lod.strips) words += 1 + strip.nodes.size();
    return words;
}

std::int32_t* WriteStrips(const FlatLod& lod, std::int32_t* to) {
    return std::copy(lod.strips.begin(), lod.strips.end(), to);
}
std::int32_t* WriteStrips(const KsLod& lod, std::int32_t* to) {
    for (const StripFan& strip : lod.strips) {
        *to++ = static_cast<std::int32_t>(strip.nodes.size());
        to = strip.kind == 2 ? std::copy(strip.nodes.rbegin(), strip.nodes.rend(), to)
                             : std::copy(strip.nodes.begin(), strip.nodes.end(), to);
    }
    return to;
}

/// Levels are told apart by their size alone; hosts count on a level that looks like the one before it being left out.
template <class Lod>
bool IsWritten(const std::vector<Lod>& lods, std::size_t level) {
    return level == 0 || lods[level].size != lods[level - 1].size;
}

template <class Lod>
bool DoLevelsFit(const std::vector<Lod>& lods, int size) {
    std::int64_t words = 0;
    for (std::size_t i = 0; i < lods.size(); ++i)
        if (IsWritten(lods, i)) words += LevelHeader + static_cast<std::int64_t>(StripWords(lods[i]));
    return words <= size;
}

/// Truncated toward zero. What fits into no word, and not-a-number, gives the least word on either side: that is what the
/// truncation of the processors gives that hosts run on, done here so that it is the same on all of them.
std::int32_t ToleranceWord(double tolerance) {
    const double scaled = tolerance * ToleranceUnit;
    const bool fits = scaled > -2147483649.0 && scaled < 2147483648.0;
    return fits ? static_cast<std::int32_t>(scaled) : std::numeric_limits<std::int32_t>::min();
}

/// The place of throwing is a fixed text that hosts look for.
[[noreturn]] void Fail(const char* message) { throw KmException(message, "tools/inc/KmTools", 2448); }

template <class Lod>
KsLodsTRI Flatten(const std::vector<Lod>& lods, int size) {
    if (size < 0 || !DoLevelsFit(lods, size)) Fail("In LodsToTRI. The levels do not fit into the stream");
    void* block = nullptr;
    if (KmMemAlloc(static_cast<std::size_t>(size) * sizeof(std::int32_t), &block) != 0)
        Fail("In LodsToTRI. Memory allocation");

    KsLodsTRI result{0, size, static_cast<std::int32_t*>(block)};
    std::int32_t* to = result.data;
    for (std::size_t i = 0; i < lods.size(); ++i) {
        if (!IsWritten(lods, i)) continue;
        *to++ = ToleranceWord(lods[i].tolerance);
        *to++ = lods[i].size;
        *to++ = StripCount(lods[i]);
        to = WriteStrips(lods[i], to);
        ++result.lodCount;
    }
    return result;
}

}  // namespace

FlatLod CutLevel(const PIN& mesh, double tolerance) {
    FlatLod lod{{}, tolerance, LevelHeader, 0};
    // A strip takes a word a triangle and a few more; what is not needed in the end was never touched.
    lod.strips.reserve(mesh.edges.size() / 2);
    CutStrips(mesh.edges, [&](std::span<const int> nodes, std::int32_t kind) {
        lod.strips.push_back(static_cast<std::int32_t>(nodes.size()));
        if (kind == 2)
            lod.strips.insert(lod.strips.end(), nodes.rbegin(), nodes.rend());
        else
            lod.strips.insert(lod.strips.end(), nodes.begin(), nodes.end());
        ++lod.stripCount;
    });
    lod.size += static_cast<std::int32_t>(lod.strips.size());
    return lod;
}

KsLodsTRI FlattenLevels(const std::vector<FlatLod>& lods, int size) { return Flatten(lods, size); }

KsLodsTRI LodsToTRI(const std::vector<KsLod>& lods, int size) { return Flatten(lods, size); }

}  // namespace KM
