#include "Help.h"

#include "Output.h"

namespace KM::Tool {
namespace {

std::string LineOf(const std::string& label, const std::string& text) {
    return Format("  %-17s  %s\n", label.c_str(), text.c_str());
}

std::string LineOf(const Option& option) {
    const std::string label = (IsPositional(option.kind) ? "" : "--" + option.name) + NamesOf(option.kind).placeholder;
    std::string text = option.help;
    if (option.isNeeded) text += " (needed)";
    if (option.kind != Kind::Switch && !option.defaultValue.empty()) text += " (" + option.defaultValue + ')';
    return LineOf(label, text);
}

std::string CommonOptions() {
    return LineOf("-q, --quiet", "neither progress nor names of written files") +
           LineOf("--verbose N", "the log on standard output: 2 errors, 4 what goes on, 6 all") +
           LineOf("--save FILE.xml", "keep the run as a configuration; kmmesh FILE.xml repeats it") +
           LineOf("-h, --help", "this text");
}

}  // namespace

std::string HelpOfTool() {
    std::string text =
        "kmmesh reads, measures, repairs, reduces, cuts and writes surface meshes.\n"
        "Usage: kmmesh VERB [OPTION...] FILE...   kmmesh VERB --help: its options\n"
        "       kmmesh FILE.xml... [WORD...]      runs configurations; %1 in them: WORD\n"
        "       kmmesh                            the switches for configurations\n"
        "Verbs:\n";
    for (const Verb* verb : AllVerbs()) text += LineOf(verb->name, verb->help);
    return text +
           "\nOptions of all verbs: -q, --quiet; --verbose N; --save FILE.xml; -h, --help\n"
           "kmmesh --version: its own. Ctrl-C or Escape stops a run; no file is left half.\n"
           "Exit codes: 0 done, 1 stopped, 3 nothing to run, 4 misfit, 8 again, 9 failed.\n";
}

std::string HelpOf(const Verb& verb) {
    const Option* const positional = verb.Positional();
    std::string text = "kmmesh " + verb.name + ": " + verb.help + ".\n\nUsage: kmmesh " + verb.name + " [OPTION...]" +
                       (positional != nullptr ? std::string(" ") + NamesOf(positional->kind).placeholder : "") + "\n\n";
    for (const Option& option : verb.options) text += LineOf(option);
    return text + "\nIn a configuration: action " + verb.Key() + ", settings below Actions." + verb.Key() +
           "\n\nFor all verbs:\n" + CommonOptions();
}

}  // namespace KM::Tool
