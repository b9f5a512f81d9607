#pragma once

#include <string>
#include <vector>

#include "Utils/U_Debug/Verbose.h"

namespace KM::Verbose {

/// What the log shares with the device that redraws it and with the check point of cancellation.
struct LogState {
    EMessageType::iterator level = EMessageType::Note;
    std::vector<std::string> scopes;  ///< names of the open ones, innermost last; they may outlive their scopes
    int announced = 0;                ///< how many of them, from the bottom, have had their opening mark written
    int indentation = 0;
    std::string indentAppearance = "  ";
    std::vector<LogRecord> records;
    bool checkAbortEnabled = true;  ///< false while a scope closes: no abort out of a destructor
};

KM_API LogState& State();

/// Called by each message. Does nothing until the abort service takes it over; the log stands below that service.
using CheckPoint = void (*)();
/// Null stands for no check.
KM_API void SetCheckPoint(CheckPoint checkPoint);

/// The one routine that makes text of a record, and keeps it. Nothing happens while output is not enabled.
void WriteRecord(const LogRecord& record);

}  // namespace KM::Verbose
