#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Names = std::vector<std::string>;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// What stands behind the name of a line.
double Told(const std::string& output, const std::string& name) {
    const std::string begin = "\n  " + name + ' ';
    const std::size_t at = output.find(begin);
    EXPECT_NE(at, std::string::npos) << output;
    return at == std::string::npos ? -1.0 : std::strtod(output.c_str() + at + begin.size(), nullptr);
}

TEST(Decimate, TakesOutWhatAFlatSheetCanSpare) {
    const ToolRun tool;
    tool.folder.Write("sheet.stl", BinaryStl(GridFacets(6).AsSoup()));
    const ToolResult result = tool.Run({"decimate", "sheet.stl", "--tolerance", "0.5", "--out", "few.stl"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output,
              "sheet.stl: 72 triangles in the file\n"
              "  tolerance       0.5\n"
              "  reduction       69.4 % of the triangles\n"
              "  deviation       0 at most, of nodes of the part from the result\n"
              "  deviation back  0 at most, of middles of edges of the result from the part\n"
              "                          before           after\n"
              "  nodes                       49              24\n"
              "  triangles                   72              22\n"
              "  boundaries                   1               1\n"
              "  boundary edges              24              24\n"
              "  solids                       1               1\n"
              "  closed solids                0               0\n"
              "  inside out                   0               0\n"
              "  non-manifold                 0               0\n"
              "  degenerate                   0               0\n"
              "  area                        36              36\n"
              "  volume                    open            open\n" +
                  (tool.folder / "few.stl\n"));
    EXPECT_EQ(CornersOf(tool.folder / "few.stl").size(), 66u);
}

TEST(Decimate, TellsHowFarTheSurfaceWentInAnyUnit) {
    for (const double size : {1e-6, 1.0, 1e9}) {
        SCOPED_TRACE(size);
        const ToolRun tool;
        Soup soup = SphereFacets(16).AsSoup();
        for (TPoint<double>& p : soup) p *= size;
        tool.folder.Write("ball.stl", BinaryStl(soup));
        const ToolResult result =
            tool.Run({"decimate", "ball.stl", "--tolerance", "0.2%", "--out", "few.stl", "--text"});
        ASSERT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_NEAR(Told(result.output, "tolerance") / size, 0.002 * std::sqrt(12.0), 1e-6);
        EXPECT_GT(Told(result.output, "reduction"), 10.0);
        EXPECT_GT(Told(result.output, "deviation"), 0.0);
        EXPECT_LT(Told(result.output, "deviation") / size, 0.1);
        EXPECT_GT(Told(result.output, "deviation back"), 0.0);
        EXPECT_LT(Told(result.output, "deviation back") / size, 0.1);
        EXPECT_TRUE(tool.folder.Bytes("few.stl").starts_with("solid\n"));
    }
}

TEST(Decimate, SaysWhenTheSurfaceIsTorn) {
    const ToolRun tool;
    std::filesystem::copy(KM_SOURCE_DIR "/samples/bearing-bracket.stl", tool.folder / "part.stl");
    const ToolResult torn = tool.Run({"decimate", "part.stl", "--tolerance", "1%", "--out", "few.stl"});
    EXPECT_EQ(torn.exitCode, 0) << torn.errors;
    EXPECT_GT(Told(torn.output, "torn"), 0.0);
    const ToolResult whole = tool.Run({"decimate", "part.stl", "--out", "few.stl"});
    EXPECT_FALSE(Has(whole.output, "torn")) << whole.output;
}

TEST(Decimate, RefusesAToleranceThatIsNone) {
    const ToolRun tool;
    tool.folder.Write("ball.stl", BinaryStl(SphereFacets(4).AsSoup()));
    const std::pair<const char*, const char*> faults[] = {
        {"0", "\"0\": is not greater than 0"},
        {"0%", "\"0%\": is not greater than 0"},
        {"1,2", "\"1,2\": is more than one length"},
        {"-1", "\"-1\": is neither a length, such as 0.05, nor a share of the diagonal, such as 0.1%"},
    };
    for (const auto& [tolerance, fault] : faults) {
        const ToolResult result = tool.Run({"decimate", "ball.stl", "--out", "o.stl", "--tolerance", tolerance});
        EXPECT_EQ(result.exitCode, 4);
        EXPECT_EQ(result.errors, std::string("kmmesh: --tolerance: ") + fault + "; see kmmesh decimate --help\n");
    }
    tool.folder.Write("zero.xml",
                      "<Settings><Actions><Execute>Mesh.Decimate</Execute><Mesh><Decimate><Files>ball.stl</Files>"
                      "<Out>o.stl</Out><Tolerance>0</Tolerance></Decimate></Mesh></Actions></Settings>");
    const ToolResult result = tool.Run({"zero.xml"});
    EXPECT_NE(result.exitCode, 0);
    EXPECT_TRUE(Has(result.errors, "Actions.Mesh.Decimate.Tolerance: \"0\": is not greater than 0")) << result.errors;
    EXPECT_EQ(tool.folder.Names(), (Names{"ball.stl", "zero.xml"}));
}

TEST(Decimate, TakesAnyToleranceThatIsALength) {
    const ToolRun tool;
    tool.folder.Write("ball.stl", BinaryStl(SphereFacets(6).AsSoup()));
    for (const char* tolerance : {"1e-320", "1e300", "100000%"}) {
        const ToolResult result = tool.Run({"decimate", "ball.stl", "--out", "o.stl", "--tolerance", tolerance});
        EXPECT_EQ(result.exitCode, 0) << tolerance << result.errors;
    }
}

TEST(Decimate, NeedsAFileToWriteAndLeavesNothingBehindAFailure) {
    const ToolRun tool;
    tool.folder.Write("bad.stl", "");
    EXPECT_EQ(tool.Run({"decimate", "bad.stl"}).exitCode, 3);
    EXPECT_EQ(tool.Run({"decimate", "--out", "o.stl"}).exitCode, 3);
    EXPECT_EQ(tool.Run({"decimate", "bad.stl", "--out", "o.stl"}).exitCode, 9);
    EXPECT_EQ(tool.Run({"decimate", "none.stl", "--out", "o.stl"}).exitCode, 9);
    EXPECT_EQ(tool.folder.Names(), Names{"bad.stl"});
}

}  // namespace
}  // namespace KM::Test
