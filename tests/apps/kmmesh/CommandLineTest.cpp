#include "CommandLine.h"

#include <gtest/gtest.h>

namespace KM::Tool {
namespace {

using Words = std::vector<std::string>;

TEST(IsForPeople, TellsTheTwoRoadsApart) {
    for (const Words& words : {Words{"info"}, {"info", "a.xml"}, {"--help"}, {"-q"}, {"decmate", "a.stl"}})
        EXPECT_TRUE(IsForPeople(words)) << words.front();
    for (const Words& words : {Words{}, {"a.xml"}, {"/C", "a.xml"}, {"/T"}, {"dir/info"}, {""}, {"a.stl", "--help"}})
        EXPECT_FALSE(IsForPeople(words));
}

TEST(CommandLine, TakesAVerbWithItsOptions) {
    const CommandLine line =
        Parse({"-q", "lods", "a.stl", "--tolerances", "0,1%", "--text", "b.stl", "--verbose", "4", "--save", "j.XML"});
    ASSERT_EQ(line.fault, "");
    ASSERT_NE(line.request.verb, nullptr);
    EXPECT_EQ(line.request.verb->name, "lods");
    EXPECT_EQ(line.request.values.at("files"), (Words{"a.stl", "b.stl"}));
    EXPECT_EQ(line.request.values.at("tolerances"), Words{"0,1%"});
    EXPECT_EQ(line.request.values.at("text"), Words{"Y"});
    EXPECT_FALSE(line.request.values.contains("out"));
    EXPECT_TRUE(line.request.isQuiet);
    EXPECT_EQ(line.request.verbosity, 4);
    EXPECT_EQ(line.request.save, "j.XML");
}

TEST(CommandLine, TakesOneValueAnOption) {
    for (const Words& words : {Words{"convert", "--out", "b.stl", "a.stl"}, {"convert", "a.stl", "--out", "b.stl"}}) {
        const CommandLine line = Parse(words);
        ASSERT_EQ(line.fault, "");
        EXPECT_EQ(line.request.values.at("files"), Words{"a.stl"});
        EXPECT_EQ(line.request.values.at("out"), Words{"b.stl"});
    }
    EXPECT_EQ(Parse({"draft", "--direction", "-z", "a.stl"}).request.values.at("direction"), Words{"-z"});
    EXPECT_EQ(Parse({"draft", "--direction", "-1,0,0", "a.stl"}).request.values.at("direction"), Words{"-1,0,0"});
    EXPECT_EQ(Parse({"fill", "--out", "b", "--edges", "-1", "a.stl"}).request.values.at("edges"), Words{"-1"});
}

TEST(CommandLine, TakesFilesOfAnyName) {
    const CommandLine line = Parse({"info", "info", "--", "--help", "convert", "-q"});
    ASSERT_EQ(line.fault, "");
    EXPECT_EQ(line.request.values.at("files"), (Words{"info", "--help", "convert", "-q"}));
    EXPECT_FALSE(line.request.isQuiet);
    EXPECT_EQ(Parse({"info", "--", "-a"}).request.values.at("files"), Words{"-a"});
    EXPECT_EQ(Parse({"info", "--"}).exitCode, 3);
    EXPECT_EQ(Parse({"settings", "--", "a"}).exitCode, 4);
}

TEST(CommandLine, TakesExpressionsOfAnyForm) {
    const CommandLine line = Parse({"-q", "eval", "-3", "[1, 2]", "--exact", "{}", "-q", "info", "--save", "a.xml",
                                    "FILE", "-Pi", "--", "--list"});
    ASSERT_EQ(line.fault, "");
    EXPECT_EQ(line.request.values.at("expressions"),
              (Words{" -3", " [1, 2]", " {}", " info", " FILE", " -Pi", "--list"}));
    EXPECT_EQ(line.request.values.at("exact"), Words{"Y"});
    EXPECT_EQ(line.request.save, "a.xml");
    EXPECT_EQ(Parse({"eval"}).fault, "");
    EXPECT_NE(Parse({"eval", "-h"}).text, "");
}

TEST(CommandLine, ShowsHelpWhateverIsLacking) {
    EXPECT_NE(Parse({"--help"}).text.find("Verbs:"), std::string::npos);
    EXPECT_NE(Parse({"convert", "-h"}).text.find("kmmesh convert: "), std::string::npos);
    EXPECT_NE(Parse({"info", "a.stl", "--help"}).text.find("kmmesh info: "), std::string::npos);
    EXPECT_TRUE(Parse({"--version"}).text.starts_with("kmmesh "));
}

TEST(CommandLine, ExplainsWhatIsWrongInOneLine) {
    const struct {
        Words words;
        int exitCode;
        const char* fault;
    } wrong[] = {
        {{"decmate", "a.stl"}, 4, "decmate: no such verb or file; see kmmesh --help"},
        {{"--bad"}, 4, "--bad: no such verb or option; see kmmesh --help"},
        {{"-q", "decmate"}, 4, "decmate: no such verb or option; see kmmesh --help"},
        {{"-q"}, 3, "no verb; see kmmesh --help"},
        {{"info"}, 3, "FILE: is needed; see kmmesh info --help"},
        {{"convert", "a.stl"}, 3, "--out: is needed; see kmmesh convert --help"},
        {{"convert", "a.stl", "--bad"}, 4, "--bad: not expected here; see kmmesh convert --help"},
        {{"info", "a.stl", "--bad"}, 4, "--bad: not expected here; see kmmesh info --help"},
        {{"settings", "a.stl"}, 4, "a.stl: not expected here; see kmmesh settings --help"},
        {{"settings", "--", "a", "b"}, 4, "a: not expected here; see kmmesh settings --help"},
        {{"info", "a.stl", "--verbose", "7"}, 4, "--verbose: \"7\" is no level from 0 to 6; see kmmesh info --help"},
        {{"info", "a.stl", "--verbose"}, 4, "--verbose: takes one value; see kmmesh info --help"},
        {{"info", "a.stl", "--save", "j.txt"}, 4, "--save: \"j.txt\" does not end in .xml; see kmmesh info --help"},
        {{"lods", "a.stl", "--out", "a", "--out", "b"}, 4, "--out: takes one value; see kmmesh lods --help"},
        {{"lods", "a.stl", "--text=x"}, 4, "--text: takes no value; see kmmesh lods --help"},
        {{"draft", "a.stl", "--limits", "5,90"}, 4, "--limits: 90 is not between 0 and 90; see kmmesh draft --help"},
        {{"split", "a.stl", "--slabs", "0"}, 4, "--slabs: 0 is not from 1 to 10000; see kmmesh split --help"},
        {{"split", "a.stl", "--overlap", "-1"}, 4, "--overlap: -1 is less than 0; see kmmesh split --help"},
        {{"split", "a.stl", "--overlap", "inf"}, 4, "--overlap: inf is no finite number; see kmmesh split --help"},
        {{"split", "a.stl", "--axes", "w"},
         4,
         "--axes: \"w\": is not made of the letters x, y and z; see kmmesh split --help"},
        {{"fill", "a.stl", "--edges", "-2", "--out", "b"}, 4, "--edges: -2 is less than -1; see kmmesh fill --help"},
        {{"lods", "a.stl", "--tolerances", "x"},
         4,
         "--tolerances: \"x\": is neither a length, such as 0.05, nor a share of the diagonal, such as 0.1%; see "
         "kmmesh lods --help"},
    };
    for (const auto& [words, exitCode, fault] : wrong) {
        const CommandLine line = Parse(words);
        EXPECT_EQ(line.fault, fault);
        EXPECT_EQ(line.exitCode, exitCode) << fault;
        EXPECT_EQ(line.request.verb, nullptr);
        EXPECT_EQ(line.text, "");
    }
}

}  // namespace
}  // namespace KM::Tool
