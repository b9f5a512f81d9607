#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <vector>

namespace KM::Platform {

/// As exact as the file system keeps it.
struct FileMoment {
    std::int64_t seconds;  ///< since the epoch; -1 where it is not known
    std::int64_t nanoseconds;

    auto operator<=>(const FileMoment&) const = default;
};

struct PlainFile {
    std::string name;    ///< without folder, byte by byte as the system has it
    std::uint64_t size;  ///< bytes
    FileMoment accessed;
    FileMoment written;
    std::uint64_t device;  ///< together with `number` tells the file from others that get its name later
    std::uint64_t number;
};

/// A folder that stays the same one while it is worked in, also if its path leads elsewhere meanwhile.
class OpenFolder {
public:
    /// A folder that cannot be opened has no files.
    explicit OpenFolder(const std::string& path);
    OpenFolder(const OpenFolder&) = delete;
    OpenFolder& operator=(const OpenFolder&) = delete;
    ~OpenFolder();

    bool IsRoot() const;
    bool IsHome() const;
    /// The plain files directly in it, sorted by name. Links, folders, pipes and the like are left out, and so are names
    /// that begin with ".".
    std::vector<PlainFile> Files() const;
    /// Deletes a file if it is still the one that was listed, unchanged, and nobody is writing it.
    void Remove(const PlainFile& file) const;

private:
    bool IsFolder(const char* path) const;

    int descriptor_;
};

}  // namespace KM::Platform
