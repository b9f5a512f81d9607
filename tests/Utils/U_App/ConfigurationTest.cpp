#include "Utils/U_App/Configuration.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Utils/U_App/Tool.h"

namespace KM::Application {
namespace {

using KM::Test::Has;
using KM::Test::Log;
using KM::Test::Messages;
using KM::Test::ProgramEnd;
using KM::Test::Words;

class ConfigurationFiles : public testing::Test {
protected:
    /// What the action that shows a setting says.
    std::string ValueOf(const Words& arguments) const {
        for (const std::string& text : Messages(tool_.Run(arguments).output, "Info"))
            if (text.starts_with("value: ")) return text.substr(7);
        return "none";
    }

    void GiveValue(const std::string& name, const std::string& value) const {
        tool_.Configure(name, "Test.Value", "<Test><Value>" + value + "</Value></Test>");
    }

    KM::Test::Tool tool_;
};

TEST_F(ConfigurationFiles, AreReadInTheirOrder) {
    GiveValue("a.xml", "first");
    GiveValue("b.xml", "second");
    EXPECT_EQ(ValueOf({"a.xml", "b.xml"}), "second");
    EXPECT_EQ(ValueOf({"b.xml", "a.xml"}), "first");
    EXPECT_EQ(ValueOf({"b.xml", "a.xml", "b.xml"}), "second");
    const Words infos = Messages(tool_.Run({"a.xml", "b.xml", "a.xml"}).output, "Info");
    ASSERT_GE(infos.size(), 3u);
    EXPECT_EQ(Words(infos.begin(), infos.begin() + 3),
              (Words{"File a.xml was used as configuration file.", "File b.xml was used as configuration file.",
                     "File a.xml was used as configuration file."}));
}

TEST_F(ConfigurationFiles, HaveXMLExtension) {
    for (const char* name : {"a.xml", "a.XML", "a.Xml", "a.b.xMl", ".xml"}) {
        GiveValue(name, name);
        EXPECT_EQ(ValueOf({name}), name);
    }
    for (const char* name : {"a.txt", "xml", "a.xmlx", "a.xml.", "a.xml.txt"}) {
        GiveValue(name, name);
        const ProgramEnd end = tool_.Run({name});
        EXPECT_EQ(Messages(end.output, "Info").front(),
                  std::string("File ") + name + " doesn't have XML extension. Skip it!");
        EXPECT_TRUE(Has(Messages(end.output, "Error"), "Action \"\" not found! running aborted.")) << end.output;
    }
}

TEST_F(ConfigurationFiles, MissingOnesAreSkipped) {
    GiveValue("a.xml", "value");
    const ProgramEnd end = tool_.Run({"no.xml", "a.xml", "no.txt", ""});
    EXPECT_EQ(Messages(end.output, "Warning"),
              (Words{"File no.xml hasn't been found. Skip it!", "File no.txt hasn't been found. Skip it!",
                     "File  hasn't been found. Skip it!"}));
    EXPECT_TRUE(Has(Messages(end.output, "Info"), "value: value")) << end.output;
}

TEST_F(ConfigurationFiles, FoldersAndPatternsAreNone) {
    std::filesystem::create_directories(tool_.Folder() / "folder.xml");
    std::filesystem::create_directories(tool_.Folder() / "sub");
    tool_.Folder().Write("sub/a.xml", "<Settings/>");
    const ProgramEnd end = tool_.Run({"folder.xml", "sub/*.xml", "sub"});
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_EQ(Messages(end.output, "Warning"),
              (Words{"File folder.xml hasn't been found. Skip it!", "File sub/*.xml hasn't been found. Skip it!"}));
    EXPECT_EQ(Messages(end.output, "Info").front(), "File sub doesn't have XML extension. Skip it!");
}

TEST_F(ConfigurationFiles, ReferencesCountFromTheLastOne) {
    GiveValue("a.xml", "%1");
    GiveValue("b.xml", "%0");
    tool_.Folder().Write("e.xml", "");
    EXPECT_EQ(ValueOf({"a.xml", "first", "second"}), "first");
    EXPECT_EQ(ValueOf({"x", "a.xml", "first"}), "first");
    EXPECT_EQ(ValueOf({"a.xml", "first", "e.xml", "second"}), "second");
    EXPECT_EQ(ValueOf({"x", "y", "b.xml", "z"}), "b.xml");
    EXPECT_EQ(ValueOf({"a.xml", "no.xml"}), "no.xml");
    const ProgramEnd end = tool_.Run({"a.xml"});
    EXPECT_TRUE(Has(Messages(end.output, "Error"), "Found an invalide indirerection. Return void!")) << end.output;
    EXPECT_TRUE(Has(Messages(end.output, "Info"), "value: ")) << end.output;
}

TEST_F(ConfigurationFiles, BrokenOnesLeaveTheRun) {
    for (const char* text : {"<a x></a>", "<a/b>", "</a b>", "<Settings><a.b>1</a.b></Settings>"}) {
        tool_.Folder().Write("bad.xml", text);
        const ProgramEnd end = tool_.Run({"bad.xml"});
        EXPECT_EQ(end.exitCode, 100);
        EXPECT_EQ(Messages(end.output, "Error").size(), 1u) << end.output;
        EXPECT_NE(end.output.find("<Parsing: bad.xml file>"), std::string::npos) << end.output;
        EXPECT_TRUE(end.output.ends_with("left the run: Bad XML File")) << end.output;
    }
    tool_.Folder().Write("bad.xml", "<!a>");
    EXPECT_TRUE(tool_.Run({"bad.xml"}).output.ends_with("left the run: std::exception"));
}

TEST_F(ConfigurationFiles, MayHoldAnything) {
    std::string bytes;
    for (int i = 0; i < 1000; ++i) bytes += static_cast<char>(i * 37);
    for (const std::string& text :
         {std::string(), std::string("   \n"), bytes, std::string("no markup"), std::string(100000, '<'),
          std::string("<Settings><Actions><Execute>Test.Ok"), std::string("\0\0\0", 3)}) {
        tool_.Folder().Write("a.xml", text);
        const ProgramEnd end = tool_.Run({"a.xml"});
        EXPECT_EQ(end.signal, 0) << text.substr(0, 100);
        EXPECT_NE(end.exitCode, -1);
    }
}

TEST_F(ConfigurationFiles, DeepOnesAreSurvived) {
    std::string text;
    for (int i = 0; i < 50000; ++i) text += "<a>";
    tool_.Folder().Write("deep.xml", text);
    EXPECT_EQ(tool_.Run({"deep.xml"}).exitCode, 0);
}

TEST_F(ConfigurationFiles, EachIsASession) {
    tool_.Configure("a.xml", "Test.Ok", "<Debug><IsAnalyzeSettingsBefore>Y</IsAnalyzeSettingsBefore></Debug>");
    tool_.Folder().Write("b.xml", "");
    const Words infos = Messages(tool_.Run({"a.xml", "b.xml", "b.xml"}).output, "Info");
    for (const char* line :
         {"00000001 - Static initialisation;", "00000010 - Reading: \"a.xml\" configuration file;",
          "00000100 - Reading: \"b.xml\" configuration file;", "00001000 - Reading: \"b.xml\" configuration file;"})
        EXPECT_TRUE(Has(infos, line)) << line;
}

TEST_F(ConfigurationFiles, ARedirectorNamesAnother) {
    tool_.Configure("a.xml", "Utils.Redirector",
                    "<Actions><Utils><Redirector><ToFile>real.txt</ToFile></Redirector></Utils></Actions>");
    tool_.Configure("real.txt", "Test.Value", "<Test><Value>%1</Value></Test>");
    EXPECT_EQ(ValueOf({"a.xml", "first"}), "first") << "the file behind it does not shift";
    const Words infos = Messages(tool_.Run({"a.xml", "x"}).output, "Info");
    EXPECT_TRUE(Has(infos, "File a.xml was used as configuration file."));
    EXPECT_TRUE(Has(infos, "File real.txt was used as configuration file."));
}

TEST_F(ConfigurationFiles, ARedirectorCountsArgumentsFromTheProgram) {
    tool_.Configure("a.xml", "Utils.Redirector",
                    "<Actions><Utils><Redirector><ToFile>%3</ToFile></Redirector></Utils></Actions>");
    GiveValue("real.txt", "found");
    EXPECT_EQ(ValueOf({"x", "a.xml", "real.txt"}), "found");
}

TEST_F(ConfigurationFiles, ARedirectorToNothingIsAnUnknownAction) {
    std::filesystem::create_directories(tool_.Folder() / "folder");
    for (const char* target : {"", "no.xml", "folder", "*"}) {
        tool_.Configure(
            "a.xml", "Utils.Redirector",
            std::string("<Actions><Utils><Redirector><ToFile>") + target + "</ToFile></Redirector></Utils></Actions>");
        const ProgramEnd end = tool_.Run({"a.xml"});
        EXPECT_EQ(end.exitCode, 0);
        EXPECT_EQ(Messages(end.output, "Error"), Words{"Action \"Utils.Redirector\" not found! running aborted."});
        EXPECT_EQ(Messages(end.output, "Info").front(), "File a.xml was used as configuration file.");
        EXPECT_EQ(end.output.find("Parsing: " + std::string(target) + " file"), std::string::npos);
    }
}

TEST_F(ConfigurationFiles, OneStepOfRedirectionIsAll) {
    const auto redirect = [&](const char* name, const char* to) {
        tool_.Configure(
            name, "Utils.Redirector",
            std::string("<Actions><Utils><Redirector><ToFile>") + to + "</ToFile></Redirector></Utils></Actions>");
    };
    redirect("a.xml", "b.xml");
    redirect("b.xml", "a.xml");
    const ProgramEnd end = tool_.Run({"a.xml"});
    EXPECT_EQ(Messages(end.output, "Error"), Words{"Action \"Utils.Redirector\" not found! running aborted."});
}

TEST_F(ConfigurationFiles, OnlyTheRedirectorRedirects) {
    for (const char* action : {"Test.Ok", "utils.redirector", "Utils.Redirector2"}) {
        tool_.Configure("a.xml", action,
                        "<Actions><Utils><Redirector><ToFile>b.xml</ToFile></Redirector></Utils></Actions>");
        GiveValue("b.xml", "x");
        EXPECT_EQ(ValueOf({"a.xml"}), "none");
    }
}

}  // namespace
}  // namespace KM::Application
