#include "Help.h"
#include "Pages.h"
#include "Words.h"

namespace KM::Tool {
namespace {

std::string Quoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text) {
        if (c == '\'' || c == '\\') quoted += '\\';
        quoted += c;
    }
    return quoted + '\'';
}

/// Where the words so far meet this condition; empty for everywhere.
std::string Rule(const std::string& condition, const std::string& what) {
    return "complete -c kmmesh" + (condition.empty() ? "" : " -n " + Quoted(condition)) + ' ' + what + '\n';
}

std::string RuleOf(const std::string& condition, const Option& option, char letter) {
    std::string what = letter != '\0' ? std::string("-s ") + letter + ' ' : "";
    what += "-l " + option.name + " -d " + Quoted(option.help);
    const bool isFile = option.kind == Kind::Path || option.kind == Kind::Configuration;
    const std::string values = ValuesOf(option);
    if (isFile) what += " -r -F";
    else if (option.kind != Kind::Switch) what += values.empty() ? " -x" : " -x -a " + Quoted(values);
    return Rule(condition, what);
}

std::string RulesOf(const Verb& verb) {
    const std::string condition = "__fish_seen_subcommand_from " + verb.name;
    std::string text;
    for (const Option& option : verb.options)
        text += IsPositional(option.kind) ? Rule(condition, "-F") : RuleOf(condition, option, '\0');
    return text;
}

}  // namespace

std::string FishCompletion(const Verbs& verbs) {
    std::string text = "# Completion for kmmesh in fish. Made of the declarations of the tool; see kmmesh --help.\n";
    text += Rule("", "-f");
    const std::string isFirst = "not __fish_seen_subcommand_from " + Joined(VerbNames(verbs), " ");
    for (const Verb* verb : verbs) text += Rule(isFirst, "-a " + verb->name + " -d " + Quoted(verb->help));
    text += Rule(isFirst, "-a '(__fish_complete_suffix .xml | string match -r \".*(?:\\.xml|/)$\")'");
    text += Rule(isFirst, "-l version -d 'the version of the tool'");
    for (const CommonOption& common : CommonOptions()) text += RuleOf("", common.option, common.letter);
    for (const Verb* verb : verbs) text += RulesOf(*verb);
    return text;
}

}  // namespace KM::Tool
