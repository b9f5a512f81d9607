#include <gtest/gtest.h>

#include <filesystem>

#include "KmVersion.h"
#include "ToolRun.h"

namespace KM::Test {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

std::string InfoOf(const std::string& files) {
    return "<Settings><Actions><Execute>Mesh.Info</Execute><Mesh><Info><Files>" + files +
           "</Files></Info></Mesh></Actions></Settings>";
}

class Main : public testing::Test, public ToolRun {
protected:
    using ToolRun::Run;

    Main() { folder.Write("cube.stl", BinaryStl(CubeFacets().AsSoup())); }
    ~Main() override { EXPECT_TRUE(fs::is_empty(home / "tmp")); }

    void ExpectRefusal(const std::vector<std::string>& arguments, int exitCode, const std::string& why) {
        const ToolResult result = Run(arguments);
        EXPECT_EQ(result.exitCode, exitCode) << why;
        EXPECT_EQ(result.errors, "kmmesh: " + why + '\n');
    }
};

TEST_F(Main, WithoutArgumentsTellsTheSwitchesAndTheActions) {
    const ToolResult result = Run({});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(Has(result.output, " /C Name.XML          - Export the default configuration files;")) << result.output;
    EXPECT_TRUE(Has(result.output, "Action: Actions.Mesh.Info, Version: V" KM_VERSION "</Info>")) << result.output;
    EXPECT_EQ(result.errors, "");
}

TEST_F(Main, ShowsHelpAndVersion) {
    EXPECT_EQ(Run({"--version"}).output, "kmmesh " KM_VERSION "\n");
    EXPECT_TRUE(Has(Run({"--help"}).output, "Usage: kmmesh VERB"));
    const ToolResult help = Run({"lods", "--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_TRUE(Has(help.output, "--tolerances LIST"));
}

TEST_F(Main, RefusesACommandLineThatDoesNotFit) {
    ExpectRefusal({"decmate", "cube.stl"}, 4, "\"decmate\" is no verb and no file; see kmmesh --help");
    ExpectRefusal({"info"}, 3, "FILE is required; see kmmesh info --help");
    ExpectRefusal({"--quiet"}, 3, "no verb; see kmmesh --help");
    ExpectRefusal({"info", "a\nb"}, 4,
                  std::string("\"") + (folder / "a?b") +
                      "\": has a line feed, or a blank at an end, which no configuration can hold");
}

TEST_F(Main, RunsAConfiguration) {
    folder.Write("job.xml", InfoOf("cube.stl"));
    const ToolResult result = Run({"job.xml"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(Has(result.output, "<Info>File job.xml was used as configuration file.</Info>")) << result.output;
    EXPECT_TRUE(Has(result.output, "\n    volume          1\n")) << result.output;
    EXPECT_TRUE(result.output.ends_with("<Info>ExitCode = 0</Info>\n")) << result.output;
    EXPECT_EQ(result.errors, "");
}

TEST_F(Main, HandsArgumentsToAConfiguration) {
    folder.Write("job.XML", InfoOf("<A>%1</A><B>%2</B>"));
    folder.Write("other.stl", BinaryStl(SphereFacets(2).AsSoup()));
    const ToolResult result = Run({"job.XML", "other.stl", "cube.stl"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_LT(result.output.find("other.stl: 32 triangles"), result.output.find("cube.stl: 12 triangles"));
    ExpectRefusal({"job.XML", "nowhere.stl"}, 9, "nowhere.stl: no such file");
    ExpectRefusal({"job.XML"}, 9, "Actions.Mesh.Info.Files: names no file");
}

TEST_F(Main, TakesConfigurationsInOrder) {
    folder.Write("a.xml", InfoOf("nowhere.stl"));
    folder.Write("b.xml", "<Settings><Actions><Mesh><Info><Files>cube.stl</Files></Info></Mesh></Actions></Settings>");
    EXPECT_EQ(Run({"a.xml", "b.xml"}).exitCode, 0);
    EXPECT_EQ(Run({"b.xml", "a.xml"}).exitCode, 9);
}

TEST_F(Main, TellsAFailureInTheLogAndOnStandardError) {
    folder.Write("job.xml", InfoOf("nowhere.stl"));
    const ToolResult result = Run({"job.xml"});
    EXPECT_EQ(result.exitCode, 9);
    EXPECT_EQ(result.errors, "kmmesh: nowhere.stl: no such file\n");
    EXPECT_TRUE(Has(result.output, "<Error>Exception: \"nowhere.stl: no such file\" in file: ")) << result.output;
    EXPECT_TRUE(Has(result.output, "<Info>ExitCode = 9</Info>")) << result.output;
}

TEST_F(Main, GivesBadConfigurationsTheirExitCodes) {
    folder.Write("broken.xml", "<Settings a b>");
    folder.Write("cut.xml", "<!a>");
    folder.Write("noaction.xml", "<Settings/>");
    folder.Write("unknown.xml", "<Settings><Actions><Execute>No.Such</Execute></Actions></Settings>");
    folder.Write("text.xml", "this is no XML at all");
    fs::create_directory(folder / "folder.xml");
    ExpectRefusal({"broken.xml"}, 4, "invalid configuration: Bad XML File");
    EXPECT_EQ(Run({"cut.xml"}).exitCode, 4);
    ExpectRefusal({"noaction.xml"}, 4, "the configuration names no action in Actions.Execute");
    ExpectRefusal({"text.xml"}, 4, "the configuration names no action in Actions.Execute");
    ExpectRefusal({"unknown.xml"}, 4, "there is no action \"No.Such\"");
    ExpectRefusal({"nowhere.xml"}, 3, "nowhere.xml: no configuration file; see kmmesh --help");
    ExpectRefusal({"cube.stl"}, 3, "cube.stl: no configuration file; see kmmesh --help");
    EXPECT_NE(Run({"folder.xml"}).exitCode, 0);
}

TEST_F(Main, ActsOnTheSwitchesOfTheFramework) {
    EXPECT_EQ(Run({"/C", "all.xml"}).exitCode, 0);
    EXPECT_TRUE(Has(folder.Bytes("all.xml"), "<Tolerances Default=\"0,0.01%,0.05%,0.2%,1%\""));
    const ToolResult version = Run({"/V", "Actions.Mesh.Info"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_TRUE(Has(version.output, "<Info>Has version: V" KM_VERSION "RN190</Info>")) << version.output;
    const ToolResult pad = Run({"/P", "x"});
    EXPECT_EQ(pad.exitCode, 0);
    EXPECT_TRUE(Has(pad.output, "Not implemented"));
    EXPECT_EQ(Run({"/X", "x"}).exitCode, 0);
    EXPECT_EQ(Run({"/T"}).exitCode, 0);
    EXPECT_TRUE(folder.Has("KMHSTweak.XML"));
}

TEST_F(Main, KeepsAConfigurationThatGivesTheSameFromAnywhere) {
    folder.Write("ball.stl", BinaryStl(BumpySphereFacets(10).AsSoup()));
    ASSERT_EQ(Run({"lods", "ball.stl", "--out", "levels", "--save", "kept/job.xml", "--tolerances", "0,1%"}).exitCode,
              0);
    fs::rename(folder / "levels", folder / "first");
    const ToolRun elsewhere;
    const ToolResult again = elsewhere.Run({folder / "kept/job.xml"});
    ASSERT_EQ(again.exitCode, 0) << again.errors;
    EXPECT_TRUE(Has(again.output, "ball.stl: 800 triangles\n"));
    EXPECT_TRUE(elsewhere.folder.Names().empty());
    for (const char* name : {"/ball.level1.stl", "/ball.level2.stl", "/ball.levels.bin"})
        EXPECT_EQ(folder.Bytes(std::string("first") + name), folder.Bytes(std::string("levels") + name)) << name;
}

TEST_F(Main, KeepsAConfigurationEvenOfARunThatFails) {
    EXPECT_EQ(Run({"info", "nowhere.stl", "--save", "job.xml"}).exitCode, 9);
    EXPECT_TRUE(Has(folder.Bytes("job.xml"), "<Execute>Mesh.Info</Execute>"));
    ExpectRefusal(
        {"info", "cube.stl", "--save", "cube.stl/job.xml"}, 9,
        (folder / "cube.stl") == "" ? "" : "cube.stl/job.xml: cannot be written: no folder cube.stl (Not a directory)");
}

TEST_F(Main, ShowsTheLogWhenAsked) {
    const ToolResult result = Run({"info", "cube.stl", "--verbose", "5"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(Has(result.output, "<Reading>\n    <Note>Progress: Task Reading has started!</Note>")) << result.output;
    const ToolResult errors = Run({"info", "cube.stl", "--verbose", "2"});
    EXPECT_FALSE(Has(errors.output, "<Note>"));
    EXPECT_TRUE(Has(errors.output, "volume          1\n"));
    EXPECT_FALSE(Has(Run({"info", "cube.stl"}).output, "<"));
}

TEST_F(Main, IsPlainTextWhereThereIsNoTerminal) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"info", "cube.stl"},
                                                      {"info", "nowhere"},
                                                      {"info", "cube.stl", "--verbose", "6"},
                                                      {}}) {
        const ToolResult result = Run(arguments);
        EXPECT_FALSE(Has(result.output, "\x1b") || Has(result.output, "\r"));
        EXPECT_FALSE(Has(result.errors, "\x1b") || Has(result.errors, "\r"));
    }
}

TEST_F(Main, SaysWhatIsWrongWithItsSurroundings) {
    environment["TMPDIR"] = folder / "cube.stl";
    ExpectRefusal({"info", "cube.stl"}, 9, "temporary folder: Not a directory; see the variable TMPDIR");
}

TEST_F(Main, LeavesTheFolderAsItWas) {
    Run({"info", "cube.stl"});
    Run({"settings"});
    EXPECT_EQ(folder.Names(), Names{"cube.stl"});
}

}  // namespace
}  // namespace KM::Test
