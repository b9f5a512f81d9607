#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

/// The sphere reaches from -1 to 1.
std::string SphereStl() { return BinaryStl(SphereFacets(8).AsSoup()); }

TEST(Split, WritesSlabsAndSaysWhatTheyHold) {
    const ToolRun tool;
    tool.folder.Write("a.stl", BinaryStl({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {8, 0, 0}, {9, 0, 0}, {9, 1, 0}}));
    const ToolResult result = tool.Run({"split", "a.stl"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, "a.stl: 2 slabs along X\n  slab  triangles\n     1          1\n     2          1\n" +
                                 (tool.folder / "a.X[1 of 2].stl") + '\n' + (tool.folder / "a.X[2 of 2].stl") + '\n');
    EXPECT_EQ(tool.folder.Names(), (Names{"a.X[1 of 2].stl", "a.X[2 of 2].stl", "a.stl"}));
    EXPECT_EQ(CornersOf(tool.folder / "a.X[1 of 2].stl"), (Soup{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}));
}

TEST(Split, TakesItsOptions) {
    const ToolRun tool;
    tool.folder.Write("a.stl", SphereStl());
    EXPECT_EQ(tool.Run({"split", "a.stl", "--slabs", "11", "--axes", "z", "--overlap", "0.1", "--out", "new/slabs"})
                  .exitCode,
              0);
    EXPECT_TRUE(tool.folder.Has("new/slabs/a.Z[01 of 11].stl") && tool.folder.Has("new/slabs/a.Z[11 of 11].stl"));
    double top = -1.0;
    for (const TPoint<double>& p : CornersOf(tool.folder / "new/slabs/a.Z[01 of 11].stl")) top = std::max(top, p.Z);
    EXPECT_NEAR(top, -1.0 + 2.0 / 11.0 + 0.1, 1e-6);
    EXPECT_EQ(tool.Run({"split", "a.stl", "--axes", "YX", "--quiet"}).exitCode, 0);
    EXPECT_TRUE(tool.folder.Has("a.Y[1 of 2].stl"));
}

TEST(Split, RefusesWhatDoesNotFit) {
    const ToolRun tool;
    tool.folder.Write("a.stl", SphereStl());
    for (const Names& options :
         {Names{"--slabs", "0"}, {"--axes", "w"}, {"--slabs", "2000000000"}, {"--overlap", "-1"}}) {
        const ToolResult result = tool.Run({"split", "a.stl", options[0], options[1]});
        EXPECT_EQ(result.exitCode, 4) << options[0];
        EXPECT_EQ(Lines(result.errors).size(), 1u) << result.errors;
        EXPECT_EQ(tool.folder.Names(), Names{"a.stl"});
    }
}

TEST(Split, LeavesNothingBehindAFailure) {
    const ToolRun tool;
    const std::string bytes = SphereStl();
    tool.folder.Write("a.stl", bytes);
    tool.folder.Write("cut.stl", bytes.substr(0, bytes.size() / 2));
    tool.folder.Write("empty.stl", "");
    std::filesystem::create_directory(tool.folder / "a.Y[2 of 2].stl");
    const Names before = tool.folder.Names();
    const Names refused[] = {{"missing.stl"}, {"empty.stl"}, {"cut.stl"}, {"."}, {"a.stl"}};
    for (const Names& words : refused) {
        Names arguments{"split"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        const ToolResult result = tool.Run(arguments);
        EXPECT_EQ(result.exitCode, 9) << words[0];
        EXPECT_EQ(Lines(result.errors).size(), 1u) << result.errors;
        EXPECT_EQ(tool.folder.Names(), before);
    }
    EXPECT_EQ(tool.Run({"split", "a.stl", "--out", "empty.stl"}).exitCode, 9);
}

TEST(Split, RepeatsARunThatWasKept) {
    const ToolRun tool;
    tool.folder.Write("a.stl", SphereStl());
    EXPECT_EQ(tool.Run({"split", "a.stl", "--slabs", "3", "--save", "job.xml"}).exitCode, 0);
    std::filesystem::remove(tool.folder / "a.Y[2 of 3].stl");
    EXPECT_EQ(tool.Run({"job.xml"}).exitCode, 0);
    EXPECT_TRUE(tool.folder.Has("a.Y[2 of 3].stl"));
}

}  // namespace
}  // namespace KM::Test
