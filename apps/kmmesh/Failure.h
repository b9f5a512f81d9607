#pragma once

#include <string>

#include "Utils/U_Debug/Exceptions.h"

namespace KM::Tool {

/// A verb cannot do what it was asked to. The message is for people: one line, the name of a file, a colon, the reason.
class Failure : public KmException {
public:
    /// The place is that of the call; `std::source_location` is not yet known to each of our compilers.
    Failure(const std::string& file, const std::string& reason, const char* source = __builtin_FILE(),
            unsigned line = __builtin_LINE())
        : KmException(file + ": " + reason, source, line) {}
};

/// A value does not fit into a configuration.
class Misuse : public Failure {
public:
    using Failure::Failure;
};

}  // namespace KM::Tool
