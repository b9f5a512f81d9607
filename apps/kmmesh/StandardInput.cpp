#include "StandardInput.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "Utils/U_App/CheckAbort.h"

namespace KM::Tool {
namespace {

constexpr int Forever = -1;

}  // namespace

bool StandardInput::IsTerminal() { return isatty(STDIN_FILENO) != 0; }

/// Whether something, or the end, is there. A signal starts reading again but not this, so it is where Ctrl-C is noticed.
bool StandardInput::Wait(int milliseconds) const {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    for (;;) {
        const int count = poll(&input, 1, milliseconds);
        if (count >= 0 || errno != EINTR) return count != 0;
        CheckAbort();
    }
}

void StandardInput::ReadMore() {
    char part[4096];
    // All that is there: a look for Escape while a line is evaluated would take keys of the next one.
    for (bool isReady = Wait(Forever); isReady && !isAtEnd_; isReady = IsTerminal() && Wait(0)) {
        const ssize_t count = read(STDIN_FILENO, part, sizeof part);
        isAtEnd_ = count <= 0;
        if (count > 0) bytes_.append(part, static_cast<std::size_t>(count));
    }
}

bool StandardInput::TakeLine(std::string& line) {
    while (!isAtEnd_ && bytes_.find('\n') == std::string::npos) ReadMore();
    if (bytes_.empty()) return false;
    const std::size_t end = std::min(bytes_.find('\n'), bytes_.size());
    line = bytes_.substr(0, end);
    bytes_.erase(0, end + 1);
    return true;
}

std::string StandardInput::TakeAll(std::size_t most) {
    while (!isAtEnd_ && bytes_.size() <= most) ReadMore();
    return bytes_;
}

}  // namespace KM::Tool
