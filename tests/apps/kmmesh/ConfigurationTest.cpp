#include "Configuration.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Failure.h"
#include "Utils/U_XMLReader/Reader.h"

namespace KM::Tool {
namespace {

namespace fs = std::filesystem;

const Verb Probe{
    "probe",
    "probes",
    {InputFiles(), {"out", Kind::Path, ".", ""}, {"title", Kind::Text, "", ""}, {"on", Kind::Switch, "N", ""}},
    nullptr};
const Verb Evaluating{"probe", "probes", {{"texts", Kind::Expressions, "", ""}}, nullptr};

std::string Here(const std::string& name) { return (fs::current_path() / name).lexically_normal().string(); }

/// The value of a key, as the framework reads it from the text of the configuration.
std::string ValueIn(const std::string& text, const std::string& key) {
    XML::Element root("Settings");
    XML::ReadElementFromString(text, root, true);
    return root.ToString(key);
}

std::string Made(const std::map<std::string, std::vector<std::string>>& values, int verbosity = 0) {
    return ConfigurationOf({&Probe, values, false, verbosity, ""});
}

std::string FaultOf(const std::string& option, const std::string& value) {
    try {
        Made({{option, {value}}});
    } catch (const Misuse& misuse) {
        return misuse.what();
    }
    return "";
}

TEST(Configuration, HoldsTheActionAndWhatWasGiven) {
    const std::string text = Made({{"title", {"a <b> & \"c\" 'd'"}}, {"on", {"Y"}}});
    EXPECT_EQ(ValueIn(text, "Actions.Execute"), "Mesh.Probe");
    EXPECT_EQ(ValueIn(text, "Actions.Mesh.Probe.Title"), "a <b> & \"c\" 'd'");
    EXPECT_EQ(ValueIn(text, "Actions.Mesh.Probe.On"), "Y");
    EXPECT_EQ(text.find("VerboseLevel"), std::string::npos);
    EXPECT_EQ(text.find("Files"), std::string::npos);
}

TEST(Configuration, HoldsTheLevelOfTheLogIfThereIsOne) { EXPECT_EQ(ValueIn(Made({}, 4), "Debug.VerboseLevel"), "4"); }

TEST(Configuration, MakesPathsAbsolute) {
    const std::string one = Made({{"files", {"../a b.stl"}}});
    EXPECT_EQ(ValueIn(one, "Actions.Mesh.Probe.Files"), Here("../a b.stl"));
    EXPECT_EQ(ValueIn(one, "Actions.Mesh.Probe.Out"), Here("."));
    const std::string two = Made({{"files", {"a", "/b"}}, {"out", {"c/d"}}});
    EXPECT_EQ(ValueIn(two, "Actions.Mesh.Probe.Files.F1"), Here("a"));
    EXPECT_EQ(ValueIn(two, "Actions.Mesh.Probe.Files.F2"), "/b");
    EXPECT_EQ(ValueIn(two, "Actions.Mesh.Probe.Out"), Here("c/d"));
}

TEST(Configuration, HoldsExpressionsOfAnyForm) {
    const std::string key = "Actions.Mesh.Probe.Texts";
    const auto made = [](const std::vector<std::string>& words) {
        return ConfigurationOf({&Evaluating, {{"texts", words}}, false, 0, ""});
    };
    EXPECT_EQ(ValueIn(made({" 1 < 2 "}), key), "1 < 2");
    EXPECT_EQ(ValueIn(made({"a.km"}), key), '@' + Here("a.km"));
    EXPECT_EQ(ValueIn(made({"1", "2"}), key + ".F2"), "2");
    for (const std::string text : {"%1", "\"a\" + 1", "X,\n  \"<\n \", &amp;"})
        EXPECT_TRUE(ValueIn(made({text}), key + ".!CDATA!").starts_with(text)) << text;
    EXPECT_EQ(ValueIn(made({"1", "%1"}), key + ".F2.!CDATA!"), "%1");
    for (const char* refused : {"", "@", "%a]]>2", "1\n+]]>"}) EXPECT_THROW(made({refused}), Misuse) << refused;
    EXPECT_EQ(ValueIn(made({"a[b[1]]>2"}), key), "a[b[1]]>2");
}

TEST(Configuration, RefusesWhatItCannotHold) {
    EXPECT_NE(FaultOf("files", "a\nb.stl"), "");
    EXPECT_NE(FaultOf("files", "a.stl "), "");
    EXPECT_NE(FaultOf("title", " a"), "");
    EXPECT_NE(FaultOf("title", "%1"), "");
    EXPECT_NE(FaultOf("files", ""), "");
    EXPECT_EQ(FaultOf("title", "\"a"), "");
    EXPECT_EQ(FaultOf("files", "%1.stl"), "");
    EXPECT_EQ(FaultOf("files", "\"a\".stl"), "");
    EXPECT_EQ(FaultOf("files", "\xC3\xA4&lt;]]>.stl"), "");
}

TEST(TemporaryConfiguration, LivesAsLongAsItIsNeeded) {
    std::string name;
    {
        const TemporaryConfiguration file("<Settings/>");
        name = file.Name();
        EXPECT_TRUE(name.ends_with(".xml"));
        EXPECT_EQ(fs::file_size(name), 11u);
    }
    EXPECT_FALSE(fs::exists(name));
}

}  // namespace
}  // namespace KM::Tool
