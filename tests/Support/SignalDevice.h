#pragma once

#include <functional>
#include <string>
#include <utility>

#include "Utils/U_Console/DumpingDevice.h"

namespace KM::Test {

/// Lets something happen with each line of the log, that is while the code that is tested is under way.
class SignalDevice : public DumpingDevice {
public:
    explicit SignalDevice(std::function<void()> onLine) : onLine_(std::move(onLine)) {}
    void Write(const std::string&) override {}
    void OnBegin() override { onLine_(); }
    void Reset() override {}
    void ApplyBackground() override {}

private:
    std::function<void()> onLine_;
};

}  // namespace KM::Test
