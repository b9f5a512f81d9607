#include "Utils/U_Console/DumpingDevice.h"

#include <vector>

#include "Utils/U_Console/LogServices.h"
#include "Utils/U_Debug/LogState.h"

namespace KM {

DumpingDevice::~DumpingDevice() = default;
void DumpingDevice::SetTitle(const std::string&) {}
void DumpingDevice::BoldB() {}
void DumpingDevice::BoldE() {}
void DumpingDevice::ItalicB() {}
void DumpingDevice::ItalicE() {}
void DumpingDevice::UnderlineB() {}
void DumpingDevice::UnderlineE() {}
void DumpingDevice::StrikeB() {}
void DumpingDevice::StrikeE() {}
void DumpingDevice::SuperB() {}
void DumpingDevice::SuperE() {}
void DumpingDevice::SubB() {}
void DumpingDevice::SubE() {}
void DumpingDevice::HyperlinkB() {}
void DumpingDevice::HyperlinkE() {}
void DumpingDevice::AccoladeB() {}
void DumpingDevice::AccoladeE() {}
void DumpingDevice::SizeB(int) {}
void DumpingDevice::SizeE() {}
void DumpingDevice::FgColorB(int) {}
void DumpingDevice::FgColorE() {}
void DumpingDevice::BkColorB(int) {}
void DumpingDevice::BkColorE() {}
void DumpingDevice::Write(const std::string&) {}
void DumpingDevice::OnBegin() {}
void DumpingDevice::OnEnd() {}
void DumpingDevice::DumpAll(const std::string&) {}

void DumpingDevice::AnalyzeColor(int& color) const {
    if (IsDarkBackground()) return;
    switch (color) {
        case 0:
        case 15:
            color = 0;
            break;
        case 7:
            color = 8;
            break;
        case 8:
            color = 7;
            break;
        default:
            color += color < 8 ? 8 : -8;
    }
}

void DumpingDevice::Redraw() {
    const std::vector<Verbose::LogRecord> records = Verbose::State().records;
    ApplyBackground();
    Verbose::State().records.clear();
    Reset();
    Services::GetOutputFormatter()->OnInit();
    Verbose::State().indentation = 0;
    // Each record is kept again as it is written.
    for (const Verbose::LogRecord& record : records) Verbose::WriteRecord(record);
}

void DumpingDevice::CLS() {
    Verbose::State().records.clear();
    Reset();
    Services::GetOutputFormatter()->OnInit();
}

void DumpingDevice::EnableDarkBackground(bool dark) {
    if (dark == IsDarkBackground()) return;
    darkBackground_ = dark ? -1 : 0;
    Redraw();
}

}  // namespace KM
