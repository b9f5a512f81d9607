#include "Utils/U_App/Progress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Support/LogCapture.h"
#include "Support/TempFolder.h"
#include "Support/WindowInbox.h"
#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_App/ProgressClock.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/LogState.h"
#include "Utils/U_Debug/NumberText.h"

namespace KM::Progress {
namespace {

using Application::Services;
using Test::LogCapture;
using Test::TempFolder;
using Test::WindowInbox;
using Texts = std::vector<std::string>;

long long second = 1000;

/// Records the reports as "global local text", by a clock that stands still unless a test moves it.
class ProgressReports : public testing::Test {
protected:
    ProgressReports() {
        Services::Status(recorder_);
        Services::AbortEvent(asker_);
        SetSecondsClock([] { return second; });
        ++second;
    }
    ~ProgressReports() override {
        SetSecondsClock(nullptr);
        Services::AbortEvent(abortBefore_);
        Services::Status(statusBefore_);
    }

    /// The reports since the last call.
    Texts Take() { return std::exchange(recorder_.reports, {}); }
    /// The report that the task makes with this fraction in a new second.
    template <class Task>
    std::string Report(Task& task, double fraction) {
        Take();
        ++second;
        task(fraction);
        const Texts reports = Take();
        return reports.size() == 1 ? reports[0] : std::to_string(reports.size()) + " reports";
    }
    void AskToStop(bool wanted) { asker_.isWanted = wanted; }

private:
    struct Recorder : Application::StatusPolicy {
        void operator()(double global, double local, const std::string& message) const override {
            reports.push_back(NumberText(global) + " " + NumberText(local) + " " + message);
        }
        mutable Texts reports;
    };
    struct Asker : Application::AbortEventPolicy {
        bool operator()() const override { return isWanted; }
        bool isWanted = false;
    };

    Recorder recorder_;
    Asker asker_;
    const Application::StatusPolicy& statusBefore_ = Services::Status();
    const Application::AbortEventPolicy& abortBefore_ = Services::AbortEvent();
};
using ProgressAuto = ProgressReports;
using ProgressSubTask = ProgressReports;
using ProgressThrottle = ProgressReports;
using ProgressReporter = ProgressReports;

TEST_F(ProgressAuto, AloneReportsItsFraction) {
    Auto a("A");
    EXPECT_EQ(Report(a, 0.5), "0.5 0.5 A");
    EXPECT_EQ(a.Begin(), 0.0);
    EXPECT_EQ(a.End(), 1.0);
    EXPECT_EQ(a.Diff(), 1.0);
    EXPECT_EQ(a.TaskName(), "A");
}

TEST_F(ProgressAuto, InsideASliceReportsPartOfIt) {
    Auto a("A");
    a.SubTask(0.5);
    {
        Auto b("B");
        EXPECT_EQ(Report(b, 0.5), "0.25 0.5 A.B");
    }
    a.SubTask(1.0);
    Auto b("B");
    EXPECT_EQ(Report(b, 0.5), "0.75 0.5 A.B");
    EXPECT_EQ(b.Begin(), 0.5);
    EXPECT_EQ(b.End(), 1.0);
    EXPECT_EQ(b.Diff(), 0.5);
}

TEST_F(ProgressAuto, NestsAsDeepAsItLikes) {
    Auto a("A");
    a.SubTask(0.5);
    a.SubTask(0.75);  // 0.5 to 0.75
    Auto b("B");
    b.SubTask(0.5);  // 0.5 to 0.625
    Auto c("C");
    EXPECT_EQ(Report(c, 0.0), "0.5 0 A.B.C");
    EXPECT_EQ(Report(c, 1.0), "0.625 1 A.B.C");
}

TEST_F(ProgressAuto, EndGivesTheRangeBack) {
    Auto a("A");
    a.SubTask(0.5);
    {
        Auto b("B");
        b.SubTask(0.5);
        b.SubTask(1.0);
        EXPECT_EQ(Report(b, 0.0), "0.25 0 A.B");
    }
    EXPECT_EQ(Report(a, 1.0), "0.5 1 A");  // the slice, not the whole: it lasts until the next SubTask
    a.SubTask(1.0);
    EXPECT_EQ(Report(a, 0.0), "0.5 0 A");
}

TEST_F(ProgressAuto, IsLinkedWhileItLives) {
    EXPECT_EQ(Default().First(), nullptr);
    {
        Auto a("A");
        EXPECT_EQ(Default().First(), &a);
        {
            Auto b("B");
            EXPECT_EQ(a.GetNext(), &b);
            EXPECT_EQ(b.GetNext(), nullptr);
            EXPECT_EQ(Default().First(), &a);
            EXPECT_EQ(Default().Last(), &b);
        }
        EXPECT_EQ(a.GetNext(), nullptr);
        EXPECT_EQ(Default().Last(), &a);
    }
    EXPECT_EQ(Default().First(), nullptr);
    EXPECT_EQ(Default().Last(), nullptr);
}

TEST_F(ProgressAuto, HoldsFractionsInTheirRange) {
    Auto a("A");
    EXPECT_EQ(Report(a, 1.7), "1 1 A");
    EXPECT_EQ(Report(a, -1.0), "0 0 A");
    EXPECT_EQ(Report(a, std::numeric_limits<double>::infinity()), "1 1 A");
    EXPECT_EQ(Report(a, std::numeric_limits<double>::quiet_NaN()), "nan nan A");
}

TEST_F(ProgressAuto, CountsAreDivided) {
    Auto a("A");
    const auto report = [&](int done, int total) {
        Take();
        ++second;
        a(done, total);
        return Take().at(0);
    };
    EXPECT_EQ(report(1, 4), "0.25 0.25 A");
    EXPECT_EQ(report(5, 4), "1 1 A");
    EXPECT_EQ(report(-1, 4), "0 0 A");
    EXPECT_EQ(report(1, 0), "1 1 A");
    EXPECT_EQ(report(-1, 0), "0 0 A");
    EXPECT_NE(report(0, 0).find("nan"), std::string::npos);
}

TEST_F(ProgressAuto, IsAScopeOfTheLog) {
    const LogCapture log;
    { const Auto a("A"); }
    ASSERT_EQ(log.Lines().size(), 4u);
    EXPECT_EQ(log.Lines()[0], "<A>");
    EXPECT_EQ(log.Lines()[1], "  <Note>Progress: Task A has started!</Note>");
    EXPECT_EQ(log.Lines()[3], "</A>");
}

TEST_F(ProgressAuto, ThatIsStoppedWhileItStartsLeavesNothingBehind) {
    const TempFolder folder;
    Caching::Path(folder / "");
    IsEnableInCacheLookingForCheckAbort(true);
    TimeGranularity(-1.0);
    Auto a("A");
    a.SubTask(0.5);
    folder.Write("!Break(ID=1)", "");
    EXPECT_THROW(Auto("B"), XUserAbort);
    TimeGranularity(0.2);
    IsEnableInCacheLookingForCheckAbort(false);
    EXPECT_EQ(Default().Last(), &a);
    EXPECT_EQ(a.GetNext(), nullptr);
    EXPECT_EQ(Report(a, 1.0), "0.5 1 A");
}

TEST_F(ProgressAuto, ThatGoesOutOfOrderLeavesNoTaskDangling) {
    auto a = std::make_unique<Auto>("A");
    auto b = std::make_unique<Auto>("B");
    auto c = std::make_unique<Auto>("C");
    b.reset();
    c.reset();
    EXPECT_EQ(Report(*a, 0.5), "0.5 0.5 A");
    a.reset();
    EXPECT_EQ(Default().First(), nullptr);
}

TEST_F(ProgressSubTask, ReportsTheStartOfWhatEnds) {
    Auto a("A");
    Take();
    a.SubTask(0.25);
    a.SubTask(0.5);
    a.SubTask(1.0);
    EXPECT_EQ(Take(), (Texts{"0 0 A", "0 0 A", "0.25 0 A"}));
    EXPECT_EQ(a.Old(), 1.0);
}

TEST_F(ProgressSubTask, RefusesToGoBack) {
    const LogCapture log;
    Auto a("A");
    a.SubTask(0.5);
    a.SubTask(0.4);
    EXPECT_EQ(a.Old(), 0.5);
    EXPECT_EQ(Report(a, 1.0), "0.5 1 A");
    const std::string warning = "OldValue = 0.5, is bigger than NewValue = 0.4 no action was taken!";
    EXPECT_EQ(log.Texts(Verbose::EMessageType::Warning), Texts{warning});
    ASSERT_EQ(log.Lines().size(), 6u);
    EXPECT_EQ(log.Lines()[2], "  <Progress>");
    EXPECT_EQ(log.Lines()[3], "    <Warning>" + warning + "</Warning>");
    EXPECT_EQ(log.Lines()[5], "  </Progress>");
}

TEST_F(ProgressSubTask, BeyondTheEndActsAsTheEnd) {
    for (const double upTo : {2.0, std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        Auto a("A");
        a.SubTask(0.5);
        a.SubTask(upTo);
        EXPECT_EQ(a.Old(), 1.0);
        EXPECT_EQ(Report(a, 0.5), "0.75 0.5 A");
    }
}

TEST_F(ProgressSubTask, BeforeTheStartIsRefused) {
    const LogCapture log;
    Auto a("A");
    a.SubTask(-1.0);
    EXPECT_EQ(a.Old(), 0.0);
    EXPECT_EQ(log.Count(Verbose::EMessageType::Warning), 1);
}

TEST_F(ProgressThrottle, LetsOneReportASecondPass) {
    Auto a("A");
    a(0.1);
    a(0.2);
    a(3, 10);
    EXPECT_EQ(Take(), Texts{"0.1 0.1 A"});
    ++second;
    a(0.4);
    EXPECT_EQ(Take(), Texts{"0.4 0.4 A"});
    --second;  // a clock that is set back is another second
    a(0.5);
    EXPECT_EQ(Take(), Texts{"0.5 0.5 A"});
}

TEST_F(ProgressThrottle, IsSharedByAllTasks) {
    Auto a("A");
    a(0.1);
    Auto b("B");
    b(0.2);
    EXPECT_EQ(Take(), Texts{"0.1 0.1 A"});
}

TEST_F(ProgressThrottle, SubTaskAlwaysPassesAndCounts) {
    Auto a("A");
    a(0.1);
    a.SubTask(0.5);
    a.SubTask(0.6);
    a(0.3);
    EXPECT_EQ(Take(), (Texts{"0.1 0.1 A", "0 0 A", "0 0 A"}));
}

TEST_F(ProgressThrottle, GoesByTheWallClock) {
    SetSecondsClock(nullptr);
    Auto a("A");
    // At most one second passes in the midst of it, and only if the first two calls straddle it.
    const std::time_t start = std::time(nullptr);
    for (int i = 0; i < 10; ++i) a(0.5);
    const auto seconds = static_cast<std::size_t>(std::time(nullptr) - start);
    EXPECT_GE(Take().size(), 1u);
    EXPECT_LE(Take().size(), 1u + seconds);
}

TEST_F(ProgressReporter, StopsWhenTheUserWants) {
    Auto a("A");
    a(0.1);
    Take();
    AskToStop(true);
    EXPECT_NO_THROW(a(0.2));  // held back
    ++second;
    EXPECT_THROW(a(0.3), XUserAbort);
    EXPECT_THROW(a.SubTask(0.5), XUserAbort);
    AskToStop(false);
    EXPECT_TRUE(Take().empty());
    EXPECT_EQ(a.Old(), 0.0);
}

TEST_F(ProgressReporter, ChainIsRestoredWhenAnAbortPasses) {
    Auto a("A");
    a.SubTask(0.5);
    try {
        Auto b("B");
        b.SubTask(0.5);
        Auto c("C");
        AskToStop(true);
        c.SubTask(1.0);
        ADD_FAILURE() << "not stopped";
    } catch (const XUserAbort&) {
        AskToStop(false);
    }
    EXPECT_EQ(Report(a, 1.0), "0.5 1 A");
}

TEST_F(ProgressReporter, TextIsMadeOfItsParts) {
    AProgress& progress = Default();
    progress.SetStartMessage("Run ");
    progress.SetTaskSeparator(" > ");
    progress.SetMaxStringsShow(2);
    Auto a("A");
    Auto b("B");
    Auto c("C");
    EXPECT_EQ(Report(c, 0.5), "0.5 0.5 Run A > B");
    progress.SetMaxStringsShow(0);
    EXPECT_EQ(Report(c, 0.5), "0.5 0.5 Run ");
    progress.SetMaxStringsShow(-5);
    EXPECT_EQ(Report(c, 0.5), "0.5 0.5 Run ");
    progress.SetStartMessage("");
    progress.SetTaskSeparator(".");
    progress.SetMaxStringsShow(1000);
}

/// A reporter of its own, as a host derives one.
class Reporter : public AProgress {
public:
    using AProgress::AProgress;
    using AProgress::Global;
    using AProgress::Indentation;
    using AProgress::Local;
    using AProgress::StartTime;
    using AProgress::operator();
};

TEST_F(ProgressReporter, HasItsValuesAtStart) {
    std::ostream stream(nullptr);
    Reporter reporter(&stream);
    EXPECT_EQ(reporter.DebugOStream(), &stream);
    EXPECT_EQ(Default().DebugOStream(), nullptr);
    EXPECT_EQ(reporter.First(), nullptr);
    EXPECT_EQ(reporter.Last(), nullptr);
    EXPECT_EQ(reporter.GetMaxStringsShow(), 1000);
    EXPECT_EQ(reporter.GetStep(), 0.01);
    EXPECT_EQ(reporter.GetTaskSeparator(), ".");
    EXPECT_EQ(reporter.GetWorkSeparator(), ": ");
    EXPECT_EQ(reporter.GetStartMessage(), "");
    EXPECT_EQ(reporter.GetEndMessage(), "[%];");
    EXPECT_EQ(reporter.GetIndentMessage(), "  ");
    EXPECT_EQ(reporter.Indentation(), 1);
    EXPECT_LE(std::time(nullptr) - reporter.StartTime(), 2);
    EXPECT_EQ(&Default(), &Default());
}

TEST_F(ProgressReporter, KeepsWhatItIsTold) {
    Reporter reporter;
    reporter.SetStep(0.5);
    reporter.SetWorkSeparator("w");
    reporter.SetEndMessage("e");
    reporter.SetIndentMessage("i");
    reporter.Indent();
    reporter.Indent();
    reporter.UnIndent();
    reporter.endl();
    reporter(0.25);
    EXPECT_EQ(Take(), Texts{"0.25 0.25 "});
    const Reporter copy(reporter);
    EXPECT_EQ(copy.GetStep(), 0.5);
    EXPECT_EQ(copy.GetWorkSeparator() + copy.GetEndMessage() + copy.GetIndentMessage(), "wei");
    EXPECT_EQ(copy.Indentation(), 2);
    EXPECT_EQ(copy.Local(), 0.25);
    EXPECT_EQ(copy.Global(), 0.25);
}

TEST_F(ProgressReporter, CopyTakesNoTasksAlong) {
    AProgress other;
    Auto a("A");
    AProgress copy(Default());
    EXPECT_EQ(copy.First(), nullptr);
    Default() = other;
    EXPECT_EQ(Default().First(), &a);
    EXPECT_EQ(Default().Last(), &a);
}

/// A cache folder of its own, told of progress.
class ProgressInCache : public testing::Test {
protected:
    ProgressInCache() {
        Caching::Path(folder / "");
        ID(12);
        IsEnableInCacheProgressStatus(true);
    }
    ~ProgressInCache() override {
        IsEnableInCacheProgressStatus(false);
        ID(1);
    }

    TempFolder folder;
};

TEST_F(ProgressInCache, BeginRemovesWhatAnEarlierRunLeft) {
    folder.Write("!Finished(ID=12)", "");
    folder.Write("!Finished(ID=1)", "");
    const AProgress progress;
    EXPECT_EQ(folder.Names(), Texts{"!Finished(ID=1)"});
}

TEST_F(ProgressInCache, EndIsTold) {
    const WindowInbox inbox;
    {
        const AProgress progress;
        folder.Write("!Message(ID=12, 1, 1, A)", "");
        folder.Write("!Message(ID=1, 1, 1, A)", "");
    }
    EXPECT_EQ(folder.Names(), (Texts{"!Finished(ID=12)", "!Message(ID=1, 1, 1, A)"}));
    EXPECT_EQ(folder.Bytes("!Finished(ID=12)"), "");
    const std::string datagram = inbox.Take();
    EXPECT_EQ(datagram.substr(std::min<std::size_t>(12, datagram.size())), "!Finished(ID=12)");
}

TEST_F(ProgressInCache, EndLogsItsFileInTheColourOfTheCache) {
    const LogCapture log;
    { const AProgress progress; }
    EXPECT_EQ(log.Texts(Verbose::EMessageType::Info), Texts{"Has been opened for writing"});
    EXPECT_EQ(Verbose::LogRecords().at(0).link, Caching::Path() + "!Finished(ID=12)");
    EXPECT_EQ(Verbose::LogRecords().at(0).linkColor, Caching::ColorForWriting());
}

TEST_F(ProgressInCache, EndIsNotToldUnlessEnabled) {
    const WindowInbox inbox;
    IsEnableInCacheProgressStatus(false);
    {
        const AProgress progress;
        folder.Write("!Message(ID=12, 1, 1, A)", "");
    }
    EXPECT_EQ(folder.Names(), Texts{"!Message(ID=12, 1, 1, A)"});
    EXPECT_EQ(inbox.Take(), "nothing");
}

TEST_F(ProgressInCache, EndSurvivesAFolderThatCannotBeWritten) {
    folder.Write("file", "");
    Caching::Path(folder / "file/");
    { const AProgress progress; }
    EXPECT_EQ(folder.Names(), Texts{"file"});
}

TEST_F(ProgressInCache, EndSurvivesAWishToStop) {
    const LogCapture log;  // the log line of the file is a check point
    IsEnableInCacheLookingForCheckAbort(true);
    TimeGranularity(-1.0);
    {
        const AProgress progress;
        folder.Write("!Break(ID=12)", "");
    }
    TimeGranularity(0.2);
    IsEnableInCacheLookingForCheckAbort(false);
    EXPECT_EQ(log.Count(Verbose::EMessageType::Warning), 0);
    EXPECT_EQ(folder.Names(), (Texts{"!Break(ID=12)", "!Finished(ID=12)"}));
    EXPECT_TRUE(Verbose::State().checkAbortEnabled);
}

}  // namespace
}  // namespace KM::Progress
