#pragma once

#include <exception>
#include <memory>
#include <string>

#include "KmApi.h"

namespace KM {

// A failure travels by its kind. A broken assumption throws `KmException`. A file failure is logged in full first, and
// then an empty tag is thrown; so is the wish of the user to stop or to restart. The tags share no base: each is thrown
// by value and caught by its exact type.

/// What the assertions of the code throw: a message, and the source file and line of the throw site. Copies share the
/// text, so copying never fails.
class KM_API KmExceptionBase : public std::exception {
public:
    /// Without message: `what()` answers "Unknown exception".
    KmExceptionBase(const char* file, unsigned line);
    /// A null `message` counts as none, a null `file` as an empty text.
    KmExceptionBase(const char* message, const char* file, unsigned line);
    KmExceptionBase(const KmExceptionBase&) noexcept;
    KmExceptionBase& operator=(const KmExceptionBase&) noexcept;
    ~KmExceptionBase() override;

    const char* what() const noexcept override;
    unsigned Line() const noexcept { return line_; }
    const std::string& File() const noexcept;

private:
    struct Text;

    std::shared_ptr<const Text> text_;
    unsigned line_;
};

/// The class that is thrown. Its message, if it has one, begins with "In", the routine's name and a full stop.
class KM_API KmException : public KmExceptionBase {
public:
    using KmExceptionBase::KmExceptionBase;
    KmException(const std::string& message, const char* file, unsigned line);
    KmException(const KmException&) noexcept = default;
    KmException& operator=(const KmException&) noexcept = default;
    ~KmException() override;
};

/// A failure inside an expression, as a record to print. No relative of the classes above.
struct KM_API Exception {
    std::string type;
    std::string file;
    int line = 0;
};

/// The user asked to stop.
class KM_API XUserAbort {};

/// The process must be restarted.
class KM_API XRestartMe {};

/// An action ended without result.
class KM_API XNone {};

}  // namespace KM
