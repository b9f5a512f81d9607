#include "Utils/U_IO/Persistent.h"

#include <atomic>
#include <utility>

#include "Utils/U_Debug/Time.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM {
namespace {

using Verbose::EMessageType;

std::atomic<std::int32_t> runningThreads{0};

class RunningThread {
public:
    RunningThread() { ++runningThreads; }
    RunningThread(const RunningThread&) = delete;
    RunningThread& operator=(const RunningThread&) = delete;
    ~RunningThread() { --runningThreads; }
};

class LockDuringSave {
public:
    explicit LockDuringSave(const Lockable& object) : object_(object) { object_.Lock(); }
    LockDuringSave(const LockDuringSave&) = delete;
    LockDuringSave& operator=(const LockDuringSave&) = delete;
    ~LockDuringSave() {
        try {
            object_.Unlock();
        } catch (...) {
            // Its message, if somebody else has unlocked the object, is a point of cancellation.
        }
    }

private:
    const Lockable& object_;
};

/// Lets out the failure of a file, of which the log tells already, and nothing else.
template <class Work>
auto Shielded(Work work) {
    using Result = decltype(work());
    try {
        return work();
    } catch (const IO::XFileIOError&) {
        throw IO::XFileIOError();
    } catch (...) {
        return Result();
    }
}

int SecondsWaited(int atMost) {
    int waited = 0;
    while (RunningThreadsCount() != 0 && waited < atMost) {
        Verbose::WriteMessage_1(EMessageType::Info,
                                "Are still other threads opened. I can't stop the application right now! Wait for "
                                "other: " +
                                    std::to_string(atMost - waited) + " seconds.");
        ++waited;
        Time::Sleep(1000);
    }
    return waited;
}

}  // namespace

// One byte that is read and written as it is; the order only makes what a saver did visible to those who waited.
bool Lockable::IsLocked() const { return std::atomic_ref(locked_).load(std::memory_order_acquire); }
void Lockable::SetLocked(bool locked) const { std::atomic_ref(locked_).store(locked, std::memory_order_release); }

// The mark is set before the message, which can end in an exception; and taken away last of all that touches the
// object, which may be destroyed from then on.
void Lockable::Lock() const {
    const bool wasLocked = IsLocked();
    SetLocked(true);
    if (wasLocked) Verbose::WriteMessage_1(EMessageType::Warning, "(Is already locked!");
}

void Lockable::Unlock() const {
    const bool wasLocked = IsLocked();
    SetLocked(false);
    if (!wasLocked) Verbose::WriteMessage_1(EMessageType::Warning, "(Is already unlocked!");
}

void Lockable::WaitUntilUnlock() const {
    while (IsLocked()) Time::Sleep(200);
}

Persistent::~Persistent() { WaitUntilUnlock(); }

bool Persistent::Load(IO::ToFile& file) {
    WaitUntilUnlock();
    return Shielded([&] { return DoLoad(file); });
}

void Persistent::Save(IO::ToFile& file) const {
    Shielded([&] { DoSave(file); });
}

void Persistent::MultithreadedSave(const std::string& name) const { SaveHelper(name); }

int Persistent::SaveHelper(const std::string& name) const {
    return Shielded([&] {
        const RunningThread counted;
        const LockDuringSave locked(*this);
        IO::ToFile file(name, "wb", 0, false);
        Save(file);
        return 0;
    });
}

std::int32_t RunningThreadsCount() { return runningThreads; }

void WaitUntilOtherThreadsEnd(int seconds) {
    static bool wasCalled = false;
    if (std::exchange(wasCalled, true))
        return Verbose::WriteMessage_1(EMessageType::Warning, "Multiple calls to WaitUntilOtherThreadsEnd!");
    // Counted in whole sleeps, not by the clock, and told by the same count.
    if (SecondsWaited(seconds) < seconds)
        return Verbose::WriteMessage_1(
            EMessageType::Info, "Looks like all concurrent threads have finished running. Program can close safely.");
    Verbose::WriteMessage_1(EMessageType::Warning,
                            "The waiting time - " + std::to_string(seconds) +
                                " seconds - has passed. Program will be closed without waiting after still running: " +
                                std::to_string(RunningThreadsCount()) + " threads.");
}

}  // namespace KM
