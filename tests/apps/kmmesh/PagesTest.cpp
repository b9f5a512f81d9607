#include "Pages/Pages.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "Help.h"
#include "Support/Program.h"
#include "ToolRun.h"

namespace KM::Tool {
namespace {

using Test::Lines;
using Test::ProgramEnd;
using Test::RunProgram;
using Test::TempFolder;
using Words = std::vector<std::string>;

std::string PageNamed(const std::string& name) { return KM_TOOL_PAGES "/" + name; }

/// What bash offers for the last of these words, sorted. The words stand behind "kmmesh", in a folder of some files.
class Completion {
public:
    Completion() {
        for (const char* file : {"a b.stl", "B.STL", "job.xml", "notes.txt"}) folder_.Write(file, "");
        std::filesystem::create_directory(folder_ / "old");
    }

    Words Of(const Words& words) const {
        Words arguments{"--norc", "-c",
                        ". \"$0\"; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1)); _kmmesh; "
                        "printf '%s\\n' \"${COMPREPLY[@]}\"",
                        PageNamed("kmmesh"), "kmmesh"};
        arguments.insert(arguments.end(), words.begin(), words.end());
        const ProgramEnd end = RunProgram("/bin/bash", arguments, folder_ / "");
        EXPECT_EQ(end.exitCode, 0) << end.output;
        Words offers = Lines(end.output);
        std::erase(offers, "");
        std::sort(offers.begin(), offers.end());
        return offers;
    }

private:
    TempFolder folder_;
};

const Words Parts{"B.STL", "a b.stl", "old"};
const Words AllFiles{"B.STL", "a b.stl", "job.xml", "notes.txt", "old"};
const Words Directions{"-x", "-y", "-z", "x", "y", "z"};

Words OptionsOf(const Verb* verb) {
    Words options;
    for (const CommonOption& common : CommonOptions()) {
        options.push_back("--" + common.option.name);
        if (common.letter != '\0') options.push_back(std::string("-") + common.letter);
    }
    for (const Option& option : verb->options)
        if (!IsPositional(option.kind)) options.push_back("--" + option.name);
    std::sort(options.begin(), options.end());
    return options;
}

TEST(BashCompletion, OffersVerbs) {
    Words verbs;
    for (const Verb* verb : AllVerbs()) verbs.push_back(verb->name);
    const Completion completion;
    EXPECT_EQ(completion.Of({""}), verbs);
    EXPECT_EQ(completion.Of({"-q", ""}), verbs);
    EXPECT_EQ(completion.Of({"--verbose", "4", ""}), verbs);
    EXPECT_EQ(completion.Of({"--save", "=", "job.xml", ""}), verbs);
    EXPECT_EQ(completion.Of({"lo"}), Words{"lods"});
    EXPECT_EQ(completion.Of({"--v"}), (Words{"--verbose", "--version"}));
}

TEST(BashCompletion, OffersTheOptionsOfEachVerb) {
    const Completion completion;
    for (const Verb* verb : AllVerbs()) EXPECT_EQ(completion.Of({verb->name, "-"}), OptionsOf(verb)) << verb->name;
    EXPECT_EQ(completion.Of({"lods", "a b.stl", "--t"}), (Words{"--text", "--tolerances"}));
    EXPECT_EQ(completion.Of({"settings", ""}), completion.Of({"settings", "-"}));
}

TEST(BashCompletion, OffersValues) {
    const Completion completion;
    EXPECT_EQ(completion.Of({"draft", "--view", ""}), Directions);
    EXPECT_EQ(completion.Of({"divide", "--normal", "-"}), (Words{"-x", "-y", "-z"}));
    EXPECT_EQ(completion.Of({"divide", "--normal", "="}), Directions);
    EXPECT_EQ(completion.Of({"divide", "--normal", "=", "-z"}), Words{"-z"});
    EXPECT_EQ(completion.Of({"split", "--axes", "xy"}), (Words{"xy", "xyz"}));
    EXPECT_EQ(completion.Of({"info", "--verbose", ""}), (Words{"0", "1", "2", "3", "4", "5", "6"}));
    EXPECT_EQ(completion.Of({"geodesic", "--bands", ""}), Words{});
}

TEST(BashCompletion, OffersFiles) {
    const Completion completion;
    EXPECT_EQ(completion.Of({"info", ""}), Parts);
    EXPECT_EQ(completion.Of({"lods", "--text", "B.STL", "a"}), Words{"a b.stl"});
    EXPECT_EQ(completion.Of({"info", "no"}), Words{"notes.txt"});  // the name of a part may end in anything
    EXPECT_EQ(completion.Of({"lods", "--out", ""}), AllFiles);
    EXPECT_EQ(completion.Of({"eval", ""}), AllFiles);
    EXPECT_EQ(completion.Of({"info", "--save", ""}), (Words{"job.xml", "old"}));
    EXPECT_EQ(completion.Of({"j"}), Words{"job.xml"});
    EXPECT_EQ(completion.Of({"job.xml", ""}), AllFiles);
    EXPECT_EQ(completion.Of({"info", "--", ""}), AllFiles);
}

/// The text without the marks of the formatter for fonts and for characters that it would take for others.
std::string Unmarked(std::string text) {
    for (const auto& [mark, plain] : {std::pair{"\\fB", ""}, {"\\fI", ""}, {"\\fR", ""}, {"\\-", "-"}})
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark))
            text.replace(at, std::string(mark).size(), plain);
    return text;
}

/// All warnings on, for a device of plain text.
ProgramEnd Formatted(const std::string& page, const std::string& option) {
    return RunProgram("/bin/sh", {"-c", "exec groff -man -Tascii -ww \"$@\"", "groff", option, page}, "/");
}

TEST(ManPage, IsFormattedWithoutAWarning) {
    const ProgramEnd end = Formatted(PageNamed("kmmesh.1"), "-z");
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_EQ(end.output, "");
}

TEST(ManPage, NamesAllThatTheHelpNames) {
    const std::string page = Unmarked(ManPage(AllVerbs()));
    const auto expectHas = [&](const std::string& text) { EXPECT_NE(page.find(text), std::string::npos) << text; };
    for (const Verb* verb : AllVerbs()) {
        expectHas("\n.SS " + verb->name + '\n');
        for (const Option& option : verb->options)
            expectHas(".TP\n" + LabelOf(option) + '\n' + MeaningOf(option) + '\n');
    }
    for (const CommonOption& common : CommonOptions()) expectHas(".TP\n" + LabelOf(common) + '\n');
    for (const Ending& ending : Endings()) expectHas(".TP\n" + std::to_string(ending.exitCode) + '\n' + ending.meaning);
}

TEST(ManPage, ShowsTextsAsTheyStand) {
    const Verb probe{"probe", "'does' nothing", {{"a", Kind::Text, "", ".SH a \\ `b` ^ ~ 'c'"}}, nullptr};
    const TempFolder folder;
    folder.Write("probe.1", ManPage({&probe}));
    const ProgramEnd end = Formatted(folder / "probe.1", "-P-c");
    EXPECT_NE(end.output.find(".SH a \\ `b` ^ ~ 'c'"), std::string::npos) << end.output;
    EXPECT_NE(end.output.find("'does' nothing."), std::string::npos) << end.output;
}

TEST(FishCompletion, HasARuleForEachVerbAndOption) {
    const Verb probe{"probe", "does nobody's work", {InputFiles(), {"way", Kind::Direction, "z", "the way"}}, nullptr};
    const std::string text = FishCompletion({&probe});
    for (const char* rule :
         {"complete -c kmmesh -n 'not __fish_seen_subcommand_from probe' -a probe -d 'does nobody\\'s work'\n",
          "complete -c kmmesh -n '__fish_seen_subcommand_from probe' -F\n",
          "complete -c kmmesh -n '__fish_seen_subcommand_from probe' -l way -d 'the way' -x -a 'x y z -x -y -z'\n"})
        EXPECT_NE(text.find(rule), std::string::npos) << rule;
}

TEST(ZshCompletion, HasASpecificationOfEachVerbAndOption) {
    const Verb probe{"probe", "does: nobody's", {InputFiles(), {"way", Kind::Direction, "z", "a [b]"}}, nullptr};
    const std::string text = ZshCompletion({&probe});
    for (const char* part : {"#compdef kmmesh\n", "'probe:does\\: nobody'\\''s'", "'*:FILE...:_files -g \"*.(#i)stl\"'",
                             "'--way[a \\[b\\]]:X,Y,Z:(x y z -x -y -z)'", "'(-q --quiet)'{-q,--quiet}'[neither "})
        EXPECT_NE(text.find(part), std::string::npos) << part;
}

}  // namespace
}  // namespace KM::Tool
