#include "Utils/U_App/SettingComparison.h"

#include <gtest/gtest.h>

namespace KM::Application {
namespace {

XML::Element Setting(const std::string& type, const std::string& value, const std::string& standard) {
    XML::Element setting("S", value);
    if (!type.empty()) setting.SetAttribute("Type", type);
    if (!standard.empty()) setting.SetAttribute("Default", standard);
    return setting;
}

TEST(SettingComparison, GoesByTheType) {
    const struct {
        const char *type, *value, *standard;
        Comparison expected;
    } rows[] = {
        {"", "", "", Comparison::Same},
        {"", "", "x", Comparison::Same},
        {"", "x", "", Comparison::HasNoType},
        {"", "x", "x", Comparison::HasNoType},
        {"Bool", "Y", "yes", Comparison::Same},
        {"Bool", "on", "1", Comparison::Same},
        {"Bool", "N", "y", Comparison::Changed},
        {"Bool", "2", "Y", Comparison::Changed},  // both are on, but the integers differ
        {"Bool", "", "Y", Comparison::Same},      // nothing counts as on
        {"Bool", "N", "", Comparison::Changed},
        {"Int32", "7", "b0111", Comparison::Same},
        {"Int32", "0x10", "16", Comparison::Same},
        {"Int32", "16", "10", Comparison::Changed},
        {"Enum", "5", "5", Comparison::Same},
        {"Enum", "4", "5", Comparison::Changed},
        {"Flag", "b11", "3", Comparison::Same},
        {"Flag", "1", "3", Comparison::Changed},
        {"Real64", "0.50", "0.5", Comparison::Same},
        {"Real64", "0.5", "0.6", Comparison::Changed},
        {"Real64", "", "0", Comparison::Same},
        {"Real64", "nan", "nan", Comparison::Same},
        {"Real64", "inf", "-inf", Comparison::Changed},
        {"AutoReal64", "1e20", "100000000000000000000", Comparison::Same},
        {"AutoReal64", "1e20", "-1e20", Comparison::Changed},
        {"String", "a", "a", Comparison::Same},
        {"String", "a", "A", Comparison::Changed},
        {"String", "", "a", Comparison::Changed},
        {"String", "", "", Comparison::Same},
        {"EnumValue", "1", "2", Comparison::Same},
        {"FlagValue", "1", "2", Comparison::Same},
        {"Descriptor", "1", "2", Comparison::Same},
        {"Real32", "1", "1", Comparison::HasUnknownType},
        {"AutoReal32", "", "", Comparison::HasUnknownType},
        {"bool", "Y", "Y", Comparison::HasUnknownType},
        {"Colour", "Y", "Y", Comparison::HasUnknownType},
    };
    for (const auto& row : rows)
        EXPECT_EQ(CompareWithDefault(Setting(row.type, row.value, row.standard)), row.expected)
            << row.type << " \"" << row.value << "\" \"" << row.standard << '"';
}

TEST(SettingComparison, ShowsBools) {
    const XML::Element setting = Setting("Bool", "", "");
    EXPECT_EQ(Shown(setting, "on"), "Yes");
    EXPECT_EQ(Shown(setting, "7"), "Yes");
    EXPECT_EQ(Shown(setting, ""), "Yes");
    EXPECT_EQ(Shown(setting, "n"), "No");
}

TEST(SettingComparison, ShowsOtherTypesAsTheyAre) {
    for (const char* type : {"Int32", "Real64", "AutoReal64", "String"})
        EXPECT_EQ(Shown(Setting(type, "", ""), "b0111"), "b0111") << type;
}

TEST(SettingComparison, ShowsEnumsByTheFirstThatFits) {
    XML::Element setting = Setting("Enum", "2", "1");
    setting.NewChild(XML::CommentName, "2");
    setting.NewChild("One", "1");
    setting.NewChild("Two", "b10");
    setting.NewChild("Zwei", "2");
    EXPECT_EQ(Shown(setting, "2"), "Two (EnumValue = 2)");
    EXPECT_EQ(Shown(setting, "0x1"), "One (EnumValue = 1)");
    EXPECT_EQ(Shown(setting, "9"), " (EnumValue = 9)");
}

TEST(SettingComparison, ShowsFlagsByAllThatHold) {
    XML::Element setting = Setting("Flag", "", "");
    setting.NewChild("None", "0");
    setting.NewChild("Red", "4");
    setting.NewChild("Green", "2");
    setting.NewChild(XML::CommentName, "2");
    setting.NewChild("Blue", "1");
    EXPECT_EQ(Shown(setting, "5"), "Red | Blue (FlagValue = 5)");
    EXPECT_EQ(Shown(setting, "b111"), "Red | Green | Blue (FlagValue = 7)");
    EXPECT_EQ(Shown(setting, "10"), "Green (FlagValue = 10)");
    EXPECT_EQ(Shown(setting, "0"), " (FlagValue = 0)");
    EXPECT_EQ(Shown(setting, "-1"), "Red | Green | Blue (FlagValue = -1)");
}

}  // namespace
}  // namespace KM::Application
