#pragma once

namespace KM::Application {

/// Logs what the tool is, how it is called, and what actions it has.
void WriteUsage();

}  // namespace KM::Application
