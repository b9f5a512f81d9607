#pragma once

#include <string>

#include "Utils/U_App/Services.h"

namespace KM::Tool {

/// Shows the progress as one line on standard error that is drawn again in place, beside what the framework itself does
/// with it. It uses no escape sequences, so that any terminal will do.
class ProgressLine : public Application::StatusPolicy {
public:
    void operator()(double global, double local, const std::string& text) const override;

    /// Makes it the status policy of the process, if standard error is a terminal.
    static void Install();

    /// Wipes the line off, if it is there, so that something else can be written.
    static void Clear();

    /// The line for a terminal of so many columns, without the return to its start.
    /// @param tasks  what is going on; may be empty
    static std::string Drawn(double global, const std::string& tasks, int columns);
};

}  // namespace KM::Tool
