#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// Without the triangles `first` to `last`.
Soup Without(Soup soup, std::size_t first, std::size_t last) {
    soup.erase(soup.begin() + static_cast<std::ptrdiff_t>(3 * first),
               soup.begin() + static_cast<std::ptrdiff_t>(3 * last + 3));
    return soup;
}

/// The two triangles of the side at Z = 1 are left out.
Soup OpenBox() {
    Soup box;
    const Soup cube = CubeFacets().AsSoup();
    for (std::size_t i = 0; i < cube.size(); i += 3)
        if (cube[i].Z + cube[i + 1].Z + cube[i + 2].Z != 3.0)
            box.insert(box.end(), {cube[i], cube[i + 1], cube[i + 2]});
    return box;
}

TEST(Fill, ClosesAndTellsWhatItDid) {
    const ToolRun tool;
    tool.folder.Write("box.stl", BinaryStl(OpenBox()));
    const ToolResult result = tool.Run({"fill", "box.stl", "--out", "closed.stl"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output,
              "box.stl: 10 triangles in the file\n"
              "    hole   edges     perimeter  result\n"
              "       1       4             4  closed, flat\n"
              "  closed 1 of 1 hole\n"
              "                          before           after\n"
              "  nodes                        8               8\n"
              "  triangles                   10              12\n"
              "  boundaries                   1               0\n"
              "  boundary edges               4               0\n"
              "  solids                       1               1\n"
              "  closed solids                0               1\n"
              "  inside out                   0               0\n"
              "  non-manifold                 0               0\n"
              "  degenerate                   0               0\n"
              "  area                         5               6\n"
              "  volume                    open               1\n" +
                  (tool.folder / "closed.stl\n"));
    EXPECT_EQ(CornersOf(tool.folder / "closed.stl").size(), 36u);
}

TEST(Fill, LeavesLongHolesAndSaysWhy) {
    const ToolRun tool;
    tool.folder.Write("box.stl", BinaryStl(OpenBox()));
    for (const char* edges : {"3", "0"}) {
        const ToolResult result = tool.Run({"fill", "box.stl", "--out", "out.stl", "--edges", edges, "--quiet"});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_TRUE(Has(result.output, std::string("  left: more than ") + edges + " edges\n  closed 0 of 1 hole\n"))
            << result.output;
        EXPECT_EQ(CornersOf(tool.folder / "out.stl"), OpenBox());
    }
    EXPECT_TRUE(Has(tool.Run({"fill", "box.stl", "--out", "out.stl", "--edges", "4"}).output, "closed 1 of 1"));
    EXPECT_TRUE(Has(tool.Run({"fill", "box.stl", "--out", "out.stl", "--edges", "-1"}).output, "closed 1 of 1"));
}

TEST(Fill, ClosesCurvedHolesInAnyUnit) {
    for (const double size : {1e-6, 1.0, 1e9}) {
        SCOPED_TRACE(size);
        const ToolRun tool;
        Soup soup = Without(SphereFacets(8).AsSoup(), 100, 110);
        for (TPoint<double>& p : soup) p *= size;
        tool.folder.Write("ball.stl", BinaryStl(soup));
        const ToolResult result = tool.Run({"fill", "ball.stl", "--out", "out", "--text"});
        EXPECT_TRUE(Has(result.output, "\n  boundary edges ")) << result.output;
        EXPECT_TRUE(Has(result.output, "  closed solids                0               1\n")) << result.output;
        EXPECT_TRUE(tool.folder.Bytes("out").starts_with("solid\n"));
    }
}

TEST(Fill, SaysWhenThereIsNothingToDo) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"fill", "cube.stl", "--out", "out.stl"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(Has(result.output, "in the file\n  holes           none\n")) << result.output;
    EXPECT_TRUE(tool.folder.Has("out.stl"));
}

TEST(Fill, SaysWhatCannotBeFilled) {
    const ToolRun tool;
    tool.folder.Write("one.stl", BinaryStl({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}));
    const ToolResult result = tool.Run({"fill", "one.stl", "--out", "out.stl"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_TRUE(Has(result.output, "  closed\n")) << result.output;
}

TEST(Fill, NeedsAFileToWriteAndLeavesNothingBehindAFailure) {
    const ToolRun tool;
    tool.folder.Write("bad.stl", "");
    EXPECT_EQ(tool.Run({"fill", "bad.stl"}).exitCode, 3);
    EXPECT_EQ(tool.Run({"fill", "bad.stl", "--out", "out.stl", "--edges", "many"}).errors,
              "kmmesh: --edges: \"many\" is no whole number; see kmmesh fill --help\n");
    EXPECT_EQ(tool.Run({"fill", "bad.stl", "--out", "out.stl"}).exitCode, 9);
    EXPECT_EQ(tool.folder.Names(), Names{"bad.stl"});
}

}  // namespace
}  // namespace KM::Test
