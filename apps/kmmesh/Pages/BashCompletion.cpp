#include "Help.h"
#include "Pages.h"
#include "Words.h"

namespace KM::Tool {
namespace {

constexpr const char* Beginning =
    R"(# Completion for kmmesh in bash. Made of the declarations of the tool; see kmmesh --help.

_kmmesh_words() { mapfile -t COMPREPLY < <(compgen -W "$1" -- "$word"); }

# Folders, and the files with this ending; all files if there are none, or nothing was said.
_kmmesh_files() {
    compopt -o filenames 2>/dev/null
    [[ -n $1 ]] && mapfile -t COMPREPLY < <(compgen -d -- "$word"; compgen -f -X "!*.$1" -- "$word")
    ((${#COMPREPLY[@]})) || mapfile -t COMPREPLY < <(compgen -f -- "$word")
}

# A verb; a configuration if none begins like that.
_kmmesh_first() {
    _kmmesh_words "$1"
    ((${#COMPREPLY[@]})) || _kmmesh_files '[xX][mM][lL]'
}

_kmmesh() {
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} verb='' i
    COMPREPLY=()
    # "--out=" is two words to the shell.
    if [[ $word == = ]]; then word=''
    elif [[ $before == = ]]; then before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    for ((i = 1; i < COMP_CWORD; ++i)); do
        case ${COMP_WORDS[i]} in
)";

constexpr const char* EndOfWords = R"(            --) _kmmesh_files; return ;;
            -*) ;;
            *) verb=${verb:-FILE} ;;
        esac
    done
    case $verb:$before in
)";

constexpr const char* End = R"(        FILE:*) _kmmesh_files ;;
    esac
}

complete -F _kmmesh kmmesh
)";

std::vector<std::string> WordsOfCommonOptions() {
    std::vector<std::string> words;
    for (const CommonOption& common : CommonOptions()) {
        if (common.letter != '\0') words.push_back(std::string("-") + common.letter);
        words.push_back("--" + common.option.name);
    }
    return words;
}

/// What completes a value.
std::string CallFor(const Option& option) {
    if (option.kind == Kind::Files) return "_kmmesh_files '[sS][tT][lL]'";
    if (option.kind == Kind::Configuration) return "_kmmesh_files '[xX][mM][lL]'";
    if (option.kind == Kind::Path || option.kind == Kind::Expressions) return "_kmmesh_files";
    const std::string words = ValuesOf(option);
    return words.empty() ? "" : "_kmmesh_words '" + words + "'";
}

/// A line of the last `case`.
std::string Case(const std::string& pattern, const std::string& call) {
    return "        " + pattern + ") " + (call.empty() ? "" : call + ' ') + ";;\n";
}

std::string CaseOfValue(const std::string& verb, const Option& option) {
    if (option.kind == Kind::Switch || IsPositional(option.kind)) return "";
    return Case(verb + ":--" + option.name, CallFor(option));
}

/// Of a word that is no value: an option where a hyphen was typed, or there is nothing else.
std::string CaseOfWord(const std::string& verb, const std::vector<std::string>& options, const std::string& otherwise) {
    const std::string call = "_kmmesh_words '" + Joined(options, " ") + '\'';
    return Case(verb + ":*",
                otherwise.empty() ? call : "if [[ $word == -* ]]; then " + call + "; else " + otherwise + "; fi");
}

std::string CasesOf(const Verb& verb) {
    std::string text;
    std::vector<std::string> words;
    for (const Option& option : verb.options) {
        text += CaseOfValue(verb.name, option);
        if (!IsPositional(option.kind)) words.push_back("--" + option.name);
    }
    for (const std::string& word : WordsOfCommonOptions()) words.push_back(word);
    const Option* const positional = verb.Positional();
    return text + CaseOfWord(verb.name, words, positional != nullptr ? CallFor(*positional) : "");
}

/// Options with a value hide the next word, which may be called as a verb is.
std::string SkippedValues() {
    std::vector<std::string> options;
    for (const CommonOption& common : CommonOptions())
        if (common.option.kind != Kind::Switch) options.push_back("--" + common.option.name);
    return "            " + Joined(options, " | ") + ") [[ ${COMP_WORDS[i + 1]} == = ]] && ((++i)); ((++i)) ;;\n";
}

}  // namespace

std::string BashCompletion(const Verbs& verbs) {
    std::string text = Beginning + SkippedValues() + "            " + Joined(VerbNames(verbs), " | ") +
                       ") verb=${verb:-${COMP_WORDS[i]}} ;;\n" + EndOfWords;
    for (const CommonOption& common : CommonOptions()) text += CaseOfValue("*", common.option);
    std::vector<std::string> options = WordsOfCommonOptions();
    options.push_back("--version");
    text += CaseOfWord("", options, "_kmmesh_first '" + Joined(VerbNames(verbs), " ") + '\'');
    for (const Verb* verb : verbs) text += CasesOf(*verb);
    return text + End;
}

}  // namespace KM::Tool
