#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "ToolRun.h"

namespace KM::Test {
namespace {

/// A command that the guide shows, and what it says that it prints.
struct Step {
    std::string command;
    std::string output;
};

/// The blocks of commands: those between lines of "```console", each command behind "$ ".
std::vector<Step> StepsOf(const std::string& guide) {
    std::vector<Step> steps;
    bool isInside = false;
    for (const std::string& line : Lines(guide)) {
        if (line.starts_with("```")) isInside = line == "```console";
        else if (!isInside) continue;
        else if (line.starts_with("$ ")) steps.push_back({line.substr(2), ""});
        else if (!steps.empty()) steps.back().output += line + '\n';
    }
    return steps;
}

const std::string FolderOfGuide = "/home/me/parts/";

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
    return text;
}

/// Output and errors of a command as a shell shows them, with the folder as the guide calls it.
std::string Shown(const ToolRun& tool, const std::string& command) {
    tool.ForgetResults();
    std::string setting = "PATH='" + std::filesystem::path(KM_TOOL).parent_path().string() + "':$PATH";
    for (const auto& [name, value] : tool.environment) setting += ' ' + name + "='" + value + '\'';
    const std::string here = tool.folder / "";
    std::ostringstream all;
    all << "cd '" << here << "' && export " << setting << " && { " << Replaced(command, FolderOfGuide, here) << "; } >'"
        << (tool.home / "shown") << "' 2>&1 </dev/null";
    EXPECT_NE(std::system(all.str().c_str()), -1);
    return Replaced(tool.home.Bytes("shown"), here, FolderOfGuide);
}

std::string BytesOf(const std::filesystem::path& file) {
    std::ostringstream bytes;
    bytes << std::ifstream(file, std::ios::binary).rdbuf();
    return bytes.str();
}

/// Runs all commands of a page in the folder of the tool, with copies of the samples, one after the other.
void ExpectShowsWhatTheToolPrints(const ToolRun& tool, const std::string& page) {
    const std::vector<Step> steps = StepsOf(BytesOf(KM_SOURCE_DIR "/docs/" + page));
    ASSERT_GE(steps.size(), 6u);
    for (const char* part : {"bearing-bracket.stl", "broken-cap.stl"})
        std::filesystem::copy(std::filesystem::path(KM_SOURCE_DIR "/samples") / part, tool.folder / part);
    for (const Step& step : steps) EXPECT_EQ(Shown(tool, step.command), step.output) << step.command;
}

TEST(ToolGuide, ShowsWhatTheToolPrintsAndDraws) {
    const ToolRun tool;
    ExpectShowsWhatTheToolPrints(tool, "tool-guide.md");
    for (const auto& picture : std::filesystem::directory_iterator(KM_SOURCE_DIR "/docs/pictures")) {
        const std::string drawn = tool.folder / picture.path().filename().string();
        EXPECT_TRUE(BytesOf(drawn) == BytesOf(picture.path())) << picture.path() << " is not what the guide draws";
    }
}

TEST(BatchPage, ShowsWhatTheToolPrints) { ExpectShowsWhatTheToolPrints(ToolRun(), "batch.md"); }

}  // namespace
}  // namespace KM::Test
