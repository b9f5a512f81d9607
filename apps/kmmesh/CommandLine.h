#pragma once

#include <map>
#include <string>
#include <vector>

#include "Verb.h"

namespace KM::Tool {

/// What people asked for: a verb with the values that they gave, and how it is to be run.
struct Request {
    const Verb* verb = nullptr;
    std::map<std::string, std::vector<std::string>>
        values;  ///< by the name of the option; one value each, but for files
    bool isQuiet = false;
    int verbosity = 0;  ///< level of the log on standard output; 0 shows none
    std::string save;   ///< where the configuration is to be kept; empty for nowhere
};

/// A command line, taken apart: a request, or a text to print, or what is wrong with it.
struct CommandLine {
    Request request;    ///< if it has a verb
    std::string text;   ///< help or version, if that was asked for
    std::string fault;  ///< one line; empty if there is none
    int exitCode = 0;   ///< of a fault: 3 if something is lacking, 4 if something does not fit
};

/// Whether this is the command line of people (a verb or an option comes first), and not that of the framework (files and
/// switches that begin with a slash, or nothing).
bool IsForPeople(const std::vector<std::string>& arguments);

/// Takes the command line of people apart.
/// @param arguments  without the program
CommandLine Parse(const std::vector<std::string>& arguments);

}  // namespace KM::Tool
