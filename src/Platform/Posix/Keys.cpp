#include "Platform/Keys.h"

#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>

namespace KM::Platform {
namespace {

// For the handler of a signal that comes while the keyboard is raw.
termios settingsToRestore{};
std::atomic<bool> isRestoreNeeded{false};

/// True for a terminal that may be read. `settings` then are its present ones.
bool OpenKeyboard(termios& settings) {
    // First, since it is all that a message costs where there is no terminal: one system call.
    if (tcgetattr(STDIN_FILENO, &settings) != 0) return false;
    // A process in the background that touches the settings of its terminal would be stopped. One that is not the
    // terminal of its session has no background: -1.
    const pid_t foreground = tcgetpgrp(STDIN_FILENO);
    return foreground == -1 || foreground == getpgrp();
}

/// Hands out keys one by one, without waiting for the end of a line; puts the terminal back as it was. Kept only for the
/// moment of a look, so that a process that is killed leaves its terminal in order.
class RawKeyboard {
public:
    explicit RawKeyboard(const termios& before) : before_(before) {
        termios raw = before_;
        raw.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
        raw.c_cc[VMIN] = 0;
        raw.c_cc[VTIME] = 0;
        settingsToRestore = before_;
        isRestoreNeeded = true;
        isRaw_ = tcsetattr(STDIN_FILENO, TCSANOW, &raw) == 0;
    }
    RawKeyboard(const RawKeyboard&) = delete;
    RawKeyboard& operator=(const RawKeyboard&) = delete;
    ~RawKeyboard() {
        if (isRaw_) tcsetattr(STDIN_FILENO, TCSANOW, &before_);
        isRestoreNeeded = false;
    }

    int Take() const {
        pollfd keyboard{STDIN_FILENO, POLLIN, 0};
        unsigned char key = 0;
        if (!isRaw_ || poll(&keyboard, 1, 0) != 1 || read(STDIN_FILENO, &key, 1) != 1) return -1;
        return key;
    }

private:
    termios before_;
    bool isRaw_ = false;
};

}  // namespace

bool IsKeyboardThere() {
    termios ignored{};
    return OpenKeyboard(ignored);
}

int TakeKey() {
    termios present{};
    return OpenKeyboard(present) ? RawKeyboard(present).Take() : -1;
}

void RestoreKeyboard() {
    if (isRestoreNeeded) tcsetattr(STDIN_FILENO, TCSANOW, &settingsToRestore);
}

}  // namespace KM::Platform
