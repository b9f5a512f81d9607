#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

TEST(Convert, WritesTextAndBinaryTriangleForTriangle) {
    const ToolRun tool;
    const Soup soup = CubeFacets().AsSoup();
    tool.folder.Write("a.stl", BinaryStl(soup));
    EXPECT_EQ(tool.Run({"convert", "a.stl", "--text", "--out", "text.stl"}).exitCode, 0);
    EXPECT_TRUE(tool.folder.Bytes("text.stl").starts_with("solid\n\nfacet normal "));
    EXPECT_EQ(CornersOf(tool.folder / "text.stl"), soup);
    const ToolResult back = tool.Run({"convert", "text.stl", "--out", "new folder/back.stl"});
    EXPECT_EQ(back.output, (tool.folder / "new folder/back.stl") + ": 12 triangles, binary\n");
    EXPECT_EQ(tool.folder.Bytes("new folder/back.stl"), tool.folder.Bytes("a.stl"));
    EXPECT_EQ(tool.folder.Names(), (Names{"a.stl", "new folder", "text.stl"}));
}

TEST(Convert, MayReplaceItsInput) {
    const ToolRun tool;
    const Soup soup = CubeFacets().AsSoup();
    tool.folder.Write("a.stl", BinaryStl(soup));
    const ToolResult result = tool.Run({"convert", "a.stl", "--text", "--out", ".", "--quiet"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(tool.folder.Bytes("a.stl").starts_with("solid\n"));
    EXPECT_EQ(CornersOf(tool.folder / "a.stl"), soup);
}

TEST(Convert, KeepsEvenTrianglesThatAreNone) {
    const ToolRun tool;
    tool.folder.Write("a.stl", BinaryStl({{0, 0, 0}, {0, 0, 0}, {1, 0, 0}}));
    EXPECT_EQ(tool.Run({"convert", "a.stl", "--out", "b.stl", "--text"}).exitCode, 0);
    EXPECT_EQ(CornersOf(tool.folder / "b.stl").size(), 3u);
}

TEST(Convert, RefusesWhatSinglePrecisionCannotHold) {
    const ToolRun tool;
    tool.folder.Write("a.stl", "solid\nvertex 0 0 0\nvertex 1e40 0 0\nvertex 0 1e40 0\nendsolid\n");
    const ToolResult result = tool.Run({"convert", "a.stl", "--out", "b.stl"});
    EXPECT_EQ(result.exitCode, 9);
    EXPECT_EQ(result.errors, "kmmesh: " + (tool.folder / "b.stl") +
                                 ": would have coordinates beyond single precision; --text can hold them\n");
    EXPECT_FALSE(tool.folder.Has("b.stl"));
    EXPECT_EQ(tool.Run({"convert", "a.stl", "--out", "b.stl", "--text"}).exitCode, 0);
}

TEST(Convert, WritesSeveralIntoAFolder) {
    const ToolRun tool;
    for (const char* name : {"a.stl", "b.stl"}) tool.folder.Write(name, BinaryStl(CubeFacets().AsSoup()));
    const ToolResult refused = tool.Run({"convert", "a.stl", "b.stl", "--out", "one.stl"});
    EXPECT_EQ(refused.exitCode, 9);
    EXPECT_EQ(refused.errors,
              "kmmesh: " + (tool.folder / "one.stl") + ": is no folder, and there are 2 files to write\n");
    std::filesystem::create_directory(tool.folder / "out");
    EXPECT_EQ(tool.Run({"convert", "a.stl", "b.stl", "--out", "out"}).exitCode, 0);
    EXPECT_TRUE(tool.folder.Has("out/a.stl") && tool.folder.Has("out/b.stl"));
}

TEST(Convert, RefusesTwoFilesOfOneName) {
    const ToolRun tool;
    for (const char* folder : {"sub", "out"}) std::filesystem::create_directory(tool.folder / folder);
    for (const char* name : {"a.stl", "sub/a.stl"}) tool.folder.Write(name, BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"convert", "a.stl", "sub/a.stl", "--out", "out"});
    EXPECT_EQ(result.exitCode, 9);
    EXPECT_EQ(Lines(result.errors).size(), 1u);
    EXPECT_FALSE(tool.folder.Has("out/a.stl"));
}

TEST(Convert, LeavesNothingBehindAFailure) {
    const ToolRun tool;
    tool.folder.Write("old.stl", "old");
    tool.folder.Write("empty.stl", "");
    for (const char* out : {"old.stl", "new.stl"}) {
        EXPECT_EQ(tool.Run({"convert", "empty.stl", "--out", out}).exitCode, 9);
        EXPECT_EQ(tool.folder.Names(), (Names{"empty.stl", "old.stl"}));
    }
    tool.folder.Write("a.stl", BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"convert", "a.stl", "--out", "old.stl/b.stl"});
    EXPECT_EQ(result.exitCode, 9);
    EXPECT_TRUE(result.errors.starts_with("kmmesh: " + (tool.folder / "old.stl/b.stl") + ": cannot be written: "));
    EXPECT_EQ(Lines(result.errors).size(), 1u);
    EXPECT_EQ(tool.folder.Bytes("old.stl"), "old");
}

}  // namespace
}  // namespace KM::Test
