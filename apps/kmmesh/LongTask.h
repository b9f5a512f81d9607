#pragma once

#include <string>

#include "Utils/U_App/Progress.h"

namespace KM::Tool {

/// A task of the progress whose steps are many and short: it looks for a stop and reports often enough for people, and
/// seldom enough to cost nothing.
class LongTask {
public:
    /// @param steps  about how many there will be
    LongTask(const std::string& name, double steps);

    /// One step is done.
    /// @throws XUserAbort  if the user wants to stop, now and then
    void Step() {
        constexpr long long between = 4096;
        if (++done_ % between == 0) At(static_cast<double>(done_) / steps_);
    }

    /// So much is done, as a share of the task.
    /// @throws XUserAbort  if the user wants to stop
    void At(double share);

private:
    Progress::Auto progress_;
    double steps_;
    long long done_ = 0;
};

}  // namespace KM::Tool
