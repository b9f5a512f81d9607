#include "Support/OnTerminal.h"

#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>

#include "Support/InChild.h"

namespace KM::Test {
namespace {

[[noreturn]] void WorkOnTerminal(bool waitsForKeys, const std::function<std::string()>& work, int report) {
    if (write(report, "", 1) != 1) _exit(1);  // the terminal is ours by now
    termios before{};
    termios after{};
    char go = 0;
    tcgetattr(STDIN_FILENO, &before);
    if (waitsForKeys && read(STDIN_FILENO, &go, 1) != 1) _exit(1);  // the line feed: the keys are there
    std::string text = work();
    tcgetattr(STDIN_FILENO, &after);
    if (waitsForKeys && (before.c_lflag != after.c_lflag || before.c_cc[VMIN] != after.c_cc[VMIN]))
        text += "\nterminal left in disorder";
    _exit(write(report, text.data(), text.size()) < 0 ? 1 : 0);
}

}  // namespace

std::string OnTerminal(const std::string& keys, const std::function<std::string()>& work) {
    return InChild([&]() -> std::string {
        int ends[2];
        int terminal = -1;
        if (pipe(ends) != 0) return "no pipe";
        std::signal(SIGHUP, SIG_IGN);  // outlives the terminal
        const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
        if (child == 0) WorkOnTerminal(!keys.empty(), work, ends[1]);
        close(ends[1]);
        char isReady = 0;
        if (read(ends[0], &isReady, 1) != 1) return "no child";
        const std::string sent = "\n" + keys;
        if (keys.empty()) close(terminal);
        else if (write(terminal, sent.data(), sent.size()) < 0) return "no terminal";
        std::string text;
        char part[4096];
        for (ssize_t n = 0; (n = read(ends[0], part, sizeof part)) > 0;) text.append(part, static_cast<std::size_t>(n));
        waitpid(child, nullptr, 0);
        return text;
    });
}

}  // namespace KM::Test
