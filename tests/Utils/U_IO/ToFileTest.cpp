#include "Utils/U_IO/ToFile.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <thread>

#include "Support/InChild.h"
#include "Support/LogCapture.h"
#include "Support/TempFolder.h"
#include "Utils/U_Debug/Chronometer.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::IO {
namespace {

namespace fs = std::filesystem;
using Test::InChild;
using Test::LogCapture;
using Test::TempFolder;
using Names = std::vector<std::string>;
using Texts = std::vector<std::string>;
using Verbose::EMessageType;

void Put(ToFile& file, const std::string& text) {
    Write(text.data(), static_cast<unsigned>(text.size()), file, "t.cpp", 7);
}

void PutFile(const std::string& name, const std::string& text) {
    ToFile file(name, "wb", 0, false);
    Put(file, text);
}

std::string Get(ToFile& file, unsigned size) {
    std::string text(size, '\0');
    EXPECT_EQ(Read(text.data(), size, file, "t.cpp", 7), size);
    return text;
}

void Wait(const std::string& seconds) { Settings::ToXMLElement("Debug.SecondsToWaitForAFileToUnlock").V(seconds); }

std::string Created(const std::string& name) {
    return "The desired path for: " + name + " file. Wasn't found and was created.";
}

std::string NotWritten(const std::string& name) {
    return "File: " + name + " could not be written and stays as it was!";
}

TEST(ToFile, ReplacesTheTargetWhenItCloses) {
    const TempFolder temp;
    temp.Write("a.bin", "old");
    ToFile file(temp / "a.bin", "wb", 0, false);
    Put(file, "new");
    std::fflush(file);
    EXPECT_EQ(temp.Bytes("a.bin"), "old");
    EXPECT_EQ(temp.Bytes("a.bin.tmp"), "new");
    file.Close();
    EXPECT_EQ(static_cast<std::FILE*>(file), nullptr);
    EXPECT_EQ(temp.Bytes("a.bin"), "new");
    EXPECT_EQ(temp.Names(), Names{"a.bin"});
    file.Close();
    EXPECT_EQ(temp.Bytes("a.bin"), "new") << "closing twice does nothing";
}

TEST(ToFile, ClosesWhenItGoes) {
    const TempFolder temp;
    PutFile(temp / "a.bin", "1");
    EXPECT_EQ(temp.Bytes("a.bin"), "1");
    EXPECT_EQ(temp.Names(), Names{"a.bin"});
}

TEST(ToFile, ThatNeverClosesLeavesTheTemporaryFileOnly) {
    const TempFolder temp;
    EXPECT_EQ(InChild([&temp]() -> std::string {
                  auto* const file = new ToFile(temp / "a.bin", "wb", 0, false);
                  Put(*file, "1");
                  return "left";
              }),
              "left");
    EXPECT_EQ(temp.Names(), Names{"a.bin.tmp"});
}

TEST(ToFile, TellsWhatItIs) {
    const TempFolder temp;
    const struct {
        const char* mode;
        bool isWrite;
    } rows[] = {{"wb", true}, {"w", true}, {"W", true}, {"Wb", true}, {"w+b", true}, {"ab", false}, {"a+", false}};
    for (const auto& row : rows) {
        const ToFile file(temp / row.mode, row.mode, 0, row.isWrite);
        EXPECT_EQ(file.IsWriteMode(), row.isWrite) << row.mode;
        EXPECT_EQ(file.IsOverwrite(), row.isWrite) << row.mode;
        EXPECT_EQ(file.Name(), temp / row.mode);
        EXPECT_EQ(file.operator->(), static_cast<std::FILE*>(file));
        EXPECT_EQ(temp.Has(std::string(row.mode) + ".tmp"), row.isWrite) << row.mode;
    }
    EXPECT_FALSE(ToFile(temp / "wb", "rb", 0, false).IsWriteMode());
    EXPECT_FALSE(ToFile(temp / "wb", "R", 0, false).IsWriteMode());
}

TEST(ToFile, OtherModesWorkOnTheFileItself) {
    const TempFolder temp;
    temp.Write("a", "12345");
    {
        ToFile file(temp / "a", "r+b", 0, false);
        Put(file, "ab");
        EXPECT_EQ(temp.Names(), Names{"a"});
    }
    EXPECT_EQ(temp.Bytes("a"), "ab345");
    {
        ToFile file(temp / "a", "ab", 0, false);
        Put(file, "6");
    }
    EXPECT_EQ(temp.Bytes("a"), "ab3456");
    EXPECT_EQ(temp.Names(), Names{"a"});
}

TEST(ToFile, WriteAndReadBackInOneGo) {
    const TempFolder temp;
    ToFile file(temp / "a", "w+b", 0, false);
    Put(file, "12345");
    std::rewind(file);
    EXPECT_EQ(Get(file, 5), "12345");
    file.Close();
    EXPECT_EQ(temp.Bytes("a"), "12345");
}

TEST(ToFile, OpensAgain) {
    const TempFolder temp;
    ToFile file(temp / "a", "wb", 0, false);
    Put(file, "first");
    file.Close();
    file.Open();
    Put(file, "2");
    EXPECT_EQ(temp.Bytes("a"), "first");
    file.Close();
    EXPECT_EQ(temp.Bytes("a"), "2");
}

TEST(ToFile, SecondOpenIsAnErrorAndKeepsTheFile) {
    const TempFolder temp;
    const LogCapture log;
    ToFile file(temp / "a", "wb", 0, false);
    Put(file, "1");
    file.Open();
    EXPECT_EQ(log.Texts(EMessageType::Error), Texts{"File: " + temp / "a" + " is double opened!"});
    EXPECT_EQ(log.Lines().size(), 1u);
    Put(file, "2");
    file.Close();
    EXPECT_EQ(temp.Bytes("a"), "12");
}

TEST(ToFile, EraseDeletes) {
    const TempFolder temp;
    temp.Write("a", "old");
    ToFile file(temp / "a", "wb", 0, false);
    file.Erase();
    EXPECT_TRUE(temp.Names().empty());
    temp.Write("a", "old");
    ToFile(temp / "a", "rb", 0, false).Erase();
    EXPECT_TRUE(temp.Names().empty());
    file.Erase();
    EXPECT_EQ(static_cast<std::FILE*>(file), nullptr);
}

TEST(ToFile, LogsItsOpeningWithTheNameAsColouredLink) {
    const TempFolder temp;
    temp.Write("a", "");
    const struct {
        const char *mode, *text;
    } rows[] = {{"rb", "Has been opened for reading"},
                {"R", "Has been opened for reading"},
                {"wb", "Has been opened for writing"},
                {"ab", "Has been opened for writing"}};
    for (const auto& row : rows) {
        const LogCapture log;
        const ToFile file(temp / "a", row.mode, 12, false);
        EXPECT_EQ(log.Texts(EMessageType::Info), Texts{row.text}) << row.mode;
        ASSERT_EQ(Verbose::LogRecords().size(), 1u);
        EXPECT_EQ(Verbose::LogRecords()[0].link, temp / "a");
        EXPECT_EQ(Verbose::LogRecords()[0].linkColor, 12);
    }
    const LogCapture log;
    const ToFile file(temp / "a", "rb", 0, false);
    EXPECT_TRUE(log.Lines().empty()) << "colour 0";
}

TEST(ToFile, MissingFileToReadThrowsWithoutALine) {
    const TempFolder temp;
    for (const char* mode : {"rb", "r", "R", "r+b"}) {
        temp.Write("a.IsOpened", "");
        const LogCapture log;
        EXPECT_THROW(ToFile(temp / "a", mode, 5, false), XFileIOError) << mode;
        EXPECT_TRUE(log.Lines().empty()) << mode;
        EXPECT_TRUE(temp.Names().empty()) << "the marker goes";
    }
}

TEST(ToFile, EmptyNameThrowsWithoutALine) {
    const TempFolder temp;
    const fs::path before = fs::current_path();
    fs::current_path(temp / "");
    for (const char* mode : {"rb", "wb", "ab", ""}) {
        temp.Write(".IsOpened", "");
        const LogCapture log;
        EXPECT_THROW(ToFile("", mode, 5, false), XFileIOError) << mode;
        EXPECT_TRUE(log.Lines().empty()) << mode;
        EXPECT_TRUE(temp.Names().empty()) << mode << ": the marker goes, and nothing comes";
    }
    fs::current_path(before);
}

TEST(ToFile, MakesTheFolderOfAFileToWrite) {
    const TempFolder temp;
    std::string name = temp / "x/y z/a.bin";
    std::replace(name.begin(), name.end(), '/', '\\');
    {
        const LogCapture log;
        ToFile file(name, "wb", 0, false);
        EXPECT_EQ(log.Texts(EMessageType::Warning), Texts{Created(name)});
        EXPECT_EQ(log.Lines().size(), 1u);
        Put(file, "1");
        EXPECT_TRUE(temp.Has("x/y z/a.bin.tmp"));
    }
    EXPECT_EQ(temp.Bytes("x/y z/a.bin"), "1");
    EXPECT_FALSE(temp.Has("x/y z/a.bin.tmp"));
}

TEST(ToFile, MakesNoFolderInOtherModes) {
    const TempFolder temp;
    const LogCapture log;
    EXPECT_THROW(ToFile(temp / "x/a", "ab", 0, false), XFileIOError);
    EXPECT_EQ(log.Texts(EMessageType::Warning), Texts{Created(temp / "x/a")});
    EXPECT_TRUE(temp.Names().empty());
}

TEST(ToFile, WhatCannotBeOpenedIsAWarningAndThrows) {
    const TempFolder temp;
    temp.Write("file", "1");
    fs::create_directory(temp / "folder");
    const std::string names[] = {temp / "file/a", temp / "folder", temp / "new/", temp / std::string(300, 'a'),
                                 temp / std::string("a\0b", 3), temp / (std::string(240, 'a') + '\0')};
    for (const std::string& name : names) {
        const LogCapture log;
        EXPECT_THROW(ToFile(name, "wb", 0, false), XFileIOError) << name;
        EXPECT_EQ(log.Texts(EMessageType::Warning), Texts{Created(name)});
        EXPECT_EQ(log.Lines().size(), 1u);
    }
    fs::remove(temp / "new");
    EXPECT_EQ(temp.Names(), (Names{"file", "folder"}));
    EXPECT_TRUE(fs::is_empty(temp / "folder"));
    EXPECT_EQ(temp.Bytes("file"), "1");
}

TEST(ToFile, BadModeThrows) {
    const TempFolder temp;
    temp.Write("a", "1");
    for (const char* mode : {"", "q", " r", "+"}) {
        const LogCapture log;
        EXPECT_THROW(ToFile(temp / "a", mode, 0, false), XFileIOError) << mode;
        EXPECT_EQ(log.Count(EMessageType::Warning), 1) << mode;
    }
    EXPECT_EQ(temp.Bytes("a"), "1");
}

TEST(ToFile, FolderCannotBeRead) {
    const TempFolder temp;
    EXPECT_THROW(ToFile(temp / "", "rb", 0, false), XFileIOError);
    fs::create_directory(temp / "folder");
    EXPECT_THROW(ToFile(temp / "folder", "rb", 0, false), XFileIOError);
}

// As a file that is deleted after the check that it is there.
TEST(ToFile, VanishedFileIsAWarningAndThrows) {
    const TempFolder temp;
    fs::create_symlink(temp / "gone", temp / "a");
    const LogCapture log;
    EXPECT_THROW(ToFile(temp / "a", "rb", 0, false), XFileIOError);
    EXPECT_EQ(log.Texts(EMessageType::Warning), Texts{Created(temp / "a")});
}

TEST(ToFile, WithoutPermissionIsAWarningAndThrows) {
    const TempFolder temp;
    temp.Write("secret", "1");
    temp.Write("old", "1");
    fs::permissions(temp / "secret", fs::perms{0});
    fs::permissions(temp / "", fs::perms{0555});
    for (const auto& [name, mode] : {std::pair{"secret", "rb"}, {"new", "wb"}, {"old", "wb"}, {"old", "ab"}}) {
        if (geteuid() != 0 && std::string(name) == "old" && std::string(mode) == "ab") continue;  // it is our own
        const std::string result = InChild([&temp, name = name, mode = mode]() -> std::string {
            if (geteuid() == 0 && setuid(65534) != 0) return "still root";
            const LogCapture log;
            try {
                ToFile(temp / name, mode, 0, false);
            } catch (const XFileIOError&) {
                return log.Texts(EMessageType::Warning) == Texts{Created(temp / name)} ? "refused" : "no warning";
            }
            return "opened";
        });
        EXPECT_EQ(result, "refused") << name << " " << mode;
    }
    EXPECT_EQ(temp.Names(), (Names{"old", "secret"}));
    fs::permissions(temp / "", fs::perms{0755});
}

TEST(ToFile, NamesAreTakenLiterally) {
    const TempFolder temp;
    for (const std::string name :
         {"a b", " a", "a'b", "a\"b", "*", "?", "[a]", "a;b", "$a", "a\nb", "-a", "%s", "..."}) {
        PutFile(temp / name, name);
        EXPECT_EQ(temp.Bytes(name), name);
        ToFile file(temp / name, "rb", 0, false);
        EXPECT_EQ(Get(file, static_cast<unsigned>(name.size())), name);
    }
}

TEST(ToFile, NameMayBeAsLongAsTheSystemTakesIt) {
    const TempFolder temp;
    for (const std::size_t length : {251u, 252u, 255u}) {
        const std::string name(length, 'a');
        const LogCapture log;
        PutFile(temp / name, "1");
        PutFile(temp / name, "22");
        EXPECT_EQ(temp.Bytes(name), "22") << length;
        EXPECT_EQ(temp.Names(), Names{name});
        EXPECT_EQ(log.Texts(EMessageType::Warning), Texts(length > 251 ? 2 : 0, Created(temp / name)))
            << "no room for \".tmp\"";
        fs::remove(temp / name);
    }
}

TEST(ToFile, KeepsTheAttributesOfTheTarget) {
    const TempFolder temp;
    for (const unsigned attributes : {0444u, 0400u, 0600u, 0640u, 0777u, 0000u, 0644u}) {
        temp.Write("a", "old");
        fs::permissions(temp / "a", fs::perms{attributes});
        ToFile file(temp / "a", "wb", 0, false);
        EXPECT_EQ(fs::status(temp / "a.tmp").permissions(), fs::perms{attributes | 0200u}) << "never open to others";
        Put(file, "new");
        file.Close();
        EXPECT_EQ(fs::status(temp / "a").permissions(), fs::perms{attributes}) << std::oct << attributes;
        fs::permissions(temp / "a", fs::perms{0600});
        EXPECT_EQ(temp.Bytes("a"), "new");
        fs::remove(temp / "a");
    }
}

TEST(ToFile, ReplacesALinkAndNotWhatItLeadsTo) {
    const TempFolder temp;
    temp.Write("kept", "1");
    fs::create_symlink(temp / "kept", temp / "a");
    fs::create_symlink(temp / "kept", temp / "a.tmp");
    PutFile(temp / "a", "2");
    EXPECT_EQ(temp.Bytes("kept"), "1");
    EXPECT_EQ(temp.Bytes("a"), "2");
    EXPECT_FALSE(fs::is_symlink(temp / "a"));
}

TEST(ToFile, FolderInTheWayOfTheTemporaryFileLosesNothing) {
    const TempFolder temp;
    fs::create_directory(temp / "a.tmp");
    const LogCapture log;
    PutFile(temp / "a", "1");
    EXPECT_EQ(temp.Bytes("a"), "1");
    EXPECT_EQ(temp.Names(), (Names{"a", "a.tmp"}));
    EXPECT_EQ(log.Texts(EMessageType::Warning), Texts{Created(temp / "a")});
}

TEST(ToFile, WritesIntoPipesAndDevicesThemselves) {
    const TempFolder temp;
    ASSERT_EQ(mkfifo((temp / "pipe").c_str(), 0600), 0);
    const int reader = open((temp / "pipe").c_str(), O_RDWR | O_NONBLOCK);
    PutFile(temp / "pipe", "12");
    char text[3] = "";
    EXPECT_EQ(read(reader, text, 2), 2);
    EXPECT_STREQ(text, "12");
    close(reader);
    EXPECT_EQ(temp.Names(), Names{"pipe"});
    EXPECT_TRUE(fs::is_fifo(temp / "pipe"));
    ToFile(temp / "pipe", "w+", 0, false).Erase();
    EXPECT_EQ(temp.Names(), Names{"pipe"});
}

// ---- other processes

TEST(ToFile, MarkerThatStaysIsWaitedForAndIgnored) {
    const TempFolder temp;
    temp.Write("a.IsOpened", "");
    Wait("3");
    const LogCapture log;
    const double start = Time::Get();
    PutFile(temp / "a", "1");
    EXPECT_GE(Time::Get() - start, 2.99);
    const std::string locked = "File " + temp / "a" + " is locked. Wait for other: ";
    EXPECT_EQ(log.Texts(EMessageType::Warning),
              (Texts{locked + "2 seconds;", locked + "1 seconds;", locked + "0 seconds;",
                     "File is still locked I'll ignore the warning!"}));
    EXPECT_EQ(temp.Names(), (Names{"a", "a.IsOpened"}));
    Wait("0");
}

TEST(ToFile, MarkerThatGoesEndsTheWait) {
    const TempFolder temp;
    temp.Write("a.IsOpened", "");
    Wait("600");
    const LogCapture log;
    std::thread other([&temp] { fs::remove(temp / "a.IsOpened"); });
    PutFile(temp / "a", "1");
    other.join();
    for (const std::string& text : log.Texts(EMessageType::Warning))  // none, if the other one was quicker
        EXPECT_EQ(text, "File " + temp / "a" + " is locked. Wait for other: 599 seconds;");
    EXPECT_LE(log.Count(EMessageType::Warning), 1);
    EXPECT_EQ(temp.Names(), Names{"a"});
    Wait("0");
}

TEST(ToFile, WithoutWaitTheMarkerCountsForNothing) {
    const TempFolder temp;
    temp.Write("a.IsOpened", "");
    for (const char* seconds : {"0", "n", "-1", "-2147483648"}) {
        Wait(seconds);
        const LogCapture log;
        PutFile(temp / "a", "1");
        EXPECT_TRUE(log.Lines().empty()) << seconds;
    }
    Wait("600");
    const LogCapture log;
    PutFile(temp / "b", "1");
    EXPECT_TRUE(log.Lines().empty()) << "no marker";
    Wait("0");
}

TEST(ToFile, ProcessKilledWhileItWritesLeavesThePreviousFileWhole) {
    const TempFolder temp;
    PutFile(temp / "a", "previous");
    EXPECT_EQ(InChild([&temp]() -> std::string {
                  ToFile file(temp / "a", "wb", 0, false);
                  Put(file, std::string(100'000, 'x'));
                  std::raise(SIGKILL);
                  return "alive";
              }),
              "");
    EXPECT_EQ(temp.Bytes("a"), "previous");
    EXPECT_EQ(temp.Names(), (Names{"a", "a.tmp"}));
    PutFile(temp / "a", "next");
    EXPECT_EQ(temp.Bytes("a"), "next") << "nothing of the dead one's";
    EXPECT_EQ(temp.Names(), Names{"a"}) << "its file has been used again";
}

TEST(ToFile, WritersOfOneTargetEachWriteAFileOfTheirOwn) {
    for (const bool isFirstClosedFirst : {false, true}) {
        const TempFolder temp;
        ToFile first(temp / "a", "wb", 0, false);
        Put(first, "11");
        const LogCapture log;
        ToFile second(temp / "a", "wb", 0, false);
        ToFile third(temp / "a", "wb", 0, false);
        EXPECT_TRUE(log.Lines().empty());
        Put(second, "2");
        Put(first, "11");
        (isFirstClosedFirst ? first : second).Close();
        EXPECT_EQ(temp.Bytes("a"), isFirstClosedFirst ? "1111" : "2");
        Put(third, "333");
        (isFirstClosedFirst ? second : first).Close();
        EXPECT_EQ(temp.Bytes("a"), isFirstClosedFirst ? "2" : "1111");
        third.Close();
        EXPECT_EQ(temp.Bytes("a"), "333");
        EXPECT_EQ(temp.Names(), Names{"a"});
    }
}

TEST(ToFile, RacingProcessesNeverShowAHalfFile) {
    const TempFolder temp;
    constexpr std::size_t size = 50'000;
    PutFile(temp / "a", std::string(size, 'o'));
    const LogCapture log;
    std::vector<pid_t> others;
    for (const char letter : {'x', 'y'}) {
        others.push_back(fork());
        if (others.back() != 0) continue;
        for (int i = 0; i < 60; ++i) PutFile(temp / "a", std::string(size, letter));
        _exit(log.Lines().empty() ? 0 : 1);
    }
    for (int i = 0; i < 300; ++i) {
        const std::string bytes = temp.Bytes("a");
        EXPECT_EQ(bytes, std::string(size, bytes.empty() ? '?' : bytes[0]));
        if (i % 10 == 0) PutFile(temp / "a", std::string(size, 'z'));
    }
    for (const pid_t other : others) {
        int status = -1;
        EXPECT_EQ(waitpid(other, &status, 0), other);
        EXPECT_EQ(status, 0);
    }
    EXPECT_EQ(temp.Names(), Names{"a"});
    EXPECT_TRUE(log.Lines().empty());
}

TEST(ToFile, TemporaryFileTakenAwayIsAnErrorAndNotSomebodyElsesFile) {
    const TempFolder temp;
    temp.Write("a", "old");
    const LogCapture log;
    ToFile file(temp / "a", "wb", 0, false);
    Put(file, "new");
    fs::remove(temp / "a.tmp");
    temp.Write("a.tmp", "half of ano");
    file.Close();
    EXPECT_EQ(temp.Bytes("a"), "old");
    EXPECT_EQ(temp.Bytes("a.tmp"), "half of ano");
    EXPECT_EQ(log.Texts(EMessageType::Error), Texts{NotWritten(temp / "a")});
}

// ---- a full disk, as a limit to the size of files

std::string WriteWithLimit(const std::string& name, const char* mode, rlim_t limit, const std::string& text) {
    return InChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limits{limit, limit};
        setrlimit(RLIMIT_FSIZE, &limits);
        const LogCapture log;
        std::string result = "returned";
        try {
            ToFile file(name, mode, 0, false);
            Put(file, text);
        } catch (const XFileIOError&) { result = "threw"; }
        for (const std::string& error : log.Texts(EMessageType::Error)) result += "\n" + error;
        return result;
    });
}

std::string ShortWrite(const std::string& name) {
    return "Writing to a file problem has been detected in file: \"t.cpp\", line: 7 trying to access: \"" + name +
           "\". Action: ::KM::IO::XFileIOError exception thrown!";
}

TEST(ToFile, FullDiskLeavesThePreviousFileWhole) {
    const TempFolder temp;
    temp.Write("a", "previous");
    EXPECT_EQ(WriteWithLimit(temp / "a", "wb", 10'000, std::string(1'000'000, 'x')),
              "threw\n" + ShortWrite(temp / "a") + "\n" + NotWritten(temp / "a"));
    EXPECT_EQ(temp.Bytes("a"), "previous");
    EXPECT_EQ(temp.Names(), Names{"a"});
}

TEST(ToFile, FullDiskIsNotForgottenWhenAReadFailsToo) {
    const TempFolder temp;
    temp.Write("a", "previous");
    EXPECT_EQ(InChild([&temp]() -> std::string {
                  std::signal(SIGXFSZ, SIG_IGN);
                  const rlimit limits{10'000, 10'000};
                  setrlimit(RLIMIT_FSIZE, &limits);
                  ToFile file(temp / "a", "w+b", 0, false);
                  EXPECT_THROW(Put(file, std::string(1'000'000, 'x')), XFileIOError);
                  char buffer[1];
                  EXPECT_THROW(Read(buffer, 1, file, "t.cpp", 7), XFileIOError);
                  return "both failed";
              }),
              "both failed");
    EXPECT_EQ(temp.Bytes("a"), "previous");
    EXPECT_EQ(temp.Names(), Names{"a"});
}

TEST(ToFile, FullDiskThatShowsInTheCloseLeavesThePreviousFileWhole) {
    const TempFolder temp;
    temp.Write("a", "previous");
    EXPECT_EQ(WriteWithLimit(temp / "a", "wb", 10, "twenty bytes in all."), "returned\n" + NotWritten(temp / "a"));
    EXPECT_EQ(temp.Bytes("a"), "previous");
    EXPECT_EQ(temp.Names(), Names{"a"});
}

TEST(ToFile, FullDiskIsReportedInOtherModesToo) {
    const TempFolder temp;
    temp.Write("a", "previous");
    EXPECT_EQ(WriteWithLimit(temp / "a", "ab", 10, "twenty bytes in all."),
              "returned\nFile: " + temp / "a" + " could not be written to its end!");
    EXPECT_EQ(temp.Bytes("a").substr(0, 8), "previous");
}

TEST(ToFile, FullDeviceIsReported) {
    const TempFolder temp;
    fs::create_symlink("/dev/full", temp / "a");
    EXPECT_EQ(WriteWithLimit(temp / "a", "wb", RLIM_INFINITY, "1"), "returned\n" + NotWritten(temp / "a"));
    EXPECT_EQ(WriteWithLimit(temp / "a", "wb", RLIM_INFINITY, std::string(100'000, 'x')).substr(0, 5), "threw");
    EXPECT_TRUE(fs::is_symlink(temp / "a"));
    EXPECT_EQ(temp.Names(), Names{"a"});
}

TEST(ToFile, TargetThatBecameAFolderIsAnError) {
    const TempFolder temp;
    const LogCapture log;
    ToFile file(temp / "a", "wb", 0, false);
    fs::create_directory(temp / "a");
    file.Close();
    EXPECT_EQ(log.Texts(EMessageType::Error), Texts{NotWritten(temp / "a")});
    EXPECT_EQ(temp.Names(), Names{"a"});
}

// ---- transfer

TEST(Transfer, IsOfAnySize) {
    const TempFolder temp;
    for (const unsigned size : {0u, 1u, 4096u, 100'000u}) {
        std::string bytes(size, '\0');
        for (unsigned i = 0; i < size; ++i) bytes[i] = static_cast<char>(i * 7);
        {
            ToFile file(temp / "a", "wb", 0, false);
            EXPECT_EQ(Write(bytes.data(), size, file, __FILE__, __LINE__), size);
        }
        ToFile file(temp / "a", "rb", 0, false);
        EXPECT_EQ(Get(file, size), bytes);
    }
}

TEST(Transfer, OfNothingNeedsNoBuffer) {
    const TempFolder temp;
    ToFile file(temp / "a", "w+b", 0, false);
    EXPECT_EQ(Write(nullptr, 0, file, "t.cpp", 7), 0u);
    EXPECT_EQ(Read(nullptr, 0, file, "t.cpp", 7), 0u);
}

TEST(Transfer, ShortReadIsAnErrorThatClosesAndThrows) {
    const TempFolder temp;
    temp.Write("a", "123");
    const LogCapture log;
    {
        ToFile file(temp / "a", "rb", 0, false);
        char buffer[8];
        EXPECT_THROW(Read(buffer, 4, file, "some/where.cpp", 42), XFileIOError);
        EXPECT_EQ(static_cast<std::FILE*>(file), nullptr);
        EXPECT_EQ(log.Texts(EMessageType::Error),
                  Texts{"Reading from a file problem has been detected in file: \"some/where.cpp\", line: 42 trying to "
                        "access: \"" +
                        temp / "a" +
                        "\". Action: File will be closed, deleted and ::KM::IO::XFileIOError exception thrown!"});
    }
    EXPECT_EQ(log.Lines().size(), 1u) << "the destructor does nothing more";
    EXPECT_EQ(temp.Bytes("a"), "123") << "it stays on disk";
}

TEST(Transfer, ShortWriteIsAnErrorAndThrows) {
    const TempFolder temp;
    temp.Write("a", "123");
    const LogCapture log;
    ToFile file(temp / "a", "rb", 0, false);
    EXPECT_THROW(Put(file, "x"), XFileIOError);
    EXPECT_EQ(log.Texts(EMessageType::Error), Texts{ShortWrite(temp / "a")});
    EXPECT_NE(static_cast<std::FILE*>(file), nullptr);
    EXPECT_EQ(temp.Bytes("a"), "123");
}

TEST(Transfer, RefusesAClosedFileAndNoBuffer) {
    const TempFolder temp;
    temp.Write("a", "123");
    char buffer[4];
    ToFile file(temp / "a", "rb", 0, false);
    const LogCapture log;
    EXPECT_THROW(Read(nullptr, 1, file, nullptr, -1), XFileIOError);
    EXPECT_THROW(Read(buffer, 1, file, "", 0), XFileIOError) << "closed by now";
    EXPECT_THROW(Write(buffer, 1, file, "", 0), XFileIOError);
    EXPECT_THROW(Read(buffer, 0, file, "", 0), XFileIOError);
    EXPECT_EQ(log.Count(EMessageType::Error), 4);
    ToFile written(temp / "b", "wb", 0, false);
    EXPECT_THROW(Write(nullptr, 1, written, "", 0), XFileIOError);
}

TEST(Transfer, ReadOfAFileOpenForWritingSparesWhatWasWritten) {
    const TempFolder temp;
    const LogCapture log;
    ToFile file(temp / "a", "wb", 0, false);
    Put(file, "12");
    char buffer[1];
    EXPECT_THROW(Read(buffer, 1, file, "", 0), XFileIOError);
    EXPECT_EQ(temp.Bytes("a"), "12");
    EXPECT_EQ(log.Count(EMessageType::Error), 1);
}

TEST(Transfer, MacrosFillInThePlace) {
    const TempFolder temp;
    temp.Write("a", "");
    const LogCapture log;
    ToFile file(temp / "a", "rb", 0, false);
    char buffer[1] = "";
    EXPECT_THROW(KM_IO_WRITE(buffer, 1, file), XFileIOError);
    EXPECT_THROW(KM_IO_READ(buffer, 1, file), XFileIOError);
    EXPECT_EQ(log.Count(EMessageType::Error), 2);
    for (const std::string& error : log.Texts(EMessageType::Error)) {
        EXPECT_NE(error.find("ToFileTest.cpp\", line: "), std::string::npos);
        EXPECT_EQ(error.find("line: 0 "), std::string::npos);
    }
}

TEST(Transfer, IsTimed) {
    const TempFolder temp;
    PutFile(temp / "a", "1");
    ToFile file(temp / "a", "rb", 0, false);
    Get(file, 1);
    const LogCapture log;
    Time::AdditiveChronometer::DumpAll();
    std::string all;
    for (const std::string& line : log.Lines()) all += line + "\n";
    EXPECT_NE(all.find("Read"), std::string::npos) << all;
    EXPECT_NE(all.find("Write"), std::string::npos) << all;
}

}  // namespace
}  // namespace KM::IO
