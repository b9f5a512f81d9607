#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

TEST(Lods, WritesOneFileALevelAndTheStream) {
    const ToolRun tool;
    const Soup soup = BumpySphereFacets(20).AsSoup();
    tool.folder.Write("ball.stl", BinaryStl(soup));
    const ToolResult result = tool.Run({"lods", "ball.stl", "--tolerances", "0,0.2%,2", "--out", "levels"});
    ASSERT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.errors, "");
    const std::vector<std::string> lines = Lines(result.output);
    ASSERT_EQ(lines.size(), 9u) << result.output;
    EXPECT_EQ(lines[0], "ball.stl: 3200 triangles");
    EXPECT_EQ(lines[1], "  level  tolerance  triangles    share   strips    words");
    std::size_t before = soup.size() / 3 + 1;
    for (const int number : {1, 2, 3}) {
        const std::string file = "levels/ball.level" + std::to_string(number) + ".stl";
        int row = 0, triangles = 0;
        double tolerance = 0.0;
        const std::string& line = lines[static_cast<std::size_t>(number) + 1];
        ASSERT_EQ(std::sscanf(line.c_str(), "%d %lf %d", &row, &tolerance, &triangles), 3) << line;
        EXPECT_EQ(row, number);
        EXPECT_EQ(CornersOf(tool.folder / file).size(), 3u * static_cast<unsigned>(triangles));
        EXPECT_LT(static_cast<std::size_t>(triangles), before);
        EXPECT_EQ(lines[static_cast<std::size_t>(number) + 4], tool.folder / file);
        before = static_cast<std::size_t>(triangles);
    }
    EXPECT_EQ(lines[8], tool.folder / "levels/ball.levels.bin");
    EXPECT_TRUE(tool.folder.Bytes("levels/ball.levels.bin").starts_with("KMLODS01"));
}

TEST(Lods, WritesIntoThePresentFolderAndAsTextIfAsked) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    EXPECT_EQ(tool.Run({"lods", "cube.stl", "--tolerances", "0", "--text", "-q"}).exitCode, 0);
    EXPECT_EQ(tool.folder.Names(), (Names{"cube.level1.stl", "cube.levels.bin", "cube.stl"}));
    EXPECT_TRUE(tool.folder.Bytes("cube.level1.stl").starts_with("solid\n"));
}

TEST(Lods, RefusesTwoFilesOfOneName) {
    const ToolRun tool;
    std::filesystem::create_directory(tool.folder / "sub");
    for (const char* name : {"a.stl", "sub/a.stl"}) tool.folder.Write(name, BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"lods", "a.stl", "sub/a.stl"});
    EXPECT_EQ(result.exitCode, 9);
    EXPECT_EQ(Lines(result.errors).size(), 1u);
    EXPECT_EQ(tool.folder.Names(), (Names{"a.stl", "sub"}));
}

TEST(Lods, KeepsWhatCannotBeReplaced) {
    const ToolRun tool;
    tool.folder.Write("a.stl", BinaryStl(CubeFacets().AsSoup()));
    std::filesystem::create_directory(tool.folder / "a.level1.stl");
    const ToolResult result = tool.Run({"lods", "a.stl"});
    EXPECT_EQ(result.exitCode, 9);
    EXPECT_EQ(result.errors, "kmmesh: " + (tool.folder / "a.level1.stl") + ": cannot be written: it is a folder\n");
    EXPECT_EQ(tool.folder.Names(), (Names{"a.level1.stl", "a.stl"}));
}

}  // namespace
}  // namespace KM::Test
