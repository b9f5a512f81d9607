#include "Help.h"

#include "Output.h"

namespace KM::Tool {
namespace {

std::string LineOf(const std::string& label, const std::string& text) {
    return Format("  %-17s  %s\n", label.c_str(), text.c_str());
}

std::string EndingsInShort() {
    std::string text;
    for (const Ending& ending : Endings())
        text += (text.empty() ? "" : ", ") + std::to_string(ending.exitCode) + ' ' + ending.inShort;
    return text;
}

/// "-q, --quiet; --verbose N; ..."
std::string LabelsOfCommonOptions() {
    std::string text;
    for (const CommonOption& common : CommonOptions()) text += (text.empty() ? "" : "; ") + LabelOf(common);
    return text;
}

}  // namespace

const std::vector<CommonOption>& CommonOptions() {
    static const std::vector<CommonOption> options{
        {{"quiet", Kind::Switch, "N", "neither progress nor names of written files"}, 'q'},
        {{"verbose", Kind::Whole, "", "the log on standard output: 2 errors, 4 what goes on, 6 all", false, {0, 6}}},
        {{"save", Kind::Configuration, "", "keep the run as a configuration; kmmesh FILE.xml repeats it"}},
        {{"help", Kind::Switch, "N", "this text"}, 'h'}};
    return options;
}

const std::vector<Ending>& Endings() {
    static const std::vector<Ending> endings{
        {0, "done", "the run was well"},
        {1, "stopped", "the user has stopped it"},
        {3, "nothing to run", "a verb, a file, a needed option or a configuration is missing"},
        {4, "misfit", "something that was given does not fit"},
        {8, "again", "too little memory is left: start it again"},
        {9, "failed", "something could not be read, done or written; standard error tells what"}};
    return endings;
}

const char* PurposeOfTool() { return "reads, measures, repairs, reduces, cuts and writes surface meshes."; }

std::string LabelOf(const Option& option) {
    return (IsPositional(option.kind) ? "" : "--" + option.name) + NamesOf(option.kind).placeholder;
}

std::string LabelOf(const CommonOption& common) {
    return (common.letter != '\0' ? std::string("-") + common.letter + ", " : "") + LabelOf(common.option);
}

std::string MeaningOf(const Option& option) {
    std::string text = option.help;
    if (option.isNeeded) text += " (needed)";
    if (option.kind != Kind::Switch && !option.defaultValue.empty()) text += " (" + option.defaultValue + ')';
    return text;
}

std::string HelpOfTool() {
    std::string text = std::string("kmmesh ") + PurposeOfTool() +
                       "\n"
                       "Usage: kmmesh VERB [OPTION...] FILE...   kmmesh VERB --help: its options\n"
                       "       kmmesh FILE.xml... [WORD...]      runs configurations; %1 in them: WORD\n"
                       "Verbs:\n";
    for (const Verb* verb : AllVerbs()) text += LineOf(verb->name, verb->help);
    return text + "\nFor all verbs: " + LabelsOfCommonOptions() +
           "\n"
           "Ctrl-C or Escape stops a run. kmmesh --version; kmmesh alone: further switches\n"
           "Exit codes: " +
           EndingsInShort() + ".\n";
}

std::string HelpOf(const Verb& verb) {
    const Option* const positional = verb.Positional();
    std::string text = "kmmesh " + verb.name + ": " + verb.help + ".\n\nUsage: kmmesh " + verb.name + " [OPTION...]" +
                       (positional != nullptr ? ' ' + LabelOf(*positional) : "") + "\n\n";
    for (const Option& option : verb.options) text += LineOf(LabelOf(option), MeaningOf(option));
    text += "\nIn a configuration: action " + verb.Key() + ", settings below Actions." + verb.Key() +
            "\n\nFor all verbs:\n";
    for (const CommonOption& common : CommonOptions()) text += LineOf(LabelOf(common), MeaningOf(common.option));
    return text;
}

}  // namespace KM::Tool
