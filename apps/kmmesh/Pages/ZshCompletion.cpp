#include "Help.h"
#include "Pages.h"
#include "Words.h"

namespace KM::Tool {
namespace {

/// In single quotes, as a part of what `_arguments` and `_describe` take.
std::string Escaped(const std::string& text) {
    std::string escaped;
    for (const char c : text) {
        if (c == '\'') escaped += "'\\'";
        else if (c == ':' || c == '[' || c == ']' || c == '\\') escaped += '\\';
        escaped += c;
    }
    return escaped;
}

/// What completes a value.
std::string ActionFor(const Option& option) {
    if (option.kind == Kind::Files) return "_files -g \"*.(#i)stl\"";
    if (option.kind == Kind::Configuration) return "_files -g \"*.(#i)xml\"";
    if (option.kind == Kind::Path || option.kind == Kind::Expressions) return "_files";
    const std::string values = ValuesOf(option);
    return values.empty() ? "" : '(' + values + ')';
}

/// Its value behind colons, if it has one.
std::string TailOf(const Option& option) {
    const std::string value = NamesOf(option.kind).placeholder;
    return '[' + Escaped(option.help) + ']' + (value.empty() ? "" : ':' + value.substr(1) + ':' + ActionFor(option));
}

std::string SpecificationOf(const Option& option) {
    if (IsPositional(option.kind))
        return std::string("'*:") + NamesOf(option.kind).placeholder + ':' + ActionFor(option) + '\'';
    return "'--" + option.name + TailOf(option) + '\'';
}

std::string SpecificationOf(const CommonOption& common) {
    if (common.letter == '\0') return SpecificationOf(common.option);
    const std::string names = std::string("-") + common.letter + ",--" + common.option.name;
    return "'(-" + std::string(1, common.letter) + " --" + common.option.name + ")'{" + names + "}'" +
           TailOf(common.option) + '\'';
}

std::string CaseOf(const Verb& verb) {
    std::string text = "        " + verb.name + ") _arguments $common";
    for (const Option& option : verb.options) text += " \\\n            " + SpecificationOf(option);
    return text + " ;;\n";
}

}  // namespace

std::string ZshCompletion(const Verbs& verbs) {
    std::string text =
        "#compdef kmmesh\n"
        "# Completion for kmmesh in zsh. Made of the declarations of the tool; see kmmesh --help.\n\n"
        "local curcontext=$curcontext state line\n"
        "local -a common=(";
    for (const CommonOption& common : CommonOptions()) text += "\n    " + SpecificationOf(common);
    text += ")\nlocal -a verbs=(";
    for (const Verb* verb : verbs) text += "\n    '" + verb->name + ':' + Escaped(verb->help) + '\'';
    text +=
        ")\n\n"
        "_arguments -C $common '--version[the version of the tool]' '1: :->first' '*:: :->rest'\n"
        "case $state in\n"
        "    first) _describe verb verbs; _files -g \"*.(#i)xml\" ;;\n"
        "    rest) case $words[1] in\n";
    for (const Verb* verb : verbs) text += CaseOf(*verb);
    return text +
           "        *) _files ;;\n"
           "    esac ;;\n"
           "esac\n";
}

}  // namespace KM::Tool
