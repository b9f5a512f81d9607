#include "Utils/U_App/Usage.h"

#include <gtest/gtest.h>

#include "Support/LogCapture.h"
#include "Utils/U_App/Application.h"
#include "Utils/U_App/Tool.h"

namespace KM::Application {
namespace {

using KM::Test::LogCapture;
using KM::Test::Tool;
using KM::Test::Words;
using Verbose::EMessageType;

const std::string Dashes =
    "<Info>-------------------------------------------------------------------------------</Info>";

const Words Explanation = {
    "<CompilationExplanation>",
    "<Info>Conditions: RN190</Info>",
    "<Info>Where: </Info>",
    "<Info>- First letter   = Compilation type: {D = Debug, R = Release};</Info>",
    "<Info>- Second letter  = STL type: {N = DikumwareSTL, X = STLPort};</Info>",
    "<Info>- First Number   = Compiler version: {130 = VC7.0, 131 = VC7.1; 140 = VC8.0}; //600 + version * 100</Info>",
    "<Info>- '.L'           = sepparator;</Info>",
    "<Info>- Second Number  = KM Version number. //int(version) * 100 </Info>",
    "</CompilationExplanation>"};

Words Expected(const std::string& program, const Words& actions) {
    Words lines = {
        "<ProductInfo>",
        Dashes,
        "<Info>" + program + "</Info>",
        "<Note>Parameters with XML extension are parsed as configuration file. Can be as many as you want.</Note>",
        "</ProductInfo>",
        "<Usage>",
        "<Info>" + program + "                      - This help file;</Info>",
        "<Info>" + program + " 1.XML 2.XML .. n.XML - Load configuration files in this order;</Info>",
        "<Info>" + program + " /V Actions.KM.ToolPathGenerator  - Export the version of utility;</Info>",
        "<Info>" + program + " /C Name.XML          - Export the default configuration files;</Info>",
        "<Info>" + program + " /P Name.XML          - Export the PAD for this file;</Info>",
        "<Info>" + program +
            " /T                   - Export the file KMHSTweak.XML that if is found in KMHS.exe folder is read "
            "automatic.</Info>",
        "</Usage>",
        Dashes};
    lines.insert(lines.end(), Explanation.begin(), Explanation.end());
    lines.push_back(Dashes);
    lines.insert(lines.end(), actions.begin(), actions.end());
    lines.push_back(Dashes);
    return lines;
}

TEST(CompilationExplanation, IsWordForWord) {
    EXPECT_EQ(GetGenericVersionInfo(), "RN190");
    const LogCapture log;
    CompilationExplanation();
    std::string text;
    for (const std::string& line : log.Lines()) text += line + '\n';
    EXPECT_EQ(KM::Test::Log(text), Explanation);
}

TEST(Usage, IsWrittenWithoutArguments) {
    const KM::Test::ProgramEnd end = Tool().Run({});
    EXPECT_EQ(end.exitCode, 0);
    Words actions = {"<DumpRegisteredActions>", "<Info>Action: Actions.KM.Dump.Settings, Version: V1</Info>",
                     "<Info>Action: Actions.KM.ToolPathGenerator, Version: V1.0</Info>"};
    for (const char* name : {"AbortAtEnd", "AbortTwice", "Code", "Exception", "Int", "KmException", "Next", "None",
                             "Ok", "Restart", "Span", "StdException", "UserAbort", "Value", "Where"})
        actions.push_back(std::string("<Info>Action: Actions.Test.") + name + ", Version: V2.5</Info>");
    actions.push_back("</DumpRegisteredActions>");
    EXPECT_EQ(KM::Test::Log(end.output), Expected(KM_TOOL_CHILD, actions));
}

}  // namespace
}  // namespace KM::Application
