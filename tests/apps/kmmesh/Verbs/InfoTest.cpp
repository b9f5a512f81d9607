#include <gtest/gtest.h>

#include "ToolRun.h"

namespace KM::Test {
namespace {

const char* const CubeReport =
    "  nodes           8\n"
    "  triangles       12\n"
    "  extents         1 1 1\n"
    "  lowest corner   0 0 0\n"
    "  highest corner  1 1 1\n"
    "  boundaries      none\n"
    "  solids          1, closed\n"
    "  non-manifold    none\n"
    "  degenerate      none\n"
    "  orientation     consistent\n"
    "  area            6\n"
    "  volume          1\n";

TEST(Info, TellsWhatAPartIs) {
    const ToolRun tool;
    tool.folder.Write("a cube.stl", BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"info", "a cube.stl"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.output, std::string("a cube.stl: 12 triangles in the file\n") + CubeReport);
    EXPECT_EQ(result.errors, "");
}

TEST(Info, TakesSeveralFiles) {
    const ToolRun tool;
    for (const char* name : {"a.stl", "b.stl", "c.stl"}) tool.folder.Write(name, BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"info", "c.stl", "a.stl", "b.stl", "--quiet"});
    const std::string report = std::string(": 12 triangles in the file\n") + CubeReport;
    EXPECT_EQ(result.output, "c.stl" + report + "\na.stl" + report + "\nb.stl" + report);
}

TEST(Info, TellsWhatWasLeftOut) {
    const ToolRun tool;
    tool.folder.Write("a.stl",
                      "solid\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 0\nvertex 0 0 0\nvertex 0 0 0\nvertex 0 1 0\n"
                      "vertex nan 0 0\nvertex 0 0 0\nvertex 0 1 0\nendsolid\n");
    const ToolResult result = tool.Run({"info", "a.stl"});
    EXPECT_TRUE(
        result.output.starts_with("a.stl: 3 triangles in the file\n"
                                  "  left out        1 triangle with two equal corners\n"
                                  "  left out        1 triangle with a corner that is no number\n"
                                  "  nodes           3\n"))
        << result.output;
}

TEST(Info, RefusesInOneLineWhatItCannotRead) {
    const ToolRun tool;
    tool.folder.Write("empty.stl", "");
    tool.folder.Write("cut.stl", BinaryStl(SphereFacets(20).AsSoup()).substr(0, 1000));
    tool.folder.Write("cut text.stl", "solid\nfacet normal 0 0 1\nvertex 0 0");
    const std::pair<const char*, const char*> refused[] = {
        {"missing.stl", "no such file"},
        {".", "is a folder, not an STL file"},
        {"empty.stl", "is empty"},
        {"cut.stl", "is cut short: its header promises 3200 triangles, and 18 are there"},
        {"cut text.stl", "is cut short, or no STL file: it does not end with \"endsolid\""},
    };
    for (const auto& [name, why] : refused) {
        const ToolResult result = tool.Run({"info", name});
        EXPECT_EQ(result.exitCode, 9) << name;
        EXPECT_EQ(result.output, "");
        EXPECT_EQ(Lines(result.errors).size(), 1u) << result.errors;
        EXPECT_TRUE(result.errors.ends_with(std::string(": ") + why + '\n')) << result.errors;
        EXPECT_TRUE(name[0] == '.' || result.errors.find(name) != std::string::npos) << result.errors;
    }
}

}  // namespace
}  // namespace KM::Test
