#include "Utils/U_IO/Files.h"

#include <optional>

#include "Platform/Files.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/FileNames.h"

namespace KM::IO {
namespace {

using FileNameManipulation::Path;

template <class Accept>
void Enumerate(const std::string& folder, std::vector<std::string>& result, Accept accept) {
    for (const std::string& name : Platform::Matches(folder + "*")) {
        const std::optional<Platform::FileInfo> info = Platform::InfoOf(Path(folder) + name);
        if (accept(info && info->isFolder)) result.push_back(name);
    }
}

std::int64_t TimeOf(const std::string& name, std::int64_t Platform::FileInfo::*time) {
    const std::optional<Platform::FileInfo> info = Platform::InfoOf(name);
    return info ? (*info).*time : -1;
}

/// The folder that a name or pattern lies in, or that a folder name gives. Nothing if only blanks stood before the
/// first separator: without them the name would start at the root.
std::optional<std::string> FolderToEmpty(const std::string& path) {
    const std::string folder = ValidateFileName(path);
    if (folder[0] == '\\' && !path.empty() && path[0] == ' ') return std::nullopt;
    return folder;
}

}  // namespace

bool FileExist(const std::string& name) { return !Platform::Matches(name).empty(); }

std::int64_t FileSize(const std::string& name) {
    const std::optional<Platform::FileInfo> info = Platform::InfoOf(name);
    return info ? info->size : 0;
}

std::int64_t AccessTime(const std::string& name) { return TimeOf(name, &Platform::FileInfo::accessed); }
std::int64_t CreationTime(const std::string& name) { return TimeOf(name, &Platform::FileInfo::created); }
std::int64_t ModificationTime(const std::string& name) { return TimeOf(name, &Platform::FileInfo::modified); }
std::int64_t FileTimeStamp(const std::string& name) { return ModificationTime(name); }

void MkDir(const std::string& path) {
    const std::string valid = ValidateFileName(path);
    for (std::size_t end = valid.find('\\'); end != std::string::npos; end = valid.find('\\', end + 1))
        if (end > 0) Platform::MakeFolder(valid.substr(0, end));
}

void FilesDelete(const std::string& pattern) {
    const std::string path = Path(pattern);
    const std::optional<std::string> folder = path.empty() ? path : FolderToEmpty(path);
    if (!folder) return;
    for (const std::string& name : Platform::Matches(*folder + pattern.substr(path.size())))
        Platform::RemoveFile(*folder + name);
}

void DirectoryDelete(const std::string& path) {
    if (const std::optional<std::string> folder = FolderToEmpty(path)) Platform::RemoveTree(*folder);
}

bool Copy(const std::string& from, const std::string& to) { return Platform::CopyFile(from, to); }

void EnumerateFiles(const std::string& folder, std::vector<std::string>& result) {
    Enumerate(folder, result, [](bool isFolder) { return !isFolder; });
}

void EnumerateFolders(const std::string& folder, std::vector<std::string>& result) {
    Enumerate(folder, result, [](bool isFolder) { return isFolder; });
}

void EnumerateFoldersAndFiles(const std::string& folder, std::vector<std::string>& result) {
    Enumerate(folder, result, [](bool) { return true; });
}

namespace ForEachFile {

Action::~Action() = default;

void Iterator(const std::string& pattern, Action& action) {
    for (const std::string& name : Platform::Matches(pattern)) action(name);
}

}  // namespace ForEachFile

int& Indent() {
    static int indent = 0;
    return indent;
}

bool CanIWriteInFolder(const std::string& folder) {
    const std::string probe = folder + "$$$.$$$";
    Platform::RemoveFile(probe);  // a link of this name would have its target emptied
    std::FILE* const file = Platform::OpenFile(probe, "wb");
    if (file == nullptr) return false;
    std::fclose(file);
    Platform::RemoveFile(probe);
    return true;
}

void Archive(const std::string& name) {
    using namespace FileNameManipulation;
    const std::string copy = Path(name) + Name(name) + Time::ToString(true, false, ".", ".") + Extension(name);
    Verbose::WriteMessage_1(Verbose::EMessageType::Info, "Arhiving file name: " + name + " to: " + copy);
    Copy(name, copy);
}

std::string ReadWebPage(const std::string&) { return "Not implemented!"; }

}  // namespace KM::IO
