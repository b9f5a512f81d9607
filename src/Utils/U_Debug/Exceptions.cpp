#include "Utils/U_Debug/Exceptions.h"

namespace KM {
namespace {

std::string TextOf(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

KmExceptionBase::KmExceptionBase(const char* file, unsigned line) : line_(line), file_(TextOf(file)) {}

KmExceptionBase::KmExceptionBase(const char* message, const char* file, unsigned line)
    : message_(TextOf(message)), line_(line), file_(TextOf(file)) {}

KmExceptionBase::KmExceptionBase(const KmExceptionBase&) = default;

KmExceptionBase::~KmExceptionBase() = default;

const char* KmExceptionBase::what() const noexcept {
    return message_.empty() ? "Unknown exception" : message_.c_str();
}

KmException::KmException(const std::string& message, const char* file, unsigned line)
    : KmExceptionBase(message.c_str(), file, line) {}

KmException::~KmException() = default;

}  // namespace KM
