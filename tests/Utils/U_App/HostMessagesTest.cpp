#include "Utils/U_App/HostMessages.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

#include "Support/TempFolder.h"
#include "Support/WindowInbox.h"

namespace KM {
namespace {

using Test::TempFolder;
using Test::WindowInbox;
std::string Bytes(HsMsg& message) {
    const unsigned char* const block = message.Serialize();
    if (block == nullptr) return "null, size " + std::to_string(message.Size());
    return std::string(reinterpret_cast<const char*>(block), static_cast<std::size_t>(message.Size()));
}

std::string Word(std::uint32_t word) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) bytes += static_cast<char>(word >> 8 * i & 0xFF);
    return bytes;
}

std::string ProgressBlock(const std::string& text, std::uint32_t local, std::uint32_t global) {
    return Word(static_cast<std::uint32_t>(text.size())) + Word(4) + Word(4) + text + Word(local) + Word(global);
}

std::string Datagram(std::uint32_t id, const std::string& block) {
    return Word(id) + Word(static_cast<std::uint32_t>(getpid())) + Word(static_cast<std::uint32_t>(block.size())) +
           block;
}

void Read(HsMsg& message, const std::string& block) {
    // Exactly as large as it is, so that a read beyond its end is noticed.
    const std::vector<char> bytes(block.begin(), block.end());
    message.Deserialize(bytes.data(), static_cast<int>(bytes.size()));
}

TEST(HsMessage, HasItsBlock) {
    HsMessage message;
    message.Text("A.B");
    message.LocalPercent(50);
    message.GlobalPercent(-1);
    EXPECT_EQ(Bytes(message), ProgressBlock("A.B", 50, 0xFFFFFFFFu));
    EXPECT_EQ(message.Size(), 23);
    message.GlobalPercent(0x01020304);
    EXPECT_EQ(Bytes(message), std::string("\3\0\0\0\4\0\0\0\4\0\0\0A.B\62\0\0\0\4\3\2\1", 23));
}

TEST(HsMessage, EmptyTextHasNone) {
    HsMessage message;
    EXPECT_EQ(Bytes(message), "null, size -1");
    message.LocalPercent(5);
    EXPECT_EQ(Bytes(message), "null, size -1");
    message.Text("A");
    EXPECT_EQ(message.Serialize(), message.Serialize());
    message.Clear();
    EXPECT_EQ(Bytes(message), "null, size -1");
    EXPECT_EQ(message.LocalPercent() + message.GlobalPercent(), 0);
}

TEST(HsMessage, ReadsItsBlock) {
    HsMessage message;
    const std::string text = std::string("a") + '\0' + "b\xff";
    Read(message, ProgressBlock(text, 7, 0x80000000u));
    EXPECT_EQ(message.Text(), text);
    EXPECT_EQ(message.LocalPercent(), 7);
    EXPECT_EQ(message.GlobalPercent(), std::numeric_limits<int>::min());
    EXPECT_EQ(Bytes(message), ProgressBlock(text, 7, 0x80000000u));
    Read(message, ProgressBlock("", 1, 2));
    EXPECT_EQ(message.Text(), "");
    EXPECT_EQ(message.GlobalPercent(), 2);
}

TEST(HsMessage, ReadsNumbersOfFewerBytes) {
    HsMessage message;
    Read(message, Word(1) + Word(1) + Word(2) + "t" + "\xff" + "\x01\x02");
    EXPECT_EQ(message.LocalPercent(), 255);
    EXPECT_EQ(message.GlobalPercent(), 0x0201);
    Read(message, Word(1) + Word(0) + Word(4) + "t" + Word(9));
    EXPECT_EQ(message.LocalPercent(), 0);
    EXPECT_EQ(message.GlobalPercent(), 9);
}

TEST(HsMessage, RefusesBlocksThatMakeNoSense) {
    HsMessage message;
    Read(message, ProgressBlock("kept", 1, 2));
    const auto expectKept = [&] { EXPECT_EQ(Bytes(message), ProgressBlock("kept", 1, 2)); };
    const std::string block = ProgressBlock("other", 3, 4);
    for (std::size_t size = 0; size < block.size(); ++size) {
        Read(message, block.substr(0, size));
        expectKept();
    }
    for (const std::uint32_t length : {6u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        Read(message, Word(length) + block.substr(4));
        expectKept();
        Read(message, block.substr(0, 4) + Word(length) + block.substr(8));
        expectKept();
        Read(message, block.substr(0, 8) + Word(length) + block.substr(12));
        expectKept();
    }
    message.Deserialize(nullptr, 100);
    expectKept();
    message.Deserialize(block.data(), -1);
    expectKept();
}

TEST(HsFinished, BlockIsItsText) {
    HsFinished message;
    EXPECT_EQ(Bytes(message), "null, size -1");
    message.Text("!Finished(ID=1)");
    EXPECT_EQ(Bytes(message), "!Finished(ID=1)");
    Read(message, "other");
    EXPECT_EQ(message.Text(), "other");
    message.Deserialize(nullptr, 3);
    message.Deserialize("text", -1);
    EXPECT_EQ(message.Text(), "other");
    message.Deserialize(nullptr, 0);
    EXPECT_EQ(Bytes(message), "null, size -1");
}

TEST(HostMessages, IdsAreThoseOfEveryProcess) {
    const HostMessages::RegisteredIds& ids = HostMessages::Ids();
    // FNV-1a by a program of another language, folded to 14 bits. Hosts may have these numbers as constants.
    EXPECT_EQ(ids.message, 0xC3CFu);
    EXPECT_EQ(ids.finished, 0xF64Bu);
    EXPECT_EQ(ids.start, 0xFE62u);
    EXPECT_EQ(ids.imported, 0xD11Eu);
    EXPECT_EQ(ids.exit, 0xC877u);
    EXPECT_EQ(HsMessage().Id(), ids.message);
    EXPECT_EQ(HsFinished().Id(), ids.finished);
}

TEST(HostMessages, ReachTheWindow) {
    const WindowInbox inbox;
    ASSERT_TRUE(inbox.IsOpen());
    HostMessages::SendProgress("A.B", 0.999, 0.5);
    HostMessages::SendFinished("!Finished(ID=1)");
    EXPECT_EQ(inbox.Take(), Datagram(HostMessages::Ids().message, ProgressBlock("A.B", 99, 50)));
    EXPECT_EQ(inbox.Take(), Datagram(HostMessages::Ids().finished, "!Finished(ID=1)"));
    EXPECT_EQ(inbox.Take(), "nothing");
}

TEST(HostMessages, PercentsAreTruncatedAndHeld) {
    const WindowInbox inbox;
    const auto sent = [&](double local, double global) {
        HostMessages::SendProgress("A", local, global);
        return inbox.Take().substr(12);
    };
    EXPECT_EQ(sent(0.29, -0.019), ProgressBlock("A", 28, 0xFFFFFFFFu));
    EXPECT_EQ(sent(1.0, 0.0), ProgressBlock("A", 100, 0));
    EXPECT_EQ(sent(1e300, -1e300), ProgressBlock("A", 0x7FFFFFFFu, 0x80000000u));
    EXPECT_EQ(sent(std::numeric_limits<double>::quiet_NaN(), 0.5), ProgressBlock("A", 0, 50));
}

TEST(HostMessages, EmptyTextHasNoBlock) {
    const WindowInbox inbox;
    HostMessages::SendProgress("", 0.5, 0.5);
    EXPECT_EQ(inbox.Take(),
              Word(HostMessages::Ids().message) + Word(static_cast<std::uint32_t>(getpid())) + Word(0xFFFFFFFFu));
}

TEST(HostMessages, WithoutWindowNothingIsSent) {
    EXPECT_EQ(HostMessages::Window(), 0u);
    HostMessages::SendProgress("A", 0.5, 0.5);
    HostMessages::SendFinished("A");
}

TEST(HostMessages, WindowWhereNobodyIsHasNoEffect) {
    for (const std::uint64_t window : {std::uint64_t{1}, std::numeric_limits<std::uint64_t>::max()}) {
        HostMessages::Window(window);
        HostMessages::SendProgress("A", 0.5, 0.5);
        HostMessages::SendFinished("A");
    }
    HostMessages::Window(0);
}

TEST(HostMessages, HostThatDoesNotReadHoldsNobodyUp) {
    const WindowInbox inbox;
    for (int i = 0; i < 5000; ++i) HostMessages::SendProgress("A", 0.5, 0.5);
    EXPECT_NE(inbox.Take(), "nothing");
}

TEST(HostMessages, TextThatDoesNotFitIsDropped) {
    const WindowInbox inbox;
    ASSERT_TRUE(inbox.IsOpen());
    HostMessages::SendFinished(std::string(16 << 20, 'x'));
    EXPECT_EQ(inbox.Take(), "nothing");
    const std::string large(100000, 'x');
    HostMessages::SendFinished(large);
    EXPECT_EQ(inbox.Take(), Datagram(HostMessages::Ids().finished, large));
}

/// The variable as it was, when this goes.
class RuntimeFolder {
public:
    RuntimeFolder() {
        if (const char* text = std::getenv(Name)) before_ = text;
    }
    RuntimeFolder(const RuntimeFolder&) = delete;
    RuntimeFolder& operator=(const RuntimeFolder&) = delete;
    ~RuntimeFolder() {
        if (before_.empty()) unsetenv(Name);
        else setenv(Name, before_.c_str(), 1);
    }
    static void Set(const std::string& folder) { setenv(Name, folder.c_str(), 1); }

private:
    static constexpr const char* Name = "XDG_RUNTIME_DIR";
    std::string before_;
};

TEST(HostMessages, SocketLiesWhereOnlyTheUserWrites) {
    const RuntimeFolder kept;
    const TempFolder folder;
    const std::string bare = std::string(1, '\0') + "km-window-" + std::to_string(getuid()) + "-7";
    RuntimeFolder::Set(folder / "");
    EXPECT_EQ(HostMessages::SocketName(7), (folder / "") + "/km-window-7");
    RuntimeFolder::Set("relative");
    EXPECT_EQ(HostMessages::SocketName(7), bare);
    RuntimeFolder::Set("/" + std::string(200, 'x'));
    EXPECT_EQ(HostMessages::SocketName(7), bare);
    RuntimeFolder::Set("");
    EXPECT_EQ(HostMessages::SocketName(7), bare);
    for (const std::string& place : {folder / "", std::string()}) {
        RuntimeFolder::Set(place);
        const WindowInbox inbox;
        HostMessages::SendFinished("here");
        EXPECT_EQ(inbox.Take(), Datagram(HostMessages::Ids().finished, "here"));
    }
}

}  // namespace
}  // namespace KM
