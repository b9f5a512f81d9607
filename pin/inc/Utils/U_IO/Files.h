#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "KmApi.h"

namespace KM::IO {

// A name that holds a NUL byte names no file. In a pattern "*" stands for any text and "?" for any byte of the last
// part of a name. Lists are sorted, hold names without their folder, and never "." and "..".

/// True if a file or folder fits the name, which may be a pattern. An empty name is false.
KM_API bool FileExist(const std::string& name);

/// In bytes; 0 for a folder, and for a file that is not there.
KM_API std::int64_t FileSize(const std::string& name);

// Seconds since the epoch; -1 for a file that is not there.
KM_API std::int64_t AccessTime(const std::string& name);
KM_API std::int64_t CreationTime(const std::string& name);
KM_API std::int64_t ModificationTime(const std::string& name);
/// Another name of `ModificationTime`.
KM_API std::int64_t FileTimeStamp(const std::string& name);

/// Makes the folder with all folders above it. What cannot be made is not reported: the next use of the folder tells.
KM_API void MkDir(const std::string& path);

/// Deletes the files that fit a pattern. Folders stay, and what cannot be deleted stays too.
KM_API void FilesDelete(const std::string& pattern);

/// Deletes a folder with all that is in it, as far as this user may. Links are deleted, never followed; the root, "."
/// and ".." are refused.
KM_API void DirectoryDelete(const std::string& path);

/// Replaces `to` by a copy of `from`. False, with `to` as it was, if that fails or `to` is a folder or a device.
KM_API bool Copy(const std::string& from, const std::string& to);

// Append to `result`. The folder must end in a separator; an empty one is the current folder.
KM_API void EnumerateFiles(const std::string& folder, std::vector<std::string>& result);
KM_API void EnumerateFolders(const std::string& folder, std::vector<std::string>& result);
KM_API void EnumerateFoldersAndFiles(const std::string& folder, std::vector<std::string>& result);

namespace ForEachFile {

/// What is done with each file name.
class KM_API Action {
public:
    Action() = default;
    Action(const Action&) = default;
    Action& operator=(const Action&) = default;
    virtual ~Action();
    virtual void operator()(const std::string& name) = 0;
};

/// Calls the action with each name that fits the pattern, of files and folders, without their folder, in the order of
/// the list as it was at the start. An exception of the action ends the walk.
KM_API void Iterator(const std::string& pattern, Action& action);

}  // namespace ForEachFile

/// Depth in a listing of a tree of folders.
KM_API int& Indent();

/// Tries it, with a file "$$$.$$$" that goes again.
/// @param folder  ends in a separator
KM_API bool CanIWriteInFolder(const std::string& folder);

/// Copies a file to a name beside it that carries the present time, as in "log.Y2020M03D07H09M05S09.xml", and logs it.
KM_API void Archive(const std::string& name);

/// The body of a web page. No transport is built in: the text "Not implemented!".
KM_API std::string ReadWebPage(const std::string& url);

}  // namespace KM::IO
