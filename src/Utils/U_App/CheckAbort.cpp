#include "Utils/U_App/CheckAbort.h"

#include "Platform/Interrupts.h"
#include "Platform/Keys.h"
#include "Utils/U_App/StatusFiles.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/LogState.h"
#include "Utils/U_Debug/Time.h"
#include "Utils/U_IO/Files.h"

namespace KM {
namespace {

using Verbose::EMessageType;

constexpr int Escape = 27;
constexpr int MostKeysAtOnce = 100;  // whoever holds a key down does not hold up the work

double timeOfLastLookUp = 0.0;

/// Keeps the messages of a check from checking in turn.
class Check {
public:
    Check() { isRunning_ = true; }
    Check(const Check&) = delete;
    Check& operator=(const Check&) = delete;
    ~Check() { isRunning_ = false; }

    static bool IsRunning() { return isRunning_; }

private:
    static thread_local bool isRunning_;
};
thread_local bool Check::isRunning_ = false;

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
    // A clock that was set back must not make the tool deaf.
    if (!(now > timeOfLastLookUp + TimeGranularity()) && !(now < timeOfLastLookUp)) return false;
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
    for (int count = 0; count < MostKeysAtOnce; ++count) {
        const int key = Platform::TakeKey();
        if (key == -1) return;
        if (key == Escape) Stop("UserAbortEvent detected as ESC key pressed!");
        Verbose::WriteMessage_1(EMessageType::Warning,
                                std::string("Key = \"") + static_cast<char>(key) + "\" was pressed! Ignore it.");
    }
}

[[maybe_unused]] const bool isCheckPointSet = [] {
    Verbose::SetCheckPoint(CheckAbort);
    return true;
}();

}  // namespace

void CheckAbort() {
    if (!Verbose::State().checkAbortEnabled || Check::IsRunning()) return;
    const Check check;
    if (IsLookUpDue()) LookForAbortFile();
    LookAtKeyboard();
    if (Platform::TakeInterrupt()) Stop("UserAbortEvent detected as an interrupt signal!");
}

void Application::CatchInterrupts() { Platform::CatchInterrupts(); }

}  // namespace KM
