#include "Support/OnTerminal.h"

#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <iterator>

#include "Support/InChild.h"

namespace KM::Test {
namespace {

bool IsSame(const termios& a, const termios& b) {
    return a.c_iflag == b.c_iflag && a.c_oflag == b.c_oflag && a.c_cflag == b.c_cflag && a.c_lflag == b.c_lflag &&
           std::equal(std::begin(a.c_cc), std::end(a.c_cc), std::begin(b.c_cc));
}

std::string WorkInOrder(const std::function<std::string()>& work) {
    termios before{};
    termios after{};
    const bool isThere = tcgetattr(STDIN_FILENO, &before) == 0;
    std::string text = work();
    if (!isThere || (tcgetattr(STDIN_FILENO, &after) == 0 && IsSame(before, after))) return text;
    return text.append("\nterminal left in disorder");
}

[[noreturn]] void Work(const std::function<std::string()>& work, int report) {
    // The terminal is ours by now; a line feed then tells that the keys are there, or the end that nobody is.
    char go = 0;
    if (write(report, "", 1) != 1 || read(STDIN_FILENO, &go, 1) > 1) _exit(1);
    const std::string text = WorkInOrder(work);
    _exit(write(report, text.data(), text.size()) < 0 ? 1 : 0);
}

std::string ReadAll(int pipe) {
    std::string text;
    char part[4096];
    for (ssize_t n = 0; (n = read(pipe, part, sizeof part)) > 0;) text.append(part, static_cast<std::size_t>(n));
    return text;
}

}  // namespace

std::string OnTerminal(const std::optional<std::string>& keys, const std::function<std::string()>& work) {
    return InChild([&]() -> std::string {
        int ends[2];
        int terminal = -1;
        if (pipe(ends) != 0) return "no pipe";
        std::signal(SIGHUP, SIG_IGN);  // the child outlives its terminal
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) Work(work, ends[1]);
        close(ends[1]);
        char isReady = 0;
        if (child < 0 || read(ends[0], &isReady, 1) != 1) return "no child";
        const std::string sent = std::string("\n").append(keys.value_or(""));
        if (!keys)
            close(terminal);
        else if (write(terminal, sent.data(), sent.size()) < 0)
            return "no terminal";
        const std::string text = ReadAll(ends[0]);
        waitpid(child, nullptr, 0);
        return text;
    });
}

}  // namespace KM::Test
