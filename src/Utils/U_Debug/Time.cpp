#include "Utils/U_Debug/Time.h"

#include <cstdio>

#include "Platform/Clock.h"
#include "Utils/U_Debug/TimeText.h"

namespace KM::Time {

double Get() {
    const long long now = Platform::EpochMilliseconds();
    return static_cast<double>(now / 1000) + static_cast<double>(now % 1000) / 1000;
}

void Sleep(unsigned milliseconds) { Platform::SleepMilliseconds(milliseconds); }

std::string TextOf(long long epochMilliseconds, bool tagged, bool withMilliseconds, const std::string& prefix,
                   const std::string& postfix) {
    const Platform::LocalTime t = Platform::ToLocalTime(epochMilliseconds / 1000);
    char text[128];
    // There is nothing between day and hour in the plain form: readers of old logs split it at fixed columns.
    const char* const form =
        tagged ? "Y%.4dM%.2dD%.2dH%.2dM%.2dS%.2d" : "%.4d/%.2d/%.2d%.2d:%.2d:%.2d";
    std::snprintf(text, sizeof text, form, t.year, t.month, t.day, t.hour, t.minute, t.second);
    std::string result = prefix + text;
    if (tagged && withMilliseconds) {
        std::snprintf(text, sizeof text, "MS%.3d", static_cast<int>(epochMilliseconds % 1000));
        result += text;
    }
    return result + postfix;
}

std::string ToString(bool tagged, bool withMilliseconds, const std::string& prefix, const std::string& postfix) {
    return TextOf(Platform::EpochMilliseconds(), tagged, withMilliseconds, prefix, postfix);
}

}  // namespace KM::Time
