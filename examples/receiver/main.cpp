// The window of a host, as far as a tool can see: prints what a running tool reports, until it has finished.
//
// usage: receiver WINDOW       the number that the tool gets as its fifth argument

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "Km.h"

namespace {

using KM::HostMessages::SocketName;

/// A socket with the address of a window.
class WindowSocket {
public:
    explicit WindowSocket(std::uint64_t window) : name_(SocketName(window)), socket_(socket(AF_UNIX, SOCK_DGRAM, 0)) {
        std::memcpy(address_.sun_path, name_.data(), name_.size());
    }
    WindowSocket(const WindowSocket&) = delete;
    WindowSocket& operator=(const WindowSocket&) = delete;
    ~WindowSocket() {
        if (isOpen_ && IsFile()) unlink(name_.c_str());
        if (socket_ >= 0) close(socket_);
    }

    bool Open() {
        // Nobody answers at an address that a killed receiver has left behind.
        if (connect(socket_, Address(), Size()) == 0) return false;
        if (IsFile()) unlink(name_.c_str());
        isOpen_ = bind(socket_, Address(), Size()) == 0;
        return isOpen_;
    }

    /// Waits for the next datagram.
    bool Receive(std::string& bytes) const {
        bytes.resize(1 << 18);
        const ssize_t size = recv(socket_, bytes.data(), bytes.size(), 0);
        if (size >= 0) bytes.resize(static_cast<std::size_t>(size));
        return size >= 0;
    }

private:
    bool IsFile() const { return name_[0] != '\0'; }
    const sockaddr* Address() const { return reinterpret_cast<const sockaddr*>(&address_); }
    socklen_t Size() const { return static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name_.size()); }

    std::string name_;
    sockaddr_un address_{AF_UNIX, {}};
    int socket_;
    bool isOpen_ = false;
};

std::uint32_t WordAt(const std::string& bytes, std::size_t offset) {
    std::uint32_t word = 0;
    for (std::size_t i = 4; i-- > 0;) word = word << 8 | static_cast<unsigned char>(bytes[offset + i]);
    return word;
}

void PrintProgress(unsigned process, const void* block, int size) {
    KM::HsMessage message;
    message.Deserialize(block, size);
    std::printf("%u: %3d %% (%d %%) %s\n", process, message.GlobalPercent(), message.LocalPercent(),
                message.Text().c_str());
}

void PrintEnd(unsigned process, const void* block, int size) {
    KM::HsFinished message;
    message.Deserialize(block, size);
    std::printf("%u: %s\n", process, message.Text().c_str());
}

/// True at the end of the tool.
bool Print(const std::string& datagram) {
    constexpr std::size_t header = 12;
    if (datagram.size() < header) return false;
    const std::uint32_t id = WordAt(datagram, 0);
    const std::uint32_t process = WordAt(datagram, 4);
    const char* const block = datagram.data() + header;
    const int size = static_cast<int>(datagram.size() - header);
    const bool isEnd = id == KM::HostMessages::Ids().finished;
    if (isEnd) PrintEnd(process, block, size);
    else if (id == KM::HostMessages::Ids().message) PrintProgress(process, block, size);
    std::fflush(stdout);
    return isEnd;
}

}  // namespace

int main(int argc, char** argv) {
    char* end = nullptr;
    const std::uint64_t window = argc == 2 ? std::strtoull(argv[1], &end, 10) : 0;
    if (window == 0 || *end != '\0') {
        std::fprintf(stderr, "usage: receiver WINDOW\nWINDOW is a number above 0\n");
        return 2;
    }
    WindowSocket socket(window);
    if (!socket.Open()) {
        std::fprintf(stderr, "receiver: window %s is taken, or cannot be made\n", argv[1]);
        return 1;
    }
    std::printf("waiting at window %s\n", argv[1]);
    std::fflush(stdout);
    std::string datagram;
    while (socket.Receive(datagram))
        if (Print(datagram)) return 0;
    return 1;
}
