#include "Platform/Replacement.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

#include "Platform/Files.h"
#include "Platform/Posix/Handles.h"

namespace KM::Platform {
namespace {

constexpr mode_t PermissionBits = 07777;

std::optional<mode_t> AttributesOf(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return status.st_mode & PermissionBits;
}

/// False for a path that no file can have, as one that is too long: what is written could never be put there.
bool CanBeThere(const std::string& path) {
    struct stat status {};
    return !path.empty() && (lstat(path.c_str(), &status) == 0 || errno == ENOENT);
}

/// True if the path names the plain file that is open: it may have been renamed or deleted meanwhile.
bool IsStill(int descriptor, const std::string& path) {
    struct stat open {};
    struct stat named {};
    return fstat(descriptor, &open) == 0 && lstat(path.c_str(), &named) == 0 && S_ISREG(open.st_mode) &&
           open.st_dev == named.st_dev && open.st_ino == named.st_ino;
}

/// False only if somebody else holds the lock; not every file system has locks.
bool Lock(int descriptor) { return flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK; }

}  // namespace

std::FILE* OpenReplacement(const std::string& name, const std::string& target, const char* mode, bool& isTaken) {
    const std::string path = RealPath(name);
    const std::string to = RealPath(target);
    isTaken = false;
    if (!CanBeThere(to)) return nullptr;
    // Emptied only under the lock. A link is not followed: it would have another file written.
    Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0666));
    isTaken = file >= 0 && !Lock(file);
    if (file < 0 || isTaken) return nullptr;
    // Its writer may have renamed it between the two calls: then it is the target by now.
    isTaken = !IsStill(file, path);
    if (isTaken || ftruncate(file, 0) != 0) return nullptr;
    if (const std::optional<mode_t> attributes = AttributesOf(to)) fchmod(file, *attributes | S_IWUSR);
    std::FILE* const stream = fdopen(file, mode);
    if (stream != nullptr) file.Release();
    return stream;
}

bool CloseReplacement(std::FILE* file, const std::string& name, const std::string& target) {
    const std::string from = RealPath(name);
    const std::string to = RealPath(target);
    // Keeps the lock until the name is free: a network can report a full disk as late as in the close.
    const Descriptor lock(fcntl(fileno(file), F_DUPFD_CLOEXEC, 0));
    const bool hasFailed = std::ferror(file) != 0;
    const bool isComplete = std::fclose(file) == 0 && !hasFailed;
    if (lock >= 0 && !IsStill(lock, from)) return false;  // deleted; a file of this name is somebody else's
    const std::optional<mode_t> attributes = AttributesOf(to);
    if (!isComplete || std::rename(from.c_str(), to.c_str()) != 0) {
        unlink(from.c_str());
        return false;
    }
    if (attributes) chmod(to.c_str(), *attributes);
    return true;
}

}  // namespace KM::Platform
