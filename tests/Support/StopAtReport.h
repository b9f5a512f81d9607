#pragma once

#include "Utils/U_App/ProgressClock.h"
#include "Utils/U_App/Services.h"

namespace KM::Test {

/// While it lives, lets each report of progress through, and asks for an abort at one of them.
class StopAtReport {
public:
    /// @param report  counted from 0; one that never comes lets the work end
    explicit StopAtReport(int report) {
        asker_.left = report;
        Application::Services::AbortEvent(asker_);
        Progress::SetSecondsClock([] { return ++second; });
    }
    StopAtReport(const StopAtReport&) = delete;
    StopAtReport& operator=(const StopAtReport&) = delete;
    ~StopAtReport() {
        Progress::SetSecondsClock(nullptr);
        Application::Services::AbortEvent(before_);
    }

private:
    struct Asker : Application::AbortEventPolicy {
        bool operator()() const override { return left-- == 0; }
        mutable int left = 0;
    };

    inline static long long second = 0;

    Asker asker_;
    const Application::AbortEventPolicy& before_ = Application::Services::AbortEvent();
};

}  // namespace KM::Test
