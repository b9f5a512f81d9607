#include "Support/LogOn.h"

#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/LogServices.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM::Test {
namespace {

void StartAfresh(DumpingDevice& device) {
    // While the output is off, so that the change itself is not logged.
    Console::IsDumpEnabled(false);
    Verbose::Level(Verbose::EMessageType::Note);
    Services::SetOutputFormatter(nullptr);
    Services::GetOutputFormatter();
    device.CLS();
    Verbose::CurrentIndentation() = 0;
    Verbose::IndentAppearance() = "  ";
}

}  // namespace

LogOn::LogOn(DumpingDevice& device) : device_(device), wasEnabled_(Console::IsDumpEnabled()) {
    StartAfresh(device_);
    Services::SetDumpingDevice(&device_);
    Console::IsDumpEnabled(true);
}

LogOn::~LogOn() {
    StartAfresh(device_);
    Services::SetDumpingDevice(nullptr);
    Console::IsDumpEnabled(wasEnabled_);
}

}  // namespace KM::Test
