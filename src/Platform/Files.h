#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <vector>

namespace KM::Platform {

// All names are texts as the system shows them, with "/" or back-slashes; `RealPath` makes real paths of them, here and
// nowhere else. Operations that return bool answer true on success.

/// The path that the operating system knows a name by: back-slashes become slashes. A name that holds a NUL names
/// nothing, and its path is empty: the system would stop reading there, and touch another file.
std::string RealPath(const std::string& name);

struct FileInfo {
    bool isFolder;
    bool isPlain;           ///< neither a folder nor a device, a pipe or the like
    std::int64_t size;      ///< 0 for what is not plain
    std::int64_t accessed;  ///< seconds since the epoch, as the other times
    std::int64_t created;   ///< last change of the record where the file system does not tell
    std::int64_t modified;
};

/// Nothing where no file or folder of that name is.
std::optional<FileInfo> InfoOf(const std::string& name);

/// Not passed on to child processes. A folder cannot be opened.
std::FILE* OpenFile(const std::string& name, const char* mode);
/// Deletes a file or a link, never a folder.
bool RemoveFile(const std::string& name);
bool MakeFolder(const std::string& name);
/// Deletes a folder with all that is in it, as far as it may. Links are deleted, never followed, not even when one is
/// put in the place of a folder meanwhile. The root is refused, and so is a name that ends in "." or "..".
void RemoveTree(const std::string& name);
/// Replaces the target in one step, attributes included. A copy that fails leaves the target as it was. A device is no
/// target.
bool CopyFile(const std::string& from, const std::string& to);
/// A name in the folder of `name` that no other call, in this or another process, uses at this time. The system takes
/// it wherever it takes `name`, however long that is.
std::string OwnNameBeside(const std::string& name);

/// The names in the folder of `pattern` that match its last part, where "*" stands for any text and "?" for any byte;
/// sorted, without the folder, and without "." and "..". Empty when the last part is. Names that hold a back-slash are
/// left out: as texts they would name something else.
std::vector<std::string> Matches(const std::string& pattern);

/// True if a folder is `other`, or lies below it, wherever the links in both names lead. False for one that is not there.
bool LiesWithin(const std::string& folder, const std::string& other);

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
