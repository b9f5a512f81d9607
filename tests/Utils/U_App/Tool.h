#pragma once

#include <algorithm>
#include <cstdlib>

#include <sstream>
#include <string>
#include <vector>

#include "Support/Program.h"
#include "Support/TempFolder.h"

namespace KM::Test {

using Words = std::vector<std::string>;

/// The small tool, run in a folder of its own.
class Tool {
public:
    Tool() { setenv("XDG_CACHE_HOME", (cache_ / "").c_str(), 1); }

    ProgramEnd Run(const Words& arguments) const { return RunProgram(KM_TOOL_CHILD, arguments, folder_ / ""); }

    /// Writes a configuration that runs an action, and has more inside its root.
    void Configure(const std::string& name, const std::string& action, const std::string& more = {}) const {
        folder_.Write(name, "<Settings><Actions><Execute>" + action + "</Execute></Actions>" + more + "</Settings>");
    }

    const TempFolder& Folder() const { return folder_; }

private:
    TempFolder folder_;
    TempFolder cache_;
};

/// The lines of a log without indentation and times.
inline Words Log(const std::string& output) {
    Words lines;
    std::istringstream stream(output);
    for (std::string line; std::getline(stream, line);) {
        line.erase(0, line.find_first_not_of(' '));
        if (!line.empty() && !line.starts_with("<Time>")) lines.push_back(line);
    }
    return lines;
}

/// The texts of the messages of one kind.
inline Words Messages(const std::string& output, const std::string& kind) {
    const std::string begin = "<" + kind + ">";
    const std::string end = "</" + kind + ">";
    Words texts;
    for (const std::string& line : Log(output))
        if (line.starts_with(begin) && line.ends_with(end))
            texts.push_back(line.substr(begin.size(), line.size() - begin.size() - end.size()));
    return texts;
}

inline bool Has(const Words& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

}  // namespace KM::Test
