#include "Utils/U_App/HostMessages.h"

#include <algorithm>
#include <climits>

#include "Platform/WindowMessages.h"
#include "Utils/U_App/Singleton.h"

namespace KM {
namespace {

constexpr std::int32_t WordSize = 4;
constexpr std::size_t LongestText = INT_MAX - 5 * WordSize;

void AppendWord(std::string& block, std::int32_t word) {
    for (int shift = 0; shift < 32; shift += 8)
        block += static_cast<char>(static_cast<std::uint32_t>(word) >> shift & 0xFF);
}

bool FitsInBlock(const std::string& text) { return !text.empty() && text.size() <= LongestText; }

/// Reads a block from its start; from the first part on that is not there, `IsGood` is false.
class BlockReader {
public:
    BlockReader(const void* data, int size)
        : at_(static_cast<const unsigned char*>(data)), left_(data != nullptr && size > 0 ? size : 0) {}

    bool IsGood() const { return isGood_; }
    /// A number of so many bytes, at most 4; those that are missing count as 0.
    std::int32_t Number(std::int32_t bytes) {
        std::uint32_t value = 0;
        isGood_ = isGood_ && bytes <= WordSize;
        if (!Has(bytes)) return 0;
        for (int i = 0; i < bytes; ++i) value |= static_cast<std::uint32_t>(*at_++) << 8 * i;
        return static_cast<std::int32_t>(value);
    }
    std::string Text(std::int32_t size) {
        if (!Has(size)) return {};
        at_ += size;
        return std::string(reinterpret_cast<const char*>(at_ - size), static_cast<std::size_t>(size));
    }

private:
    bool Has(std::int32_t bytes) {
        isGood_ = isGood_ && bytes >= 0 && bytes <= left_;
        if (isGood_) left_ -= bytes;
        return isGood_;
    }

    const unsigned char* at_;
    std::int32_t left_;
    bool isGood_ = true;
};

std::int32_t Percent(double fraction) {
    const double percent = fraction * 100.0;
    if (percent >= INT_MAX) return INT_MAX;
    if (percent <= INT_MIN) return INT_MIN;
    return percent == percent ? static_cast<std::int32_t>(percent) : 0;
}

struct NrHsMsgSenderImpl {
    std::uint64_t window = 0;
};

/// Knows the window of the host. The two messages live as long as it does, since the end of the process is told too.
class NrHsMsgSender : public Singleton<NrHsMsgSender>, private Impl<NrHsMsgSenderImpl> {
public:
    std::uint64_t Window() const { return Get().window; }
    void Window(std::uint64_t handle) { Get().window = handle; }

    void Transmit(HsMsg& message) const {
        const unsigned char* const block = message.Serialize();
        if (Window() != 0) Platform::SendCopyData(Window(), message.Id(), block, message.Size());
    }
};

[[maybe_unused]] const HostMessages::RegisteredIds& idsFromTheStart = HostMessages::Ids();

}  // namespace

HsMsg::~HsMsg() = default;

void HsMsg::Text(const std::string& text) {
    text_ = text;
    Touch();
}

bool HsMsg::NeedsBlock() {
    if (dirty_) DropBlock();
    dirty_ = false;
    return size_ == -1;
}

void HsMsg::DropBlock() {
    buffer_.reset();
    size_ = -1;
}

void HsMsg::KeepBlock(const std::string& bytes) {
    buffer_ = std::make_unique<unsigned char[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), buffer_.get());
    size_ = static_cast<std::int32_t>(bytes.size());
}

HsMessage::HsMessage() : HsMsg(HostMessages::Ids().message) {}

void HsMessage::LocalPercent(std::int32_t percent) {
    localPercent_ = percent;
    Touch();
}

void HsMessage::GlobalPercent(std::int32_t percent) {
    globalPercent_ = percent;
    Touch();
}

const unsigned char* HsMessage::Serialize() {
    if (!NeedsBlock() || !FitsInBlock(Text())) return Block();
    std::string block;
    block.reserve(Text().size() + 5 * WordSize);
    AppendWord(block, static_cast<std::int32_t>(Text().size()));
    AppendWord(block, WordSize);
    AppendWord(block, WordSize);
    block += Text();
    AppendWord(block, localPercent_);
    AppendWord(block, globalPercent_);
    KeepBlock(block);
    return Block();
}

void HsMessage::Deserialize(const void* data, int size) {
    BlockReader reader(data, size);
    const std::int32_t textSize = reader.Number(WordSize);
    const std::int32_t localSize = reader.Number(WordSize);
    const std::int32_t globalSize = reader.Number(WordSize);
    const std::string text = reader.Text(textSize);
    const std::int32_t local = reader.Number(localSize);
    const std::int32_t global = reader.Number(globalSize);
    if (!reader.IsGood()) return;
    Text(text);
    LocalPercent(local);
    GlobalPercent(global);
}

void HsMessage::Clear() {
    Text({});
    LocalPercent(0);
    GlobalPercent(0);
}

HsFinished::HsFinished() : HsMsg(HostMessages::Ids().finished) {}

const unsigned char* HsFinished::Serialize() {
    if (NeedsBlock() && FitsInBlock(Text())) KeepBlock(Text());
    return Block();
}

void HsFinished::Deserialize(const void* data, int size) {
    BlockReader reader(data, size);
    const std::string text = reader.Text(size);
    if (reader.IsGood()) Text(text);
}

void HsFinished::Clear() { Text({}); }

const HostMessages::RegisteredIds& HostMessages::Ids() {
    using Platform::RegisterWindowMessage;
    static const RegisteredIds ids{RegisterWindowMessage("NrHs_Message"), RegisterWindowMessage("NrHs_Finished"),
                                   RegisterWindowMessage("NrHs_Start"), RegisterWindowMessage("NrHs_Imported"),
                                   RegisterWindowMessage("NrHs_Exit")};
    return ids;
}

std::uint64_t HostMessages::Window() { return NrHsMsgSender::Instance().Window(); }
void HostMessages::Window(std::uint64_t handle) { NrHsMsgSender::Instance().Window(handle); }
std::string HostMessages::SocketName(std::uint64_t window) { return Platform::SocketNameOfWindow(window); }

void HostMessages::SendProgress(const std::string& text, double local, double global) {
    static HsMessage& message = *new HsMessage;
    message.Clear();
    message.Text(text);
    message.LocalPercent(Percent(local));
    message.GlobalPercent(Percent(global));
    NrHsMsgSender::Instance().Transmit(message);
}

void HostMessages::SendFinished(const std::string& text) {
    static HsFinished& message = *new HsFinished;
    message.Clear();
    message.Text(text);
    NrHsMsgSender::Instance().Transmit(message);
}

}  // namespace KM
