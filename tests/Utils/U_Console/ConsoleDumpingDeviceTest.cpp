#include "Utils/U_Console/ConsoleDumpingDevice.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "Support/InChild.h"
#include "Support/LogOn.h"
#include "Support/SettingKept.h"
#include "Support/TempFolder.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/ConsoleState.h"
#include "Utils/U_Console/LogServices.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

using Test::SettingKept;

class ConsoleDevice : public testing::Test {
protected:
    ~ConsoleDevice() override {
        Console::SetForeground(7);
        Console::SetBackground(0);
    }

    /// What a dump makes of `text` on a clear console.
    std::string Dump(const std::string& text) {
        device_.Reset();
        device_.Write(text);
        return DumpNow();
    }
    std::string DumpNow() {
        device_.DumpAll(folder_ / "dump.xml");
        return folder_.Bytes("dump.xml");
    }
    /// What has been written since the last call.
    std::string Take() {
        std::string text = stream_.str();
        stream_.str("");
        return text;
    }

    std::ostringstream stream_;
    ConsoleDumpingDevice device_{stream_};
    KM::Test::LogOn on_{device_};
    KM::Test::TempFolder folder_;
    SettingKept formatter_{"Console.XSLTFormatter", ""};
};

using Dumping = ConsoleDevice;

TEST_F(ConsoleDevice, PutsTheLineFeedBeforeALine) {
    WriteLine("a");
    WriteLine("b");
    Verbose::WriteMessage_1(Verbose::EMessageType::Info, "c");
    EXPECT_EQ(Take(), "a\nb\n<Info>c</Info>");
    device_.Reset();
    WriteLine("d");
    EXPECT_EQ(Take(), "d");
}

TEST_F(ConsoleDevice, KnowsTheFirstLineOfTheProcess) {
    WriteLine("a");
    std::ostringstream stream;
    ConsoleDumpingDevice other(stream);
    other.OnBegin();
    other.OnEnd();
    EXPECT_EQ(stream.str(), "\n");
}

TEST_F(ConsoleDevice, IsDarkAtFirst) { EXPECT_TRUE(device_.IsDarkBackground()); }

TEST_F(ConsoleDevice, PassesColoursOn) {
    Console::GetForeground();
    Console::GetBackground();
    for (int color = 0; color < 16; ++color) {
        device_.FgColorB(color);
        EXPECT_EQ(Console::GetForeground(), color);
        device_.BkColorB(color);
        EXPECT_EQ(Console::GetBackground(), color);
    }
    device_.FgColorE();
    device_.BkColorE();
    EXPECT_EQ(Console::GetForeground(), 15);
    device_.ApplyBackground();
    EXPECT_EQ(Console::GetBackground(), 0);
    EXPECT_EQ(Take(), "");
}

TEST_F(ConsoleDevice, MapsColoursOnALightBackground) {
    Console::GetForeground();
    Console::GetBackground();
    device_.EnableDarkBackground(false);
    EXPECT_EQ(Console::GetBackground(), 15);
    const int expected[] = {15, 9, 10, 11, 12, 13, 14, 8, 7, 1, 2, 3, 4, 5, 6, 0};
    for (int color = 0; color < 16; ++color) {
        device_.FgColorB(color);
        EXPECT_EQ(Console::GetForeground(), expected[color]) << color;
    }
    device_.EnableDarkBackground(true);
}

TEST_F(ConsoleDevice, WritesToItsStreamAlsoWhileOutputIsOff) {
    Console::IsDumpEnabled(false);
    device_.Reset();
    device_.Write("text");
    EXPECT_EQ(Take(), "text");
    Console::IsDumpEnabled(true);
}

TEST_F(ConsoleDevice, AFileHasNoTitleAndNoEscapes) {
    device_.SetTitle("title");
    device_.Redraw();
    device_.FgColorB(12);
    device_.Write("x");
    EXPECT_EQ(Take(), "x");
}

TEST_F(ConsoleDevice, LinesOfThreadsStayWhole) {
    const auto write = [this](char c) {
        for (int i = 0; i < 300; ++i) {
            device_.OnBegin();
            for (int k = 0; k < 20; ++k) device_.Write(std::string(1, c));
            device_.OnEnd();
        }
    };
    std::thread other(write, 'a');
    write('b');
    other.join();
    std::istringstream lines(Take());
    int count = 0;
    for (std::string line; std::getline(lines, line); ++count)
        ASSERT_TRUE(line == std::string(20, 'a') || line == std::string(20, 'b')) << line;
    EXPECT_EQ(count, 600);
}

TEST_F(ConsoleDevice, AStreamThatThrowsKeepsNoThreadWaiting) {
    WriteLine("a");
    stream_.exceptions(std::ios::badbit);
    stream_.setstate(std::ios::goodbit);
    EXPECT_THROW(stream_.setstate(std::ios::badbit), std::ios::failure);
    EXPECT_THROW(WriteLine("b"), std::ios::failure);
    stream_.exceptions(std::ios::goodbit);
    stream_.clear();
    std::thread([this] {
        device_.OnBegin();
        device_.OnEnd();
    }).join();
}

class FullBuffer : public std::streambuf {
    int_type overflow(int_type) override { throw std::runtime_error("full"); }
};

TEST_F(ConsoleDevice, ABufferThatThrowsSpoilsItsStreamAlone) {
    FullBuffer buffer;
    std::ostream full(&buffer);
    ConsoleDumpingDevice device(full);
    EXPECT_NO_THROW(device.Write("x"));
    EXPECT_TRUE(full.bad());
    EXPECT_NO_THROW(device.Write("x"));
    full.clear();
    full.exceptions(std::ios::badbit);
    EXPECT_THROW(device.Write("x"), std::runtime_error);
    EXPECT_TRUE(full.bad());
}

class CountingBuffer : public std::stringbuf {
public:
    int syncs = 0;

private:
    int sync() override { return ++syncs, 0; }
};

// As the error stream is tied to the output stream, so that both come in the order of their writing.
TEST_F(ConsoleDevice, FlushesTheStreamThatItsOwnIsTiedTo) {
    CountingBuffer buffer;
    std::ostream other(&buffer);
    stream_.tie(&other);
    device_.Write("x");
    EXPECT_EQ(buffer.syncs, 1);
    stream_.setstate(std::ios::badbit);
    device_.Write("x");
    EXPECT_EQ(buffer.syncs, 1);
}

TEST_F(ConsoleDevice, ReportsTheFailureOfASizeThatNoTerminalHas) {
    // In a process without terminal: one of at most 132 by 65 would fail in nothing.
    const std::string text = KM::Test::InChild([this] {
        for (const int file : {0, 1, 2}) close(file);
        device_.Reset();
        return Console::LastFailure();
    });
    EXPECT_EQ(text.find("src/Utils/U_Console/Console.cpp: Error "), 0u) << text;
    EXPECT_NE(text.find(" on line "), std::string::npos);
    EXPECT_TRUE(text.ends_with("\n\nContinue execution?")) << text;
}

TEST_F(Dumping, CopiesTheRows) {
    EXPECT_EQ(Dump("one\n  two\nthree  "), "one\n  two\nthree\n");
    EXPECT_EQ(Dump(""), "");
}

TEST_F(Dumping, HoldsTheLog) {
    device_.Reset();
    {
        const Verbose::Scope scope("Outer");
        Verbose::WriteMessage_2(Verbose::EMessageType::Info, "text", "a.txt", 5);
    }
    const std::string dump = DumpNow();
    EXPECT_TRUE(dump.starts_with("<Outer>\n  <Info Link=\"a.txt\">text</Info>\n  <Time>")) << dump;
    EXPECT_TRUE(dump.ends_with("</Outer>\n")) << dump;
}

TEST_F(Dumping, KeepsUpToNineBlankRows) {
    EXPECT_EQ(Dump("\n\na\n\n\nb\n   \nc\n\n"), "\n\na\n\n\nb\n\nc\n");
    EXPECT_EQ(Dump("a" + std::string(10, '\n') + "b"), "a" + std::string(10, '\n') + "b\n");
    EXPECT_EQ(Dump("a" + std::string(11, '\n') + "b"), "a\n");
    EXPECT_EQ(Dump(std::string(9, '\n') + "a"), std::string(9, '\n') + "a\n");
    EXPECT_EQ(Dump(std::string(10, '\n') + "a"), "");
    // The count starts again behind each row.
    const std::string nine(10, '\n');
    EXPECT_EQ(Dump("a" + nine + "b" + nine + "c"), "a" + nine + "b" + nine + "c\n");
}

TEST_F(Dumping, StopsARowAfterFiftyBlanks) {
    const std::string blanks(49, ' ');
    EXPECT_EQ(Dump("a" + blanks + "b"), "a" + blanks + "b\n");
    EXPECT_EQ(Dump("a" + blanks + " b"), "a\n");
    EXPECT_EQ(Dump("a" + blanks + "b" + blanks + "c"), "a" + blanks + "b" + blanks + "c\n");
    // Those in front of the first other byte do not count.
    EXPECT_EQ(Dump(std::string(60, ' ') + "a"), std::string(60, ' ') + "a\n");
}

TEST_F(Dumping, ScreenWorksAsAConsole) {
    EXPECT_EQ(Dump("abc\rx"), "xbc\n");
    EXPECT_EQ(Dump("abc\b\bx"), "axc\n");
    EXPECT_EQ(Dump("\b\bx"), "x\n");
    EXPECT_EQ(Dump("a\tb"), "a       b\n");
    EXPECT_EQ(Dump(std::string("a\0\a\x1b"
                               "b",
                               5)),
              "ab\n");
    EXPECT_EQ(Dump("\xc3\xa4"), "\xc3\xa4\n");
}

TEST_F(Dumping, ScreenIsFiveHundredByThreeThousandAfterAReset) {
    EXPECT_EQ(Dump(std::string(501, 'x')), std::string(500, 'x') + "\nx\n");
    EXPECT_EQ(Dump(std::string(500, 'x') + "\ny"), std::string(500, 'x') + "\ny\n");
    std::string text, rows;
    for (int i = 0; i < 3005; ++i) {
        if (i > 0) text += '\n';
        text += std::to_string(i);
        if (i < 5) continue;
        rows += std::to_string(i);
        rows += '\n';
    }
    EXPECT_EQ(Dump(text), rows);
}

TEST_F(Dumping, ScreenTakesItsSizeFromTheSettings) {
    const SettingKept init("Console.Init", "Y");
    const SettingKept columns("Console.Buffer.Size.X", "10"), rows("Console.Buffer.Size.Y", "2");
    Console::Init();
    device_.Write("0123456789abcdefghijklm\nlast");
    EXPECT_EQ(DumpNow(), "klm\nlast\n");
}

TEST_F(Dumping, ATabulatorEndsWithItsRow) {
    const SettingKept init("Console.Init", "Y");
    const std::pair<const char*, const char*> rows[] = {
        {"1", "a\n\nb\n"}, {"7", "a\nb\n"}, {"8", "a\nb\n"}, {"9", "a       b\n"}};
    for (const auto& [columns, dump] : rows) {
        const SettingKept width("Console.Buffer.Size.X", columns);
        Console::Init();
        device_.Write("a\tb");
        EXPECT_EQ(DumpNow(), dump) << columns;
    }
    device_.Reset();
}

TEST_F(Dumping, ScreenOfAnySizeIsSurvived) {
    const SettingKept init("Console.Init", "Y");
    const SettingKept columns("Console.Buffer.Size.X", "-7"), rows("Console.Buffer.Size.Y", "0");
    Console::Init();
    device_.Write("ab");
    EXPECT_EQ(DumpNow(), "b\n");
    const SettingKept manyColumns("Console.Buffer.Size.X", "2147483647"),
        manyRows("Console.Buffer.Size.Y", "2147483647");
    Console::Init();
    device_.Write("ab");
    EXPECT_EQ(DumpNow(), "ab\n");
    device_.Reset();
}

TEST_F(Dumping, StartsWithTheStyleSheet) {
    const SettingKept formatter("Console.XSLTFormatter", "a/b.xsl");
    EXPECT_EQ(Dump("x"), "<?xml-stylesheet type=\"text/xsl\" href=\"a/b.xsl\"?>\nx\n");
}

TEST_F(Dumping, HoldsNoRowsWhileOutputIsOff) {
    const SettingKept formatter("Console.XSLTFormatter", "f");
    Dump("x");
    Console::IsDumpEnabled(false);
    EXPECT_EQ(DumpNow(), "<?xml-stylesheet type=\"text/xsl\" href=\"f\"?>\n");
    Console::IsDumpEnabled(true);
}

TEST_F(Dumping, ReplacesTheFile) {
    folder_.Write("dump.xml", "a long text from before");
    EXPECT_EQ(Dump("x"), "x\n");
}

TEST_F(Dumping, ArchivesACopyWithTheTimeInItsName) {
    const SettingKept archive("Console.ArchiveDumpFile", "Y");
    Dump("x");
    const std::vector<std::string> names = folder_.Names();
    ASSERT_EQ(names.size(), 2u);
    EXPECT_TRUE(names[0].starts_with("dump.Y") && names[0].ends_with(".xml")) << names[0];
    EXPECT_EQ(names[1], "dump.xml");
    EXPECT_EQ(folder_.Bytes(names[0]), "x\n");
}

TEST_F(Dumping, ArchivesAlsoWhatCouldNotBeWritten) {
    const SettingKept archive("Console.ArchiveDumpFile", "Y");
    device_.DumpAll(folder_ / "missing/dump.xml");
    const std::string message = "Arhiving file name: " + (folder_ / "missing/dump.xml") + " to: ";
    ASSERT_EQ(Verbose::LogRecords().size(), 1u);
    EXPECT_TRUE(Verbose::LogRecords()[0].message.starts_with(message)) << Verbose::LogRecords()[0].message;
    EXPECT_TRUE(folder_.Names().empty());
}

TEST_F(Dumping, AFileThatCannotBeWrittenIsLeftAlone) {
    device_.DumpAll(folder_ / "missing/dump.xml");
    device_.DumpAll(folder_ / "");
    device_.DumpAll("");
    EXPECT_TRUE(folder_.Names().empty());
}

}  // namespace
}  // namespace KM
