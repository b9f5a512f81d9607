#include "Utils/U_App/CheckAbort.h"

#include "Platform/Interrupts.h"
#include "Platform/Keys.h"
#include "Utils/U_App/StatusFiles.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/LogState.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_IO/Files.h"
#include "Utils/U_IO/MenuKeys.h"

namespace KM {
namespace {

using Verbose::EMessageType;

constexpr int Escape = 27;

// The messages of a check are check points in turn. Neither a key that is held down nor a file that cannot be deleted
// makes that endless.
constexpr int MostNestedChecks = 100;

double timeOfLastLookUp = 0.0;

/// A check that runs on this thread.
class Check {
public:
    Check() { ++running_; }
    Check(const Check&) = delete;
    Check& operator=(const Check&) = delete;
    ~Check() { --running_; }

    static int Running() { return running_; }

private:
    static thread_local int running_;
};
thread_local int Check::running_ = 0;

[[noreturn]] void Stop(const std::string& why) {
    Verbose::WriteMessage_1(EMessageType::Warning, why);
    while (Verbose::State().scopes.size() > 1) {
        Verbose::WriteMessage_1(EMessageType::Warning, "Scope forceful closed!");
        Verbose::UnroleInnermost();
    }
    throw XUserAbort();
}

bool IsLookUpDue() {
    if (!IsEnableInCacheLookingForCheckAbort()) return false;
    const double now = Time::Get();
    if (!(now > timeOfLastLookUp + TimeGranularity())) return false;
    timeOfLastLookUp = now;
    return true;
}

void LookForAbortFile() {
    const std::string file = AbortFileName();
    if (!IO::FileExist(file)) return;
    IO::FilesDelete(file);
    Stop("UserAbortEvent detected as an AbortFile found!");
}

void LookAtKeyboard() {
    const int key = Platform::TakeKey();
    if (key == -1) return;
    if (key == Escape) Stop("UserAbortEvent detected as ESC key pressed!");
    // The message takes the next key before it is written, so the last key is told first.
    Verbose::WriteMessage_1(EMessageType::Warning,
                            std::string("Key = \"") + static_cast<char>(key) + "\" was pressed! Ignore it.");
}

[[maybe_unused]] const bool isCheckPointSet = [] {
    Verbose::SetCheckPoint(CheckAbort);
    return true;
}();

}  // namespace

void CheckAbort() {
    if (!Verbose::State().checkAbortEnabled || Check::Running() == MostNestedChecks) return;
    const Check check;
    if (IsLookUpDue()) LookForAbortFile();
    if (!IO::AreKeysForAMenu()) LookAtKeyboard();
    if (Platform::TakeInterrupt()) Stop("UserAbortEvent detected as an interrupt signal!");
}

void Application::CatchInterrupts() { Platform::CatchInterrupts(); }

}  // namespace KM
