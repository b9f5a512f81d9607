#pragma once

#include <ostream>
#include <string>

#include "Utils/U_Console/ScreenBuffer.h"

namespace KM::Console {

// What the console device and the console share. All of it does nothing while output is not enabled.

/// Writes one byte or more to the stream and to the screen model, in the present colours if the stream is a terminal.
void Put(std::ostream& stream, const std::string& text);
void SetTitle(std::ostream& stream, const std::string& title);
/// Clears the screen model, and the terminal behind the stream that was written to last.
void Clear();
/// Asks for the size of the window and of the buffer behind it. A terminal's window is its user's affair: the call that sets
/// it fails, and leaves its text in `LastFailure`.
void SetSizes(int screenX, int screenY, int bufferX, int bufferY);

const ScreenBuffer& Screen();

/// The text of the console call that failed last, for a debugger; nothing shows it.
const std::string& LastFailure();

}  // namespace KM::Console
