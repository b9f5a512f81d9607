#include "OutputFile.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>

#include "Failure.h"
#include "Support/InChild.h"
#include "Support/TempFolder.h"
#include "ToolRun.h"

namespace KM::Tool {
namespace {

using namespace Test;
namespace fs = std::filesystem;
using Names = std::vector<std::string>;

std::string FaultOf(const std::string& name) {
    try {
        OutputFile(name).Write("new");
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "";
}

TEST(OutputFile, AppearsWhenItIsWholeAndNotBefore) {
    const TempFolder folder;
    OutputFile file(folder / "a/b/out.txt");
    EXPECT_TRUE(folder.Has("a/b"));
    EXPECT_FALSE(folder.Has("a/b/out.txt"));
    file.Write("text");
    EXPECT_EQ(folder.Bytes("a/b/out.txt"), "text");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder / "a/b"), fs::directory_iterator()), 1);
}

TEST(OutputFile, LeavesNothingWithoutCommit) {
    const TempFolder folder;
    folder.Write("old", "old");
    {
        const OutputFile file(folder / "old");
        const OutputFile other(folder / "sub/other");
        EXPECT_EQ(folder.Names().size(), 3u);
    }
    EXPECT_EQ(folder.Names(), (Names{"old", "sub"}));
    EXPECT_EQ(folder.Bytes("old"), "old");
}

TEST(OutputFile, FollowsLinksAndKeepsPermissions) {
    const TempFolder folder;
    folder.Write("target", "old");
    chmod((folder / "target").c_str(), 0640);
    fs::create_symlink("target", folder / "link");
    OutputFile(folder / "link").Write("new");
    EXPECT_EQ(folder.Bytes("target"), "new");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
    EXPECT_EQ(fs::status(folder / "target").permissions(), fs::perms(0640));
    EXPECT_EQ(folder.Names(), (Names{"link", "target"}));
}

TEST(OutputFile, RefusesWhatIsNoPlainFile) {
    const TempFolder folder;
    fs::create_directory(folder / "sub");
    folder.Write("plain", "");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    EXPECT_EQ(FaultOf(folder / "sub"), (folder / "sub") + ": cannot be written: it is a folder");
    EXPECT_EQ(FaultOf(folder / "pipe"), (folder / "pipe") + ": cannot be written: it is no plain file");
    EXPECT_EQ(FaultOf("/dev/null"), "/dev/null: cannot be written: it is no plain file");
    EXPECT_NE(FaultOf(folder / "plain/a").find("cannot be written"), std::string::npos);
    EXPECT_EQ(folder.Names(), (Names{"pipe", "plain", "sub"}));
}

TEST(OutputFile, RefusesWhatThisUserMayNotWrite) {
    const TempFolder folder;
    folder.Write("locked", "old");
    fs::create_directory(folder / "shut");
    chmod((folder / "locked").c_str(), 0444);
    chmod((folder / "shut").c_str(), 0555);
    fs::permissions(folder / "", fs::perms(0777));
    const std::string faults = InChild([&] {
        if (geteuid() == 0 && setuid(65534) != 0) return std::string("cannot become another user");
        return FaultOf(folder / "locked") + '\n' + FaultOf(folder / "shut/a");
    });
    EXPECT_EQ(faults, (folder / "locked") + ": cannot be written: Permission denied\n" + (folder / "shut/a") +
                          ": cannot be written: Permission denied");
    EXPECT_EQ(folder.Bytes("locked"), "old");
}

TEST(StlOutput, WritesBothFormats) {
    const TempFolder folder;
    const Soup soup = CubeFacets().AsSoup();
    for (const bool isText : {false, true}) {
        StlOutput output(folder / "cube.stl", isText);
        for (std::size_t i = 0; i < soup.size(); i += 3) output.Add(soup[i], soup[i + 1], soup[i + 2]);
        EXPECT_EQ(output.Triangles(), 12);
        output.Commit();
        EXPECT_EQ(CornersOf(folder / "cube.stl"), soup);
        EXPECT_EQ(folder.Bytes("cube.stl").starts_with("solid\n"), isText);
    }
    EXPECT_EQ(folder.Names(), Names{"cube.stl"});
}

// A limit on the size of files stands for a full disk.
TEST(StlOutput, LeavesTheOldFileWhenTheDiskIsFull) {
    for (const bool isText : {false, true}) {
        const TempFolder folder;
        folder.Write("a.stl", "old");
        const std::string fault = InChild([&] {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{300, 300};
            setrlimit(RLIMIT_FSIZE, &limit);
            try {
                StlOutput output(folder / "a.stl", isText);
                for (int i = 0; i < 10000; ++i) output.Add({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
                output.Commit();
            } catch (const Failure& failure) {
                return std::string(failure.what());
            }
            return std::string();
        });
        EXPECT_EQ(fault, (folder / "a.stl") + ": could not be written to its end");
        EXPECT_EQ(folder.Bytes("a.stl"), "old");
        EXPECT_EQ(folder.Names(), Names{"a.stl"});
    }
}

}  // namespace
}  // namespace KM::Tool
