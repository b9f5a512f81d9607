#include "Utils/U_Console/LogServices.h"

#include "Utils/U_App/Services.h"
#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/ConsoleDumpingDevice.h"

namespace KM {
namespace {

DumpingDevice* device = nullptr;
OutputFormatter* formatter = nullptr;

}  // namespace

DumpingDevice* Services::GetDumpingDevice() {
    if (device == nullptr) {
        // Never destroyed, since static objects may log after `main`.
        static ConsoleDumpingDevice* const console = [] {
            auto* const made = new ConsoleDumpingDevice(Application::Services::DumpStream());
            Console::Init();
            return made;
        }();
        device = console;
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
