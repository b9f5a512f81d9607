#include "Platform/Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>
#include <ext/stdio_filebuf.h>
#include <ext/stdio_sync_filebuf.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ostream>

namespace KM::Platform {

namespace {

/// The file behind a stream, -1 if it does not tell. A standard stream has the one buffer or the other, by
/// `sync_with_stdio`; whatever else stands there in its place is no terminal.
int DescriptorOf(const std::ostream& stream) {
    std::streambuf* const buffer = stream.rdbuf();
    if (auto* synced = dynamic_cast<__gnu_cxx::stdio_sync_filebuf<char>*>(buffer)) return fileno(synced->file());
    if (auto* own = dynamic_cast<__gnu_cxx::stdio_filebuf<char>*>(buffer)) return own->fd();
    return -1;
}

}  // namespace

bool IsTerminal(const std::ostream& stream) { return isatty(DescriptorOf(stream)) == 1; }

bool AreEscapesWanted() {
    const char* noColor = std::getenv("NO_COLOR");
    return noColor == nullptr || *noColor == '\0';
}

TerminalSize SizeOfTerminal() {
    for (const int file : {STDOUT_FILENO, STDERR_FILENO, STDIN_FILENO}) {
        winsize size{};
        if (ioctl(file, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 && size.ws_row > 0)
            return {size.ws_col, size.ws_row};
    }
    return {0, 0, ENOTTY};
}

}  // namespace KM::Platform
