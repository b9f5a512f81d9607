#include "CacheFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "Support/TempFolder.h"

namespace KM::Tool {
namespace {

namespace fs = std::filesystem;
using Test::TempFolder;

const std::string Text = "levels of /home/me/a part.stl";
const std::string Data("data with a zero \0 in it", 24);

TEST(CacheFile, ComesBackAsItWasWritten) {
    const TempFolder folder;
    const std::string name = folder / "$a.key.Data";
    for (const std::string& data : {Data, std::string(), std::string(100'000, 'x')}) {
        ASSERT_TRUE(WriteCacheFile(name, Text, data));
        const CacheFile file = ReadCacheFile(name);
        EXPECT_EQ(file.fault, "");
        EXPECT_EQ(file.madeFrom, Text);
        EXPECT_EQ(file.data, data);
        EXPECT_EQ(ReadCacheHead(name).madeFrom, Text);
        EXPECT_EQ(ReadCacheHead(name).data, "");
    }
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"$a.key.Data"});
}

TEST(CacheFile, HasTheFormThatItsHeaderTells) {
    const TempFolder folder;
    ASSERT_TRUE(WriteCacheFile(folder / "a", "ab", "xyz"));
    // The checksum was worked out apart from this code, by the published definition.
    EXPECT_EQ(folder.Bytes("a"), std::string("KMRESULT\x01\0\0\0\x02\0\0\0\x03\0\0\0\0\0\0\0"
                                             "\x52\xe8\xd6\xa0\xc6\xb1\xc9\xeb"
                                             "abxyz",
                                             37));
}

TEST(CacheFile, IsRefusedWithAnyByteChanged) {
    const TempFolder folder;
    ASSERT_TRUE(WriteCacheFile(folder / "a", Text, Data));
    const std::string sound = folder.Bytes("a");
    for (std::size_t i = 0; i < sound.size(); ++i) {
        for (const int bits : {1, 128, 255}) {
            SCOPED_TRACE(testing::Message() << "byte " << i << " bits " << bits);
            std::string damaged = sound;
            damaged[i] = static_cast<char>(damaged[i] ^ bits);
            folder.Write("a", damaged);
            const CacheFile file = ReadCacheFile(folder / "a");
            EXPECT_NE(file.fault, "");
            EXPECT_EQ(file.madeFrom + file.data, "");
        }
    }
}

TEST(CacheFile, IsRefusedCutShortOrTooLong) {
    const TempFolder folder;
    ASSERT_TRUE(WriteCacheFile(folder / "a", Text, Data));
    const std::string sound = folder.Bytes("a");
    for (std::size_t size = 0; size < sound.size(); ++size) {
        folder.Write("a", sound.substr(0, size));
        EXPECT_NE(ReadCacheFile(folder / "a").fault, "") << size;
        EXPECT_NE(ReadCacheHead(folder / "a").fault, "") << size;
    }
    folder.Write("a", sound + '\0');
    EXPECT_EQ(ReadCacheFile(folder / "a").fault, "is cut short or too long");
}

TEST(CacheFile, ReservesNothingForLengthsThatCannotBe) {
    const TempFolder folder;
    folder.Write("a", "KMRESULT" + std::string("\1\0\0\0", 4) + std::string(20, '\xff') + "rest");
    EXPECT_EQ(ReadCacheFile(folder / "a").fault, "is cut short or too long");
}

TEST(CacheFile, IsAPlainFile) {
    const TempFolder folder;
    fs::create_directory(folder / "folder");
    ASSERT_TRUE(WriteCacheFile(folder / "a", Text, Data));
    fs::create_symlink(folder / "a", folder / "link");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    for (const char* name : {"folder", "link", "pipe"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(ReadCacheFile(folder / name).fault, "is no plain file");
        EXPECT_FALSE(WriteCacheFile(folder / name, Text, Data));
    }
    EXPECT_EQ(ReadCacheFile(folder / "none").fault, "is no plain file");
    EXPECT_EQ(ReadCacheFile(folder / "a").fault, "");
}

TEST(CacheFile, CannotBeWrittenBelowAFile) {
    const TempFolder folder;
    folder.Write("a", "file");
    EXPECT_FALSE(WriteCacheFile(folder / "a/b", Text, Data));
    EXPECT_EQ(folder.Bytes("a"), "file");
}

}  // namespace
}  // namespace KM::Tool
