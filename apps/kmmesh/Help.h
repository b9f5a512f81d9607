#pragma once

#include <string>
#include <vector>

#include "Verb.h"

namespace KM::Tool {

/// An option that all verbs have beside their own, and the tool itself.
struct CommonOption {
    Option option;
    char letter = '\0';  ///< its short name: 'q' for "-q"
};
const std::vector<CommonOption>& CommonOptions();

/// How a run of the tool can end.
struct Ending {
    int exitCode;
    const char* inShort;
    const char* meaning;
};
const std::vector<Ending>& Endings();

/// What the tool is for: one line behind its name, with a full stop.
const char* PurposeOfTool();

/// The option as people type it, with a word for its value: "--out PATH", "-q, --quiet", "FILE...".
std::string LabelOf(const Option& option);
std::string LabelOf(const CommonOption& common);

/// What the option does, with its default.
std::string MeaningOf(const Option& option);

/// What `kmmesh --help` prints.
std::string HelpOfTool();

/// What `kmmesh VERB --help` prints.
std::string HelpOf(const Verb& verb);

}  // namespace KM::Tool
