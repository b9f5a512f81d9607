#pragma once

#include <sys/types.h>

#include <map>
#include <string>
#include <vector>

#include "Facet/StlFile.h"
#include "Support/Meshes.h"
#include "Support/TempFolder.h"

namespace KM::Test {

/// What a run of the tool left behind.
struct ToolResult {
    int exitCode = -1;  ///< 128 plus the number of the signal that ended it
    std::string output;
    std::string errors;
};

/// Runs the tool in a folder of its own, with home, cache and temporary folder apart from those of the user.
class ToolRun {
public:
    ToolRun();

    /// With these bytes on standard input, and no terminal anywhere.
    ToolResult Run(const std::vector<std::string>& arguments, const std::string& input = "") const;

    /// Deletes what runs have kept for later ones, unless `keepsResults`: whether a run was slow enough to keep something
    /// must not show in the next one. Comes before each `Run`.
    void ForgetResults() const;

    bool keepsResults = false;
    const TempFolder folder;  ///< where it runs
    const TempFolder home;    ///< "cache" and "tmp" lie in it
    std::map<std::string, std::string> environment;

    /// In the process that becomes the tool.
    [[noreturn]] void Become(const std::vector<std::string>& arguments, const std::string& where) const;
};

/// A run of the tool on a pseudo terminal of 80 columns, which shows standard output and standard error alike.
class TerminalRun {
public:
    TerminalRun(const ToolRun& tool, const std::vector<std::string>& arguments);
    TerminalRun(const TerminalRun&) = delete;
    TerminalRun& operator=(const TerminalRun&) = delete;
    ~TerminalRun();

    /// Waits until this text has been shown; false if the tool ends before, or after half a minute.
    bool ShowsSoon(const std::string& text);
    void Type(const std::string& keys) const;
    /// Waits for the end; the exit code as in `ToolResult`.
    int Wait();

    const std::string& Shown() const { return shown_; }

private:
    bool ReadMore();

    int terminal_ = -1;
    pid_t tool_ = -1;
    std::string shown_;
};

/// The bytes of a binary STL file of these triangles.
std::string BinaryStl(const Soup& triangles);

/// Makes a file that takes seconds to read and no room on the disk: 134 million triangles, all zero.
void MakeEndlessStl(const std::string& name);

std::vector<std::string> Lines(const std::string& text);

/// The corners of all triangles of a file.
Soup CornersOf(const std::string& file);

}  // namespace KM::Test
