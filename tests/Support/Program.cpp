#include "Support/Program.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace KM::Test {
namespace {

[[noreturn]] void Become(std::vector<char*> words, const std::string& folder, int output) {
    const int nothing = open("/dev/null", O_RDONLY);
    dup2(nothing, STDIN_FILENO);
    dup2(output, STDOUT_FILENO);
    dup2(output, STDERR_FILENO);
    if (chdir(folder.c_str()) == 0) execv(words[0], words.data());
    _exit(127);
}

std::string AllFrom(int file) {
    std::string text;
    char part[4096];
    for (ssize_t count = 0; (count = read(file, part, sizeof part)) > 0;)
        text.append(part, static_cast<std::size_t>(count));
    return text;
}

}  // namespace

ProgramEnd RunProgram(const std::string& program, const std::vector<std::string>& arguments,
                      const std::string& folder) {
    std::vector<char*> words = {const_cast<char*>(program.c_str())};
    for (const std::string& argument : arguments) words.push_back(const_cast<char*>(argument.c_str()));
    words.push_back(nullptr);
    ProgramEnd end;
    int ends[2];
    std::fflush(nullptr);  // or the child would write it once more
    if (pipe2(ends, O_CLOEXEC) != 0) return end;
    const pid_t child = fork();
    if (child == 0) Become(words, folder, ends[1]);
    close(ends[1]);
    end.output = AllFrom(ends[0]);
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status)) end.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) end.signal = WTERMSIG(status);
    return end;
}

}  // namespace KM::Test
