#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

Soup Sized(Soup soup, double factor) {
    for (TPoint<double>& p : soup) p *= factor;
    return soup;
}

TEST(Normals, ListsANormalForEachNode) {
    const ToolRun tool;
    tool.folder.Write("plate.stl", BinaryStl(GridFacets(1).AsSoup()));
    const ToolResult result = tool.Run({"normals", "plate.stl"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output,
              "# plate.stl: 2 triangles in the file\n"
              "# node x y z nx ny nz\n"
              "0 0 0 0 0 0 1\n"
              "1 1 0 0 0 0 1\n"
              "2 0 1 0 0 0 1\n"
              "3 1 1 0 0 0 1\n");
}

TEST(Normals, PointOutwardsWhateverTheUnit) {
    for (const double size : {1e-6, 1.0, 1e9}) {
        SCOPED_TRACE(size);
        const ToolRun tool;
        tool.folder.Write("ball.stl", BinaryStl(Sized(SphereFacets(8).AsSoup(), size)));
        for (const std::string& line : Lines(tool.Run({"normals", "ball.stl"}).output)) {
            if (line.starts_with('#')) continue;
            std::istringstream numbers(line);
            int node = 0;
            TPoint<double> p, n;
            ASSERT_TRUE(numbers >> node >> p.X >> p.Y >> p.Z >> n.X >> n.Y >> n.Z) << line;
            EXPECT_GT(Dot(p, n) / size, 0.98) << line;
            EXPECT_NEAR(Length(n), 1.0, 1e-8);
        }
    }
}

TEST(Normals, AreWeightedIfAsked) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"normals", "cube.stl", "--weighted"});
    for (const std::string& line : Lines(result.output))
        EXPECT_TRUE(line.starts_with('#') || line.ends_with(" 0 0 1") || line.ends_with(" 0 0 -1")) << line;
}

TEST(Normals, GoToAFileOrAFolder) {
    const ToolRun tool;
    for (const char* name : {"a.stl", "b.stl"}) tool.folder.Write(name, BinaryStl(CubeFacets().AsSoup()));
    std::filesystem::create_directory(tool.folder / "out");
    const ToolResult both = tool.Run({"normals", "a.stl", "b.stl", "--out", "out"});
    EXPECT_EQ(both.output, (tool.folder / "out/a.normals.txt\n") + (tool.folder / "out/b.normals.txt\n"));
    const std::string printed = tool.Run({"normals", "a.stl"}).output;
    EXPECT_EQ(tool.folder.Bytes("out/a.normals.txt"), printed);
    EXPECT_EQ(tool.Run({"normals", "a.stl", "--out", "n.txt", "-q"}).output, "");
    EXPECT_EQ(tool.folder.Bytes("n.txt"), printed);
    const ToolResult refused = tool.Run({"normals", "a.stl", "b.stl", "--out", "n.txt"});
    EXPECT_EQ(refused.exitCode, 9);
    EXPECT_EQ(refused.errors,
              "kmmesh: " + (tool.folder / "n.txt") + ": is no folder, and there are 2 files to write\n");
}

TEST(Normals, RefuseWhatCannotBeRead) {
    const ToolRun tool;
    tool.folder.Write("bad.stl", "");
    const ToolResult result = tool.Run({"normals", "bad.stl", "--out", "n.txt"});
    EXPECT_EQ(result.exitCode, 9);
    EXPECT_EQ(result.errors, "kmmesh: " + (tool.folder / "bad.stl") + ": is empty\n");
    EXPECT_EQ(tool.folder.Names(), Names{"bad.stl"});
}

}  // namespace
}  // namespace KM::Test
