#include "Platform/OpenFolder.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "Support/InChild.h"
#include "Support/TempFolder.h"

namespace KM::Platform {
namespace {

namespace fs = std::filesystem;
using Test::InChild;
using Test::TempFolder;
using Names = std::vector<std::string>;

Names NamesOf(const OpenFolder& folder) {
    Names names;
    for (const PlainFile& file : folder.Files()) names.push_back(file.name);
    return names;
}

TEST(OpenFolder, ListsPlainFilesOnly) {
    const TempFolder temp;
    const TempFolder other;
    other.Write("target", "text");
    for (const char* name : {"b", "a", "*", "back\\slash", ".hidden"}) temp.Write(name, "123");
    fs::create_directory(temp / "folder");
    fs::create_symlink(other / "target", temp / "link");
    fs::create_symlink("nowhere", temp / "dangling");
    fs::create_directory_symlink(other / "", temp / "linked folder");
    ASSERT_EQ(mkfifo((temp / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(NamesOf(OpenFolder(temp / "")), (Names{"*", "a", "b", "back\\slash"}));
    EXPECT_EQ(OpenFolder(temp / "").Files()[0].size, 3u);
}

TEST(OpenFolder, TellsTheTimesAsExactlyAsTheyAreKept) {
    const TempFolder temp;
    temp.Write("a", "");
    const timespec times[] = {{-1, 0}, {5, 7}};
    ASSERT_EQ(utimensat(AT_FDCWD, (temp / "a").c_str(), times, 0), 0);
    const PlainFile file = OpenFolder(temp / "").Files().at(0);
    EXPECT_EQ(file.accessed, (FileMoment{-1, 0}));
    EXPECT_EQ(file.written, (FileMoment{5, 7}));
}

TEST(OpenFolder, ThatIsNoneHasNoFiles) {
    const TempFolder temp;
    temp.Write("file", "");
    for (const std::string& path : {temp / "missing", temp / "file", std::string(), std::string("\0/", 2)}) {
        const OpenFolder none(path);
        EXPECT_TRUE(none.Files().empty());
        EXPECT_FALSE(none.IsRoot());
        EXPECT_FALSE(none.IsHome());
        none.Remove({"file", 0, {}, {}, 0, 0});
    }
    EXPECT_TRUE(temp.Has("file"));
}

TEST(OpenFolder, DeletesTheExactName) {
    const TempFolder temp;
    for (const char* name : {"a", "ab", "*"}) temp.Write(name, "");
    const OpenFolder folder(temp / "");
    folder.Remove(folder.Files().at(0));
    EXPECT_EQ(temp.Names(), (Names{"a", "ab"}));
}

TEST(OpenFolder, DeletesWhatItMayNotRead) {
    const TempFolder temp;
    temp.Write("a", "");
    fs::permissions(temp / "a", fs::perms::none);
    const OpenFolder folder(temp / "");
    folder.Remove(folder.Files().at(0));
    EXPECT_TRUE(temp.Names().empty());
}

TEST(OpenFolder, StaysTheSameWhenItsPathLeadsElsewhere) {
    const TempFolder temp;
    const TempFolder other;
    fs::create_directory(temp / "cache");
    temp.Write("cache/a", "");
    other.Write("a", "");
    const OpenFolder folder(temp / "cache");
    const PlainFile file = folder.Files().at(0);
    fs::rename(temp / "cache", temp / "moved");
    fs::create_directory_symlink(other / "", temp / "cache");
    folder.Remove(file);
    EXPECT_TRUE(other.Has("a"));
    EXPECT_FALSE(temp.Has("moved/a"));
}

TEST(OpenFolder, KeepsWhatIsNoLongerTheListedFile) {
    const TempFolder temp;
    const TempFolder other;
    other.Write("a", "old");
    const auto replaceByFile = [&] {
        temp.Write("new", "new");
        fs::rename(temp / "new", temp / "a");
    };
    const auto replaceByLink = [&] {
        fs::remove(temp / "a");
        fs::create_symlink(other / "a", temp / "a");
    };
    const auto replaceByFolder = [&] {
        fs::remove(temp / "a");
        fs::create_directory(temp / "a");
    };
    const auto writeOn = [&] {
        const timespec times[] = {{0, UTIME_OMIT}, {5, 7}};
        ASSERT_EQ(utimensat(AT_FDCWD, (temp / "a").c_str(), times, 0), 0);
    };
    const std::function<void()> changes[] = {replaceByFile, replaceByLink, replaceByFolder, writeOn};
    for (const auto& change : changes) {
        fs::remove_all(temp / "a");
        temp.Write("a", "old");
        const OpenFolder folder(temp / "");
        const PlainFile file = folder.Files().at(0);
        change();
        folder.Remove(file);
        EXPECT_TRUE(temp.Has("a"));
        EXPECT_TRUE(other.Has("a"));
    }
}

TEST(OpenFolder, KeepsWhatSomebodyIsWriting) {
    const TempFolder temp;
    temp.Write("a", "");
    const OpenFolder folder(temp / "");
    const PlainFile file = folder.Files().at(0);
    const int writer = open((temp / "a").c_str(), O_WRONLY | O_CLOEXEC);
    ASSERT_EQ(flock(writer, LOCK_EX), 0);
    folder.Remove(file);
    EXPECT_TRUE(temp.Has("a"));
    close(writer);
    folder.Remove(file);
    EXPECT_FALSE(temp.Has("a"));
}

TEST(OpenFolder, KnowsTheRootByWhateverPath) {
    const TempFolder temp;
    fs::create_directory_symlink("/", temp / "link");
    for (const std::string& path : {std::string("/"), std::string("\\"), std::string("/tmp/.."), temp / "link"})
        EXPECT_TRUE(OpenFolder(path).IsRoot()) << path;
    EXPECT_FALSE(OpenFolder(temp / "").IsRoot());
}

TEST(OpenFolder, KnowsTheHomeByWhateverPath) {
    const TempFolder temp;
    fs::create_directory(temp / "home");
    fs::create_directory_symlink("home", temp / "link");
    const auto isHome = [&](const char* home, const std::string& path) {
        return InChild([&] {
            setenv("HOME", home, 1);
            return std::string(OpenFolder(path).IsHome() ? "home" : "another");
        });
    };
    EXPECT_EQ(isHome((temp / "home").c_str(), temp / "home"), "home");
    EXPECT_EQ(isHome((temp / "home").c_str(), temp / "link"), "home");
    EXPECT_EQ(isHome((temp / "link").c_str(), temp / "home/../home/"), "home");
    EXPECT_EQ(isHome((temp / "home").c_str(), temp / ""), "another");
    EXPECT_EQ(isHome("", temp / ""), "another");
}

}  // namespace
}  // namespace KM::Platform
