#include "Verb.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "Failure.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::Tool {
namespace {

using Texts = std::vector<std::string>;

const Verb Probe{"two-words",
                 "does nothing",
                 {InputFiles(),
                  {"whole-number", Kind::Whole, "7", ""},
                  {"ratio", Kind::Number, "0.5", ""},
                  {"on", Kind::Switch, "N", ""},
                  {"title", Kind::Text, "", "", true},
                  {"levels", Kind::Distances, "25%,1", ""},
                  {"limit", Kind::Length, "25%", ""}},
                 nullptr};

void Set(const std::string& option, const std::string& value) {
    Settings::ToXMLElement(Probe.SettingOf(option)).V(value);
}

TEST(Verb, NamesItsKeyAndItsSettings) {
    EXPECT_EQ(Probe.Key(), "Mesh.TwoWords");
    EXPECT_EQ(Probe.SettingOf("whole-number"), "Actions.Mesh.TwoWords.WholeNumber");
    EXPECT_THROW(Probe.SettingOf("none"), KmException);
}

TEST(Values, AreReadByKind) {
    Set("whole-number", "0x10");
    Set("ratio", "2.5");
    Set("on", "Yes");
    Set("title", "a b");
    Set("levels", "25%,1");
    Set("limit", "25%");
    const Values values(Probe);
    EXPECT_EQ(values.Whole("whole-number"), 16);
    EXPECT_EQ(values.Number("ratio"), 2.5);
    EXPECT_TRUE(values.IsOn("on"));
    EXPECT_EQ(values.Text("title"), "a b");
    EXPECT_EQ(values.Length("limit", 8.0), 2.0);
    EXPECT_EQ(values.Distances("levels", 8.0), (std::vector{1.0, 2.0}));
    Set("title", "");
    Set("levels", "x");
    EXPECT_THROW(values.Text("title"), Failure);
    try {
        values.Distances("levels", 8.0);
        FAIL();
    } catch (const Failure& failure) {
        EXPECT_TRUE(std::string(failure.what()).starts_with("Actions.Mesh.TwoWords.Levels: \"x\": is neither "));
    }
}

TEST(Values, TakeFilesFromTheSettingAndItsChildren) {
    const Values values(Probe);
    EXPECT_THROW(values.Files("files"), Failure);
    Set("files", "a.stl");
    EXPECT_EQ(values.Files("files"), Texts{"a.stl"});
    XML::Element& setting = Settings::ToXMLElement(Probe.SettingOf("files"));
    setting.NewChild("Second", "b.stl");
    setting.NewChild("First", "c.stl");
    EXPECT_EQ(values.Files("files"), (Texts{"a.stl", "b.stl", "c.stl"}));
}

TEST(Values, TakeTextsOfSectionsAsTheyAre) {
    XML::Element& setting = Settings::ToXMLElement(Probe.SettingOf("title"));
    setting.V("");
    EXPECT_TRUE(Values(Probe).Texts("title").empty());
    setting.NewChild(XML::CDATAName, "%1\n");
    setting.NewChild(XML::CommentName, "none");
    setting.NewChild("Second").NewChild(XML::CDATAName, " b ");
    setting.NewChild("Third", "c");
    EXPECT_EQ(Values(Probe).Texts("title"), (Texts{"%1\n", " b ", "c"}));
}

TEST(AllVerbs, AreSortedAndDescribed) {
    Texts names;
    for (const Verb* verb : AllVerbs()) {
        SCOPED_TRACE(verb->name);
        names.push_back(verb->name);
        EXPECT_NE(verb->run, nullptr);
        EXPECT_FALSE(verb->help.empty() || verb->help.ends_with('.'));
        for (const Option& option : verb->options) EXPECT_FALSE(option.help.empty()) << option.name;
    }
    EXPECT_FALSE(names.empty());
    EXPECT_TRUE(std::is_sorted(names.begin(), names.end()));
}

}  // namespace
}  // namespace KM::Tool
