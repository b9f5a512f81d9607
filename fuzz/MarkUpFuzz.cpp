// Any bytes, as the end of a line of the log, must make the calls that the plain form of the rules makes.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "Km.h"
#include "Support/RecordingDevice.h"
#include "Utils/U_Console/PlainMarkUp.h"

namespace {

/// The line is its ending alone, but for the colours of the message.
class EndingFormatter : public KM::OutputFormatter {
public:
    std::string ending;
    std::string CloseMarkEnd() override { return ending; }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static EndingFormatter formatter;
    static KM::Test::RecordingDevice device;
    KM::Console::IsDumpEnabled(true);
    KM::Services::SetDumpingDevice(&device);
    KM::Services::SetOutputFormatter(&formatter);
    device.CLS();
    device.Take();

    const std::string text(reinterpret_cast<const char*>(data), size);
    formatter.ending = text;
    KM::Verbose::WriteMessage_1(KM::Verbose::EMessageType::Info, "");
    if (device.Take() != KM::Test::PlainMarkUp("`C10`Info`C7``C15``C7``C10`Info`C7`" + text)) std::abort();
    // Codes and bytes inside a message meet the codes round it.
    KM::WriteLine(text);
    if (device.Take() != KM::Test::PlainMarkUp("`C15``C15`" + text + "`C``C7`")) std::abort();
    return 0;
}
