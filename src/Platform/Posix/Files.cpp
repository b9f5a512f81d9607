#include "Platform/Files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include "Platform/Posix/Handles.h"

namespace KM::Platform {
namespace {

std::vector<std::string> NamesIn(const Folder& folder) {
    std::vector<std::string> names;
    while (const dirent* entry = readdir(folder.get())) {
        std::string name = entry->d_name;
        if (name != "." && name != "..") names.push_back(std::move(name));
    }
    return names;
}

Folder FolderAt(int parent, const char* name) {
    return ListingOf(openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

struct Identity {
    dev_t device = 0;
    ino_t node = 0;
    bool operator==(const Identity&) const = default;
};

Identity IdentityOf(const Folder& folder) {
    struct stat status {};
    if (folder == nullptr || fstat(dirfd(folder.get()), &status) != 0) return {};
    return {status.st_dev, status.st_ino};
}

/// Deletes a folder from the inside. Works by open folders, not by paths: a path could lead elsewhere by the time it is
/// used. Only the present folder is held open, so that no depth is too much; the way up is taken only if it still leads
/// to the folder that it came from.
class TreeRemoval {
public:
    explicit TreeRemoval(const char* path) : path_(path) {}

    void Run() {
        if (unlink(path_) == 0 || !Enter(FolderAt(AT_FDCWD, path_))) return;
        while (!open_.empty()) Step();
        rmdir(path_);
    }

private:
    struct Level {
        Identity identity;
        std::vector<std::string> names;  // what is left to do; the last one first
    };

    void Step() {
        std::vector<std::string>& names = open_.back().names;
        if (names.empty()) return Leave();
        const int parent = dirfd(folder_.get());
        const char* const name = names.back().c_str();
        if (unlinkat(parent, name, 0) == 0 || !Enter(Inner(parent, name))) names.pop_back();
    }

    /// Null for a folder that cannot be left again. It may not be searched then, so nothing in it could be deleted.
    Folder Inner(int parent, const char* name) const {
        Folder folder = FolderAt(parent, name);
        if (folder == nullptr || !IsInnermost(FolderAt(dirfd(folder.get()), ".."))) folder.reset();
        if (folder == nullptr) unlinkat(parent, name, AT_REMOVEDIR);
        return folder;
    }

    bool IsInnermost(const Folder& above) const { return IdentityOf(above) == open_.back().identity; }

    bool Enter(Folder folder) {
        if (folder == nullptr) return false;
        open_.push_back({IdentityOf(folder), NamesIn(folder)});
        folder_ = std::move(folder);
        return true;
    }

    void Leave() {
        open_.pop_back();
        if (open_.empty()) return;
        folder_ = FolderAt(dirfd(folder_.get()), "..");
        if (!IsInnermost(folder_)) return open_.clear();
        unlinkat(dirfd(folder_.get()), open_.back().names.back().c_str(), AT_REMOVEDIR);
        open_.back().names.pop_back();
    }

    const char* path_;
    Folder folder_;
    std::vector<Level> open_;
};

bool IsRoot(const std::string& path) {
    struct stat status {};
    struct stat root {};
    return stat(path.c_str(), &status) == 0 && stat("/", &root) == 0 && status.st_dev == root.st_dev &&
           status.st_ino == root.st_ino;
}

std::int64_t CreationTime(const std::string& path, std::int64_t otherwise) {
    struct statx status {};
    const bool isTold =
        statx(AT_FDCWD, path.c_str(), 0, STATX_BTIME, &status) == 0 && (status.stx_mask & STATX_BTIME) != 0;
    return isTold ? status.stx_btime.tv_sec : otherwise;
}

/// True if `text` fits `pattern`, of which "*" and "?" are wild. Linear in practice: on a mismatch only the last star
/// is widened.
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
    if (name.find('\0') != std::string::npos) return {};
    std::string path = name;
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::optional<FileInfo> InfoOf(const std::string& name) {
    const std::string path = RealPath(name);
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    const bool isPlain = S_ISREG(status.st_mode);
    return FileInfo{S_ISDIR(status.st_mode),
                    isPlain,
                    isPlain ? status.st_size : 0,
                    status.st_atime,
                    CreationTime(path, status.st_ctime),
                    status.st_mtime};
}

std::FILE* OpenFile(const std::string& name, const char* mode) {
    // A folder opens for reading like a file, and fails only when it is read.
    const std::optional<FileInfo> info = InfoOf(name);
    if (info && info->isFolder) return nullptr;
    return std::fopen(RealPath(name).c_str(), (std::string(mode) + "e").c_str());
}

bool RemoveFile(const std::string& name) { return unlink(RealPath(name).c_str()) == 0; }
bool MakeFolder(const std::string& name) { return mkdir(RealPath(name).c_str(), 0777) == 0; }

void RemoveTree(const std::string& name) {
    std::string path = RealPath(name);
    while (!path.empty() && path.back() == '/') path.pop_back();
    const std::string last = path.substr(path.rfind('/') + 1);
    const std::optional<FileInfo> info = InfoOf(path);
    if (last.empty() || last == "." || last == ".." || !info || !info->isFolder || IsRoot(path)) return;
    TreeRemoval(path.c_str()).Run();
}

std::string OwnNameBeside(const std::string& name) {
    constexpr std::size_t kept = 200;  // leaves room for the rest in the 255 bytes that the last part can have
    static std::atomic<unsigned> count{0};
    const std::size_t last = name.find_last_of("/\\") + 1;
    return name.substr(0, last + kept) + "." + std::to_string(getpid()) + "-" + std::to_string(++count) + ".tmp";
}

bool CopyFile(const std::string& from, const std::string& to) {
    const std::string target = RealPath(to);
    const std::optional<FileInfo> replaced = InfoOf(to);
    if (target.empty() || (replaced && !replaced->isPlain)) return false;
    const std::string copy = OwnNameBeside(target);
    std::error_code failure;
    const bool isCopied = std::filesystem::copy_file(RealPath(from), copy, failure) && !failure;
    if (isCopied && std::rename(copy.c_str(), target.c_str()) == 0) return true;
    unlink(copy.c_str());
    return false;
}

std::vector<std::string> Matches(const std::string& pattern) {
    const std::string path = RealPath(pattern);
    const std::string last = path.substr(path.rfind('/') + 1);
    if (last.empty() || last == "." || last == "..") return {};
    if (last.find_first_of("*?") == std::string::npos) {
        // One look, where a folder of a hundred thousand names would be read through.
        struct stat status {};
        return lstat(path.c_str(), &status) == 0 ? std::vector<std::string>{last} : std::vector<std::string>();
    }
    const std::string place = path.substr(0, path.size() - last.size());
    const Folder folder(opendir(place.empty() ? "." : place.c_str()));
    if (folder == nullptr) return {};
    std::vector<std::string> names = NamesIn(folder);
    std::erase_if(names,
                  [&](const std::string& name) { return name.find('\\') != std::string::npos || !Fits(name, last); });
    std::sort(names.begin(), names.end());
    return names;
}

bool LiesWithin(const std::string& folder, const std::string& other) {
    namespace fs = std::filesystem;
    std::error_code failure;
    const fs::path inner = fs::canonical(RealPath(folder), failure);
    if (failure) return false;
    const fs::path outer = fs::canonical(RealPath(other), failure);
    return !failure && std::mismatch(outer.begin(), outer.end(), inner.begin(), inner.end()).first == outer.end();
}

std::string CurrentFolder() {
    std::error_code failure;
    return std::filesystem::current_path(failure).string();
}

std::string UserCacheFolder() {
    const char* const cache = std::getenv("XDG_CACHE_HOME");
    if (cache != nullptr && *cache == '/') return cache;  // a relative one counts as not set
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
