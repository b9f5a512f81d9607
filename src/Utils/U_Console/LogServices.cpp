#include "Utils/U_Console/LogServices.h"

#include <memory>

#include "Utils/U_App/Services.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/ConsoleDumpingDevice.h"

namespace KM {
namespace {

DumpingDevice* device = nullptr;
OutputFormatter* formatter = nullptr;

// Never destroyed, since static objects may log after `main`.
ConsoleDumpingDevice* TheConsole() {
    static ConsoleDumpingDevice* console = nullptr;
    if (console != nullptr) return console;
    auto made = std::make_unique<ConsoleDumpingDevice>(Application::Services::DumpStream());
    // A bad setting that is met while the device is made is logged, and that message has then made it already.
    if (console != nullptr) return console;
    device = console = made.release();
    Console::Init();
    return console;
}

}  // namespace

DumpingDevice* Services::GetDumpingDevice() {
    if (device == nullptr) device = TheConsole();
    return device;
}

void Services::SetDumpingDevice(DumpingDevice* newDevice) { device = newDevice; }

bool Services::HasOutputFormatter() { return formatter != nullptr; }

OutputFormatter* Services::GetOutputFormatter() {
    static XMLFormatter& standard = *new XMLFormatter;
    if (formatter == nullptr) formatter = &standard;
    return formatter;
}

void Services::SetOutputFormatter(OutputFormatter* newFormatter) {
    OutputFormatter* const old = formatter;
    if (newFormatter == old) return;
    formatter = newFormatter;
    if (old == nullptr || newFormatter == nullptr) return;
    newFormatter->OnInit();
    GetDumpingDevice()->Redraw();
}

}  // namespace KM
