#pragma once

#include <string>
#include <vector>

#include "Support/LogOn.h"
#include "Utils/U_Console/DumpingDevice.h"
#include "Utils/U_Debug/Verbose.h"

namespace KM::Test {

/// Turns the log on for its life time, starts it empty at level `Note`, and keeps what it writes as plain text.
class LogCapture {
public:
    /// The lines as the device got them, without codes, each with its indentation.
    const std::vector<std::string>& Lines() const { return device_.lines; }
    /// Messages of one kind.
    int Count(Verbose::EMessageType::iterator type) const;
    /// Texts of all messages of one kind.
    std::vector<std::string> Texts(Verbose::EMessageType::iterator type) const;

private:
    class Device : public DumpingDevice {
    public:
        std::vector<std::string> lines;

        void Write(const std::string& text) override { lines.back() += text; }
        void OnBegin() override { lines.emplace_back(); }
        void Reset() override { lines.clear(); }
        void ApplyBackground() override {}
    };

    Device device_;
    LogOn on_{device_};
};

}  // namespace KM::Test
