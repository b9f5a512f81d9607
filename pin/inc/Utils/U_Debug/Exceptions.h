#pragma once

#include <exception>
#include <string>

#include "KmApi.h"

namespace KM {

/// What the assertions of the code throw: a message with the source file and line of the throw site.
class KM_API KmExceptionBase : public std::exception {
public:
    /// Without message: `what()` answers "Unknown exception".
    KmExceptionBase(const char* file, unsigned line);
    KmExceptionBase(const char* message, const char* file, unsigned line);
    KmExceptionBase(const KmExceptionBase&);
    KmExceptionBase& operator=(const KmExceptionBase&) = default;
    ~KmExceptionBase() override;

    const char* what() const noexcept override;
    unsigned Line() const { return line_; }
    const std::string& File() const { return file_; }

private:
    std::string message_;
    unsigned line_;
    std::string file_;
};

/// The class that is thrown. Its message begins with "In", the routine's name and a full stop.
class KM_API KmException : public KmExceptionBase {
public:
    using KmExceptionBase::KmExceptionBase;
    KmException(const std::string& message, const char* file, unsigned line);
    KmException(const KmException&) = default;
    KmException& operator=(const KmException&) = default;
    ~KmException() override;
};

}  // namespace KM
