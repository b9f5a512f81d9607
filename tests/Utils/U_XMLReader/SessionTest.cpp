#include "Utils/U_XMLReader/Session.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "Utils/U_XMLReader/Element.h"

namespace KM::XML {
namespace {

// The clock cannot be set back, so this is the one test of the program that moves it.
TEST(Session, DoublesAndStampsWhatIsMadeAndChanged) {
    ASSERT_EQ(GetSettingSession(), 1);
    ASSERT_TRUE(SettingSessionNames().empty());
    Element old("old", "1");
    Element twice("twice", "1");
    EXPECT_EQ(old.SettingSession(), 1);

    IncrementSettingSession("first");
    EXPECT_EQ(GetSettingSession(), 2);
    EXPECT_EQ(Element("made").SettingSession(), 2);
    twice.V("2");
    EXPECT_EQ(twice.SettingSession(), 3);

    IncrementSettingSession("");
    EXPECT_EQ(GetSettingSession(), 4);
    EXPECT_EQ(SettingSessionNames(), (std::vector<std::string>{"first", ""}));
    old.V("1");
    EXPECT_EQ(old.SettingSession(), 1) << "the value that stands is no change";
    old.V("2");
    EXPECT_EQ(old.SettingSession(), 5);
    twice.V("3");
    EXPECT_EQ(twice.SettingSession(), 7);

    EXPECT_EQ(old["key"].SettingSession(), 4) << "a missing part is made now";
    EXPECT_EQ((old += twice).SettingSession(), 7) << "a copy keeps its history";
    Attribute attribute("a", "1");
    attribute.SettingSession(1);
    old += attribute;
    EXPECT_EQ(old.Attributes().at("a").SettingSession(), 1);
    old.N("new");
    EXPECT_EQ(old.SettingSession(), 5) << "a name is no value";
    old.VAddress() = "direct";
    EXPECT_EQ(old.SettingSession(), 5);
}

TEST(Session, LeavesTheWordUnguarded) {
    const auto isUnguarded = [] {
        while (GetSettingSession() > 0) IncrementSettingSession("");
        if (GetSettingSession() != -2147483647 - 1) return false;
        IncrementSettingSession("");
        return GetSettingSession() == 0;
    };
    EXPECT_EXIT(std::_Exit(isUnguarded() ? 0 : 1), testing::ExitedWithCode(0), "");
}

TEST(Session, StampsAreNotDumpedAtStart) {
    EXPECT_FALSE(IsDumpSettingSession());
    SetIsDumpSettingSession(true);
    EXPECT_TRUE(IsDumpSettingSession());
    SetIsDumpSettingSession(false);
}

}  // namespace
}  // namespace KM::XML
