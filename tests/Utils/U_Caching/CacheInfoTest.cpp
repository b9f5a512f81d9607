#include "Utils/U_Caching/CacheInfo.h"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <limits>
#include <string>
#include <vector>

#include "Utils/U_Caching/CacheFolder.h"

namespace KM::Caching {
namespace {

namespace fs = std::filesystem;
using Test::CacheInfoBytes;
using Test::TempFolder;
using Verbose::EMessageType;
using Texts = std::vector<std::string>;

constexpr double NaN = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();
const Texts CannotBeOpened = {"File: Cache.Info can't be oppened!"};

class CacheInfo : public Test::CacheFolder {};

TEST_F(CacheInfo, IsWrittenByteForByte) {
    LastAnalysisTime(1.0);
    WriteCacheInfo();
    const unsigned char expected[36] = {4, 0, 0, 0,                        // format
                                        0, 0, 0, 0, 0, 0x20, 0x8C, 0x40,   // 900
                                        0, 0, 0, 0, 0, 0,    0xF0, 0x3F,   // 1
                                        0, 0, 0, 0, 0, 0x40, 0x9F, 0x40,   // 2000
                                        0, 0, 0, 0, 0, 0,    0xE0, 0x3F};  // 0.5
    EXPECT_EQ(Info(), std::string(reinterpret_cast<const char*>(expected), sizeof expected));
    EXPECT_EQ(temp.Names(), Texts{"cache"});
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(CacheInfo, IsReadInTheSameOrder) {
    const std::string bytes = CacheInfoBytes(4, 11.25, 1e9, 33.5, 0.75);
    Info(bytes);
    ReadCacheInfo();
    EXPECT_EQ(TimeBetweenAnalysis(), 11.25);
    EXPECT_EQ(LastAnalysisTime(), 1e9);
    EXPECT_EQ(CleaningSize(), 33.5);
    EXPECT_EQ(DeleteFactor(), 0.75);
    EXPECT_EQ(Info(), bytes);
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(CacheInfo, ThatIsMissingChangesNothing) {
    const std::string before = PresentInfo();
    ReadCacheInfo();
    EXPECT_EQ(PresentInfo(), before);
    EXPECT_TRUE(temp.Names() == Texts{"cache"} && fs::is_empty(temp / "cache"));
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(CacheInfo, OfAnotherFormatIsReplaced) {
    for (const std::uint32_t format : {0u, 3u, 5u, 0x04000000u, 0xFFFFFFFFu}) {
        SCOPED_TRACE(format);
        Info(CacheInfoBytes(format, 1.0, 2.0, 3.0, 4.0));
        ReadCacheInfo();
        EXPECT_EQ(Info(), CacheInfoBytes(4, 900.0, 0.0, 2000.0, 0.5));
        EXPECT_EQ(PresentInfo(), Info());
    }
}

TEST_F(CacheInfo, ThatIsCutOffIsReplaced) {
    const std::string whole = CacheInfoBytes(4, 1.0, 2.0, 3.0, 4.0);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        SCOPED_TRACE(length);
        Info(whole.substr(0, length));
        ReadCacheInfo();
        EXPECT_EQ(Info(), CacheInfoBytes(4, 900.0, 0.0, 2000.0, 0.5));
        EXPECT_EQ(PresentInfo(), Info());
    }
}

TEST_F(CacheInfo, ThatIsTooLongIsTaken) {
    const std::string bytes = CacheInfoBytes(4, 1.0, 2.0, 3.0, 4.0) + "more";
    Info(bytes);
    ReadCacheInfo();
    EXPECT_EQ(PresentInfo() + "more", bytes);
    EXPECT_EQ(Info(), bytes);
}

TEST_F(CacheInfo, WithOneDamagedValueIsReplaced) {
    const struct {
        double between, last, size, factor;
    } damaged[] = {{NaN, 2, 3, 4},      {-Infinity, 2, 3, 4}, {-1e19, 2, 3, 4}, {1, NaN, 3, 4},
                   {1, 1e300, 3, 4},    {1, -Infinity, 3, 4}, {1, 2, NaN, 4},   {1, 2, -3, 4},
                   {1, 2, -1e-300, 4},  {1, 2, -Infinity, 4}, {1, 2, 3, NaN},   {1, 2, 3, -0.5},
                   {1, 2, 3, -Infinity}};
    for (const auto& d : damaged) {
        SCOPED_TRACE(testing::Message() << d.between << ' ' << d.last << ' ' << d.size << ' ' << d.factor);
        Info(CacheInfoBytes(4, d.between, d.last, d.size, d.factor));
        ReadCacheInfo();
        EXPECT_EQ(Info(), CacheInfoBytes(4, 900.0, 0.0, 2000.0, 0.5));
        EXPECT_EQ(PresentInfo(), Info());
    }
}

TEST_F(CacheInfo, TakesTheLastValuesThatCanBeMeant) {
    const std::string bytes = CacheInfoBytes(4, Infinity, 1e19, Infinity, 0.0);
    Info(bytes);
    ReadCacheInfo();
    EXPECT_EQ(PresentInfo(), bytes);
}

TEST_F(CacheInfo, MakesItsFolderWithAWarning) {
    fs::remove(temp / "cache");
    WriteCacheInfo();
    EXPECT_EQ(Info(), PresentInfo());
    EXPECT_EQ(log.Texts(EMessageType::Warning),
              Texts{"The desired path for: " + Path() + "Cache.Info file. Wasn't found and was created."});
    EXPECT_EQ(log.Lines().size(), 1u);
}

TEST_F(CacheInfo, ThatCannotBeWrittenIsTold) {
    temp.Write("file", "");
    Path(temp / "file/below");
    WriteCacheInfo();
    EXPECT_EQ(log.Texts(EMessageType::Error), CannotBeOpened);
}

// A pipe would keep the process waiting for its other end.
TEST_F(CacheInfo, ThatIsNoFileIsLeftAlone) {
    const std::string before = PresentInfo();
    const std::string name = temp / "cache/Cache.Info";
    fs::create_directory(name);
    for (const bool isPipe : {false, true}) {
        if (isPipe) {
            fs::remove(name);
            ASSERT_EQ(mkfifo(name.c_str(), 0600), 0);
        }
        Verbose::ClearLog();
        ReadCacheInfo();
        EXPECT_EQ(log.Count(EMessageType::Warning) + log.Count(EMessageType::Error), 0);
        WriteCacheInfo();
        EXPECT_EQ(log.Texts(EMessageType::Error), CannotBeOpened);
        EXPECT_EQ(PresentInfo(), before);
        EXPECT_FALSE(fs::is_regular_file(name));
    }
}

TEST_F(CacheInfo, ThatIsALinkIsReplacedAndItsTargetStays) {
    const TempFolder other;
    other.Write("precious", "text");
    for (const char* target : {"precious", "missing"}) {
        fs::remove(temp / "cache/Cache.Info");
        fs::create_symlink(other / target, temp / "cache/Cache.Info");
        WriteCacheInfo();
        EXPECT_EQ(Info(), PresentInfo());
        EXPECT_FALSE(fs::is_symlink(temp / "cache/Cache.Info"));
    }
    EXPECT_EQ(other.Bytes("precious"), "text");
    EXPECT_EQ(other.Names(), Texts{"precious"});
}

TEST_F(CacheInfo, IsReadWholeWhileAnotherProcessWritesIt) {
    Info(CacheInfoBytes(4, 1.0, 1.0, 1.0, 1.0));
    const pid_t writer = fork();
    if (writer == 0) {
        for (double value = 1.0; value < 300.0; value += 1.0) {
            TimeBetweenAnalysis(value);
            LastAnalysisTime(value);
            CleaningSize(value);
            DeleteFactor(value);
            WriteCacheInfo();
        }
        _exit(0);
    }
    do {
        ReadCacheInfo();
        const double value = DeleteFactor();
        EXPECT_EQ(PresentInfo(), CacheInfoBytes(4, value, value, value, value));
    } while (waitpid(writer, nullptr, WNOHANG) == 0);
    EXPECT_EQ(Info(), CacheInfoBytes(4, 299.0, 299.0, 299.0, 299.0));
    EXPECT_TRUE(log.Lines().empty());
}

}  // namespace
}  // namespace KM::Caching
