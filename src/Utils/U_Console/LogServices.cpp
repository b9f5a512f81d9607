#include "Utils/U_Console/LogServices.h"

#include <memory>

#include "Utils/U_App/Services.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/ConsoleDumpingDevice.h"

namespace KM {
namespace {

DumpingDevice* device = nullptr;
OutputFormatter* formatter = nullptr;

// Neither this one nor the console is ever destroyed, since static objects may log after `main`.
DumpingDevice* Silence() {
    struct Silent : DumpingDevice {
        void Reset() override {}
        void ApplyBackground() override {}
    };
    static Silent& silent = *new Silent;
    return &silent;
}

DumpingDevice* ConsoleOfProcess() {
    static ConsoleDumpingDevice* const console = [] {
        auto made = std::make_unique<ConsoleDumpingDevice>(Application::Services::DumpStream());
        Console::Init();
        return made.release();
    }();
    return console;
}

}  // namespace

DumpingDevice* Services::GetDumpingDevice() {
    if (device != nullptr) return device;
    // A setting that the console cannot read is logged while it is made: a record that no device shows yet.
    device = Silence();
    try {
        device = ConsoleOfProcess();
    } catch (...) {
        device = nullptr;
        throw;
    }
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
