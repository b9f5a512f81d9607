#include "Utils/U_Settings/Settings.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "Support/LogCapture.h"
#include "Utils/U_App/Arguments.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/LogState.h"

namespace KM {
namespace {

const Settings::Add ownKey("Test.Own.Key", "5", "Int32", "help", "", "", "", "own.cpp", "7", true);

using Attributes = std::map<std::string, std::string>;

Attributes AttributesOf(const std::string& key) {
    Attributes result;
    for (const auto& [name, attribute] : Settings::ToXMLElement(key).Attributes()) result[name] = attribute.V();
    return result;
}

// A command line, and what is logged about it, for the time of a test.
class Redirection : public testing::Test {
protected:
    Redirection() { Application::Arguments() = {"tool", "a.xml", "b.xml", "%3"}; }
    ~Redirection() override {
        Application::Arguments().clear();
        Application::RedirectionShifting(0);
    }

    std::string Read(const std::string& value) {
        Settings::ToXMLElement("Test.Redirected").V(value);
        return Settings::ToString("Test.Redirected");
    }

    KM::Test::LogCapture log_;
};

using Texts = std::vector<std::string>;
constexpr const char* BadRedirection = "Found an invalide indirerection. Return void!";

TEST(SettingsAdd, MakesTheKeyWhileStaticsAreInitialised) {
    EXPECT_EQ(Settings::ToInt("Test.Own.Key"), 5);
    EXPECT_EQ(AttributesOf("Test.Own.Key"),
              (Attributes{{"Default", "5"}, {"File", "own.cpp"}, {"Help", "help"}, {"Line", "7"}, {"Type", "Int32"}}));
    EXPECT_TRUE(AttributesOf("Test.Own").empty()) << "groups need no declaration of their own";
}

TEST(SettingsAdd, WritesEachAttributeThatIsNotEmpty) {
    const char* names[] = {"Default", "Type", "Help", "Policy", "BoundLower", "BoundUpper", "File", "Line"};
    for (unsigned mask = 0; mask < 256; ++mask) {
        std::string texts[8];
        Attributes expected;
        for (unsigned i = 0; i < 8; ++i) {
            if ((mask >> i & 1) == 0) continue;
            texts[i] = "text " + std::to_string(i);
            expected[names[i]] = texts[i];
        }
        const std::string key = "Test.Mask.K" + std::to_string(mask);
        Settings::Add(key, texts[0], texts[1], texts[2], texts[3], texts[4], texts[5], texts[6], texts[7], true);
        EXPECT_EQ(AttributesOf(key), expected) << mask;
        EXPECT_EQ(Settings::ToString(key), texts[0]);
    }
}

TEST(SettingsAdd, WithoutExportHasNoDefaultButItsValue) {
    Settings::Add("Test.Hidden", "1", "Int32", "", "", "", "", "", "", false);
    EXPECT_EQ(AttributesOf("Test.Hidden"), (Attributes{{"Type", "Int32"}}));
    EXPECT_EQ(Settings::ToString("Test.Hidden"), "1");
}

TEST(SettingsAdd, AgainOverwrites) {
    Settings::Add("Test.Again", "1", "Int32", "help", "", "", "", "", "", true);
    Settings::Add("Test.Again", "2", "String", "", "", "", "", "", "", true);
    EXPECT_EQ(AttributesOf("Test.Again"), (Attributes{{"Default", "2"}, {"Help", "help"}, {"Type", "String"}}));
    EXPECT_EQ(Settings::ToString("Test.Again"), "2");
}

TEST(SettingsAdd, StampsTheValue) {
    Settings::ToXMLElement("Test.Stamp").SettingSession(0);
    Settings::Add("Test.Stamp", "1", "", "", "", "", "", "", "", true);
    EXPECT_EQ(Settings::ToXMLElement("Test.Stamp").SettingSession(), 1);
}

TEST(Settings, RootIsNamedSettings) {
    XML::Element& root = Settings::ToXMLElement("");
    EXPECT_EQ(root.N(), "Settings");
    EXPECT_EQ(root.V(), "");
    EXPECT_EQ(root.P(), nullptr);
    EXPECT_EQ(&root["Console"], &Settings::ToXMLElement("Console"));
}

TEST(Settings, ReadOfAnUnknownKeyMakesNothing) {
    const std::size_t before = Settings::ToXMLElement("").Children().size();
    EXPECT_EQ(Settings::ToString("No.Such.Key"), "");
    EXPECT_EQ(Settings::ToInt("No.Such.Key"), 1);
    EXPECT_TRUE(Settings::ToBool("No.Such.Key"));
    EXPECT_EQ(Settings::ToDouble("No.Such.Key"), 0.0);
    EXPECT_EQ(Settings::ToXMLElement("").Children().size(), before);
}

TEST(Settings, ElementOfAnUnknownKeyIsMadeWithItsGroups) {
    EXPECT_EQ(GetFullName(Settings::ToXMLElement("Test.Such.Key")), "Settings.Test.Such.Key");
    EXPECT_EQ(Settings::ToXMLElement("Test.Such").Children().size(), 1u);
}

TEST(Settings, QuotesAreKept) {
    for (const char* value : {"\"a\"", "\"a", "\"", "a\""}) {
        Settings::ToXMLElement("Test.Quoted").V(value);
        EXPECT_EQ(Settings::ToString("Test.Quoted"), value);
    }
}

TEST(Settings, TypedReadsConvert) {
    XML::Element& element = Settings::ToXMLElement("Test.Typed");
    element.V("0x10");
    EXPECT_EQ(Settings::ToInt("Test.Typed"), 16);
    element.V("off");
    EXPECT_FALSE(Settings::ToBool("Test.Typed"));
    element.V("-3");
    EXPECT_TRUE(Settings::ToBool("Test.Typed"));
    element.V("2.5 mm");
    EXPECT_EQ(Settings::ToDouble("Test.Typed"), 2.5);
}

TEST(Settings, IsParallelFollowsItsSwitch) {
    XML::Element& element = Settings::ToXMLElement("Behavior.IsParallel");
    element.V("n");
    EXPECT_FALSE(Settings::IsParallel());
    element.V("y");
    EXPECT_TRUE(Settings::IsParallel());
}

TEST_F(Redirection, GivesTheArgument) {
    EXPECT_EQ(Read("%0"), "tool");
    EXPECT_EQ(Read("%1"), "a.xml");
    EXPECT_EQ(Read("%b10"), "b.xml");
    EXPECT_EQ(Read("%"), "a.xml") << "no number reads as 1";
    EXPECT_EQ(Read("%text"), "tool") << "text reads as 0";
    EXPECT_TRUE(log_.Lines().empty());
}

TEST_F(Redirection, CountsFromTheLastConfigurationFile) {
    Application::RedirectionShifting(2);
    EXPECT_EQ(Read("%0"), "b.xml");
    EXPECT_EQ(Read("%-2"), "tool");
    EXPECT_TRUE(log_.Lines().empty());
}

TEST_F(Redirection, IsNotLookedAtAgain) { EXPECT_EQ(Read("%3"), "%3"); }

TEST_F(Redirection, BeyondTheArgumentsIsAnErrorAndEmpty) {
    Texts expected;
    for (const char* value : {"%4", "%5", "%-1", "%2147483647", "%-2147483648", "%0xFFFFFFFF"}) {
        for (const int shift : {0, 4, 2147483647}) {
            Application::RedirectionShifting(shift);
            const long long index = XML::Element("n", value + 1).ToInt() + static_cast<long long>(shift);
            if (index >= 0 && index < 4) continue;
            EXPECT_EQ(Read(value), "") << value << " from " << shift;
            expected.emplace_back(BadRedirection);
            EXPECT_EQ(log_.Texts(Verbose::EMessageType::Error), expected) << value << " from " << shift;
        }
    }
}

// Each message asks the check point, and a check point reads settings.
TEST_F(Redirection, OfACheckPointsOwnKeyIsToldOnce) {
    Verbose::SetCheckPoint([] { EXPECT_EQ(Settings::ToString("Test.Redirected"), ""); });
    EXPECT_EQ(Read("%9"), "");
    EXPECT_EQ(log_.Texts(Verbose::EMessageType::Error), Texts{BadRedirection});
    Verbose::SetCheckPoint([] { throw XUserAbort(); });
    EXPECT_THROW(Read("%9"), XUserAbort);
    Verbose::SetCheckPoint(nullptr);
    EXPECT_EQ(Read("%9"), "");
    EXPECT_EQ(log_.Texts(Verbose::EMessageType::Error), (Texts{BadRedirection, BadRedirection}))
        << "after an abort too";
}

TEST_F(Redirection, WorksInTypedReads) {
    Application::Arguments() = {"tool", "0x10", "2.5", "off"};
    Read("%1");
    EXPECT_EQ(Settings::ToInt("Test.Redirected"), 16);
    Read("%2");
    EXPECT_EQ(Settings::ToDouble("Test.Redirected"), 2.5);
    Read("%3");
    EXPECT_FALSE(Settings::ToBool("Test.Redirected"));
}

TEST_F(Redirection, WithoutArgumentsIsAnError) {
    Application::Arguments().clear();
    EXPECT_EQ(Read("%0"), "");
    EXPECT_EQ(log_.Texts(Verbose::EMessageType::Error), Texts{BadRedirection});
    EXPECT_EQ(log_.Lines().size(), 1u);
}

}  // namespace
}  // namespace KM
