#include "Platform/Processes.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "Platform/Files.h"

extern char** environ;

namespace KM::Platform {

int ProcessId() { return static_cast<int>(getpid()); }

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& arguments) {
    std::string path = RealPath(program);
    std::vector<std::string> words = arguments;
    for (const std::string& word : words)
        if (word.find('\0') != std::string::npos) return;  // the program would be given another word
    std::vector<char*> argv{path.data()};
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);
    pid_t id = -1;
    if (!path.empty() && posix_spawnp(&id, path.c_str(), nullptr, nullptr, argv.data(), environ) == 0)
        id_ = static_cast<int>(id);
}

std::optional<int> ChildProcess::Reap(int options) {
    if (exitCode_ || !HasStarted()) return exitCode_;
    int status = 0;
    pid_t ended = 0;
    do ended = waitpid(id_, &status, options);
    while (ended == -1 && errno == EINTR);
    if (ended == id_)
        exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    else if (ended == -1)
        exitCode_ = -1;  // somebody else has waited for it
    return exitCode_;
}

int ChildProcess::Wait() { return Reap(0).value_or(-1); }

std::optional<int> ChildProcess::ExitCode() { return Reap(WNOHANG); }

}  // namespace KM::Platform
