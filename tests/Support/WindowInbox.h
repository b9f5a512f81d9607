#pragma once

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "Utils/U_App/HostMessages.h"

namespace KM::Test {

/// Stands in for the window of a host: receives what is sent to a number. It is the window of this process while it
/// lives. Windows have one number each on a machine, and tests run side by side: where a test can do with any number, it
/// takes that of its process.
class WindowInbox {
public:
    explicit WindowInbox(std::uint64_t window = static_cast<std::uint64_t>(getpid()))
        : name_(HostMessages::SocketName(window)), socket_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, name_.data(), name_.size());
        isOpen_ = bind(socket_, reinterpret_cast<const sockaddr*>(&address),
                       static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name_.size())) == 0;
        HostMessages::Window(window);
    }
    WindowInbox(const WindowInbox&) = delete;
    WindowInbox& operator=(const WindowInbox&) = delete;
    ~WindowInbox() {
        HostMessages::Window(0);
        close(socket_);
        if (name_[0] != '\0') unlink(name_.c_str());
    }

    bool IsOpen() const { return isOpen_; }
    /// The datagram that waits; the text "nothing" if none does.
    std::string Take() const {
        std::string bytes(1 << 20, '\0');
        const ssize_t size = recv(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT);
        if (size < 0) return "nothing";
        bytes.resize(static_cast<std::size_t>(size));
        return bytes;
    }

private:
    std::string name_;
    int socket_;
    bool isOpen_ = false;
};

}  // namespace KM::Test
