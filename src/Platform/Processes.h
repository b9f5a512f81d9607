#pragma once

#include <optional>
#include <string>
#include <vector>

namespace KM::Platform {

int ProcessId();

/// A child process. It is not stopped when this object goes.
class ChildProcess {
public:
    /// Starts `program`, looked up in the search path, with the given arguments. Check `HasStarted`.
    ChildProcess(const std::string& program, const std::vector<std::string>& arguments);

    bool HasStarted() const { return id_ > 0; }
    /// Waits for the end. The exit code, or 128 plus the number of the signal that ended it; -1 if it never started.
    int Wait();
    /// The exit code if the process has ended.
    std::optional<int> ExitCode();

private:
    std::optional<int> Reap(int options);

    int id_ = -1;
    std::optional<int> exitCode_;
};

}  // namespace KM::Platform
