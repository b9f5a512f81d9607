#include "Utils/U_App/AnalyzeSettings.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "Support/DumpCapture.h"
#include "Support/LogCapture.h"
#include "Utils/U_App/Tool.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_XMLReader/Reader.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM::Application {
namespace {

using KM::Test::LogCapture;
using KM::Test::Messages;
using KM::Test::Words;
using Verbose::EMessageType;

/// Settings that were all made at load.
struct Tree : XML::Element {
    explicit Tree(const std::string& text) : Element("") { XML::ReadElementFromString(text, *this, true); }
};

struct Outcome {
    Words warnings;
    std::string dump;
};

Outcome Analysed(const XML::Element& settings) {
    const KM::Test::DumpCapture dump;
    const LogCapture log;
    AnalyzeSettings(settings);
    return {log.Texts(EMessageType::Warning), dump.Text()};
}

TEST(AnalyzeSettings, TellsNothingOfDefaults) {
    const Outcome outcome =
        Analysed(Tree("<Settings><!-- text --><A Type='Bool' Default='Y'>yes</A><G><B/></G></Settings>"));
    EXPECT_TRUE(outcome.warnings.empty());
    EXPECT_EQ(outcome.dump, "");
}

TEST(AnalyzeSettings, DumpsWhatHasChanged) {
    const Outcome outcome =
        Analysed(Tree("<Settings><G><A Type='Bool' Default='Y'>off</A><B Type='String' Default='x'>a&lt;b</B></G>"
                      "<C Type='Int32' Default='1'>2</C><D Type='Int32'/></Settings>"));
    EXPECT_TRUE(outcome.warnings.empty());
    EXPECT_EQ(outcome.dump,
              "\n  <Settings SS=\"00000001\">"
              "\n    <G SS=\"00000001\">"
              "\n      <A SS=\"00000001\" Default=\"Yes\">No</A>"
              "\n      <B SS=\"00000001\" Default=\"x\">a&lt;b</B>"
              "\n    </G>"
              "\n    <C SS=\"00000001\" Default=\"1\">2</C>"
              "\n  </Settings>");
}

TEST(AnalyzeSettings, ShowsEnumsAndFlagsByName) {
    const Outcome outcome =
        Analysed(Tree("<S><E Type='Enum' Default='1'>2<One Type='EnumValue'>1</One><Two Type='EnumValue'>2</Two></E>"
                      "<F Type='Flag' Default='0'>3<X Type='FlagValue'>1</X><Y Type='FlagValue'>2</Y></F></S>"));
    EXPECT_NE(outcome.dump.find("<E SS=\"00000001\" Default=\"One (EnumValue = 1)\">Two (EnumValue = 2)</E>"),
              std::string::npos)
        << outcome.dump;
    EXPECT_NE(outcome.dump.find("<F SS=\"00000001\" Default=\" (FlagValue = 0)\">X | Y (FlagValue = 3)</F>"),
              std::string::npos)
        << outcome.dump;
}

TEST(AnalyzeSettings, WarnsOfWhatHasNoTypeOrAnUnknownOne) {
    const Outcome outcome = Analysed(Tree("<Settings>root<G>x<H Type='Colour'>y</H></G></Settings>"));
    EXPECT_EQ(outcome.warnings, (Words{"Element: \"\" has a value but it hasn't a type! Probable an obsolete setting.",
                                       "Element: \"G\" has a value but it hasn't a type! Probable an obsolete setting.",
                                       "Element: \"G.H\" has a type that isn't known!"}));
    EXPECT_EQ(outcome.dump, "");
}

TEST(AnalyzeSettings, WarnsOnceOfWhatNobodyDeclared) {
    Tree root("<Settings><G><A>x</A><B Type='Colour'>x</B><C Type='Bool' Default='Y'>N</C><D/></G></Settings>");
    for (const char* path : {"G.A", "G.B", "G.C", "G.D"}) root[path].SettingSession(2);
    const Outcome outcome = Analysed(root);
    EXPECT_EQ(outcome.warnings,
              (Words{"Element: \"G.A\" it is set but it isn't used.", "Element: \"G.B\" it is set but it isn't used.",
                     "Element: \"G.C\" it is set but it isn't used."}));
    EXPECT_EQ(outcome.dump, "");
}

TEST(AnalyzeSettings, ShowsTheStampsOfTheSettings) {
    Tree root("<Settings><G><A Type='Int32' Default='1'>2</A></G></Settings>");
    root["G"].SettingSession(3);
    root["G.A"].SettingSession(5);
    const std::string dump = Analysed(root).dump;
    EXPECT_NE(dump.find("<G SS=\"00000011\">"), std::string::npos) << dump;
    EXPECT_NE(dump.find("<A SS=\"00000101\" Default=\"1\">2</A>"), std::string::npos) << dump;
}

TEST(AnalyzeSettings, NamesMayBeEmpty) {
    XML::Element root("Settings");
    for (const char* path : {"a..b", "a."}) {
        XML::Element& setting = root[path];
        setting.V("2");
        setting.SetAttribute("Type", "Int32");
        setting.SetAttribute("Default", "1");
        setting.SettingSession(1);
    }
    const std::string dump = Analysed(root).dump;
    EXPECT_NE(dump.find("\n    <a SS=\"00000001\">"
                        "\n      < SS=\"00000001\" Default=\"1\">2"
                        "\n        <b SS=\"00000001\" Default=\"1\">2</b>"
                        "\n      </>"
                        "\n    </a>"),
              std::string::npos)
        << dump;
}

TEST(AnalyzeSettings, SkipsNodesThatAreNoSettings) {
    Tree root("<Settings/>");
    root += XML::Comment("text");
    root += XML::CDATA("text");
    root.NewChild(XML::CommentName, "text");
    EXPECT_TRUE(Analysed(root).warnings.empty());
}

TEST(AnalyzeSettings, ShowsStampsOnlyMeanwhile) {
    XML::SetIsDumpSettingSession(false);
    Analysed(Tree("<Settings>x</Settings>"));
    EXPECT_FALSE(XML::IsDumpSettingSession());
}

TEST(AnalyzeSettings, HidesStampsAgainWhenItIsStopped) {
    class Thrower : public DumpingDevice {
        void Write(const std::string& text) override {
            line_ += text;
            if (line_.find("isn't known") == std::string::npos) return;
            line_.clear();  // once, since the scope still has to close
            throw std::runtime_error("device");
        }
        void Reset() override {}
        void ApplyBackground() override {}

        std::string line_;
    } device;
    const Tree root("<Settings><A Type='Colour'>x</A></Settings>");
    const KM::Test::LogOn log(device);
    EXPECT_THROW(AnalyzeSettings(root), std::runtime_error);
    EXPECT_FALSE(XML::IsDumpSettingSession());
}

TEST(AnalyzeSettings, LeavesTheColoursOfTheConsole) {
    const Tree root("<Settings><A Type='Int32' Default='1'>2</A></Settings>");
    const LogCapture log;
    Console::SetForeground(7);
    Console::SetBackground(1);
    AnalyzeSettings(root);
    EXPECT_EQ(Console::GetForeground(), 7);
    EXPECT_EQ(Console::GetBackground(), 1);
    Console::SetBackground(0);
}

TEST(AnalyzeSettings, CutsKeysThatAreTooLong) {
    std::string text = "<Settings>";
    for (int i = 0; i < 2000; ++i) text += "<ab>1";
    const Words warnings = Analysed(Tree(text)).warnings;
    ASSERT_EQ(warnings.size(), 2000u);
    EXPECT_TRUE(warnings[0].starts_with("Element: \"ab\" has a value")) << warnings[0];
    EXPECT_TRUE(warnings[1].starts_with("Element: \"ab.ab\" has a value")) << warnings[1];
    EXPECT_TRUE(warnings[1999].starts_with("Element: \"...ab.ab.")) << warnings[1999];
    EXPECT_LT(warnings[1999].size(), 1100u);
    const std::string huge(5000, 'x');
    const Words ofHuge = Analysed(Tree("<S><" + huge + ">1<y>2</y></" + huge + "></S>")).warnings;
    ASSERT_EQ(ofHuge.size(), 2u);
    EXPECT_TRUE(ofHuge[0].starts_with("Element: \"" + huge + "\" has")) << "the name of the setting itself is whole";
    EXPECT_TRUE(ofHuge[1].starts_with("Element: \"...y\" has")) << ofHuge[1];
}

TEST(AnalyzeSettings, TreesMayBeDeep) {
    std::string text;
    for (int i = 0; i < 100000; ++i) text += "<a>";
    EXPECT_TRUE(Analysed(Tree(text)).warnings.empty());
}

TEST(AnalyzeSettingsOfATool, TellsWhoChangedWhat) {
    const KM::Test::Tool tool;
    tool.Configure(
        "a.xml", "Test.Ok",
        "<Debug><IsAnalyzeSettingsBefore>Y</IsAnalyzeSettingsBefore></Debug>"
        "<Test><!-- changed --><Bool>off</Bool><Int32>8</Int32><Real64>0.25</Real64><AutoReal64>1e20</AutoReal64>"
        "<Enum>2</Enum><Flag>6</Flag><String>text</String><Misspelt>1</Misspelt></Test>");
    tool.Folder().Write("b.xml", "<Settings><Test><Bool>no</Bool><Int32>7</Int32></Test></Settings>");
    const KM::Test::ProgramEnd end = tool.Run({"a.xml", "b.xml"});
    EXPECT_EQ(Messages(end.output, "Warning"), Words{"Element: \"Test.Misspelt\" it is set but it isn't used."});
    const Words lines = KM::Test::Log(end.output);
    const auto begin = std::find(lines.begin(), lines.end(), "<Info>Changed settings:</Info>");
    const auto end_ = std::find(lines.begin(), lines.end(), "</AnalyzeSettings>");
    ASSERT_LT(begin, end_);
    EXPECT_EQ(Words(begin + 1, end_),
              (Words{"<Settings SS=\"00000001\">", "<Actions SS=\"00000001\">",
                     "<Execute SS=\"00000011\">Test.Ok</Execute>", "</Actions>", "<Debug SS=\"00000001\">",
                     "<IsAnalyzeSettingsBefore SS=\"00000011\" Default=\"N\">Y</IsAnalyzeSettingsBefore>", "</Debug>",
                     "<Test SS=\"00000001\">", "<Bool SS=\"00000111\" Default=\"Yes\">No</Bool>",
                     "<Real64 SS=\"00000011\" Default=\"0.5\">0.25</Real64>",
                     "<Enum SS=\"00000011\" Default=\"One (EnumValue = 1)\">Two (EnumValue = 2)</Enum>",
                     "<Flag SS=\"00000011\" Default=\" (FlagValue = 0)\">Red | Green (FlagValue = 6)</Flag>", "</Test>",
                     "</Settings>"}));
}

}  // namespace
}  // namespace KM::Application
