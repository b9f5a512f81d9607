#include <gtest/gtest.h>

#include "ToolRun.h"

namespace KM::Test {
namespace {

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(Draft, TellsTheAreaOfEachBand) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"draft", "cube.stl", "--limits", "30 5"});
    EXPECT_EQ(result.exitCode, 0) << result.errors;
    EXPECT_EQ(result.output,
              "cube.stl: 12 triangles in the file\n"
              "  direction       0 0 1\n"
              "  area            6\n"
              "  angles          from -90 to 90 degrees\n"
              "  angle, degrees              area   share\n"
              "  -90 .. -30                     1   16.7 %  ########\n"
              "  -30 .. -5                      0    0.0 %\n"
              "  -5 .. 5                        4   66.7 %  ################################\n"
              "  5 .. 30                        0    0.0 %\n"
              "  30 .. 90                       1   16.7 %  ########\n");
}

TEST(Draft, TakesAnyDirectionAndUnit) {
    const ToolRun tool;
    Soup soup = CubeFacets().AsSoup();
    for (TPoint<double>& p : soup) p *= 1e-5;
    tool.folder.Write("cube.stl", BinaryStl(soup));
    for (const char* direction : {"-x", "0,1e-9,0", "0,0,-5"}) {
        const ToolResult result = tool.Run({"draft", "cube.stl", "--direction", direction});
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_TRUE(Has(result.output, "  -1 .. 1                    4e-10   66.7 %")) << result.output;
    }
    const std::string skew = tool.Run({"draft", "cube.stl", "--direction", "1,1,0"}).output;
    EXPECT_TRUE(Has(skew, "from -45 to 45 degrees")) << skew;
    EXPECT_TRUE(Has(skew, "  30 .. 60                   2e-10   33.3 %")) << skew;
}

TEST(Draft, TakesSeveralFiles) {
    const ToolRun tool;
    for (const char* name : {"a.stl", "b.stl"}) tool.folder.Write(name, BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"draft", "a.stl", "b.stl"});
    EXPECT_TRUE(Has(result.output, "\n\nb.stl: 12 triangles in the file\n")) << result.output;
}

TEST(Draft, DrawsPictures) {
    const ToolRun tool;
    for (const char* name : {"a.stl", "b.stl"}) tool.folder.Write(name, BinaryStl(CubeFacets().AsSoup()));
    const ToolResult result = tool.Run({"draft", "a.stl", "b.stl", "--picture", ".", "--view", "1,1,1"});
    EXPECT_TRUE(Has(result.output, tool.folder / "a.svg\n\nb.stl: ")) << result.output;
    EXPECT_TRUE(tool.folder.Bytes("b.svg").starts_with("<svg "));
    EXPECT_EQ(tool.Run({"draft", "a.stl", "b.stl", "--picture", "one.svg"}).exitCode, 9);
}

TEST(Draft, RefusesWhatDoesNotFit) {
    const ToolRun tool;
    tool.folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup()));
    const struct {
        const char* option;
        const char* value;
        int exitCode;
        const char* why;
    } refused[] = {
        {"--direction", "up", 4, "--direction: \"up\": is no number; see kmmesh draft --help"},
        {"--direction", "0,0,0", 4, "--direction: \"0,0,0\": is no direction; see kmmesh draft --help"},
        {"--limits", "steep", 4, "--limits: \"steep\": is no number; see kmmesh draft --help"},
        {"--limits", "5,90", 4, "--limits: 90 is not between 0 and 90; see kmmesh draft --help"},
        {"--limits", "0", 4, "--limits: 0 is not between 0 and 90; see kmmesh draft --help"},
    };
    for (const auto& [option, value, exitCode, why] : refused) {
        const ToolResult result = tool.Run({"draft", "cube.stl", option, value});
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.errors, std::string("kmmesh: ") + why + '\n');
        EXPECT_EQ(result.output, "");
    }
}

}  // namespace
}  // namespace KM::Test
