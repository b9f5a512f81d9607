#pragma once

namespace KM::Platform {

/// Turns requests to end (Ctrl-C, a polite kill) into a flag. The second one ends the process at once, as the first one
/// would have done, with the terminal in order. Those that are ignored stay so. A second call does nothing.
void CatchInterrupts();

/// True once after a request to end.
bool TakeInterrupt();

}  // namespace KM::Platform
