#include "Platform/WindowMessages.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

#include "Platform/Processes.h"

namespace KM::Platform {
namespace {

void AppendWord(std::string& bytes, std::uint32_t word) {
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(word >> shift & 0xFF);
}

void SendDatagram(const std::string& socketName, const std::string& bytes) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, socketName.data(), socketName.size());
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + socketName.size());
    const int channel = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    if (channel == -1) return;
    // Neither a host that is gone nor one that is slow may hold up the work.
    sendto(channel, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
           reinterpret_cast<const sockaddr*>(&address), length);
    close(channel);
}

}  // namespace

std::uint32_t RegisterWindowMessage(const std::string& name) {
    // FNV-1a (Fowler, Noll, Vo), folded into the range that is set aside for registered messages.
    std::uint32_t hash = 2166136261u;
    for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return 0xC000u + ((hash ^ hash >> 14 ^ hash >> 28) & 0x3FFFu);
}

std::string SocketNameOfWindow(std::uint64_t window) {
    constexpr std::size_t longest = sizeof sockaddr_un::sun_path - 1;  // a file's name ends in a NUL
    const char* const folder = std::getenv("XDG_RUNTIME_DIR");
    if (folder != nullptr && *folder == '/') {
        const std::string file = std::string(folder) + "/km-window-" + std::to_string(window);
        if (file.size() <= longest) return file;
    }
    return std::string(1, '\0') + "km-window-" + std::to_string(getuid()) + "-" + std::to_string(window);
}

void SendCopyData(std::uint64_t window, std::uint32_t id, const void* block, std::int32_t size) {
    std::string bytes;
    AppendWord(bytes, id);
    AppendWord(bytes, static_cast<std::uint32_t>(ProcessId()));
    AppendWord(bytes, static_cast<std::uint32_t>(size));
    if (block != nullptr && size > 0) bytes.append(static_cast<const char*>(block), static_cast<std::size_t>(size));
    SendDatagram(SocketNameOfWindow(window), bytes);
}

}  // namespace KM::Platform
