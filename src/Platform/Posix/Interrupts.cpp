#include "Platform/Interrupts.h"

#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>

#include "Platform/Keys.h"
#include "Platform/Terminal.h"

namespace KM::Platform {
namespace {

// What a signal handler may touch.
std::atomic<int> requests{0};
std::atomic<bool> isPending{false};
std::atomic<bool> areColorsWanted{false};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

void RestoreColors() {
    constexpr char plain[] = "\x1b[0m";
    termios ignored{};
    for (const int file : {STDOUT_FILENO, STDERR_FILENO})
        if (areColorsWanted && tcgetattr(file, &ignored) == 0 && write(file, plain, sizeof plain - 1) < 0) return;
}

void Handle(int signal) {
    const int before = errno;
    isPending = true;
    if (requests.fetch_add(1) > 0) {
        RestoreKeyboard();
        RestoreColors();
        struct sigaction standard {};
        standard.sa_handler = SIG_DFL;
        sigaction(signal, &standard, nullptr);
        raise(signal);  // takes effect when this handler returns
    }
    errno = before;
}

void Catch(int signal) {
    struct sigaction present {};
    // A parent that has switched a signal off, as for a job in the background, means it.
    if (sigaction(signal, nullptr, &present) != 0 || present.sa_handler == SIG_IGN) return;
    struct sigaction caught {};
    caught.sa_handler = Handle;
    caught.sa_flags = SA_RESTART;  // reading and writing of files goes on
    sigaction(signal, &caught, nullptr);
}

}  // namespace

void CatchInterrupts() {
    areColorsWanted = AreEscapesWanted();
    Catch(SIGINT);
    Catch(SIGTERM);
}

bool TakeInterrupt() { return isPending.load(std::memory_order_relaxed) && isPending.exchange(false); }

}  // namespace KM::Platform
