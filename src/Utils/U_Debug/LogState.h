#pragma once

#include <string>
#include <vector>

#include "Utils/U_Debug/Verbose.h"

namespace KM::Verbose {

/// An entry in the stack of scopes. It may outlive its scope, when scopes are not closed from the inside out.
struct OpenScope {
    std::string name;
    Scope* scope;  ///< null when the scope is gone
};

/// What the log shares with the device that redraws it and with the check point of cancellation.
struct LogState {
    EMessageType::iterator level = EMessageType::Note;
    std::vector<OpenScope> scopes;  ///< innermost last
    int announced = 0;              ///< how many of them, from the bottom, have had their opening mark written
    int indentation = 0;
    std::string indentAppearance = "  ";
    std::vector<LogRecord> records;
    bool checkAbortEnabled = true;  ///< false while a scope closes: no abort out of a destructor
};

KM_API LogState& State();

/// Closes the innermost scope, for an exception that is about to pass it. Call it only while one is open.
void UnroleInnermost();

/// Called by each message. The abort service, which stands above the log, takes it over when the library is loaded.
using CheckPoint = void (*)();
/// Null stands for no check.
KM_API void SetCheckPoint(CheckPoint checkPoint);

/// The one routine that makes text of a record, and keeps it. Nothing happens while output is not enabled.
void WriteRecord(const LogRecord& record);

}  // namespace KM::Verbose
