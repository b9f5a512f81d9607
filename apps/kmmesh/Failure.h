#pragma once

#include <source_location>
#include <string>

#include "Utils/U_Debug/Exceptions.h"

namespace KM::Tool {

/// A verb cannot do what it was asked to. The message is for people: one line, the name of a file, a colon, the reason.
class Failure : public KmException {
public:
    Failure(const std::string& file, const std::string& reason,
            const std::source_location& place = std::source_location::current())
        : KmException(file + ": " + reason, place.file_name(), place.line()) {}
};

/// A value does not fit into a configuration.
class Misuse : public Failure {
public:
    using Failure::Failure;
};

}  // namespace KM::Tool
