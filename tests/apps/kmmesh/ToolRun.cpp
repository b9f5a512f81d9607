#include "ToolRun.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "Utils/U_IO/Files.h"

namespace KM::Test {
namespace {

int CodeOf(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status); }

void Redirect(int descriptor, const std::string& file, int flags) {
    const int opened = open(file.c_str(), flags, 0600);
    dup2(opened, descriptor);
    close(opened);
}

/// The progress of the tests themselves looks into the cache folder: not into that of the user.
class OwnCache : public testing::Environment {
public:
    void SetUp() override { setenv("XDG_CACHE_HOME", (folder_ / "").c_str(), 1); }

private:
    const TempFolder folder_;
};
const testing::Environment* const ownCache = testing::AddGlobalTestEnvironment(new OwnCache);

}  // namespace

ToolRun::ToolRun() {
    std::filesystem::create_directory(home / "tmp");
    environment = {
        {"HOME", home / ""}, {"XDG_CACHE_HOME", home / "cache"}, {"TMPDIR", home / "tmp"}, {"TERM", "xterm"}};
}

void ToolRun::ForgetResults() const {
    if (!keepsResults) IO::FilesDelete(home / "cache/km/Cache/$kmmesh-*");
}

void ToolRun::Become(const std::vector<std::string>& arguments, const std::string& where) const {
    std::vector<std::string> words = {KM_TOOL};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    unsetenv("NO_COLOR");
    for (const auto& [name, value] : environment) setenv(name.c_str(), value.c_str(), 1);
    if (chdir(where.c_str()) == 0) execv(KM_TOOL, pointers.data());
    _exit(127);
}

ToolResult ToolRun::Run(const std::vector<std::string>& arguments, const std::string& input) const {
    ForgetResults();
    home.Write("stdin", input);
    const std::string out = home / "stdout";
    const std::string errors = home / "stderr";
    const pid_t child = fork();
    if (child == 0) {
        Redirect(STDIN_FILENO, home / "stdin", O_RDONLY);
        Redirect(STDOUT_FILENO, out, O_WRONLY | O_CREAT | O_TRUNC);
        Redirect(STDERR_FILENO, errors, O_WRONLY | O_CREAT | O_TRUNC);
        Become(arguments, folder / "");
    }
    int status = 0;
    waitpid(child, &status, 0);
    return {CodeOf(status), home.Bytes("stdout"), home.Bytes("stderr")};
}

TerminalRun::TerminalRun(const ToolRun& tool, const std::vector<std::string>& arguments) {
    winsize size{};
    size.ws_row = 24;
    size.ws_col = 80;
    tool_ = forkpty(&terminal_, nullptr, nullptr, &size);
    if (tool_ == 0) tool.Become(arguments, tool.folder / "");
}

TerminalRun::~TerminalRun() {
    if (tool_ > 0) {
        kill(tool_, SIGKILL);
        waitpid(tool_, nullptr, 0);
    }
    close(terminal_);
}

bool TerminalRun::ReadMore() {
    constexpr int halfAMinute = 30000;
    pollfd waited{terminal_, POLLIN, 0};
    char part[4096];
    if (poll(&waited, 1, halfAMinute) <= 0) return false;
    const ssize_t count = read(terminal_, part, sizeof part);  // fails when the last one has closed the other end
    if (count > 0) shown_.append(part, static_cast<std::size_t>(count));
    return count > 0;
}

bool TerminalRun::ShowsSoon(const std::string& text) {
    while (shown_.find(text) == std::string::npos)
        if (!ReadMore()) return false;
    return true;
}

void TerminalRun::Type(const std::string& keys) const {
    if (write(terminal_, keys.data(), keys.size()) != static_cast<ssize_t>(keys.size())) std::abort();
}

int TerminalRun::Wait() {
    while (ReadMore()) continue;
    int status = 0;
    waitpid(tool_, &status, 0);
    tool_ = -1;
    return CodeOf(status);
}

std::string BinaryStl(const Soup& triangles) {
    const TempFolder folder;
    const std::string name = folder / "a.stl";
    std::FILE* const file = STLOpenWriter(name.c_str(), false);
    for (std::size_t i = 0; i + 2 < triangles.size(); i += 3)
        STLWriteFacet(file, triangles[i], triangles[i + 1], triangles[i + 2], false);
    STLCloseWriter(file, static_cast<int>(triangles.size() / 3), false);
    return folder.Bytes("a.stl");
}

void MakeEndlessStl(const std::string& name) {
    constexpr std::uint64_t triangles = 0x07FFFFFF;  // bytes above 127 in it: the file counts as binary
    std::FILE* const file = std::fopen(name.c_str(), "wb");
    std::fwrite(std::string(80, '\0').data(), 1, 80, file);
    for (int i = 0; i < 4; ++i) std::fputc(static_cast<int>(triangles >> (8 * i) & 255), file);
    std::fclose(file);
    std::filesystem::resize_file(name, 84 + 50 * triangles);
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

Soup CornersOf(const std::string& file) {
    Soup corners;
    STLReader reader(file);
    for (double v[9]; reader.Read(v);)
        corners.insert(corners.end(), {{v[0], v[1], v[2]}, {v[3], v[4], v[5]}, {v[6], v[7], v[8]}});
    return corners;
}

}  // namespace KM::Test
