#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "KmApi.h"

namespace KM {

/// A message to the window of a host. The virtual operations stand in this order.
class KM_API HsMsg {
public:
    HsMsg(const HsMsg&) = delete;
    HsMsg& operator=(const HsMsg&) = delete;
    virtual ~HsMsg();

    /// The message as a block of `Size()` bytes, owned by this object and good until it changes. Null for an empty text.
    virtual const unsigned char* Serialize() = 0;
    /// Takes over what such a block says. One that is cut short, or makes no sense, is refused: nothing changes.
    virtual void Deserialize(const void* data, int size) = 0;
    virtual void Clear() = 0;

    /// Of the block that `Serialize` built last; -1 when there is none.
    int Size() const { return size_; }
    /// The registered number of this kind of message.
    std::uint32_t Id() const { return id_; }
    const std::string& Text() const { return text_; }
    void Text(const std::string& text);

protected:
    explicit HsMsg(std::uint32_t id) : id_(id) {}

    void Touch() { dirty_ = true; }
    /// Drops the block if it is out of date. True if one has to be built.
    bool NeedsBlock();
    void KeepBlock(const std::string& bytes);
    const unsigned char* Block() const { return buffer_.get(); }

private:
    void DropBlock();

    std::unique_ptr<unsigned char[]> buffer_;
    std::int32_t size_ = -1;
    bool dirty_ = true;
    std::uint32_t id_;
    [[maybe_unused]] std::int32_t reserved_[2] = {-1, -1};
    std::string text_;
};

/// Progress. The block, in little-endian words of 32 bits: length of the text, 4, 4, the text without terminator, local
/// per cent, global per cent.
class KM_API HsMessage : public HsMsg {
public:
    HsMessage();

    const unsigned char* Serialize() override;
    void Deserialize(const void* data, int size) override;
    void Clear() override;

    std::int32_t LocalPercent() const { return localPercent_; }
    void LocalPercent(std::int32_t percent);
    std::int32_t GlobalPercent() const { return globalPercent_; }
    void GlobalPercent(std::int32_t percent);

private:
    std::int32_t localPercent_ = 0;
    std::int32_t globalPercent_ = 0;
};

/// The end of a run. The block is the text without terminator.
class KM_API HsFinished : public HsMsg {
public:
    HsFinished();

    const unsigned char* Serialize() override;
    void Deserialize(const void* data, int size) override;
    void Clear() override;
};

/// How a tool reports to the window of the host that has started it. Sending never waits and never fails: without a
/// window, or when nobody receives there, nothing happens. One thread at a time.
///
/// Where there are no windows, a message is one datagram to a Unix socket whose name is made from the number of the
/// window (`SocketName`). Its bytes are three little-endian words of 32 bits and the block of the message:
///
///     offset  size  field
///     0       4     id of the message, the same in every process (`Ids`)
///     4       4     process that sends
///     8       4     size n of the block, -1 when there is none
///     12      n     block, as `HsMsg::Serialize` gives it
///
/// A text too long for one datagram (some 200 Kb) is not sent.
namespace HostMessages {

using KM::HsFinished;
using KM::HsMessage;
using KM::HsMsg;

/// The numbers of the registered messages.
struct RegisteredIds {
    std::uint32_t message;   ///< "NrHs_Message"
    std::uint32_t finished;  ///< "NrHs_Finished"
    std::uint32_t start;     ///< "NrHs_Start"
    std::uint32_t imported;  ///< "NrHs_Imported"
    std::uint32_t exit;      ///< "NrHs_Exit"
};
KM_API const RegisteredIds& Ids();

/// The window of the host; 0, as at start, stands for none.
KM_API std::uint64_t Window();
KM_API void Window(std::uint64_t handle);

/// Where a host has to receive: the bytes of a Unix socket address behind its family. With `$XDG_RUNTIME_DIR`, a file
/// "km-window-123" in it, which only this user can make; without it, or when that is too long, a name that begins with a
/// NUL and is no file: "km-window-", number of the user, "-", number of the window.
KM_API std::string SocketName(std::uint64_t window);

/// @param local, global  fractions; sent in per cent, truncated towards zero
KM_API void SendProgress(const std::string& text, double local, double global);
KM_API void SendFinished(const std::string& text);

}  // namespace HostMessages
}  // namespace KM
