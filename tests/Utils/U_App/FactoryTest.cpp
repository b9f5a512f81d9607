#include "Utils/U_App/Factory.h"

#include <gtest/gtest.h>
#include <signal.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "Support/LogCapture.h"
#include "Support/LogOn.h"
#include "Support/Program.h"
#include "Utils/U_App/Application.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Settings/Settings.h"
#include "Utils/U_XMLReader/Session.h"

namespace KM {
namespace {

using Factory::FactorySubscriber;
using KM::Test::LogCapture;
using Verbose::EMessageType;

int runs = 0;
std::function<void()> work = [] {};

void Act() {
    ++runs;
    work();
}

const FactorySubscriber generator("KM.ToolPathGenerator", "V1.0", Act, "", "", "", "");
const FactorySubscriber bare("ToolPathGenerator", "", Act, "", "", "", "");
const FactorySubscriber likeIt("KM.ToolPathGenerators", "1", Act, "", "", "", "");
const FactorySubscriber whole("Whole", "V2", Act, "String", "Does it all.", "Whole.cpp", "12");
const FactorySubscriber byAddress("KM.ByAddress", "V3", reinterpret_cast<void*>(Act), "", "", "", "");

class Actions : public testing::Test {
protected:
    Actions() {
        runs = 0;
        work = [] {};
    }

    /// The title that is set last.
    class Device : public DumpingDevice {
    public:
        std::vector<std::string> titles;

        void SetTitle(const std::string& title) override { titles.push_back(title); }
        void Reset() override {}
        void ApplyBackground() override {}
    };
};

TEST_F(Actions, AreDeclaredToTheSettings) {
    const XML::Element& setting = Settings::ToXMLElement("Actions.Whole");
    EXPECT_EQ(setting.V(), "");
    EXPECT_EQ(setting.AttributeValue("Type"), "String");
    EXPECT_EQ(setting.AttributeValue("Help"), "Does it all.");
    EXPECT_EQ(setting.AttributeValue("File"), "Whole.cpp");
    EXPECT_EQ(setting.AttributeValue("Line"), "12");
    EXPECT_EQ(setting.Attributes().size(), 4u) << "no default";
    const XML::Element& version = Settings::ToXMLElement("Actions.Whole.Version");
    EXPECT_EQ(version.V(), "V2");
    EXPECT_EQ(version.AttributeValue("Default"), "V2");
    EXPECT_EQ(version.AttributeValue("Type"), "String");
    EXPECT_EQ(version.AttributeValue("Help"), "version of this action.");
    EXPECT_EQ(version.Attributes().size(), 3u) << "neither file nor line";
}

TEST_F(Actions, AreFoundByTheirWholeKey) {
    for (const char* key : {"Whole", "KM.ToolPathGenerator", "KM.ByAddress"}) EXPECT_TRUE(Factory::Exists(key)) << key;
    for (const char* key : {"", "whole", "Whole.", "ByAddress", "Actions.Whole", "Main"})
        EXPECT_FALSE(Factory::Exists(key)) << key;
}

TEST_F(Actions, RunUnderTheirShortNameAndVersion) {
    const std::pair<const char*, const char*> names[] = {{"KM.ToolPathGenerator", "KMHOSTV1.0"},
                                                         {"ToolPathGenerator", "KMHOST"},
                                                         {"KM.ToolPathGenerators", "ToolPathGenerators1"},
                                                         {"Whole", "WholeV2"},
                                                         {"KM.ByAddress", "ByAddressV3"}};
    for (const auto& [key, name] : names) {
        runs = 0;
        work = [] {};
        Factory::Run(key);
        EXPECT_EQ(runs, 1) << key;
        EXPECT_EQ(Application::Name(), name);
    }
}

TEST_F(Actions, TakeTheirVersionFromTheSettings) {
    Settings::ToXMLElement("Actions.Whole.Version").V("V9");
    Factory::Run("Whole");
    EXPECT_EQ(Application::Name(), "WholeV9");
    Settings::ToXMLElement("Actions.Whole.Version").V("V2");
}

TEST_F(Actions, OpenASession) {
    const std::size_t before = XML::SettingSessionNames().size();
    std::size_t within = 0;
    work = [&within] { within = XML::SettingSessionNames().size(); };
    Factory::Run("Whole");
    EXPECT_EQ(within, before + 1);
    EXPECT_EQ(XML::SettingSessionNames().back(), "Running: \"WholeV2\" service;");
}

TEST_F(Actions, UnknownOnesAreToldAndNothingElse) {
    const std::size_t sessions = XML::SettingSessionNames().size();
    Application::Name("before");
    Application::ExitCode(5);
    for (const std::string key : {"", "No.Such", "whole"}) {
        LogCapture log;
        Factory::Run(key);
        EXPECT_EQ(log.Texts(EMessageType::Error),
                  std::vector<std::string>{"Action \"" + key + "\" not found! running aborted."});
        EXPECT_EQ(log.Lines().size(), 1u);
    }
    EXPECT_EQ(Application::Name(), "before");
    EXPECT_EQ(Application::ExitCode(), 5);
    EXPECT_EQ(XML::SettingSessionNames().size(), sessions);
    EXPECT_EQ(runs, 0);
    Application::ExitCode(0);
}

TEST_F(Actions, SetTheTitleBeforeAndBehind) {
    Device device;
    const KM::Test::LogOn log(device);
    std::size_t titlesWithin = 0;
    work = [&] { titlesWithin = device.titles.size(); };
    Factory::Run("Whole");
    EXPECT_EQ(titlesWithin, 1u);
    EXPECT_EQ(device.titles, (std::vector<std::string>{"WholeV2", "WholeV2"}));
}

TEST_F(Actions, SetTheirOwnTitleBehindOthers) {
    Device device;
    const KM::Test::LogOn log(device);
    work = [] {
        if (runs == 1) Factory::Run("KM.ByAddress");
    };
    Factory::Run("Whole");
    EXPECT_EQ(device.titles, (std::vector<std::string>{"WholeV2", "ByAddressV3", "ByAddressV3", "WholeV2"}));
}

TEST_F(Actions, LeaveTheTitleAloneIfTheSettingsSaySo) {
    Device device;
    const KM::Test::LogOn log(device);
    XML::Element& setting = Settings::ToXMLElement("Console.WriteAppNameInConsoleTitle");
    setting.V("N");
    Factory::Run("Whole");
    EXPECT_TRUE(device.titles.empty());
    // Each title asks anew.
    work = [&] { setting.V("Y"); };
    Factory::Run("Whole");
    EXPECT_EQ(device.titles.size(), 1u);
}

TEST_F(Actions, ExceptionsPassThrough) {
    work = [] { throw 3; };
    EXPECT_THROW(Factory::Run("Whole"), int);
    work = [] { throw std::runtime_error("x"); };
    EXPECT_THROW(Factory::Run("Whole"), std::runtime_error);
    work = [] { throw XUserAbort(); };
    EXPECT_THROW(Factory::Run("Whole"), XUserAbort);
    work = [] { throw XNone(); };
    EXPECT_THROW(Factory::Run("Whole"), XNone);
    EXPECT_EQ(runs, 4);
}

TEST_F(Actions, WithoutResultLeaveThePlainTag) {
    struct NoneOfATool : XNone {};
    work = [] { throw NoneOfATool(); };
    std::string caught = "nothing";
    try {
        Factory::Run("Whole");
    } catch (const NoneOfATool&) {
        caught = "the relative";
    } catch (const XNone&) {
        caught = "the plain tag";
    }
    EXPECT_EQ(caught, "the plain tag");
}

TEST_F(Actions, CanRunOthers) {
    work = [] {
        if (runs == 1) Factory::Run("KM.ByAddress");
    };
    Factory::Run("Whole");
    EXPECT_EQ(runs, 2);
}

TEST_F(Actions, AreListedInTheOrderOfTheirKeys) {
    LogCapture log;
    Factory::DumpRegisteredActions();
    EXPECT_EQ(log.Texts(EMessageType::Info),
              (std::vector<std::string>{
                  "Action: Actions.KM.ByAddress, Version: V3", "Action: Actions.KM.ToolPathGenerator, Version: V1.0",
                  "Action: Actions.KM.ToolPathGenerators, Version: 1",
                  "Action: Actions.ToolPathGenerator, Version: ", "Action: Actions.Whole, Version: V2"}));
    ASSERT_FALSE(log.Lines().empty());
    EXPECT_EQ(log.Lines().front(), "<DumpRegisteredActions>");
    EXPECT_EQ(log.Lines().back(), "</DumpRegisteredActions>");
}

TEST_F(Actions, ASecondOneOfAKeyIsRefused) {
    LogCapture log;
    EXPECT_THROW(FactorySubscriber("Whole", "V7", Act, "Bool", "other", "", ""),
                 FactorySubscriber::XTypeAlreadyRegistered);
    EXPECT_EQ(log.Texts(EMessageType::Error),
              std::vector<std::string>{"The key \"Whole\" has been already registered!"});
    EXPECT_EQ(Settings::ToString("Actions.Whole.Version"), "V2") << "settings as they were";
    EXPECT_EQ(Settings::ToXMLElement("Actions.Whole").AttributeValue("Type"), "String");
    Factory::Run("Whole");
    EXPECT_EQ(runs, 1);
}

TEST_F(Actions, WithoutFunctionAreRefused) {
    LogCapture log;
    const FactorySubscriber none("KM.None", "1", static_cast<void (*)()>(nullptr), "", "", "", "");
    const FactorySubscriber noAddress("KM.None", "1", static_cast<void*>(nullptr), "", "", "", "");
    const FactorySubscriber nothing("KM.None", "1", nullptr, "", "", "", "");
    EXPECT_FALSE(Factory::Exists("KM.None"));
    EXPECT_EQ(Settings::ToString("Actions.KM.None.Version"), "");
    EXPECT_EQ(log.Count(EMessageType::Error), 3);
}

TEST_F(Actions, OtherFailuresOnlyLoseTheAction) {
    class Thrower : public Device {
        void OnBegin() override { throw std::runtime_error("device"); }
    } device;
    const KM::Test::LogOn log(device);
    // The message fails, and with it the refusal.
    EXPECT_NO_THROW(FactorySubscriber("Whole", "V7", Act, "", "", "", ""));
    Console::IsDumpEnabled(false);
    Factory::Run("Whole");
    EXPECT_EQ(Application::Name(), "WholeV2");
}

TEST(ActionsAtLoad, TwoOfOneKeyEndTheProcess) {
    const KM::Test::ProgramEnd end = KM::Test::RunProgram(KM_TWICE_CHILD, {}, "/");
    EXPECT_EQ(end.signal, SIGABRT) << "exit code " << end.exitCode;
    EXPECT_NE(end.output.find("<Error>The key \"Test.Twice\" has been already registered!</Error>"), std::string::npos)
        << end.output;
    EXPECT_NE(end.output.find("XTypeAlreadyRegistered"), std::string::npos) << end.output;
}

}  // namespace
}  // namespace KM
