#pragma once

#include <string>

#include "Utils/U_Debug/Exceptions.h"

namespace KM::Tool {

/// A verb cannot do what it was asked to. The message is for people: one line, the name of a file, a colon, the reason.
class Failure : public KmException {
public:
    Failure(const std::string& file, const std::string& reason)
        : KmException(file + ": " + reason, __FILE__, __LINE__) {}
};

/// The command line, or what is to become a configuration, does not fit.
class Misuse : public Failure {
public:
    using Failure::Failure;
};

}  // namespace KM::Tool
