#include "Platform/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace KM::Platform {

bool IsTerminal(const std::ostream& stream) {
    if (stream.rdbuf() == std::cout.rdbuf()) return isatty(STDOUT_FILENO) == 1;
    if (stream.rdbuf() == std::cerr.rdbuf() || stream.rdbuf() == std::clog.rdbuf()) return isatty(STDERR_FILENO) == 1;
    return false;
}

bool AreEscapesWanted() {
    const char* noColor = std::getenv("NO_COLOR");
    return noColor == nullptr || *noColor == '\0';
}

TerminalSize SizeOfTerminal() {
    for (const int file : {STDOUT_FILENO, STDERR_FILENO, STDIN_FILENO}) {
        winsize size{};
        if (ioctl(file, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0) return {size.ws_col, size.ws_row};
    }
    return {};
}

}  // namespace KM::Platform
