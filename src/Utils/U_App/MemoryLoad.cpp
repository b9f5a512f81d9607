#include "Utils/U_App/MemoryLoad.h"

#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/Processes.h"
#include "Utils/U_Settings/Settings.h"

namespace KM {
namespace {

constexpr int LinkColor = 12;

void Tell(const std::string& text) {
    Verbose::WriteMessage_2(Verbose::EMessageType::Info, "Current MemoryLoading is: " + text, "", LinkColor);
}

}  // namespace

bool IsMemoryLimit(double factor) { return factor >= 0.1 && factor <= 0.9; }

void JudgeMemoryLoad(double factor, double percent) {
    if (percent / 100.0 > factor) {
        Tell(NumberText(percent) + "% this is unacceptable. Memory is fragmented and a restart is required.");
        throw XRestartMe();
    }
    Tell(NumberText(percent) + "% this is acceptable lower than MaxAcceptableMemoryLoading: " +
         std::to_string(static_cast<int>(factor * 100.0)) + "%. Execution continue.");
}

void RestartIfIsHeavyMemoryUsage() {
    const double factor = Settings::ToDouble("Behavior.MaxAcceptableMemoryLoadingFactor");
    if (IsMemoryLimit(factor)) JudgeMemoryLoad(factor, IO::MemoryStatus().memoryLoad);
}

}  // namespace KM
