#pragma once

#include "Utils/U_Console/DumpingDevice.h"
#include "Utils/U_Console/OutputFormatter.h"

namespace KM::Test {

/// Turns the log on for its life time: empty, at level `Note`, without indentation, with the standard formatter, on the
/// given device. Leaves it empty, and on no device.
class LogOn {
public:
    explicit LogOn(DumpingDevice& device);
    LogOn(const LogOn&) = delete;
    LogOn& operator=(const LogOn&) = delete;
    ~LogOn();

private:
    DumpingDevice& device_;
    bool wasEnabled_;
};

}  // namespace KM::Test
