#pragma once

#include <iosfwd>

namespace KM::Platform {

/// True when `stream` writes to a file of the process that is a terminal, as `std::cout` and `std::cerr` do, unless
/// their buffers were exchanged.
bool IsTerminal(const std::ostream& stream);

/// True unless the user has asked for plain text (NO_COLOR is set and not empty).
bool AreEscapesWanted();

struct TerminalSize {
    int columns = 0;
    int rows = 0;
    int error = 0;  ///< the system's number for why there is no size
};

/// The size of the terminal of the process.
TerminalSize SizeOfTerminal();

}  // namespace KM::Platform
