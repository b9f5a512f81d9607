#include "Platform/Files.h"

#include <dirent.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace KM::Platform {
namespace {

constexpr mode_t PermissionBits = 07777;

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

/// True if `text` fits `pattern`, of which "*" and "?" are wild. Linear in practice: on a mismatch only the last star is
/// widened.
bool Fits(const std::string& text, const std::string& pattern) {
    std::size_t t = 0;
    std::size_t p = 0;
    std::size_t star = std::string::npos;
    std::size_t behindStar = 0;
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            behindStar = t;
        } else if (p < pattern.size() && (pattern[p] == '?' || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (star != std::string::npos) {
            p = star + 1;
            t = ++behindStar;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == '*') ++p;
    return p == pattern.size();
}

}  // namespace

std::string RealPath(const std::string& name) {
    std::string path = name;
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::optional<FileInfo> InfoOf(const std::string& name) {
    struct stat status {};
    if (name.empty() || stat(RealPath(name).c_str(), &status) != 0) return std::nullopt;
    return FileInfo{S_ISDIR(status.st_mode), status.st_size,  status.st_atime,
                    status.st_ctime,         status.st_mtime, status.st_mode & PermissionBits};
}

bool SetAttributes(const std::string& name, unsigned attributes) {
    return chmod(RealPath(name).c_str(), static_cast<mode_t>(attributes) & PermissionBits) == 0;
}

unsigned Writable(unsigned attributes) { return attributes | ((attributes & 0444u) >> 1); }

std::FILE* OpenFile(const std::string& name, const char* mode) {
    // A folder opens for reading like a file, and fails only when it is read.
    const std::optional<FileInfo> info = InfoOf(name);
    if (info && info->isFolder) return nullptr;
    return std::fopen(RealPath(name).c_str(), mode);
}

bool RemoveFile(const std::string& name) { return unlink(RealPath(name).c_str()) == 0; }
bool RemoveFolder(const std::string& name) { return rmdir(RealPath(name).c_str()) == 0; }
bool MakeFolder(const std::string& name) { return mkdir(RealPath(name).c_str(), 0777) == 0; }

bool Rename(const std::string& from, const std::string& to) {
    return std::rename(RealPath(from).c_str(), RealPath(to).c_str()) == 0;
}

bool CopyFile(const std::string& from, const std::string& to) {
    std::error_code failure;
    const std::string target = RealPath(to);
    const bool isCopied = std::filesystem::copy_file(RealPath(from), target,
                                                     std::filesystem::copy_options::overwrite_existing, failure);
    if (failure == std::errc::no_space_on_device || failure == std::errc::io_error) unlink(target.c_str());
    return isCopied && !failure;
}

bool IsLink(const std::string& name) {
    struct stat status {};
    return lstat(RealPath(name).c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

std::vector<std::string> Matches(const std::string& pattern) {
    const std::string path = RealPath(pattern);
    const std::size_t slash = path.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : path.substr(0, slash + 1);
    const std::string last = slash == std::string::npos ? path : path.substr(slash + 1);
    std::vector<std::string> names;
    const std::unique_ptr<DIR, CloseFolder> open(last.empty() ? nullptr : opendir(folder.c_str()));
    if (open == nullptr) return names;
    while (const dirent* entry = readdir(open.get())) {
        const std::string name = entry->d_name;
        if (name != "." && name != ".." && Fits(name, last)) names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string CurrentFolder() {
    std::error_code failure;
    return std::filesystem::current_path(failure).string();
}

std::string UserCacheFolder() {
    const char* const cache = std::getenv("XDG_CACHE_HOME");
    if (cache != nullptr && *cache != '\0') return cache;
    const char* const home = std::getenv("HOME");
    if (home != nullptr && *home != '\0') return std::string(home) + "/.cache";
    return "/tmp/cache-" + std::to_string(getuid());
}

DiskSpace SpaceOf(const std::string& path) {
    struct statvfs status {};
    if (statvfs(RealPath(path).c_str(), &status) != 0) return {};
    const double block = static_cast<double>(status.f_frsize);
    return {static_cast<double>(status.f_bfree) * block, static_cast<double>(status.f_bavail) * block,
            static_cast<double>(status.f_blocks) * block};
}

}  // namespace KM::Platform
