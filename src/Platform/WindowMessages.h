#pragma once

#include <cstdint>
#include <string>

namespace KM::Platform {

// Messages to a window of another process. Here a window is a Unix socket, and a message one datagram.

/// The number of a message by its name: the same in every process, from 0xC000 to 0xFFFF.
std::uint32_t RegisterWindowMessage(const std::string& name);

/// The address of a window's socket: the bytes behind the family.
std::string SocketNameOfWindow(std::uint64_t window);

/// Sends id, number of this process, size and block as one datagram, without waiting. What cannot be sent is dropped.
/// @param block  null if `size` is -1
void SendCopyData(std::uint64_t window, std::uint32_t id, const void* block, std::int32_t size);

}  // namespace KM::Platform
