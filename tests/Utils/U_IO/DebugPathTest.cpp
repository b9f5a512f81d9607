#include "Utils/U_IO/DebugPath.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "Support/InChild.h"
#include "Support/TempFolder.h"
#include "Utils/U_IO/FileNames.h"
#include "Utils/U_Settings/Settings.h"

namespace KM {
namespace {

namespace fs = std::filesystem;
using Test::InChild;
using Test::TempFolder;

// What a process finds that has just started, with these variables and this setting.
std::string FirstPath(const char* cache, const std::string& home, const char* setting) {
    return InChild([&] {
        if (cache != nullptr)
            setenv("XDG_CACHE_HOME", cache, 1);
        else
            unsetenv("XDG_CACHE_HOME");
        setenv("HOME", home.c_str(), 1);
        if (setting != nullptr) Settings::ToXMLElement("Debug.Path").V(setting);
        return Debug::Path();
    });
}

TEST(DebugPath, LiesInTheCacheOfTheUserUnlessSet) {
    for (const char* setting : {static_cast<const char*>(nullptr), "", "D:/HS/Output/"}) {
        const TempFolder temp;
        const std::string cache = temp / "cache";
        EXPECT_EQ(FirstPath(cache.c_str(), temp / "home", setting), IO::ValidateFileName(cache + "/km/Output"));
        EXPECT_TRUE(fs::is_directory(temp / "cache/km/Output"));
        EXPECT_FALSE(temp.Has("home"));
    }
}

TEST(DebugPath, WithoutCacheLiesInTheHomeOfTheUser) {
    const TempFolder temp;
    for (const char* cache : {static_cast<const char*>(nullptr), "", "relative/cache"}) {
        EXPECT_EQ(FirstPath(cache, temp / "home", nullptr), IO::ValidateFileName(temp / "home/.cache/km/Output"));
        EXPECT_TRUE(fs::is_directory(temp / "home/.cache/km/Output"));
        EXPECT_FALSE(fs::exists("relative"));
    }
}

TEST(DebugPath, ComesFromTheSetting) {
    const TempFolder temp;
    EXPECT_EQ(FirstPath(nullptr, temp / "home", (temp / "a b/c").c_str()), IO::ValidateFileName(temp / "a b/c"));
    EXPECT_TRUE(fs::is_directory(temp / "a b/c"));
    EXPECT_FALSE(temp.Has("home"));
}

TEST(DebugPath, IsTakenFromTheSettingOnce) {
    const TempFolder temp;
    EXPECT_EQ(InChild([&] {
                  Settings::ToXMLElement("Debug.Path").V(temp / "first");
                  Debug::Path();
                  Settings::ToXMLElement("Debug.Path").V(temp / "second");
                  return Debug::Path();
              }),
              IO::ValidateFileName(temp / "first"));
    EXPECT_FALSE(temp.Has("second"));
}

TEST(DebugPath, CanBeSet) {
    const TempFolder temp;
    EXPECT_EQ(InChild([&] {
                  Debug::Path(temp / "x /y");
                  return Debug::Path();
              }),
              IO::ValidateFileName(temp / "x/y"));
    EXPECT_TRUE(fs::is_directory(temp / "x/y"));
}

TEST(DebugPath, ThatCannotBeMadeIsKept) {
    const TempFolder temp;
    temp.Write("file", "");
    EXPECT_EQ(InChild([&] {
                  Debug::Path(temp / "file/a");
                  return Debug::Path();
              }),
              IO::ValidateFileName(temp / "file/a"));
}

}  // namespace
}  // namespace KM
