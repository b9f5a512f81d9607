#include "Platform/Clock.h"

#include <time.h>

#include <cerrno>

namespace KM::Platform {

long long EpochMilliseconds() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<long long>(now.tv_sec) * 1000 + now.tv_nsec / 1000000;
}

void SleepMilliseconds(unsigned milliseconds) {
    timespec left{static_cast<time_t>(milliseconds / 1000), static_cast<long>(milliseconds % 1000) * 1000000};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}

LocalTime ToLocalTime(long long epochSeconds) {
    const time_t moment = static_cast<time_t>(epochSeconds);
    tm parts{};
    localtime_r(&moment, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

}  // namespace KM::Platform
