#pragma once

#include <ostream>
#include <streambuf>
#include <string>

#include "KmApi.h"

namespace KM {

/// A stream buffer that swallows all that it is given.
class VoidStreamBuf : public std::streambuf {
protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

namespace Application {

/// How progress leaves the process. This class is the policy of the library: see its operator.
class KM_API StatusPolicy {
public:
    StatusPolicy() = default;
    StatusPolicy(const StatusPolicy&) = default;
    StatusPolicy& operator=(const StatusPolicy&) = default;

    /// Shows a status in up to four places: the title of the console, always; an element `CurrentStatus` in the log, if
    /// `IsEnableInConsoleProgressStatus()`; and, if `IsEnableInCacheProgressStatus()`, a message to the window of the host
    /// and the name of an empty file in the cache folder, "!Message(ID=12, 0.6, 0.1, Generate.Toolpath.Linking)", which
    /// replaces the one before.
    ///
    /// @param global   progress of the whole, 0 to 1; the greatest one so far is shown
    /// @param local    progress of the innermost task, 0 to 1
    /// @param message  in the name of the file, what a name cannot hold is replaced by "_" ("/", back-slash and NUL), and
    ///                 what is too long for a name is cut off
    /// @throws IO::XFileIOError if the file cannot be made
    virtual void operator()(double global, double local, const std::string& message) const;
    virtual ~StatusPolicy();
};

/// Tells whether the user wants the work to stop. This class is the policy of the library: it calls `CheckAbort()`,
/// which throws, and so only ever answers false.
class KM_API AbortEventPolicy {
public:
    AbortEventPolicy() = default;
    AbortEventPolicy(const AbortEventPolicy&) = default;
    AbortEventPolicy& operator=(const AbortEventPolicy&) = default;

    virtual bool operator()() const;
    virtual ~AbortEventPolicy();
};

/// What a program can replace in the framework.
class KM_API Services {
public:
    /// Where trace lines go, for the whole process. At start a stream that swallows them.
    static std::ostream& DumpStream();
    /// Sets the stream; it must outlive its use.
    static void DumpStream(std::ostream& stream);

    // Policies are not owned; they must outlive their use.

    static const StatusPolicy& Status();
    static void Status(const StatusPolicy& policy);
    static const AbortEventPolicy& AbortEvent();
    static void AbortEvent(const AbortEventPolicy& policy);
};

}  // namespace Application
}  // namespace KM
