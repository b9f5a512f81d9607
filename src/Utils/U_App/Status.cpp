#include <algorithm>

#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_App/HostMessages.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_App/StatusFiles.h"
#include "Utils/U_Console/LogServices.h"
#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_Debug/Verbose.h"
#include "Utils/U_IO/ToFile.h"

namespace KM::Application {
namespace {

double bestGlobal = 0.0;

/// How a bar looks.
struct Bar {
    char open;
    char close;
    char filled;
    char empty;
    int cells;
};
constexpr Bar GlobalBar{'[', ']', 'I', ' ', 60};
constexpr Bar LocalBar{'<', '>', 'I', ' ', 30};

std::string Draw(const Bar& bar, double fraction) {
    const double wanted = fraction * bar.cells;
    int filled = 0;
    if (wanted >= bar.cells) filled = bar.cells;
    else if (wanted > 0.0)  // false for what is no number
        filled = static_cast<int>(wanted);
    return bar.open + std::string(static_cast<std::size_t>(filled), bar.filled) +
           std::string(static_cast<std::size_t>(bar.cells - filled), bar.empty) + bar.close;
}

void WriteToConsole(double global, double local, const std::string& message) {
    WriteLine("\n<CurrentStatus Global=\"" + NumberText(global) + "\" Local=\"" + NumberText(local) + "\" Message=\"" +
              message + "\"/>");
}

void WriteToCache(double global, double local, const std::string& message) {
    DeleteMessageFiles();
    IO::ToFile file(MessageFileName(global, local, message), "wb", 0, true);
    file.Close();
}

}  // namespace

StatusPolicy::~StatusPolicy() = default;

void StatusPolicy::operator()(double global, double local, const std::string& message) const {
    bestGlobal = std::max(bestGlobal, global);
    KM::Services::GetDumpingDevice()->SetTitle("G:" + Draw(GlobalBar, bestGlobal) + " L:" + Draw(LocalBar, local) +
                                               "  " + message);
    if (IsEnableInConsoleProgressStatus()) WriteToConsole(bestGlobal, local, message);
    if (!IsEnableInCacheProgressStatus()) return;
    HostMessages::SendProgress(message, local, bestGlobal);
    WriteToCache(bestGlobal, local, message);
}

AbortEventPolicy::~AbortEventPolicy() = default;

bool AbortEventPolicy::operator()() const {
    CheckAbort();
    return false;
}

}  // namespace KM::Application
