#pragma once

#include <dirent.h>
#include <unistd.h>

#include <memory>
#include <utility>

namespace KM::Platform {

/// An open file or folder of the system, closed when it goes; a negative number is none.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (number_ >= 0) close(number_);
    }
    operator int() const { return number_; }
    int Release() { return std::exchange(number_, -1); }

private:
    int number_;
};

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

/// The listing of an open folder; takes the descriptor over. Null if it has none.
inline Folder ListingOf(int number) {
    Descriptor descriptor(number);
    Folder folder(descriptor >= 0 ? fdopendir(descriptor) : nullptr);
    if (folder != nullptr) descriptor.Release();
    return folder;
}

}  // namespace KM::Platform
