#include "Support/LogCapture.h"

#include "Utils/U_Console/Console.h"
#include "Utils/U_Console/LogServices.h"

namespace KM::Test {

LogCapture::LogCapture() : wasEnabled_(Console::IsDumpEnabled()) {
    Services::GetOutputFormatter();
    Services::SetDumpingDevice(&device_);
    // Before the output is enabled, so that the change itself is not logged.
    Console::IsDumpEnabled(false);
    Verbose::Level(Verbose::EMessageType::Note);
    device_.CLS();
    Verbose::CurrentIndentation() = 0;
    Console::IsDumpEnabled(true);
}

LogCapture::~LogCapture() {
    Console::IsDumpEnabled(false);
    Verbose::Level(Verbose::EMessageType::Note);
    device_.CLS();
    Verbose::CurrentIndentation() = 0;
    Services::SetDumpingDevice(nullptr);
    Console::IsDumpEnabled(wasEnabled_);
}

std::vector<std::string> LogCapture::Texts(Verbose::EMessageType::iterator type) const {
    std::vector<std::string> texts;
    for (const Verbose::LogRecord& record : Verbose::LogRecords())
        if (record.begin && record.end && record.label == Verbose::EMessageType::Name(type)) texts.push_back(record.message);
    return texts;
}

int LogCapture::Count(Verbose::EMessageType::iterator type) const { return static_cast<int>(Texts(type).size()); }

}  // namespace KM::Test
