#include "Support/InChild.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

namespace KM::Test {
namespace {

[[noreturn]] void Report(const std::function<std::string()>& work, int pipe) {
    std::string text;
    try {
        text = work();
    } catch (...) { text = "exception"; }
    const bool isWritten = write(pipe, text.data(), text.size()) == static_cast<ssize_t>(text.size());
    _exit(isWritten ? 0 : 1);
}

}  // namespace

std::string InChild(const std::function<std::string()>& work) {
    int ends[2];
    std::fflush(nullptr);  // or the child would write it once more
    if (pipe(ends) != 0) return "no pipe";
    const pid_t child = fork();
    if (child == 0) Report(work, ends[1]);
    close(ends[1]);
    std::string text;
    char part[4096];
    for (ssize_t count = 0; (count = read(ends[0], part, sizeof part)) > 0;)
        text.append(part, static_cast<std::size_t>(count));
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? text : std::string();
}

}  // namespace KM::Test
