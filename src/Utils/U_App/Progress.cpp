#include "Utils/U_App/Progress.h"

#include <ctime>

#include "Utils/U_App/CheckAbort.h"
#include "Utils/U_App/HostMessages.h"
#include "Utils/U_App/ProgressClock.h"
#include "Utils/U_App/Services.h"
#include "Utils/U_App/StatusFiles.h"
#include "Utils/U_Caching/Caching.h"
#include "Utils/U_Debug/Exceptions.h"
#include "Utils/U_Debug/LogState.h"
#include "Utils/U_Debug/NumberText.h"
#include "Utils/U_IO/Files.h"
#include "Utils/U_IO/ToFile.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::Progress {
namespace {

using Application::Services;
using Verbose::EMessageType;

long long WallClock() { return std::time(nullptr); }

SecondsClock currentClock = WallClock;

constexpr long long Never = -1;
long long timeOfLastReport = Never;  // of any task

/// True once in each second.
bool IsReportDue() {
    const long long now = currentClock();
    if (now == timeOfLastReport) return false;
    timeOfLastReport = now;
    return true;
}

/// Leaves what is no number as it is.
double Clamped(double fraction) {
    if (fraction < 0.0) return 0.0;
    return fraction > 1.0 ? 1.0 : fraction;
}

/// Keeps a wish to stop for later.
class NoAbort {
public:
    NoAbort() { Verbose::State().checkAbortEnabled = false; }
    NoAbort(const NoAbort&) = delete;
    NoAbort& operator=(const NoAbort&) = delete;
    ~NoAbort() { Verbose::State().checkAbortEnabled = before_; }

private:
    bool before_ = Verbose::State().checkAbortEnabled;
};

void TellFinished() {
    const NoAbort noAbort;  // the line in the log is a check point, and who waits for the file would wait for ever
    HostMessages::SendFinished(FinishedMessage());
    DeleteMessageFiles();
    IO::ToFile file(FinishedFileName(), "wb", Caching::ColorForWriting(), true);
    file.Close();
}

}  // namespace

void SetSecondsClock(SecondsClock clock) { currentClock = clock != nullptr ? clock : WallClock; }

AProgress::AProgress(std::ostream* debugStream) : debugStream_(debugStream), startTime_(WallClock()) {
    IO::FilesDelete(FinishedFileName());
    Indent();
}

AProgress::~AProgress() {
    if (!IsEnableInCacheProgressStatus()) return;
    try {
        TellFinished();
    } catch (...) {
        // A folder that cannot be written changes nothing at the end.
    }
}

void AProgress::OnBegin() const {}
void AProgress::OnEnd() const {}

std::string AProgress::StatusText() const {
    std::string text = startMessage_;
    int count = 0;
    for (const Auto* task = tasks_.first; task != nullptr && count < maxStringsShow_; task = task->GetNext()) {
        if (count++ > 0) text += taskSeparator_;
        text += task->TaskName();
    }
    return text;
}

void AProgress::operator()(double fraction) {
    if (Services::AbortEvent()()) throw XUserAbort();
    local_ = fraction;
    global_ = (end_ - begin_) * fraction + begin_;
    Services::Status()(global_, local_, StatusText());
}

AProgress& Default() {
    // Made first, and so destroyed last: the end of the reporter writes a file, for which settings are read.
    [[maybe_unused]] static const XML::Element& settings = Settings::ToXMLElement("");
    static AProgress progress;
    return progress;
}

Auto::Auto(const std::string& name, Linked)
    : scope_(name),
      begin_(Default().begin_),
      end_(Default().end_),
      diff_(end_ - begin_),
      progress_(&Default()),
      taskName_(name) {
    progress_->OnBegin();
    startTime_ = WallClock();
    if (progress_->First() != nullptr && progress_->Last() != nullptr) progress_->Last()->next_ = this;
    else progress_->First() = this;
    prev_ = progress_->Last();
    progress_->Last() = this;
}

// The message can throw. By then the object counts as made, so the destructor unlinks it.
Auto::Auto(const std::string& name) : Auto(name, Linked()) {
    Verbose::WriteMessage_1(EMessageType::Note, "Progress: Task " + name + " has started!");
}

Auto::~Auto() {
    if (prev_ != nullptr) prev_->next_ = nullptr;
    if (next_ != nullptr) next_->prev_ = prev_;  // one that outlives this one must not come back to it
    progress_->Last() = prev_;
    progress_->begin_ = begin_;
    progress_->end_ = end_;
    if (progress_->First() == this) progress_->First() = nullptr;
    progress_->OnEnd();
}

void Auto::operator()(double fraction) {
    if (IsReportDue()) (*progress_)(Clamped(fraction));
}

void Auto::operator()(int done, int total) { (*this)(static_cast<double>(done) / static_cast<double>(total)); }

void Auto::SubTask(double upTo) {
    timeOfLastReport = Never;
    const double limit = upTo < 1.0 ? upTo : 1.0;
    (*this)(0.0);
    if (old_ > limit) {
        const Verbose::Scope scope("Progress");
        Verbose::WriteMessage_1(EMessageType::Warning, "OldValue = " + NumberText(old_) +
                                                           ", is bigger than NewValue = " + NumberText(limit) +
                                                           " no action was taken!");
        return;
    }
    progress_->begin_ = old_ * diff_ + begin_;
    progress_->end_ = limit * diff_ + begin_;
    old_ = limit;
}

}  // namespace KM::Progress
