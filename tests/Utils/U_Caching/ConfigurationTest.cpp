#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "Support/SettingKept.h"
#include "Utils/U_Caching/CacheFolder.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_IO/FileNames.h"

namespace KM::Caching {
namespace {

namespace fs = std::filesystem;
using Test::CacheInfoBytes;
using Test::SettingKept;
using Verbose::EMessageType;
using Texts = std::vector<std::string>;

class Configuration : public Test::CacheFolder {
protected:
    void Set(const std::string& key, const std::string& value) {
        kept_.push_back(std::make_unique<SettingKept>("Cache." + key, value));
    }

private:
    std::vector<std::unique_ptr<SettingKept>> kept_;
};

TEST_F(Configuration, TakesTheRegisteredDefaults) {
    const std::string path = Path();
    ConfigureFromSettings();
    EXPECT_EQ(ColorForWriting(), 0);
    EXPECT_EQ(ColorForReading(), 0);
    EXPECT_EQ(Path(), path);
    EXPECT_EQ(PersistentTime(), 1.0);
    EXPECT_TRUE(CleaningEnabled());
    EXPECT_TRUE(InfoNeedsReading());
    EXPECT_EQ(Info(), CacheInfoBytes(4, 3600.0, 0.0, 5000.0, 0.5));
    EXPECT_EQ(PresentInfo(), Info());
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(Configuration, TakesEachSetting) {
    Set("Create", "4");
    Set("Reuse", "2");
    Set("Folder", temp / "another /cache");
    Set("IsPersistableProcessingTime", "7");
    Set("Cleaning.Enabled", "N");
    Set("Cleaning.Size", "12.5");
    Set("Cleaning.DeleteFactor", "0.25");
    Set("Cleaning.TimeBetweenAnalysis", "60");
    ConfigureFromSettings();
    EXPECT_EQ(ColorForWriting(), 4);
    EXPECT_EQ(ColorForReading(), 2);
    EXPECT_EQ(Path(), IO::ValidateFileName(temp / "another/cache"));
    EXPECT_EQ(PersistentTime(), 7.0);
    EXPECT_FALSE(CleaningEnabled());
    EXPECT_EQ(temp.Bytes("another/cache/Cache.Info"), CacheInfoBytes(4, 60.0, 0.0, 12.5, 0.25));
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(Configuration, KeepsTheTimeOfTheLastLook) {
    const double last = Time::Get() - 100.0;
    Info(CacheInfoBytes(4, 1.0, last, 2.0, 0.75));
    ConfigureFromSettings();
    EXPECT_EQ(Info(), CacheInfoBytes(4, 3600.0, last, 5000.0, 0.5));
    EXPECT_EQ(LastAnalysisTime(), last);
}

TEST_F(Configuration, ReplacesAStateFileOfAnotherFormat) {
    Info(CacheInfoBytes(3, 1.0, 7.0, 2.0, 0.75));
    ConfigureFromSettings();
    EXPECT_EQ(Info(), CacheInfoBytes(4, 3600.0, 0.0, 5000.0, 0.5));
}

TEST_F(Configuration, KeepsTheLimitsForNumbersThatCannotBeMeant) {
    for (const char* wrong : {"-1", "nan", "-inf"}) {
        Set("Cleaning.Size", wrong);
        Set("Cleaning.DeleteFactor", wrong);
        ConfigureFromSettings();
        EXPECT_EQ(CleaningSize(), 2000.0);
        EXPECT_EQ(DeleteFactor(), 0.5);
    }
}

TEST_F(Configuration, KeepsTheFolderForTheOneThatIsUsualElsewhere) {
    const std::string path = Path();
    for (const char* folder : {"", "C:/TMP/Cache/"}) {
        Set("Folder", folder);
        ConfigureFromSettings();
        EXPECT_EQ(Path(), path);
    }
    EXPECT_FALSE(fs::exists("C:"));
}

TEST_F(Configuration, MakesTheFolderThatItKeeps) {
    fs::remove(temp / "cache");
    ConfigureFromSettings();
    EXPECT_EQ(Info(), PresentInfo());
    EXPECT_TRUE(log.Lines().empty());
}

TEST_F(Configuration, TellsThatTheFolderCannotBeUsed) {
    temp.Write("file", "");
    Set("Folder", temp / "file/below");
    ConfigureFromSettings();
    const std::string failure = "File: Cache.Info can't be oppened!";
    EXPECT_EQ(log.Texts(EMessageType::Error), (Texts{failure, failure}));
    EXPECT_TRUE(CleaningEnabled());
}

TEST_F(Configuration, DeletesAllResultsOnlyIfAskedTo) {
    for (const char* name : {"cache/$a.1.Data", "cache/$b.2.Info", "cache/other"}) temp.Write(name, "text");
    ConfigureFromSettings();
    EXPECT_TRUE(temp.Has("cache/$a.1.Data"));
    Set("Cleaning.PreClean", "Y");
    ConfigureFromSettings();
    EXPECT_FALSE(temp.Has("cache/$a.1.Data"));
    EXPECT_FALSE(temp.Has("cache/$b.2.Info"));
    EXPECT_TRUE(temp.Has("cache/other"));
    EXPECT_TRUE(temp.Has("cache/Cache.Info"));
}

}  // namespace
}  // namespace KM::Caching
