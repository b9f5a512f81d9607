#include <sstream>

#include "Help.h"
#include "KmVersion.h"
#include "Pages.h"

namespace KM::Tool {
namespace {

/// As it stands, whatever the formatter would take for its own, or print as another character.
std::string Plain(const std::string& text) {
    std::string plain = text.starts_with('.') || text.starts_with('\'') ? "\\&" : "";
    for (const char c : text) {
        if (c == '-') plain += "\\-";
        else if (c == '\\') plain += "\\e";
        else if (c == '`') plain += "\\(ga";
        else if (c == '\'') plain += "\\(aq";
        else if (c == '^') plain += "\\(ha";
        else if (c == '~') plain += "\\(ti";
        else plain += c;
    }
    return plain;
}

std::string Bold(const std::string& text) { return "\\fB" + Plain(text) + "\\fR"; }
std::string Slanted(const std::string& text) { return "\\fI" + Plain(text) + "\\fR"; }

/// What people type as it is, bold, and what stands for something else, slanted: that has capitals.
std::string Typed(const std::string& label) {
    std::istringstream words(label);
    std::string text;
    for (std::string word; words >> word;) {
        if (!text.empty()) text += ' ';
        text += word.starts_with('-') ? Bold(word) : Slanted(word);
    }
    return text;
}

std::string Sentence(const std::string& text) {
    std::string sentence = Plain(text) + ".\n";
    if (sentence.front() >= 'a' && sentence.front() <= 'z') sentence.front() += 'A' - 'a';
    return sentence;
}

/// A term with its meaning beside it.
std::string Item(const std::string& term, const std::string& meaning) {
    return ".TP\n" + term + '\n' + Plain(meaning) + '\n';
}

std::string SectionOf(const Verb& verb) {
    const Option* const positional = verb.Positional();
    std::string text = ".SS " + Plain(verb.name) + '\n' + Sentence(verb.help) + ".PP\n" + Bold("kmmesh " + verb.name) +
                       " [" + Slanted("OPTION") + "...]" +
                       (positional != nullptr ? ' ' + Typed(LabelOf(*positional)) : "") + '\n';
    for (const Option& option : verb.options) text += Item(Typed(LabelOf(option)), MeaningOf(option));
    return text + ".PP\nIn a configuration: action " + Bold(verb.Key()) + ",\nsettings below " +
           Bold("Actions." + verb.Key()) + ".\n";
}

constexpr const char* Synopsis = R"(.SH SYNOPSIS
\fBkmmesh\fR \fIVERB\fR [\fIOPTION\fR...] \fIFILE\fR...
.br
\fBkmmesh\fR \fIFILE.xml\fR... [\fIWORD\fR...]
.br
\fBkmmesh\fR [\fIVERB\fR] \fB\-\-help\fR
.br
\fBkmmesh\fR \fB\-\-version\fR
)";

constexpr const char* Description = R"(.PP
Parts are STL files, text or binary.
Lengths are in the units of the file, angles in degrees.
Results go to standard output, failures to standard error in one line.
A file appears under its name when it is whole.
Ctrl\-C or Escape stops a run.
.PP
Behind \fB\-\-\fR all words are files, whatever they begin with.
.PP
With the names of configurations in place of a verb, these are merged and run;
later ones win, and \fB%1\fR as a value is the first word behind them.
\fB\-\-save\fR writes one.
Without any words, the tool tells of its switches for configurations.
)";

constexpr const char* EnvironmentAndExamples = R"(.SH ENVIRONMENT
.TP
\fBNO_COLOR\fR
If it is set, messages on a terminal have no colours.
.TP
\fBTMPDIR\fR
The folder of the configuration that a run goes by, while it lasts.
.SH EXAMPLES
.TP
\fBkmmesh info part.stl\fR
What is this part?
.TP
\fBkmmesh lods part.stl \-\-out levels \-\-save lods.xml\fR
Makes levels of detail, and keeps the run.
.TP
\fBkmmesh lods.xml\fR
Repeats it.
.TP
\fBkmmesh fill broken.stl \-\-edges 50 \-\-out whole.stl\fR
Closes the holes of up to 50 edges.
)";

}  // namespace

std::string ManPage(const Verbs& verbs) {
    std::string text =
        ".\\\" Made of the declarations of the tool; see kmmesh \\-\\-help.\n"
        ".TH KMMESH 1 \"\" \"KM Mesh " KM_VERSION
        "\" \"User Commands\"\n"
        ".SH NAME\n"
        "kmmesh \\- the command line of the KM Mesh library\n";
    text += Synopsis + std::string(".SH DESCRIPTION\n") + Bold("kmmesh") + ' ' + Plain(PurposeOfTool()) + '\n' +
            Description;
    text += ".SH VERBS\n";
    for (const Verb* verb : verbs) text += SectionOf(*verb);
    text += ".SH OPTIONS OF ALL VERBS\n";
    for (const CommonOption& common : CommonOptions()) text += Item(Typed(LabelOf(common)), MeaningOf(common.option));
    text += ".SH EXIT STATUS\n";
    for (const Ending& ending : Endings()) text += Item(Bold(std::to_string(ending.exitCode)), ending.meaning);
    return text + EnvironmentAndExamples;
}

}  // namespace KM::Tool
