#include "Platform/Files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "Support/TempFolder.h"

namespace KM::Platform {
namespace {

namespace fs = std::filesystem;
using Test::TempFolder;

TEST(LiesWithin, GoesByWhereNamesLead) {
    const TempFolder temp;
    const TempFolder other;
    fs::create_directories(temp / "cache/inner/deep");
    fs::create_directory(temp / "cache 2");
    fs::create_directory_symlink(other / "", temp / "cache/out");
    fs::create_directory_symlink(temp / "cache/inner", other / "in");
    const std::string cache = temp / "cache/";
    for (const char* inside : {"cache", "cache/", "cache\\inner\\", "cache/inner/deep", "cache/inner/../.././cache"})
        EXPECT_TRUE(LiesWithin(temp / inside, cache)) << inside;
    EXPECT_TRUE(LiesWithin(other / "in/deep", cache));
    for (const char* outside : {"", "cache 2/", "cache/..", "cache/inner/../..", "cache/out", "cache/out/.."})
        EXPECT_FALSE(LiesWithin(temp / outside, cache)) << outside;
    EXPECT_TRUE(LiesWithin(cache, "/"));
}

TEST(LiesWithin, IsFalseForWhatIsNotThere) {
    const TempFolder temp;
    EXPECT_FALSE(LiesWithin(temp / "missing", temp / ""));
    EXPECT_FALSE(LiesWithin(temp / "", temp / "missing"));
    EXPECT_FALSE(LiesWithin("", temp / ""));
    EXPECT_FALSE(LiesWithin(std::string("/\0", 2), "/"));
}

}  // namespace
}  // namespace KM::Platform
