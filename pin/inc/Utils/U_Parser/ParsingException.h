#pragma once

#include <cstddef>
#include <string>

#include "Utils/U_Debug/Exceptions.h"

namespace KM::Parsing {

/// What all stages of the expression language throw. Whoever shows the text to a user can point at the fault.
class KM_API ParsingException : public KmException {
public:
    static constexpr std::size_t NoPosition = static_cast<std::size_t>(-1);

    ParsingException(const std::string& message, unsigned line, std::size_t position = NoPosition);
    ParsingException(const ParsingException&) noexcept = default;
    ParsingException& operator=(const ParsingException&) noexcept = default;
    ~ParsingException() override;

    /// Where the failing token begins, in bytes from the start of the text; `NoPosition` where nobody knows: during
    /// evaluation, and when a stage was given tokens instead of a text.
    std::size_t Position() const noexcept { return position_; }

private:
    std::size_t position_;
};

}  // namespace KM::Parsing
