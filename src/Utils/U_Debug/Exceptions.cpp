#include "Utils/U_Debug/Exceptions.h"

#include <optional>

namespace KM {

struct KmExceptionBase::Text {
    std::optional<std::string> message;
    std::string file;

    Text(const char* messageOrNull, const char* fileOrNull) {
        if (messageOrNull != nullptr) message = messageOrNull;
        if (fileOrNull != nullptr) file = fileOrNull;
    }
};

KmExceptionBase::KmExceptionBase(const char* file, unsigned line) : KmExceptionBase(nullptr, file, line) {}

KmExceptionBase::KmExceptionBase(const char* message, const char* file, unsigned line)
    : text_(std::make_shared<const Text>(message, file)), line_(line) {}

KmExceptionBase::KmExceptionBase(const KmExceptionBase&) noexcept = default;

KmExceptionBase& KmExceptionBase::operator=(const KmExceptionBase&) noexcept = default;

KmExceptionBase::~KmExceptionBase() = default;

const char* KmExceptionBase::what() const noexcept {
    return text_->message ? text_->message->c_str() : "Unknown exception";
}

const std::string& KmExceptionBase::File() const noexcept { return text_->file; }

KmException::KmException(const std::string& message, const char* file, unsigned line)
    : KmExceptionBase(message.c_str(), file, line) {}

KmException::~KmException() = default;

}  // namespace KM
