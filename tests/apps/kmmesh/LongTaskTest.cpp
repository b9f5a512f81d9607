#include "LongTask.h"

#include <gtest/gtest.h>

#include "Utils/U_App/Services.h"
#include "Utils/U_Debug/Exceptions.h"

namespace KM::Tool {
namespace {

/// Counts how often it is asked, and wants to stop from a certain time on.
class Asked : public Application::AbortEventPolicy {
public:
    explicit Asked(int stopAt) : stopAt_(stopAt) { Application::Services::AbortEvent(*this); }
    ~Asked() override { Application::Services::AbortEvent(before_); }

    bool operator()() const override { return ++count_ >= stopAt_; }
    void Reset() const { count_ = 0; }
    int Count() const { return count_; }

private:
    const AbortEventPolicy& before_ = Application::Services::AbortEvent();
    int stopAt_;
    mutable int count_ = 0;
};

TEST(LongTask, AsksOftenAndNotAlways) {
    const Asked asked(1000000);
    LongTask task("Task", 0.0);
    asked.Reset();
    for (int i = 0; i < 100000; ++i) task.Step();
    EXPECT_GE(asked.Count(), 20);
    EXPECT_LT(asked.Count(), 1000);
}

TEST(LongTask, StopsWhenTheUserWantsTo) {
    const Asked asked(3);
    EXPECT_THROW(
        {
            LongTask task("Task", 1.0);
            for (int i = 0; i < 3; ++i) task.At(0.5);
        },
        XUserAbort);
    EXPECT_EQ(Progress::Default().Last(), nullptr);
}

}  // namespace
}  // namespace KM::Tool
