#include "CachedResults.h"

#include <sys/stat.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <type_traits>

#include "CacheFile.h"
#include "KmVersion.h"
#include "Output.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_IO/Files.h"

namespace KM::Tool {
namespace {

namespace fs = std::filesystem;

/// To be raised with each change of an algorithm or of `Pack` between two versions: results of before are made anew then.
constexpr const char* Maker = "; kmmesh " KM_VERSION "-1";

}  // namespace

Option NoCache() { return {"no-cache", Kind::Switch, "N", "make all results anew, and keep none for later runs"}; }

// ---- Finding and keeping

CachedResult::CachedResult(const std::string& kind, const std::string& inputs, bool isUsed)
    : kind_(kind), inputs_(inputs), madeFrom_(kind + ' ' + inputs + Maker), isUsed_(isUsed) {
    Name(CacheNamePrefix + kind);
    Caching::Mix(GetKey(), inputs + Maker);
}

CachedResult::CachedResult(const std::string& kind, const std::string& inputs, const CachedResult& from)
    : CachedResult(kind, inputs, from.isUsed_) {
    isKept_ = from.isKept_;
    // Keys of different inputs can be alike; the text tells them apart.
    madeFrom_ = kind + ' ' + inputs + "; " + from.madeFrom_;
    SubscribeDependsOn(from, false);
}

bool CachedResult::IsTaken() {
    const std::string name = CreateFileName(Caching::DataExt());
    if (!IO::FileExist(name)) return false;
    CacheFile file = ReadCacheFile(name);
    if (file.fault.empty() && file.madeFrom != madeFrom_) file.fault = "is the result of something else";
    if (file.fault.empty() && !Take(file.data)) file.fault = "holds no such result";
    isUnsound_ = !file.fault.empty();
    if (isUnsound_) Complain(SystemPath(name) + ": " + file.fault + "; it is left aside, and the result made anew");
    return !isUnsound_;
}

void CachedResult::Load() {
    if (isCreated_) return;
    isFound_ = isUsed_ && IsTaken();
    isCreated_ = isFound_;
    if (!isFound_) Create_();
}

void CachedResult::Create() const {
    const double start = Time::Get();
    Make();
    isCreated_ = true;
    // An unsound file is replaced in any case, or each run would tell of it.
    if (isUsed_ && isKept_ && (isUnsound_ || Caching::IsPersistent(start))) Keep();
}

void CachedResult::Keep() const {
    const std::string name = CreateFileName(Caching::DataExt());
    if (!WriteCacheFile(name, madeFrom_, Bytes()))
        Complain(SystemPath(name) + ": cannot be written; the result is not kept for later runs");
}

// ---- Bytes

namespace {

template <class T>
void Append(std::string& bytes, const T& value) {
    static_assert(std::is_trivially_copyable_v<T>);
    bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
}

template <class T>
void Append(std::string& bytes, const std::vector<T>& values) {
    static_assert(std::is_trivially_copyable_v<T>);
    Append(bytes, static_cast<std::uint64_t>(values.size()));
    if (!values.empty()) bytes.append(reinterpret_cast<const char*>(values.data()), values.size() * sizeof(T));
}

/// Takes values off bytes. Once these do not suffice all further calls answer false.
class Unpacker {
public:
    explicit Unpacker(const std::string& bytes) : bytes_(bytes) {}

    template <class T>
    bool Get(T& value) {
        return Get(&value, 1, sizeof value);
    }
    template <class T>
    bool Get(std::vector<T>& values) {
        std::uint64_t count = 0;
        if (!Get(count) || count > (bytes_.size() - at_) / sizeof(T)) return isSound_ = false;
        values.resize(count);
        return Get(values.data(), count, sizeof(T));
    }
    bool IsAtEnd() const { return isSound_ && at_ == bytes_.size(); }

private:
    bool Get(void* values, std::size_t count, std::size_t size) {
        if (!isSound_ || bytes_.size() - at_ < count * size) return isSound_ = false;
        if (count != 0) std::memcpy(values, bytes_.data() + at_, count * size);
        at_ += count * size;
        return true;
    }

    const std::string& bytes_;
    std::size_t at_ = 0;
    bool isSound_ = true;
};

void Append(std::string& bytes, const PIN& mesh) {
    Append(bytes, mesh.points);
    Append(bytes, mesh.edges);
    Append(bytes, mesh.p2e);
}

bool IsIndexOrNone(std::int32_t index, std::size_t count) {
    return index == -1 || (index >= 0 && static_cast<std::size_t>(index) < count);
}

bool AreIndicesWithin(const PIN& mesh) {
    const std::size_t edges = mesh.edges.size();
    const auto isEdge = [edges](std::int32_t e) { return IsIndexOrNone(e, edges); };
    const auto isSound = [&](const Edge& e) {
        return isEdge(e.NE) && isEdge(e.TE) && IsIndexOrNone(e.P0, mesh.points.size()) && (e.NE == -1 || e.P0 != -1);
    };
    return std::all_of(mesh.edges.begin(), mesh.edges.end(), isSound) &&
           std::all_of(mesh.p2e.begin(), mesh.p2e.end(), isEdge);
}

bool Get(Unpacker& unpacker, PIN& mesh) {
    return unpacker.Get(mesh.points) && unpacker.Get(mesh.edges) && unpacker.Get(mesh.p2e) && AreIndicesWithin(mesh);
}

bool Get(Unpacker& unpacker, Level& level) {
    return unpacker.Get(level.number) && unpacker.Get(level.tolerance) && unpacker.Get(level.words) &&
           unpacker.Get(level.strips) && unpacker.Get(level.triangles);
}

}  // namespace

std::string Pack(const Part& part) {
    std::string bytes;
    for (const long long count : {part.read, part.equal, part.infinite}) Append(bytes, count);
    Append(bytes, part.mesh);
    return bytes;
}

bool Unpack(const std::string& bytes, Part& part) {
    Unpacker unpacker(bytes);
    return unpacker.Get(part.read) && unpacker.Get(part.equal) && unpacker.Get(part.infinite) &&
           Get(unpacker, part.mesh) && unpacker.IsAtEnd();
}

std::string Pack(const Reduction& reduction) {
    std::string bytes;
    Append(bytes, reduction.deviation);
    Append(bytes, reduction.mesh);
    return bytes;
}

bool Unpack(const std::string& bytes, Reduction& reduction) {
    Unpacker unpacker(bytes);
    return unpacker.Get(reduction.deviation) && Get(unpacker, reduction.mesh) && unpacker.IsAtEnd();
}

std::string Pack(const Levels& levels) {
    std::string bytes;
    Append(bytes, static_cast<std::uint64_t>(levels.All().size()));
    for (const Level& level : levels.All()) {
        Append(bytes, level.number);
        Append(bytes, level.tolerance);
        Append(bytes, level.words);
        Append(bytes, level.strips);
        Append(bytes, level.triangles);
    }
    Append(bytes, levels.Words());
    return bytes;
}

bool Unpack(const std::string& bytes, Levels& levels) {
    Unpacker unpacker(bytes);
    std::uint64_t count = 0;
    std::vector<Level> all;
    if (!unpacker.Get(count)) return false;
    for (std::uint64_t i = 0; i < count; ++i)
        if (!Get(unpacker, all.emplace_back())) return false;
    std::vector<std::int32_t> words;
    if (!unpacker.Get(words) || !unpacker.IsAtEnd()) return false;
    levels = Levels(std::move(all), std::move(words));
    return true;
}

std::string Pack(const std::vector<double>& numbers) {
    std::string bytes;
    Append(bytes, numbers);
    return bytes;
}

bool Unpack(const std::string& bytes, std::vector<double>& numbers) {
    Unpacker unpacker(bytes);
    return unpacker.Get(numbers) && unpacker.IsAtEnd();
}

// ---- Parts

/// What tells one state of a file from others.
struct CachedPart::Stamp {
    std::string text;  ///< empty if there is no such file
    bool isSettled = false;

    explicit Stamp(const std::string& file) {
        std::error_code error;
        const std::string path = fs::canonical(file, error).string();
        struct stat status {};
        if (error || stat(path.c_str(), &status) != 0) return;
        text = Format("of %s, %lld bytes, changed %lld.%09ld", path.c_str(), static_cast<long long>(status.st_size),
                      static_cast<long long>(status.st_mtim.tv_sec), status.st_mtim.tv_nsec);
        // File systems keep time in steps, of two seconds at most.
        constexpr double step = 2.0;
        isSettled = Time::Get() - static_cast<double>(status.st_mtim.tv_sec) > step;
    }
};

CachedPart::CachedPart(const std::string& file, bool isUsed) : CachedPart(file, Stamp(file), isUsed) {}

CachedPart::CachedPart(const std::string& file, const Stamp& stamp, bool isUsed)
    : Cached("mesh", stamp.text, isUsed && !stamp.text.empty()), file_(file), stamp_(stamp.text) {
    if (!stamp.isSettled) KeepNothing();
}

void CachedPart::Make() const {
    value_ = ReadPart(file_);
    // What was read may be of before and after a change, and fits neither.
    if (Stamp(file_).text != stamp_) StayAway();
}

// ---- Texts

std::string ExactText(double number) {
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, number).ptr};
}

void TellFound(const std::string& file, std::initializer_list<const CachedResult*> results) {
    std::string kinds;
    for (const CachedResult* result : results)
        if (result->IsFound()) kinds += (kinds.empty() ? "" : ", ") + result->Kind();
    if (!kinds.empty()) Note(file + ": found in the cache: " + kinds);
}

}  // namespace KM::Tool
