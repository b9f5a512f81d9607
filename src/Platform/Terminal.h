#pragma once

#include <iosfwd>
#include <string>

namespace KM::Platform {

/// True when `stream` writes to standard output or standard error, and that is a terminal.
bool IsTerminal(const std::ostream& stream);

/// True unless the user has asked for plain text (NO_COLOR is set and not empty).
bool AreEscapesWanted();

struct TerminalSize {
    int columns = 0;
    int rows = 0;
};

/// The size of the terminal of the process; zeros when there is none.
TerminalSize SizeOfTerminal();

}  // namespace KM::Platform
