#include "Help.h"

#include <gtest/gtest.h>

#include "ToolRun.h"

namespace KM::Tool {
namespace {

using Test::Lines;

void ExpectFitsAScreen(const std::string& text) {
    EXPECT_LE(Lines(text).size(), 23u) << text;  // the prompt takes one of 24
    for (const std::string& line : Lines(text)) EXPECT_LE(line.size(), 80u) << line;
}

TEST(Help, FitsAScreen) {
    ExpectFitsAScreen(HelpOfTool());
    for (const Verb* verb : AllVerbs()) ExpectFitsAScreen(HelpOf(*verb));
}

TEST(Help, NamesEachVerbAndEachOption) {
    for (const Verb* verb : AllVerbs()) {
        EXPECT_NE(HelpOfTool().find("\n  " + verb->name + ' '), std::string::npos) << verb->name;
        for (const Option& option : verb->options) {
            const std::string label =
                IsPositional(option.kind) ? NamesOf(option.kind).placeholder : "--" + option.name + " ";
            EXPECT_NE(HelpOf(*verb).find("\n  " + label), std::string::npos) << label;
        }
    }
}

TEST(Help, ShowsDefaultsAndWhatIsNeeded) {
    const Verb verb{
        "probe", "probes", {{"a", Kind::Text, "x", "first"}, {"b", Kind::Number, "", "second", true}}, nullptr};
    EXPECT_NE(HelpOf(verb).find("  --a TEXT           first (x)\n"), std::string::npos) << HelpOf(verb);
    EXPECT_NE(HelpOf(verb).find("  --b N              second (needed)\n"), std::string::npos) << HelpOf(verb);
}

}  // namespace
}  // namespace KM::Tool
