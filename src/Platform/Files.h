#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace KM::Platform {

// All names are texts as the system shows them, with "/" or back-slashes; `RealPath` makes real paths of them, here and
// nowhere else. Operations that return bool answer true on success.

/// The path that the operating system knows a name by: back-slashes become slashes.
std::string RealPath(const std::string& name);

struct FileInfo {
    bool isFolder;
    std::int64_t size;
    std::int64_t accessed;  ///< seconds since the epoch, as the other times
    std::int64_t created;   ///< of the record: the last change of its state
    std::int64_t modified;
    unsigned attributes;    ///< for `SetAttributes`
};

/// Nothing where no file or folder of that name is.
std::optional<FileInfo> InfoOf(const std::string& name);
bool SetAttributes(const std::string& name, unsigned attributes);
/// Attributes of a file that anybody who could read it may also write.
unsigned Writable(unsigned attributes);

std::FILE* OpenFile(const std::string& name, const char* mode);
/// Deletes a file or a link, never a folder.
bool RemoveFile(const std::string& name);
/// Deletes an empty folder.
bool RemoveFolder(const std::string& name);
bool MakeFolder(const std::string& name);
/// Replaces the target in one step, if there is one.
bool Rename(const std::string& from, const std::string& to);
/// Replaces the target, attributes included. A failing copy leaves no half file.
bool CopyFile(const std::string& from, const std::string& to);
bool IsLink(const std::string& name);

/// The names in the folder of `pattern` that match its last part, where "*" stands for any text and "?" for any byte; sorted,
/// without the folder, and without "." and "..". Empty when the last part is.
std::vector<std::string> Matches(const std::string& pattern);

/// Without a slash at the end; empty when it cannot be told.
std::string CurrentFolder();

/// Where programs of the present user keep what can be made again; without a slash at the end.
std::string UserCacheFolder();

struct DiskSpace {
    double free = 0.0;      ///< bytes, as the others
    double userFree = 0.0;  ///< for this user
    double total = 0.0;
};
/// Zeros when it cannot be told.
DiskSpace SpaceOf(const std::string& path);

}  // namespace KM::Platform
