#include <gtest/gtest.h>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(Refine, HalvesEdgesAndTellsBothSides) {
    const ToolRun tool;
    tool.folder.Write("square.stl", BinaryStl(GridFacets(1).AsSoup()));
    const ToolResult result = tool.Run({"refine", "square.stl", "--length", "0.75", "--out", "fine.stl"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output,
              "square.stl: 2 triangles in the file\n"
              "  length          0.75\n"
              "  longest edge    1.41421356 before, 0.707106781 after\n"
              "                          before           after\n"
              "  nodes                        4               9\n"
              "  triangles                    2               8\n"
              "  boundaries                   1               1\n"
              "  boundary edges               4               8\n"
              "  solids                       1               1\n"
              "  closed solids                0               0\n"
              "  inside out                   0               0\n"
              "  non-manifold                 0               0\n"
              "  degenerate                   0               0\n"
              "  area                         1               1\n"
              "  volume                    open            open\n" +
                  (tool.folder / "fine.stl\n"));
    EXPECT_EQ(CornersOf(tool.folder / "fine.stl").size(), 24u);
}

TEST(Refine, TakesSharesOfTheDiagonalInAnyUnit) {
    for (const double size : {1e-6, 1.0, 1e9}) {
        SCOPED_TRACE(size);
        const ToolRun tool;
        Soup cube = CubeFacets().AsSoup();
        for (TPoint<double>& p : cube) p *= size;
        tool.folder.Write("cube.stl", BinaryStl(cube));
        const ToolResult result = tool.Run({"refine", "cube.stl", "--length", "50%", "--out", "fine", "--text", "-q"});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_TRUE(Has(result.output, "  triangles                   12              48\n")) << result.output;
        EXPECT_TRUE(tool.folder.Bytes("fine").starts_with("solid\n"));
    }
}

TEST(Refine, LeavesAPartThatIsFineEnough) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    EXPECT_EQ(tool.Run({"refine", "cube.stl", "--length", "1e300", "--out", "same.stl"}).exitCode, 0);
    EXPECT_EQ(CornersOf(tool.folder / "same.stl").size(), 36u);
}

TEST(Refine, RefusesWhatNoMemoryWouldHold) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    for (const char* length : {"1e-09", "1e-300"}) {
        const ToolResult result = tool.Run({"refine", "cube.stl", "--length", length, "--out", "fine.stl"});
        EXPECT_EQ(result.exitCode, 9);
        EXPECT_EQ(result.errors, "kmmesh: " + (tool.folder / "cube.stl") + ": cannot be refined to edges of " + length +
                                     ": that takes more than 100 million triangles\n");
    }
    EXPECT_EQ(tool.Run({"refine", "cube.stl", "--length", "0", "--out", "fine.stl"}).errors,
              "kmmesh: --length: \"0\": is not greater than 0; see kmmesh refine --help\n");
    EXPECT_EQ(tool.Run({"refine", "cube.stl", "--length", "x", "--out", "fine.stl"}).exitCode, 4);
    EXPECT_EQ(tool.Run({"refine", "cube.stl"}).exitCode, 3);
    EXPECT_EQ(tool.folder.Names(), Names{"cube.stl"});
}

}  // namespace
}  // namespace KM::Test
