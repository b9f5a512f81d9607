#include <gtest/gtest.h>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

Soup Moved(Soup soup, double x) {
    for (TPoint<double>& p : soup) p.X += x;
    return soup;
}

Soup Joined(std::initializer_list<Soup> parts) {
    Soup all;
    for (const Soup& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

const Soup Crumb = {{9, 0, 0}, {9.5, 0, 0}, {9, 1, 0}};

/// A grid, two cubes and a triangle.
Soup Pieces() {
    return Joined({CubeFacets().AsSoup(), Crumb, Moved(GridFacets(5).AsSoup(), 20), Moved(CubeFacets().AsSoup(), 5)});
}

TEST(Keep, KeepsTheLargestAndTellsOfEach) {
    const ToolRun tool;
    tool.folder.Write("parts.stl", BinaryStl(Pieces()));
    const ToolResult result = tool.Run({"keep", "parts.stl", "--count", "2", "--out", "kept.stl"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output,
              "parts.stl: 75 triangles in the file\n"
              "   solid  triangles            area          volume  result\n"
              "       1         50              25            open  kept\n"
              "       2         12               6               1  erased\n"
              "       3         12               6               1  kept\n"
              "       4          1            0.25            open  erased\n"
              "  kept 2 of 4 solids\n"
              "                          before           after\n"
              "  nodes                       55              44\n"
              "  triangles                   75              62\n"
              "  boundaries                   2               1\n"
              "  boundary edges              23              20\n"
              "  solids                       4               2\n"
              "  closed solids                2               1\n"
              "  inside out                   0               0\n"
              "  non-manifold                 0               0\n"
              "  degenerate                   0               0\n"
              "  area                     37.25              31\n"
              "  volume                       2               1\n" +
                  (tool.folder / "kept.stl\n"));
    EXPECT_EQ(CornersOf(tool.folder / "kept.stl").size(), 3u * 62u);
}

TEST(Keep, DropsCrumbsByItself) {
    const ToolRun tool;
    tool.folder.Write("parts.stl", BinaryStl(Pieces()));
    const ToolResult result = tool.Run({"keep", "parts.stl", "--out", "kept.stl", "--text", "--quiet"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_TRUE(Has(result.output, "            open  erased\n  kept 3 of 4 solids\n")) << result.output;
    EXPECT_TRUE(tool.folder.Bytes("kept.stl").starts_with("solid\n"));
}

TEST(Keep, KeepsAllWhereThereAreNoMore) {
    const ToolRun tool;
    tool.folder.Write("parts.stl", BinaryStl(Pieces()));
    const ToolResult result = tool.Run({"keep", "parts.stl", "--out", "kept.stl", "--count", "9"});
    EXPECT_TRUE(Has(result.output, "  kept 4 of 4 solids\n")) << result.output;
}

TEST(Keep, RefusesToKeepNothing) {
    const ToolRun tool;
    Soup crumbs;
    for (int i = 0; i < 30; ++i) crumbs = Joined({crumbs, Moved(Crumb, 2.0 * i)});
    tool.folder.Write("crumbs.stl", BinaryStl(crumbs));
    EXPECT_EQ(tool.Run({"keep", "crumbs.stl", "--out", "o.stl", "--count", "-1"}).errors,
              "kmmesh: " + (tool.folder / "crumbs.stl") +
                  ": none of its 30 solids has a twentieth of the edges; --count says how many to keep\n");
    for (const char* count : {"0", "-2"}) {
        const ToolResult result = tool.Run({"keep", "crumbs.stl", "--out", "o.stl", "--count", count});
        EXPECT_EQ(result.exitCode, 9);
        EXPECT_EQ(result.errors,
                  std::string("kmmesh: Actions.Mesh.Keep.Count: ") + count + " is neither a number of solids nor -1\n");
    }
    EXPECT_EQ(tool.Run({"keep", "crumbs.stl", "--out", "o.stl", "--count", "x"}).exitCode, 4);
    EXPECT_EQ(tool.Run({"keep", "crumbs.stl"}).exitCode, 3);
    EXPECT_EQ(tool.Run({"keep", "none.stl", "--out", "o.stl"}).exitCode, 9);
    EXPECT_EQ(tool.folder.Names(), Names{"crumbs.stl"});
}

}  // namespace
}  // namespace KM::Test
