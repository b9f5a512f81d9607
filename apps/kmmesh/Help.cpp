#include "Help.h"

#include "Output.h"

namespace KM::Tool {
namespace {

constexpr const char* CommonOptions =
    "  -q, --quiet         results and errors only: no progress, no names of written files\n"
    "  --verbose N         show the log on standard output, up to level N: 2 errors, 4 what goes on, 6 all\n"
    "  --save FILE.xml     keep the configuration that the run stands for; kmmesh FILE.xml repeats it\n"
    "  -h, --help          this text\n";

constexpr const char* ExitCodes =
    "Exit codes: 0 done; 1 stopped by the user; 3 nothing to run: no verb, file or configuration;\n"
    "            4 what was given does not fit; 8 to be started again; 9 failed.\n";

std::string LineOf(const Option& option) {
    const std::string label = (option.kind == Kind::Files ? "" : "--" + option.name) + NamesOf(option.kind).placeholder;
    std::string text = Format("  %-18s  %s", label.c_str(), option.help.c_str());
    if (option.isNeeded) text += " (needed)";
    if (option.kind != Kind::Switch && !option.defaultValue.empty()) text += " (" + option.defaultValue + ')';
    return text + '\n';
}

bool HasFiles(const Verb& verb) {
    for (const Option& option : verb.options)
        if (option.kind == Kind::Files) return true;
    return false;
}

}  // namespace

std::string HelpOfTool() {
    std::string text =
        "kmmesh reads, measures, reduces and writes surface meshes.\n"
        "\n"
        "Usage: kmmesh VERB [OPTION...] FILE...   kmmesh VERB --help tells the options of a verb\n"
        "       kmmesh FILE.xml... [WORD...]      runs what these configurations say; %1 in them is the first word\n"
        "       kmmesh                            tells the switches for configurations\n"
        "\n"
        "Verbs:\n";
    for (const Verb* verb : AllVerbs()) text += Format("  %-18s  %s\n", verb->name.c_str(), verb->help.c_str());
    return text + "\nOptions:\n" + CommonOptions + "  --version           the version of the tool\n\n" +
           "Ctrl-C or Escape stops a run; a file is never left half-written.\n" + ExitCodes;
}

std::string HelpOf(const Verb& verb) {
    std::string text = "kmmesh " + verb.name + ": " + verb.help + ".\n\nUsage: kmmesh " + verb.name + " [OPTION...]" +
                       (HasFiles(verb) ? " FILE...\n\n" : "\n\n");
    for (const Option& option : verb.options) text += LineOf(option);
    return text + "\nIn a configuration: Actions.Execute is " + verb.Key() + ", its settings are below Actions." +
           verb.Key() + ".\n\nFor all verbs:\n" + CommonOptions;
}

}  // namespace KM::Tool
