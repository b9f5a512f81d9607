#pragma once

#include <ostream>
#include <string>

#include "KmApi.h"
#include "Utils/U_Debug/Verbose.h"

/// Turns nested tasks into one fraction from 0 to 1, without any task knowing its place in the whole. A task is an
/// `Auto` on the stack. It reports its own fraction, and gives slices of its range to the tasks inside it:
///
///     Progress::Auto task("Repair");
///     task.SubTask(0.3);   // up to 0.3: FillHoles, whose own 0 to 1 becomes 0 to 0.3
///     FillHoles(mesh);
///     task.SubTask(1.0);   // the rest
///     Smooth(mesh);
///
/// Each report is a point of cancellation. One thread.
namespace KM::Progress {

class Auto;

/// Holds the chain of running tasks and the range of the present one, and hands reports to the status policy of
/// `Application::Services`. The virtual operations stand in this order.
class KM_API AProgress {
public:
    /// Removes the file "!Finished(ID=…)" of an earlier run from the cache folder.
    /// @param debugStream  kept for derived reporters
    explicit AProgress(std::ostream* debugStream = nullptr);
    // What is copied does not take running tasks along: they stay with the reporter at which they have begun.
    AProgress(const AProgress& other) = default;
    AProgress& operator=(const AProgress& other) = default;
    /// If `IsEnableInCacheProgressStatus()`, tells the host and those who watch the cache folder that the run has
    /// finished. What fails then is not reported.
    virtual ~AProgress();
    /// A task has been made.
    virtual void OnBegin() const;
    /// A task has ended.
    virtual void OnEnd() const;

    // Granularity and most of the texts are kept for derived reporters.

    double GetStep() const { return step_; }
    void SetStep(double step) { step_ = step; }
    /// Most task names that a status text holds; 1000 at start.
    int GetMaxStringsShow() const { return maxStringsShow_; }
    void SetMaxStringsShow(int count) { maxStringsShow_ = count; }
    /// Stands between task names; "." at start.
    const std::string& GetTaskSeparator() const { return taskSeparator_; }
    void SetTaskSeparator(const std::string& text) { taskSeparator_ = text; }
    const std::string& GetWorkSeparator() const { return workSeparator_; }
    void SetWorkSeparator(const std::string& text) { workSeparator_ = text; }
    /// Begins each status text; empty at start.
    const std::string& GetStartMessage() const { return startMessage_; }
    void SetStartMessage(const std::string& text) { startMessage_ = text; }
    const std::string& GetEndMessage() const { return endMessage_; }
    void SetEndMessage(const std::string& text) { endMessage_ = text; }
    const std::string& GetIndentMessage() const { return indentMessage_; }
    void SetIndentMessage(const std::string& text) { indentMessage_ = text; }

    /// The outermost and the innermost running task; null when none runs.
    Auto*& First() { return tasks_.first; }
    Auto*& Last() { return tasks_.last; }

    void Indent() { ++indentation_; }
    void UnIndent() { --indentation_; }
    std::ostream* DebugOStream() const { return debugStream_; }
    /// Does nothing.
    void endl() const {}

protected:
    /// Reports a fraction of the present range, with the names of the running tasks: "A.B".
    /// @throws XUserAbort if the user wants to stop
    void operator()(double fraction);

    /// Both of the last report.
    double Local() const { return local_; }
    double Global() const { return global_; }
    int Indentation() const { return indentation_; }
    /// Seconds since the epoch.
    long long StartTime() const { return startTime_; }

private:
    friend class Auto;

    struct Tasks {
        Auto* first = nullptr;
        Auto* last = nullptr;

        Tasks() = default;
        Tasks(const Tasks&) {}
        Tasks& operator=(const Tasks&) { return *this; }
    };

    std::string StatusText() const;

    std::ostream* debugStream_;
    Tasks tasks_;
    double begin_ = 0.0;
    double end_ = 1.0;
    double local_ = 0.0;
    int maxStringsShow_ = 1000;
    double step_ = 0.01;
    double global_ = 0.0;
    std::string taskSeparator_ = ".";
    std::string workSeparator_ = ": ";
    std::string startMessage_;
    std::string endMessage_ = "[%];";
    std::string indentMessage_ = "  ";
    int indentation_ = 0;
    long long startTime_;
};

/// The reporter of the process, made at first use. It goes at the end of the process, and then may write to the log: a
/// dump stream or a device must be alive until then, or the output be off.
KM_API AProgress& Default();

/// A running task of `Default()`, with a scope of the log that bears its name. Make it on the stack: only the innermost
/// one may go.
class KM_API Auto {
public:
    /// Logs a `Note`.
    /// @throws XUserAbort if the user wants to stop
    explicit Auto(const std::string& name);
    Auto(const Auto&) = delete;
    Auto& operator=(const Auto&) = delete;
    /// Gives the range back to the task around it.
    virtual ~Auto();

    /// Reports a fraction of the present slice. Made for inner loops: only the first report of any task in each second of
    /// the clock goes on, the others cost one look at the clock.
    /// @param fraction  what is below 0 counts as 0, what is above 1 as 1
    /// @throws XUserAbort if the user wants to stop
    void operator()(double fraction);
    /// Reports `done / total`.
    void operator()(int done, int total);

    /// Begins the next slice of this task: from the end of the slice before to `upTo`, of 0 to 1. What is above 1 counts
    /// as 1. What is less than the end of the slice before is refused with a `Warning`. Always reports, the end of what
    /// was before.
    /// @throws XUserAbort if the user wants to stop
    void SubTask(double upTo);

    /// The range of this task in the whole.
    double Begin() const { return begin_; }
    double End() const { return end_; }
    double Diff() const { return diff_; }
    /// Where the last slice ends.
    double Old() const { return old_; }
    /// 0.0; kept for derived tasks.
    double Value() const { return value_; }
    /// Seconds since the epoch.
    long long StartTime() const { return startTime_; }
    const std::string& TaskName() const { return taskName_; }
    /// The task inside this one; null for the innermost.
    Auto* GetNext() const { return next_; }
    void SetNext(Auto* next) { next_ = next; }
    /// Does nothing.
    void endl() const {}

private:
    struct Linked {};
    Auto(const std::string& name, Linked);

    Verbose::Scope scope_;
    double begin_;
    double end_;
    double diff_;
    Auto* next_ = nullptr;
    Auto* prev_ = nullptr;
    AProgress* progress_;
    std::string taskName_;
    double value_ = 0.0;
    long long startTime_ = 0;
    double old_ = 0.0;
};

}  // namespace KM::Progress
