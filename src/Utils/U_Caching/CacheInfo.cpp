#include "Utils/U_Caching/CacheInfo.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>

#include "Platform/Files.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Caching/SoundValues.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/Files.h"
#include "Utils/U_IO/ToFile.h"

namespace KM::Caching {
namespace {

using Bytes = std::array<unsigned char, 36>;

constexpr std::uint32_t Format = 4;
constexpr std::size_t BehindFormat = 4;

template <class Unsigned>
void Put(Bytes& bytes, std::size_t offset, Unsigned value) {
    for (std::size_t i = 0; i < sizeof value; ++i) bytes[offset + i] = static_cast<unsigned char>(value >> (8 * i));
}

template <class Unsigned>
Unsigned Get(const Bytes& bytes, std::size_t offset) {
    Unsigned value = 0;
    for (std::size_t i = 0; i < sizeof value; ++i) value |= static_cast<Unsigned>(bytes[offset + i]) << (8 * i);
    return value;
}

double Number(const Bytes& bytes, std::size_t index) {
    return std::bit_cast<double>(Get<std::uint64_t>(bytes, BehindFormat + 8 * index));
}

Bytes PresentValues() {
    Bytes bytes;
    Put(bytes, 0, Format);
    std::size_t offset = BehindFormat;
    for (const double value : {TimeBetweenAnalysis(), LastAnalysisTime(), CleaningSize(), DeleteFactor()}) {
        Put(bytes, offset, std::bit_cast<std::uint64_t>(value));
        offset += sizeof value;
    }
    return bytes;
}

/// All or nothing: where one value is damaged, the others cannot be trusted with the deletion of files.
bool Take(const Bytes& bytes) {
    const double between = Number(bytes, 0);
    const double last = Number(bytes, 1);
    const double size = Number(bytes, 2);
    const double factor = Number(bytes, 3);
    if (Get<std::uint32_t>(bytes, 0) != Format || !IsSoundSpan(between) || !IsSoundMoment(last)) return false;
    if (!IsSoundAmount(size) || !IsSoundAmount(factor)) return false;
    TimeBetweenAnalysis(between);
    LastAnalysisTime(last);
    CleaningSize(size);
    DeleteFactor(factor);
    return true;
}

std::string InfoName() { return Path() + "Cache.Info"; }

/// False for a folder, a pipe or the like: a pipe would wait for its other end for ever.
bool CanBeFile(const std::string& name) {
    const std::optional<Platform::FileInfo> info = Platform::InfoOf(name);
    return !info || info->isPlain;
}

}  // namespace

void ReadCacheInfo() {
    const std::string name = InfoName();
    if (!IO::FileExist(name) || !CanBeFile(name)) return;
    Bytes bytes{};  // of a file that is cut off the rest counts as zeros
    bool isWhole = false;
    try {
        const IO::ToFile file(name, "rb", 0, false);
        isWhole = std::fread(bytes.data(), 1, bytes.size(), file) == bytes.size();
    } catch (const IO::XFileIOError&) {
        return;
    }  // not for us to read; the log tells it
    if (!isWhole || !Take(bytes)) WriteCacheInfo();
}

void WriteCacheInfo() {
    const std::string name = InfoName();
    try {
        if (!CanBeFile(name)) throw IO::XFileIOError();
        IO::ToFile file(name, "wb", 0, false);
        KM_IO_WRITE(PresentValues().data(), sizeof(Bytes), file);
    } catch (const IO::XFileIOError&) {
        Verbose::WriteMessage_1(Verbose::EMessageType::Error, "File: Cache.Info can't be oppened!");
    }
}

}  // namespace KM::Caching
