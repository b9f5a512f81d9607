#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

Soup Sized(Soup soup, double factor) {
    for (TPoint<double>& p : soup) p *= factor;
    return soup;
}

TEST(Divide, WritesWhatLiesBelowAndAbove) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"divide", "cube.stl", "--point", "0,0,0.25"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_TRUE(
        result.output.starts_with("cube.stl: 12 triangles in the file\n"
                                  "  cut             8 edges, length 4, area 1\n"
                                  "  volume          0.25 below, 0.75 above, with the cut closed\n"
                                  "                          before           below           above\n"))
        << result.output;
    EXPECT_TRUE(Has(result.output, "\n  boundary edges               0               8               8\n"))
        << result.output;
    EXPECT_TRUE(Has(result.output, "\n  area                         6               2               4\n"))
        << result.output;
    EXPECT_TRUE(result.output.ends_with(tool.folder / "cube.below.stl\n" + (tool.folder / "cube.above.stl\n")));
    EXPECT_EQ(tool.folder.Names(), (Names{"cube.above.stl", "cube.below.stl", "cube.stl"}));
    for (const TPoint<double>& p : CornersOf(tool.folder / "cube.below.stl")) EXPECT_LE(p.Z, 0.25);
    for (const TPoint<double>& p : CornersOf(tool.folder / "cube.above.stl")) EXPECT_GE(p.Z, 0.25);
}

TEST(Divide, TakesAnyNormalFolderAndUnit) {
    for (const double size : {1e-6, 1.0, 1e12}) {
        SCOPED_TRACE(size);
        const ToolRun tool;
        tool.folder.Write("ball.stl", BinaryStl(Sized(SphereFacets(20).AsSoup(), size)));
        const ToolResult result = tool.Run(
            {"divide", "ball.stl", "--point", "0,0,0", "--normal", "1,1,1", "--out", "halves", "--text", "--quiet"});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_FALSE(Has(result.output, "halves"));
        EXPECT_TRUE(tool.folder.Bytes("halves/ball.below.stl").starts_with("solid\n"));
        for (const char* half : {"halves/ball.below.stl", "halves/ball.above.stl"})
            EXPECT_GT(CornersOf(tool.folder / half).size(), 3u * 1600) << half;
    }
}

TEST(Divide, RefusesAPlaneThatMissesThePart) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    const std::pair<const char*, const char*> missed[] = {
        {"0,0,2", "below"}, {"0,0,-1", "above"}, {"0,0,1e308", "below"}};
    for (const auto& [point, side] : missed) {
        const ToolResult result = tool.Run({"divide", "cube.stl", "--point", point});
        EXPECT_EQ(result.exitCode, 9);
        EXPECT_EQ(result.errors, "kmmesh: " + (tool.folder / "cube.stl") + ": lies " + side +
                                     " the plane; there is nothing to divide\n");
        EXPECT_EQ(tool.folder.Names(), Names{"cube.stl"});
    }
}

TEST(Divide, NeedsAPointAndWritesBothFilesOrNone) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    EXPECT_EQ(tool.Run({"divide", "cube.stl"}).exitCode, 3);
    EXPECT_EQ(tool.Run({"divide", "cube.stl", "--point", "1,2"}).errors,
              "kmmesh: --point: \"1,2\": has to be three numbers, such as 10,0,2.5; see kmmesh divide --help\n");
    EXPECT_EQ(tool.Run({"divide", "cube.stl", "--point", "0,0,.5", "--normal", "up"}).exitCode, 4);
    std::filesystem::create_directory(tool.folder / "cube.above.stl");
    EXPECT_EQ(tool.Run({"divide", "cube.stl", "--point", "0,0,.5"}).exitCode, 9);
    EXPECT_EQ(tool.folder.Names(), (Names{"cube.above.stl", "cube.stl"}));
}

}  // namespace
}  // namespace KM::Test
