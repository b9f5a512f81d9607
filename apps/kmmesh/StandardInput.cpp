#include "StandardInput.h"

#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

#include "Utils/U_App/CheckAbort.h"

namespace KM::Tool {
namespace {

/// The signals of a wish to end.
sigset_t Interrupts() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
}

/// Keeps a wish to end back until the next wait. One that came between the last look for it and the wait would be noticed
/// after the wait only.
class HeldInterrupts {
public:
    HeldInterrupts() {
        const sigset_t signals = Interrupts();
        sigprocmask(SIG_BLOCK, &signals, &before_);
    }
    HeldInterrupts(const HeldInterrupts&) = delete;
    HeldInterrupts& operator=(const HeldInterrupts&) = delete;
    ~HeldInterrupts() { sigprocmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t before_{};
};

/// Lets the signals through that are held.
int PollWithInterrupts(pollfd& input, const timespec* timeout) {
    sigset_t mask;
    sigprocmask(SIG_BLOCK, nullptr, &mask);
    sigdelset(&mask, SIGINT);
    sigdelset(&mask, SIGTERM);
    return ppoll(&input, 1, timeout, &mask);
}

/// Whether something, or the end, is there; without a timeout it comes. A signal ends the wait, where reading would go on.
bool Wait(const timespec* timeout) {
    pollfd input{STDIN_FILENO, POLLIN, 0};
    for (;;) {
        const int count = PollWithInterrupts(input, timeout);
        if (count >= 0 || errno != EINTR) return count != 0;
        CheckAbort();
    }
}

constexpr timespec NoTime{0, 0};

}  // namespace

bool StandardInput::IsTerminal() { return isatty(STDIN_FILENO) != 0; }

void StandardInput::ReadMore() {
    char part[4096];
    // All that is there: a look for Escape while a line is evaluated would take keys of the next one.
    for (bool isReady = Wait(nullptr); isReady && !isAtEnd_; isReady = IsTerminal() && Wait(&NoTime)) {
        const ssize_t count = read(STDIN_FILENO, part, sizeof part);
        isAtEnd_ = count <= 0;
        if (count > 0) bytes_.append(part, static_cast<std::size_t>(count));
    }
}

bool StandardInput::TakeLine(const std::function<void()>& ask, std::string& line) {
    const HeldInterrupts held;
    ask();
    while (!isAtEnd_ && bytes_.find('\n') == std::string::npos) ReadMore();
    if (bytes_.empty()) return false;
    const std::size_t end = std::min(bytes_.find('\n'), bytes_.size());
    line = bytes_.substr(0, end);
    bytes_.erase(0, end + 1);
    return true;
}

std::string StandardInput::TakeAll(std::size_t most) {
    const HeldInterrupts held;
    CheckAbort();
    while (!isAtEnd_ && bytes_.size() <= most) ReadMore();
    return bytes_;
}

}  // namespace KM::Tool
