#include "Support/LogCapture.h"

namespace KM::Test {

std::vector<std::string> LogCapture::Texts(Verbose::EMessageType::iterator type) const {
    std::vector<std::string> texts;
    for (const Verbose::LogRecord& record : Verbose::LogRecords())
        if (record.begin && record.end && record.label == Verbose::EMessageType::Name(type))
            texts.push_back(record.message);
    return texts;
}

int LogCapture::Count(Verbose::EMessageType::iterator type) const { return static_cast<int>(Texts(type).size()); }

}  // namespace KM::Test
