#include "Utils/U_IO/Processes.h"

#include <gtest/gtest.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <filesystem>

#include "Support/LogCapture.h"
#include "Support/TempFolder.h"
#include "Utils/U_IO/ToFile.h"

namespace KM::IO {
namespace {

namespace fs = std::filesystem;
using Test::LogCapture;
using Test::TempFolder;
using Texts = std::vector<std::string>;
using Verbose::EMessageType;

TEST(Execute, GivesTheExitCode) {
    EXPECT_EQ(Execute("true", "", 0), 0);
    EXPECT_EQ(Execute("sh", "-c \"exit 7\"", 0), 7);
    EXPECT_EQ(Execute("/bin/sh", "-c \"exit 255\"", 1), 255);
    EXPECT_EQ(Execute("\\bin\\sh", "-c \"exit 3\"", -1), 3);
}

TEST(Execute, GivesTheSignalThatEndedIt) { EXPECT_EQ(Execute("sh", "-c \"kill -9 $$\"", 0), 128 + 9); }

TEST(Execute, IsMinusOneWhereNothingStarts) {
    const TempFolder temp;
    temp.Write("text", "exit 0");
    const std::string names[] = {"",
                                 temp / "no",
                                 temp / "text",
                                 temp / "",
                                 "no-such-program",
                                 std::string("tr\0ue", 5),
                                 std::string(100'000, 'a')};
    for (const std::string& name : names) EXPECT_EQ(Execute(name, "", 0), -1) << name.substr(0, 40);
    EXPECT_EQ(Execute("true", std::string("a\0b", 3), 0), -1);
    EXPECT_EQ(Execute("true", std::string(10'000'000, 'a'), 0), -1) << "more than the system takes";
}

TEST(Execute, WaitsForTheEnd) {
    const TempFolder temp;
    EXPECT_EQ(Execute("sh", "-c \"sleep 0.1; echo done > " + temp / "out" + "\"", 0), 0);
    EXPECT_EQ(temp.Bytes("out"), "done\n");
}

// A program that writes its arguments one a line.
std::string Written(const TempFolder& temp, const std::string& arguments) {
    temp.Write("show", "#!/bin/sh\nfor a in \"$@\"; do printf '[%s]\\n' \"$a\"; done > '" + temp / "out" + "'\n");
    fs::permissions(temp / "show", fs::perms{0700});
    EXPECT_EQ(Execute(temp / "show", arguments, 0), 0);
    return temp.Bytes("out");
}

TEST(Execute, SplitsArgumentsAtBlanks) {
    const TempFolder temp;
    const struct {
        const char *arguments, *words;
    } rows[] = {
        {"", ""},
        {"  ", ""},
        {"a", "[a]\n"},
        {"a  b\tc ", "[a]\n[b]\n[c]\n"},
        {"\"a b\" c", "[a b]\n[c]\n"},
        {"\"\"", "[]\n"},
        {"a\"b c\"d", "[ab cd]\n"},
        {"\"a b", "[a b]\n"},
        {"* $HOME `ls` ; 'a b'", "[*]\n[$HOME]\n[`ls`]\n[;]\n['a]\n[b']\n"},
        {"C:\\a\\", "[C:\\a\\]\n"},
    };
    for (const auto& row : rows) EXPECT_EQ(Written(temp, row.arguments), row.words) << row.arguments;
}

TEST(Execute, HandsOverAListOfWordsAsItIs) {
    const TempFolder temp;
    Written(temp, "");
    const std::vector<std::string> words{"a b", "\"c\"", "", "*"};
    EXPECT_EQ(Execute(temp / "show", words, 0), 0);
    EXPECT_EQ(temp.Bytes("out"), "[a b]\n[\"c\"]\n[]\n[*]\n");
}

TEST(Execute, ChildrenDoNotInheritOpenFiles) {
    const TempFolder temp;
    ToFile written(temp / "w", "wb", 0, false);
    ToFile appended(temp / "a", "ab", 0, false);
    Execute("sh", "-c \"ls -l /proc/self/fd > " + temp / "out" + "\"", 0);
    EXPECT_EQ(temp.Bytes("out").find("/w.tmp"), std::string::npos) << temp.Bytes("out");
    EXPECT_EQ(temp.Bytes("out").find(temp / "a"), std::string::npos) << temp.Bytes("out");
}

TEST(MonitoredSpawn, WatchesTheProgram) {
    const LogCapture log;
    const MonitoredSpawnStatistics seen = MonitoredSpawn("sh", "-c \"sleep 0.2; exit 5\"");
    EXPECT_EQ(seen.exitCode, 5);
    EXPECT_GE(seen.elapsed, 0.19);
    EXPECT_GE(seen.memoryUsed, 0);
    EXPECT_EQ(log.Texts(EMessageType::Info), Texts{"CommandLine is: sh -c \"sleep 0.2; exit 5\""});
    EXPECT_EQ(log.Lines().size(), 1u);
}

TEST(MonitoredSpawn, ThatCannotStartIsAnError) {
    const LogCapture log;
    const MonitoredSpawnStatistics seen = MonitoredSpawn("no-such-program", "a b");
    EXPECT_EQ(seen.exitCode, -1);
    EXPECT_EQ(seen.elapsed, -1.0);
    EXPECT_EQ(seen.memoryUsed, -1);
    EXPECT_EQ(log.Texts(EMessageType::Info), Texts{"CommandLine is: no-such-program a b"});
    EXPECT_EQ(log.Texts(EMessageType::Error), Texts{"In CreateProcess executing command: \"no-such-program a b\""});
}

TEST(MemoryStatus, IsOfThisMachine) {
    const MemoryStatus memory;
    const long long megabytes = static_cast<long long>(sysconf(_SC_PHYS_PAGES)) * sysconf(_SC_PAGESIZE) >> 20;
    EXPECT_NEAR(static_cast<double>(memory.totalPhysical), static_cast<double>(megabytes), 1.0);
    EXPECT_GT(memory.availablePhysical, 0);
    EXPECT_LE(memory.availablePhysical, memory.totalPhysical);
    EXPECT_GE(memory.totalPageFile, memory.totalPhysical);
    EXPECT_GE(memory.availablePageFile, memory.availablePhysical);
    EXPECT_LE(memory.availablePageFile, memory.totalPageFile);
    EXPECT_GE(memory.availableVirtual, 0);
    EXPECT_LE(memory.availableVirtual, memory.totalVirtual);
    EXPECT_NEAR(memory.memoryLoad, 100.0 - 100.0 * memory.availablePhysical / memory.totalPhysical, 1.0);
}

TEST(Disk, IsInBytes) {
    const TempFolder temp;
    struct statvfs status {};
    ASSERT_EQ(statvfs((temp / "").c_str(), &status), 0);
    const double block = static_cast<double>(status.f_frsize);
    std::string name = temp / "";
    name[0] = '\\';
    EXPECT_EQ(Disk::Total(name), static_cast<double>(status.f_blocks) * block);
    // Others write on this disk meanwhile.
    EXPECT_NEAR(Disk::Free(name), static_cast<double>(status.f_bfree) * block, 5e9);
    EXPECT_NEAR(Disk::UserFree(name), static_cast<double>(status.f_bavail) * block, 5e9);
    EXPECT_GT(Disk::Free(name), 0.0);
    EXPECT_LE(Disk::UserFree(name), Disk::Total(name));
}

TEST(Disk, IsZeroWithoutAPath) {
    for (const std::string& path : {std::string(), std::string("/no/such/folder"), std::string("/\0", 2)}) {
        EXPECT_EQ(Disk::Free(path), 0.0);
        EXPECT_EQ(Disk::UserFree(path), 0.0);
        EXPECT_EQ(Disk::Total(path), 0.0);
    }
}

}  // namespace
}  // namespace KM::IO
