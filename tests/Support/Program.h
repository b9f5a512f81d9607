#pragma once

#include <string>
#include <vector>

namespace KM::Test {

/// How a program ended, and what it wrote.
struct ProgramEnd {
    int exitCode = -1;   ///< -1 if it was ended by a signal
    int signal = 0;      ///< that signal
    std::string output;  ///< standard output and standard error, as they came
};

/// Runs a program in a folder, with nothing on its standard input, and waits for its end.
ProgramEnd RunProgram(const std::string& program, const std::vector<std::string>& arguments, const std::string& folder);

}  // namespace KM::Test
