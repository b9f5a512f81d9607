#include "Utils/U_App/Switches.h"

#include <gtest/gtest.h>

#include "Utils/U_App/Tool.h"

namespace KM::Application {
namespace {

using KM::Test::Has;
using KM::Test::Log;
using KM::Test::Messages;
using KM::Test::ProgramEnd;
using KM::Test::Words;

class Switches : public testing::Test {
protected:
    KM::Test::Tool tool_;
};

TEST_F(Switches, CExportsTheWholeTree) {
    for (const char* letter : {"/C", "/c"}) {
        const std::string name = std::string("deep/down/") + letter[1] + ".txt";
        const ProgramEnd end = tool_.Run({letter, name});
        EXPECT_EQ(end.exitCode, 0);
        EXPECT_TRUE(Messages(end.output, "Error").empty()) << end.output;
        const std::string text = tool_.Folder().Bytes(name);
        EXPECT_TRUE(text.starts_with("\n<Settings>\n  <Actions Help=\"This group sets")) << text.substr(0, 200);
        EXPECT_TRUE(text.ends_with("\n</Settings>"));
        for (const char* line :
             {"\n    <Execute Help=\"This group sets the desired performed action.\" Type=\"String\"></Execute>",
              "\n        <Version Default=\"V1.0\" Help=\"version of this action.\" Type=\"String\">V1.0</Version>",
              "\n    <Bool Default=\"Y\" Help=\"help\" Type=\"Bool\">Y</Bool>"})
            EXPECT_NE(text.find(line), std::string::npos) << line << text;
    }
}

TEST_F(Switches, WhatCExportsIsAConfiguration) {
    tool_.Run({"/C", "all.xml"});
    tool_.Configure("run.xml", "Test.Ok");
    const ProgramEnd end = tool_.Run({"all.xml", "run.xml"});
    EXPECT_TRUE(Has(Messages(end.output, "Info"), "acting as OkV2.5")) << end.output;
}

TEST_F(Switches, CReplacesAFile) {
    tool_.Folder().Write("out.xml", std::string(1000000, 'x'));
    tool_.Run({"/C", "out.xml"});
    EXPECT_TRUE(tool_.Folder().Bytes("out.xml").ends_with("</Settings>"));
    EXPECT_EQ(tool_.Folder().Names(), Words{"out.xml"}) << "nothing else is left";
}

TEST_F(Switches, AFileThatCannotBeWrittenLeavesTheRun) {
    tool_.Folder().Write("file", "bytes");
    for (const char* name : {"", "/", "file/out.xml", "."}) {
        const ProgramEnd end = tool_.Run({"/C", name});
        EXPECT_EQ(end.exitCode, 100) << name;
        EXPECT_NE(end.output.find("left the run: XFileIOError"), std::string::npos) << end.output;
    }
    EXPECT_EQ(tool_.Folder().Names(), Words{"file"});
    EXPECT_EQ(tool_.Folder().Bytes("file"), "bytes");
}

TEST_F(Switches, PIsNotImplemented) {
    for (const char* letter : {"/P", "/p"}) {
        const ProgramEnd end = tool_.Run({letter, "a.xml"});
        EXPECT_EQ(end.exitCode, 0);
        EXPECT_EQ(Log(end.output), Words{"<Info>Not implemented</Info>"});
    }
    EXPECT_TRUE(tool_.Folder().Names().empty());
}

TEST_F(Switches, VTellsTheVersion) {
    for (const char* letter : {"/V", "/v"}) {
        const ProgramEnd end = tool_.Run({letter, "Actions.KM.ToolPathGenerator"});
        EXPECT_EQ(end.exitCode, 0);
        const Words lines = Log(end.output);
        ASSERT_EQ(lines.size(), 11u) << end.output;
        EXPECT_EQ(lines[0], "<Info>Functionality: \"Actions.KM.ToolPathGenerator\"</Info>");
        EXPECT_EQ(lines[1], "<Info>Has version: V1.0RN190</Info>");
        EXPECT_EQ(lines[2], "<CompilationExplanation>");
        EXPECT_EQ(lines[10], "</CompilationExplanation>");
    }
}

TEST_F(Switches, VOfAnythingElseHasNoVersion) {
    for (const char* name : {"KM.ToolPathGenerator", "", "...", "\"", "%1"}) {
        const ProgramEnd end = tool_.Run({"/V", name});
        EXPECT_EQ(end.exitCode, 0);
        EXPECT_TRUE(Has(Messages(end.output, "Info"), "Has version: RN190")) << end.output;
    }
}

TEST_F(Switches, OtherLettersDoNothing) {
    for (const char* letter : {"/X", "/1", "//", "/ "}) {
        const ProgramEnd end = tool_.Run({letter, "name"});
        EXPECT_EQ(end.exitCode, 0) << letter;
        EXPECT_EQ(end.output, "") << letter;
    }
}

TEST_F(Switches, NeedThreeArguments) {
    for (const Words& arguments : {Words{"/C"}, Words{"/C", "a.txt", "b"}, Words{"/CC", "a"}, Words{"-C", "a"},
                                   Words{"a", "/C"}, Words{"", "a"}, Words{"/", "a"}}) {
        const ProgramEnd end = tool_.Run(arguments);
        EXPECT_EQ(end.exitCode, 0);
        const Words warnings = Messages(end.output, "Warning");
        const std::string name = arguments[0] == "/" ? "a" : arguments[0];  // the root folder is there
        EXPECT_TRUE(Has(warnings, "File " + name + " hasn't been found. Skip it!")) << end.output;
        EXPECT_TRUE(Has(Messages(end.output, "Error"), "Action \"\" not found! running aborted.")) << end.output;
    }
    EXPECT_TRUE(tool_.Folder().Names().empty());
}

TEST_F(Switches, TExportsWhatCanBeTweakedAndGoesOn) {
    for (const char* letter : {"/T", "/t"}) {
        const ProgramEnd end = tool_.Run({letter});
        EXPECT_EQ(end.exitCode, 0);
        EXPECT_EQ(
            tool_.Folder().Bytes("KMHSTweak.XML"),
            "<?xml-stylesheet type=\"text/xsl\" href=\"http://formatters.example.com/KMHS/Formatters/Config.xsl\"?>\n"
            "\n<ToolPathGenerator>"
            "\n  <Version Default=\"V1.0\" Help=\"version of this action.\" Type=\"String\"></Version>"
            "\n</ToolPathGenerator>");
        EXPECT_EQ(Messages(end.output, "Warning"),
                  Words{std::string("File ") + letter + " hasn't been found. Skip it!"});
        EXPECT_TRUE(Has(Messages(end.output, "Info"), "ExitCode = 0")) << end.output;
    }
}

TEST_F(Switches, TGoesOnWithFilesButNotWithOne) {
    tool_.Configure("a.xml", "Test.Ok");
    ProgramEnd end = tool_.Run({"/T", "a.xml", "b"});
    EXPECT_TRUE(Has(Messages(end.output, "Info"), "acting as OkV2.5")) << end.output;
    // Three arguments are a switch with its operand, and "T" is none that takes one.
    end = tool_.Run({"/T", "a.xml"});
    EXPECT_EQ(end.output, "");
    EXPECT_TRUE(tool_.Folder().Has("KMHSTweak.XML"));
}

TEST_F(Switches, TStaysOffElsewhere) {
    tool_.Run({"a", "/T"});
    tool_.Run({"/Tx"});
    EXPECT_TRUE(tool_.Folder().Names().empty());
}

TEST_F(Switches, TLeavesDumpsWithoutValues) {
    tool_.Configure("a.xml", "Test.Ok", "<XML><DumpSettingsAfterLoading>Y</DumpSettingsAfterLoading></XML>");
    EXPECT_NE(tool_.Run({"a.xml"}).output.find("Type=\"Bool\">Y</Bool>"), std::string::npos);
    EXPECT_NE(tool_.Run({"/T", "a.xml", "b"}).output.find("Type=\"Bool\"></Bool>"), std::string::npos);
}

}  // namespace
}  // namespace KM::Application
