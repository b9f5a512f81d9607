#include "CacheFile.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <limits>
#include <string_view>

#include "Utils/U_Caching/Caching.h"
#include "Utils/U_IO/ToFile.h"

namespace KM::Tool {
namespace {

namespace fs = std::filesystem;

static_assert(std::endian::native == std::endian::little, "results are written as they lie in memory");

constexpr std::uint32_t Format = 1;

struct Head {
    char magic[8] = {'K', 'M', 'R', 'E', 'S', 'U', 'L', 'T'};
    std::uint32_t format = Format;
    std::uint32_t textLength = 0;
    std::uint64_t dataLength = 0;
    std::uint64_t checksum = 0;
};
static_assert(sizeof(Head) == 32);

/// FNV-1a, by Fowler, Noll and Vo: each single byte that differs changes it.
std::uint64_t Mixed(std::uint64_t sum, std::string_view bytes) {
    constexpr std::uint64_t prime = 0x100000001b3;
    for (const char byte : bytes) sum = (sum ^ static_cast<unsigned char>(byte)) * prime;
    return sum;
}

std::uint64_t ChecksumOf(const Head& head, const std::string& text, const std::string& data) {
    constexpr std::uint64_t start = 0xcbf29ce484222325;
    const std::string_view summed(reinterpret_cast<const char*>(&head), offsetof(Head, checksum));
    return Mixed(Mixed(Mixed(start, summed), text), data);
}

CacheFile Faulty(const std::string& fault) { return {"", "", fault}; }

bool ReadAll(std::FILE* file, void* bytes, std::size_t size) { return std::fread(bytes, 1, size, file) == size; }

/// Empty for a sound head. Lengths are compared with the file before anything of that length is reserved.
std::string FaultOf(const Head& head, std::uintmax_t size) {
    const Head sound;
    if (std::memcmp(head.magic, sound.magic, sizeof sound.magic) != 0) return "is no file of results";
    if (head.format != Format) return "has another format";
    const std::uintmax_t rest = size - sizeof head;
    if (head.textLength > rest || head.dataLength != rest - head.textLength) return "is cut short or too long";
    return "";
}

CacheFile Read(const std::string& name, int color, bool isWhole) {
    if (!IsPlainFile(name)) return Faulty("is no plain file");
    const IO::ToFile file(name, "rb", color, false);
    std::error_code error;
    const std::uintmax_t size = fs::file_size(SystemPath(name), error);
    Head head;
    if (error || size < sizeof head || !ReadAll(file, &head, sizeof head)) return Faulty("is cut short or too long");
    CacheFile result = Faulty(FaultOf(head, size));
    if (!result.fault.empty()) return result;
    result.madeFrom.resize(head.textLength);
    result.data.resize(isWhole ? head.dataLength : 0);
    if (!ReadAll(file, result.madeFrom.data(), result.madeFrom.size()) ||
        !ReadAll(file, result.data.data(), result.data.size()))
        return Faulty("cannot be read to its end");
    if (isWhole && head.checksum != ChecksumOf(head, result.madeFrom, result.data)) return Faulty("is damaged");
    return result;
}

CacheFile ReadGuarded(const std::string& name, int color, bool isWhole) {
    try {
        return Read(name, color, isWhole);
    } catch (const IO::XFileIOError&) {
        return Faulty("cannot be opened");
    }
}

/// In blocks: the lengths of the framework's files have 32 bits.
void Write(IO::ToFile& file, std::string_view bytes) {
    constexpr std::size_t block = std::size_t{1} << 30;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(block, bytes.size())))
        KM_IO_WRITE(bytes.data(), static_cast<unsigned>(std::min(block, bytes.size())), file);
}

}  // namespace

CacheFile ReadCacheFile(const std::string& name) { return ReadGuarded(name, Caching::ColorForReading(), true); }

CacheFile ReadCacheHead(const std::string& name) { return ReadGuarded(name, 0, false); }

bool WriteCacheFile(const std::string& name, const std::string& madeFrom, const std::string& data) {
    std::error_code error;
    // A folder cannot be replaced, and a pipe would wait for its other end for ever.
    if (fs::exists(fs::symlink_status(SystemPath(name), error)) && !IsPlainFile(name)) return false;
    if (madeFrom.size() > std::numeric_limits<std::uint32_t>::max()) return false;
    Head head;
    head.textLength = static_cast<std::uint32_t>(madeFrom.size());
    head.dataLength = data.size();
    head.checksum = ChecksumOf(head, madeFrom, data);
    try {
        IO::ToFile file(name, "wb", Caching::ColorForWriting(), true);
        Write(file, {reinterpret_cast<const char*>(&head), sizeof head});
        Write(file, madeFrom);
        Write(file, data);
        file.Close();
    } catch (const IO::XFileIOError&) {
        return false;
    }
    return fs::file_size(SystemPath(name), error) == sizeof head + madeFrom.size() + data.size() && !error;
}

bool IsPlainFile(const std::string& name) {
    std::error_code error;
    return fs::is_regular_file(fs::symlink_status(SystemPath(name), error));
}

std::string SystemPath(std::string name) {
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

}  // namespace KM::Tool
