#include <gtest/gtest.h>

#include "Support/TempFolder.h"
#include "Utils/U_App/Tool.h"

namespace KM::Application {
namespace {

using KM::Test::Has;
using KM::Test::Log;
using KM::Test::Messages;
using KM::Test::ProgramEnd;
using KM::Test::Words;

class Run : public testing::Test {
protected:
    ProgramEnd Act(const std::string& action, const std::string& more = {}) const {
        tool_.Configure("a.xml", action, more);
        return tool_.Run({"a.xml"});
    }

    KM::Test::Tool tool_;
};

TEST_F(Run, RunsTheActionThatIsNamed) {
    const ProgramEnd end = Act("Test.Ok");
    EXPECT_EQ(end.exitCode, 0);
    Words infos = Messages(end.output, "Info");
    std::erase_if(infos, [](const std::string& text) { return text.starts_with("Time: "); });
    EXPECT_EQ(infos, (Words{"File a.xml was used as configuration file.", "acting as OkV2.5", "ExitCode = 0"}));
    EXPECT_TRUE(Messages(end.output, "Error").empty()) << end.output;
    EXPECT_TRUE(Messages(end.output, "Warning").empty()) << end.output;
    EXPECT_TRUE(Has(Messages(Act("KM.ToolPathGenerator").output, "Info"), "generating as KMHOSTV1.0"));
}

TEST_F(Run, AnActionIsATaskOfTheProgress) {
    const Words lines = Log(Act("Test.Ok").output);
    const auto task = std::find(lines.begin(), lines.end(), "<OkV2.5>");
    ASSERT_GE(lines.end() - task, 4);
    EXPECT_EQ(Words(task, task + 4), (Words{"<OkV2.5>", "<Note>Progress: Task OkV2.5 has started!</Note>",
                                            "<Info>acting as OkV2.5</Info>", "</OkV2.5>"}));
}

TEST_F(Run, TellsHowAnActionEnded) {
    const struct {
        const char *action, *kind, *message;
        int exitCode;
    } rows[] = {
        {"Test.UserAbort", "Error", "User Break detected!", 1},
        {"Test.Restart", "Info", "RestartMe detected!", 8},
        {"Test.Exception", "Error", "Exception: \"text\" in file: \"file.cpp\" at line: 12 was trapped!", 9},
        {"Test.KmException", "Error", "Unexpected exception has been detected!", 9},
        {"Test.StdException", "Error", "Unexpected exception has been detected!", 9},
        {"Test.Int", "Error", "Unexpected exception has been detected!", 9},
        {"Test.None", "Error", "Unexpected exception has been detected!", 9},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.action);
        const ProgramEnd end = Act(row.action, "<Debug><IsAnalyzeSettingsAfter>Y</IsAnalyzeSettingsAfter></Debug>");
        EXPECT_EQ(end.exitCode, row.exitCode);
        EXPECT_TRUE(Has(Messages(end.output, row.kind), row.message)) << end.output;
        EXPECT_NE(end.output.find("<AnalyzeSettings>"), std::string::npos) << "the run goes on";
        EXPECT_EQ(Messages(end.output, "Info").back(), "ExitCode = " + std::to_string(row.exitCode));
        EXPECT_EQ(Messages(end.output, "Error").size(), row.kind == std::string("Error") ? 1u : 0u);
    }
}

TEST_F(Run, ReturnsTheCodeOfTheAction) {
    const ProgramEnd end = Act("Test.Code");
    EXPECT_EQ(end.exitCode, 4);
    EXPECT_EQ(Messages(end.output, "Info").back(), "ExitCode = 4");
}

TEST_F(Run, AnUnknownActionChangesNoCode) {
    for (const std::string action : {"", "No.Such", "Actions.Test.Ok", "test.ok"}) {
        const ProgramEnd end = Act(action);
        EXPECT_EQ(end.exitCode, 0);
        EXPECT_EQ(Messages(end.output, "Error"), Words{"Action \"" + action + "\" not found! running aborted."});
        EXPECT_EQ(Messages(end.output, "Info").back(), "ExitCode = 0");
    }
}

TEST_F(Run, AnActionStartsNoOther) {
    const ProgramEnd end = Act("Test.Next");
    EXPECT_EQ(end.output.find("acting"), std::string::npos) << end.output;
}

TEST_F(Run, TheActionCanComeFromTheCommandLine) {
    tool_.Configure("a.xml", "%1");
    EXPECT_TRUE(Has(Messages(tool_.Run({"a.xml", "Test.Ok"}).output, "Info"), "acting as OkV2.5"));
}

TEST_F(Run, KnowsTheFolderOfTheProgram) {
    const std::string program = KM_TOOL_CHILD;
    EXPECT_TRUE(
        Has(Messages(Act("Test.Where").output, "Info"), "folder: " + program.substr(0, program.rfind('/') + 1)));
}

TEST_F(Run, DumpsTheSettingsAfterLoading) {
    const ProgramEnd end = Act("Test.Ok",
                               "<XML><DumpSettingsAfterLoading>Y</DumpSettingsAfterLoading></XML>"
                               "<Test><Bool>N</Bool></Test>");
    const std::size_t dump = end.output.find("<Bool Default=\"Y\" Help=\"help\" Type=\"Bool\">N</Bool>");
    const std::size_t told = end.output.find("File a.xml was used as configuration file.");
    ASSERT_NE(dump, std::string::npos) << end.output;
    EXPECT_LT(dump, told);
    EXPECT_EQ(Act("Test.Ok").output.find("<Bool"), std::string::npos);
}

TEST_F(Run, AnalysesBeforeAndAfter) {
    const auto switches = [](const char* before, const char* after) {
        return std::string("<Debug><IsAnalyzeSettingsBefore>") + before +
               "</IsAnalyzeSettingsBefore><IsAnalyzeSettingsAfter>" + after + "</IsAnalyzeSettingsAfter></Debug>";
    };
    for (const bool isBefore : {false, true})
        for (const bool isAfter : {false, true}) {
            const Words lines = Log(Act("Test.Ok", switches(isBefore ? "Y" : "N", isAfter ? "Y" : "N")).output);
            const auto acted = std::find(lines.begin(), lines.end(), "<Info>acting as OkV2.5</Info>");
            ASSERT_NE(acted, lines.end());
            EXPECT_EQ(std::count(lines.begin(), acted, "<AnalyzeSettings>"), isBefore ? 1 : 0);
            EXPECT_EQ(std::count(acted, lines.end(), "<AnalyzeSettings>"), isAfter ? 1 : 0);
        }
}

TEST_F(Run, DumpsTheTimersAtTheEnd) {
    const Words lines = Log(Act("Test.Span").output);
    EXPECT_TRUE(Has(lines, "<ActiveActionsTracers>"));
    EXPECT_EQ(lines.back(), "<Info>ExitCode = 0</Info>");
}

TEST_F(Run, TakesTheLevelFromTheSettings) {
    const ProgramEnd end = Act("Test.Int", "<Debug><VerboseLevel>2</VerboseLevel></Debug>");
    EXPECT_EQ(end.exitCode, 9);
    EXPECT_EQ(Messages(end.output, "System"), Words{"Level has changed from: MessageType.Note to: MessageType.Error;"});
    EXPECT_EQ(Messages(end.output, "Error"), Words{"Unexpected exception has been detected!"});
    EXPECT_EQ(Messages(end.output, "Info"), Words{"File a.xml was used as configuration file."})
        << "what is told before stands";
}

/// A tool that looks for the abort file at each message.
class WatchedRun : public Run {
protected:
    ProgramEnd ActWatched(const std::string& action) const {
        tool_.Configure("a.xml", action,
                        "<Cache><Folder>%1</Folder></Cache><Communication><EnableInCacheLookingForCheckAbort>Y"
                        "</EnableInCacheLookingForCheckAbort><TimeGranularity>0</TimeGranularity></Communication>");
        return tool_.Run({"a.xml", cache_ / ""});
    }

    KM::Test::TempFolder cache_;
};

TEST_F(WatchedRun, IsStoppedFromOutside) {
    cache_.Write("!Break(ID=1)", "");
    const ProgramEnd end = ActWatched("Test.Ok");
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_EQ(Messages(end.output, "Error"), Words{"User Break detected!"}) << end.output;
    EXPECT_EQ(end.output.find("acting"), std::string::npos) << end.output;
    EXPECT_FALSE(cache_.Has("!Break(ID=1)"));
}

TEST_F(WatchedRun, ASecondRequestChangesNothing) {
    const ProgramEnd end = ActWatched("Test.AbortTwice");
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_TRUE(Has(Messages(end.output, "Warning"), "UserAbortEvent detected as an AbortFile found!")) << end.output;
    EXPECT_EQ(Messages(end.output, "Error"), Words{"User Break detected!"}) << end.output;
    EXPECT_EQ(Messages(end.output, "Info").back(), "ExitCode = 1");
    EXPECT_FALSE(cache_.Has("!Break(ID=1)"));
}

TEST_F(WatchedRun, ARequestBehindTheActionLeavesIt) {
    const ProgramEnd end = ActWatched("Test.AbortAtEnd");
    EXPECT_TRUE(end.output.ends_with("left the run: XUserAbort")) << end.output;
    EXPECT_TRUE(Messages(end.output, "Error").empty()) << end.output;
    EXPECT_FALSE(cache_.Has("!Break(ID=1)"));
}

TEST_F(Run, ManyArgumentsAreSurvived) {
    tool_.Configure("a.xml", "Test.Value", "<Test><Value>%9997</Value></Test>");
    Words arguments(10000, "x");
    arguments[2] = "a.xml";
    arguments.back() = "last";
    const ProgramEnd end = tool_.Run(arguments);
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_TRUE(Has(Messages(end.output, "Info"), "value: last"));
    const ProgramEnd quoted = tool_.Run(Words(10000, "\"x"));
    EXPECT_EQ(quoted.exitCode, 0);
    EXPECT_EQ(Messages(quoted.output, "Warning").size(), 1u);
}

TEST(RunOfAToolWithMain, IgnoresAllElse) {
    const KM::Test::TempFolder folder;
    folder.Write("a.xml", "<a x></a>");
    const ProgramEnd end = KM::Test::RunProgram(KM_MAIN_CHILD, {}, folder / "");
    EXPECT_EQ(end.exitCode, 0) << "the code that the tool has set is ignored";
    EXPECT_EQ(Messages(end.output, "Info"), Words{"main of Main7"});
    EXPECT_TRUE(Messages(end.output, "Error").empty());
}

TEST(RunOfAToolWithMain, IsNotGuarded) {
    const KM::Test::TempFolder folder;
    const ProgramEnd end = KM::Test::RunProgram(KM_MAIN_CHILD, {"/C", "a.xml"}, folder / "");
    EXPECT_TRUE(end.output.ends_with("left the run: thrown")) << end.output;
    EXPECT_TRUE(folder.Names().empty());
}

}  // namespace
}  // namespace KM::Application
