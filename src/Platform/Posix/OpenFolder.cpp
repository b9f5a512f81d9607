#include "Platform/OpenFolder.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include "Platform/Files.h"
#include "Platform/Posix/Handles.h"

namespace KM::Platform {
namespace {

FileMoment MomentOf(const timespec& time) { return {time.tv_sec, time.tv_nsec}; }

PlainFile Described(const char* name, const struct stat& status) {
    return {name,
            static_cast<std::uint64_t>(status.st_size),
            MomentOf(status.st_atim),
            MomentOf(status.st_mtim),
            status.st_dev,
            status.st_ino};
}

bool IsStill(const PlainFile& file, const struct stat& status) {
    return S_ISREG(status.st_mode) && file.device == status.st_dev && file.number == status.st_ino &&
           file.written == MomentOf(status.st_mtim);
}

}  // namespace

OpenFolder::OpenFolder(const std::string& path)
    : descriptor_(open(RealPath(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

OpenFolder::~OpenFolder() {
    if (descriptor_ >= 0) close(descriptor_);
}

bool OpenFolder::IsFolder(const char* path) const {
    struct stat own {};
    struct stat other {};
    return path != nullptr && fstat(descriptor_, &own) == 0 && stat(path, &other) == 0 && own.st_dev == other.st_dev &&
           own.st_ino == other.st_ino;
}

bool OpenFolder::IsRoot() const { return IsFolder("/"); }

bool OpenFolder::IsHome() const {
    // Both: a service may run with another HOME than the one its user has.
    const passwd* const user = getpwuid(getuid());
    return IsFolder(std::getenv("HOME")) || (user != nullptr && IsFolder(user->pw_dir));
}

std::vector<PlainFile> OpenFolder::Files() const {
    std::vector<PlainFile> files;
    // Opened anew, since a listing moves the position of its descriptor, and closes it.
    const Folder listing = ListingOf(openat(descriptor_, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (listing == nullptr) return files;
    while (const dirent* entry = readdir(listing.get())) {
        struct stat status {};
        const bool isKnown = fstatat(descriptor_, entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
        if (isKnown && S_ISREG(status.st_mode) && entry->d_name[0] != '.')
            files.push_back(Described(entry->d_name, status));
    }
    std::sort(files.begin(), files.end(), [](const PlainFile& a, const PlainFile& b) { return a.name < b.name; });
    return files;
}

void OpenFolder::Remove(const PlainFile& file) const {
    const char* const name = file.name.c_str();
    // Who writes a file holds a lock on it. Under our own lock nobody can begin to write it before its name is free.
    const Descriptor lock(openat(descriptor_, name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    const bool isInUse = lock >= 0 && flock(lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    struct stat status {};
    if (!isInUse && fstatat(descriptor_, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && IsStill(file, status))
        unlinkat(descriptor_, name, 0);
}

}  // namespace KM::Platform
