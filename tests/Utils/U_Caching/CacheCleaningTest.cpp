#include "Utils/U_Caching/CacheCleaning.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "Support/CommaLocale.h"
#include "Support/InChild.h"
#include "Support/LogOn.h"
#include "Support/SignalDevice.h"
#include "Utils/U_Caching/CacheFolder.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_IO/ToFile.h"

namespace KM::Caching {
namespace {

namespace fs = std::filesystem;
using Test::CacheInfoBytes;
using Test::CommaLocale;
using Test::InChild;
using Test::LogOn;
using Test::SignalDevice;
using Test::TempFolder;
using Verbose::EMessageType;
using Texts = std::vector<std::string>;

constexpr std::uintmax_t Megabyte = 1048576;

class Cleaning : public Test::CacheFolder {
protected:
    Cleaning() { CleaningEnabled(true); }

    /// A file without contents on the disk, last used and last written at these seconds.
    void Make(const std::string& name, std::uintmax_t size, std::int64_t accessed, std::int64_t written = 1000) const {
        const std::string full = temp / "cache/" + name;
        temp.Write("cache/" + name, "");
        fs::resize_file(full, size);
        const timespec times[] = {{accessed, 0}, {written, 0}};
        ASSERT_EQ(utimensat(AT_FDCWD, full.c_str(), times, 0), 0);
    }

    /// The names in the cache folder, without the state file.
    Texts Left() const {
        Texts names;
        for (const fs::directory_entry& entry : fs::directory_iterator(temp / "cache"))
            if (entry.path().filename() != "Cache.Info") names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

    Texts Messages() const { return log.Texts(EMessageType::Info); }
};

TEST_F(Cleaning, DoesNothingUntilEnabled) {
    CleaningEnabled(false);
    CleaningSize(0.0);
    Make("a", 10, 1);
    Info(CacheInfoBytes(3, 1.0, 2.0, 3.0, 4.0));
    const std::string info = Info();
    CleanIfTooLarge();
    EXPECT_TRUE(log.Lines().empty());
    EXPECT_EQ(Left(), Texts{"a"});
    EXPECT_EQ(Info(), info);
    EXPECT_TRUE(InfoNeedsReading());
    EXPECT_EQ(LastAnalysisTime(), 0.0);
}

TEST_F(Cleaning, OfAFreshFolderWritesTheStateFile) {
    const double before = Time::Get();
    CleanIfTooLarge();
    EXPECT_EQ(Messages(), Texts{"Analyzing cache!"});
    EXPECT_GE(LastAnalysisTime(), before);
    EXPECT_LE(LastAnalysisTime(), Time::Get());
    EXPECT_EQ(Info(), CacheInfoBytes(4, 900.0, LastAnalysisTime(), 2000.0, 0.5));
    EXPECT_FALSE(InfoNeedsReading());
}

TEST_F(Cleaning, LogsInAScope) {
    Make("a", 3 * Megabyte, 1);
    CleanIfTooLarge();
    ASSERT_GE(log.Lines().size(), 4u);
    EXPECT_EQ(log.Lines()[0], "<CacheCleaning>");
    EXPECT_NE(log.Lines()[1].find("<Info>Analyzing cache!</Info>"), std::string::npos);
    EXPECT_EQ(log.Lines().back(), "</CacheCleaning>");
}

TEST_F(Cleaning, OfAMissingFolderMakesIt) {
    fs::remove(temp / "cache");
    CleanIfTooLarge();
    EXPECT_EQ(Messages(), Texts{"Analyzing cache!"});
    EXPECT_EQ(Info().size(), 36u);
}

TEST_F(Cleaning, WaitsForTheTimeBetweenTwoLooks) {
    Make("a", 10, 1);
    CleaningSize(0.0);
    for (const double age : {0.0, 800.0, -1e9}) {
        LastAnalysisTime(Time::Get() - age);
        CleanIfTooLarge();
        EXPECT_TRUE(log.Lines().empty());
        EXPECT_EQ(Left(), Texts{"a"});
        EXPECT_TRUE(Info().empty());
    }
    LastAnalysisTime(Time::Get() - 901.0);
    CleanIfTooLarge();
    EXPECT_TRUE(Left().empty());
}

TEST_F(Cleaning, RespectsTheLookOfAnEarlierProcess) {
    Make("a", 10, 1);
    const std::string info = CacheInfoBytes(4, 900.0, Time::Get() - 10.0, 0.0, 0.5);
    Info(info);
    CleanIfTooLarge();
    EXPECT_TRUE(log.Lines().empty());
    EXPECT_EQ(Left(), Texts{"a"});
    EXPECT_EQ(Info(), info);
    EXPECT_FALSE(InfoNeedsReading());
}

// The first line comes while the state file is replaced, which fails since nothing can be written.
TEST_F(Cleaning, LooksAtTheClockAfterTheStateFile) {
    Info(CacheInfoBytes(3, 0.0, 0.0, 0.0, 0.0));
    EXPECT_EQ(InChild([] {
                  signal(SIGXFSZ, SIG_IGN);
                  const rlimit nothing{0, 0};
                  setrlimit(RLIMIT_FSIZE, &nothing);
                  double told = 0.0;
                  SignalDevice device([&told] {
                      if (told != 0.0) return;
                      const double start = Time::Get();
                      do told = Time::Get();
                      while (told <= start);
                  });
                  const LogOn on(device);
                  CleanIfTooLarge();
                  const std::string order = LastAnalysisTime() >= told ? "after " : "before ";
                  for (const Verbose::LogRecord& record : Verbose::LogRecords())
                      if (record.label == "Error") return order + record.message;
                  return order;
              }),
              "after File: " + Path() + "Cache.Info could not be written and stays as it was!");
}

TEST_F(Cleaning, ReadsTheStateFileOnce) {
    CleanIfTooLarge();
    Info(CacheInfoBytes(4, 1.0, 2.0, 3.0, 0.25));
    CleanIfTooLarge();
    EXPECT_EQ(CleaningSize(), 2000.0);
    InfoNeedsReading(true);
    CleanIfTooLarge();
    EXPECT_EQ(CleaningSize(), 3.0);
}

TEST_F(Cleaning, DeletesTheOldestUntilTheFractionIsLeft) {
    Make("b", Megabyte, 100);
    Make("c", Megabyte, 200);
    Make("a", Megabyte, 300);
    CleaningSize(2.0);
    CleanIfTooLarge();
    EXPECT_EQ(Messages(), (Texts{"Analyzing cache!", "CacheSize: 3[Mb], Allowed: 2[Mb]", "Do cache cleaning!"}));
    EXPECT_EQ(Left(), Texts{"a"});
    EXPECT_EQ(Info().size(), 36u);
}

TEST_F(Cleaning, DeletesNothingWithinTheAllowedSize) {
    Make("a", Megabyte, 100);
    Make("b", Megabyte, 200);
    CleaningSize(2.0);
    CleanIfTooLarge();
    EXPECT_EQ(Messages(), (Texts{"Analyzing cache!", "CacheSize: 2[Mb], Allowed: 2[Mb]", "No action has been taken."}));
    EXPECT_EQ(Left(), (Texts{"a", "b"}));
}

TEST_F(Cleaning, CountsTheStateFile) {
    Make("a", Megabyte - 35, 100);
    InfoNeedsReading(false);
    Info(PresentInfo());
    CleaningSize(1.0);
    CleanIfTooLarge();
    EXPECT_EQ(Messages().back(), "Do cache cleaning!");
    EXPECT_TRUE(Left().empty());
    // One byte less, and it fits.
    Make("a", Megabyte - 36, 100);
    LastAnalysisTime(0.0);
    CleanIfTooLarge();
    EXPECT_EQ(Messages().back(), "No action has been taken.");
    EXPECT_EQ(Left(), Texts{"a"});
}

TEST_F(Cleaning, WithAFactorOfZeroDeletesAll) {
    Make("a", 10, 100);
    Make("b", 20, 200);
    Info(CacheInfoBytes(4, 900.0, 0.0, 0.0, 0.0));
    const fs::path name = temp / "cache/Cache.Info";
    fs::create_hard_link(name, temp / "witness");
    CleanIfTooLarge();
    EXPECT_TRUE(Left().empty());
    EXPECT_EQ(Info(), CacheInfoBytes(4, 900.0, LastAnalysisTime(), 0.0, 0.0));
    EXPECT_FALSE(fs::equivalent(name, temp / "witness"));
}

TEST_F(Cleaning, WithAFactorAboveOneDeletesNothingThatFits) {
    Make("a", 3 * Megabyte, 100);
    CleaningSize(2.0);
    DeleteFactor(1.5);
    CleanIfTooLarge();
    EXPECT_EQ(Messages().back(), "Do cache cleaning!");
    EXPECT_EQ(Left(), Texts{"a"});
}

TEST_F(Cleaning, WithoutLimitDeletesNothing) {
    CleaningSize(std::numeric_limits<double>::infinity());
    for (const double factor : {0.0, 0.5}) {
        Make("a", 10, 100);
        DeleteFactor(factor);
        LastAnalysisTime(0.0);
        CleanIfTooLarge();
        EXPECT_EQ(Messages().back(), "No action has been taken.");
        EXPECT_EQ(Left(), Texts{"a"});
    }
}

TEST_F(Cleaning, IsNotMisledByADamagedStateFile) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const std::string& damaged : {CacheInfoBytes(4, nan, nan, nan, nan), CacheInfoBytes(4, 0.0, 0.0, -1.0, 0.0),
                                       CacheInfoBytes(4, 0.0, 0.0, 0.0, nan), CacheInfoBytes(4, 0.0, -1e300, 0.0, 0.0),
                                       CacheInfoBytes(4, 0.0, 0.0, 0.0, 0.0).substr(0, 35)}) {
        Make("a", 10, 100);
        LastAnalysisTime(0.0);
        InfoNeedsReading(true);
        Info(damaged);
        CleanIfTooLarge();
        EXPECT_EQ(Left(), Texts{"a"});
        EXPECT_EQ(Info(), CacheInfoBytes(4, 900.0, LastAnalysisTime(), 2000.0, 0.5));
    }
}

TEST_F(Cleaning, TakesEachSizeInThirtyTwoBits) {
    Make("huge", (std::uintmax_t{1} << 32) + Megabyte, 100);
    CleaningSize(1.0);
    CleanIfTooLarge();
    EXPECT_EQ(Messages()[1], "CacheSize: 1[Mb], Allowed: 1[Mb]");
    EXPECT_EQ(Left(), Texts{"huge"});
}

TEST_F(Cleaning, TellsSizesWithAPointInEveryLocale) {
    const CommaLocale comma;
    Make("a", Megabyte * 5 / 4, 100);
    CleaningSize(1.5);
    CleanIfTooLarge();
    EXPECT_EQ(Messages()[1], "CacheSize: 1.25[Mb], Allowed: 1.5[Mb]");
}

TEST_F(Cleaning, GoesByTheTimeOfWritingIfThatOfUseIsUnknown) {
    Make("a", Megabyte, -1, 300);
    Make("b", Megabyte, 200, 100);
    Make("c", Megabyte, 100, 200);
    CleaningSize(2.0);
    CleanIfTooLarge();
    EXPECT_EQ(Left(), Texts{"a"});
}

TEST_F(Cleaning, GoesByTheTimeOfUseIfTheOldestIsKnown) {
    Make("a", Megabyte, -1, 300);
    Make("b", Megabyte, 200, 100);
    Make("c", Megabyte, -2, 200);
    CleaningSize(2.0);
    CleanIfTooLarge();
    EXPECT_EQ(Left(), Texts{"b"});
}

TEST_F(Cleaning, DeletesByTheExactName) {
    for (const char* name : {"*", "?", "back\\slash"}) Make(name, Megabyte, 100);
    Make("a", Megabyte, 200);
    CleaningSize(2.0);
    CleanIfTooLarge();
    EXPECT_EQ(Left(), Texts{"a"});
}

TEST_F(Cleaning, TouchesOnlyPlainFilesOfItsFolder) {
    const TempFolder other;
    other.Write("precious", "text");
    Make(".hidden", Megabyte, 1);
    fs::create_directory(temp / "cache/folder");
    temp.Write("cache/folder/inner", "text");
    fs::create_symlink(other / "precious", temp / "cache/link");
    fs::create_directory_symlink(other / "", temp / "cache/linked folder");
    ASSERT_EQ(mkfifo((temp / "cache/pipe").c_str(), 0600), 0);
    const Texts before = Left();
    Make("a", 10, 1);
    CleaningSize(0.0);
    CleanIfTooLarge();
    EXPECT_EQ(Messages().back(), "Do cache cleaning!");
    EXPECT_EQ(Left(), before);
    EXPECT_TRUE(temp.Has("cache/folder/inner"));
    EXPECT_EQ(other.Names(), Texts{"precious"});
}

TEST_F(Cleaning, KeepsWhatSomebodyIsWriting) {
    CleaningSize(0.0);
    DeleteFactor(0.0);
    {
        IO::ToFile file(temp / "cache/$result", "wb", 0, false);
        KM_IO_WRITE("whole", 5, file);
        std::fflush(file);
        CleanIfTooLarge();
        EXPECT_EQ(Messages().back(), "Do cache cleaning!");
    }
    EXPECT_EQ(temp.Bytes("cache/$result"), "whole");
    EXPECT_EQ(log.Count(EMessageType::Error), 0);
}

TEST_F(Cleaning, InTwoProcessesAtOnceDeletesAsMuchAsOne) {
    for (int i = 0; i < 100; ++i) Make(std::to_string(i), Megabyte, 1000 + i);
    CleaningSize(60.0);
    InfoNeedsReading(false);
    const pid_t other = fork();
    CleanIfTooLarge();
    if (other == 0) _exit(0);
    waitpid(other, nullptr, 0);
    // 30 Mb are allowed to stay; whoever counts the state file of the other one keeps one file less.
    const Texts left = Left();
    EXPECT_GE(left.size(), 29u);
    EXPECT_LE(left.size(), 30u);
    for (const std::string& name : left) EXPECT_GE(std::stoi(name), 70);
    EXPECT_EQ(Info().size(), 36u);
}

// The limits would allow any number of files, were the folders not refused.
TEST_F(Cleaning, RefusesTheRoot) {
    for (const char* root : {"/", "", "/tmp/.."}) {
        Path(root);
        CleaningSize(1e9);
        InfoNeedsReading(false);
        LastAnalysisTime(0.0);
        Verbose::ClearLog();
        CleanIfTooLarge();
        EXPECT_EQ(Messages().back(), "Analyzing cache!");
        EXPECT_EQ(log.Texts(EMessageType::Warning),
                  Texts{"The folder " + Path() + " is not cleaned: it is the root or the home folder."});
    }
}

TEST_F(Cleaning, RefusesTheHomeFolder) {
    fs::create_directory_symlink("cache", temp / "link");
    for (const char* home : {"cache", "link"}) {
        Make("a", 10, 1);
        Make("$b", 10, 1);
        const std::string warnings = InChild([&] {
            setenv("HOME", (temp / home).c_str(), 1);
            CleaningSize(0.0);
            DeleteFactor(0.0);
            CleanIfTooLarge();
            DeleteResults();
            return std::to_string(log.Count(EMessageType::Warning));
        });
        EXPECT_EQ(warnings, "2");
        EXPECT_EQ(Left(), (Texts{"$b", "a"}));
        EXPECT_TRUE(Info().empty());
    }
}

TEST_F(Cleaning, OfAllResultsTakesPlainFilesWithADollar) {
    const TempFolder other;
    other.Write("precious", "text");
    for (const char* name : {"$a.1.Data", "$", "$*", "b$", "Other"}) Make(name, 10, 1);
    fs::create_directory(temp / "cache/$folder");
    fs::create_symlink(other / "precious", temp / "cache/$link");
    CleaningEnabled(false);
    DeleteResults();
    EXPECT_EQ(Left(), (Texts{"$folder", "$link", "Other", "b$"}));
    EXPECT_EQ(other.Names(), Texts{"precious"});
    EXPECT_TRUE(log.Lines().empty());
}

}  // namespace
}  // namespace KM::Caching
