#include <gtest/gtest.h>

#include <functional>

#include "ToolRun.h"
#include "Utils/U_XMLReader/Reader.h"

namespace KM::Test {
namespace {

TEST(Settings, AreWrittenWithTheirDefaults) {
    const ToolRun tool;
    const ToolResult result = tool.Run({"settings"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.output.starts_with("<Settings>")) << result.output.substr(0, 100);
    XML::Element root("Settings");
    XML::ReadElementFromString(result.output, root, true);
    EXPECT_EQ(root.ToString("Actions.Execute"), "");
    EXPECT_EQ(root.ToString("Debug.VerboseLevel"), "5");
    EXPECT_EQ(root["Actions.Mesh.Lods.Tolerances"].AttributeValue("Default"), "0,0.01%,0.05%,0.2%,1%");
    EXPECT_EQ(root["Actions.Mesh.Lods.Text"].AttributeValue("Type"), "Bool");
    EXPECT_NE(root["Actions.Mesh.Info"].AttributeValue("Help"), "");
}

TEST(Settings, GoToAFile) {
    const ToolRun tool;
    const ToolResult result = tool.Run({"settings", "--out", "all.xml"});
    EXPECT_EQ(result.output, (tool.folder / "all.xml") + '\n');
    EXPECT_EQ(tool.folder.Bytes("all.xml").find("all.xml"), std::string::npos) << "values, not defaults";
    EXPECT_EQ(tool.Run({"settings", "--out", "no.folder.xml/x.xml", "-q"}).exitCode, 0);
    EXPECT_EQ(tool.Run({"settings", "--out", "all.xml/x.xml"}).exitCode, 9);
}

TEST(Settings, AreDumpedAfterLoadingAsTheyAre) {
    const ToolRun tool;
    tool.folder.Write("a.xml",
                      "<Settings><XML><DumpSettingsAfterLoading>y</DumpSettingsAfterLoading></XML><Actions><Execute>"
                      "No.Such</Execute></Actions></Settings>");
    const ToolResult result = tool.Run({"a.xml"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_NE(result.output.find(">No.Such</Execute>"), std::string::npos) << result.output.substr(0, 1000);
}

}  // namespace
}  // namespace KM::Test
