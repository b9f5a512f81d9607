#pragma once

namespace KM::Platform {

/// Milliseconds since the epoch.
long long EpochMilliseconds();

void SleepMilliseconds(unsigned milliseconds);

/// A moment in local time.
struct LocalTime {
    int year;  ///< in full
    int month;  ///< from 1
    int day;
    int hour;
    int minute;
    int second;
};
LocalTime ToLocalTime(long long epochSeconds);

}  // namespace KM::Platform
