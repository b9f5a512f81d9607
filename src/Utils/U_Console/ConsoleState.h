#pragma once

#include <ostream>
#include <string>

#include "KmApi.h"
#include "Utils/U_Console/ScreenBuffer.h"

namespace KM::Console {

/// A stream, and what stands behind it at the moment: a terminal may come and go by a redirection.
struct Output {
    std::ostream& stream;
    bool isTerminal = false;
    bool isColored = false;  ///< takes colours, titles and the like, which are escape sequences

    void LookBehind();
};

// What the console device and the console share. But for `Put`, which only loses its colours then, all of it does
// nothing while output is not enabled.

/// Writes to the stream and to the screen model, in the present colours if the stream takes colours.
void Put(const Output& output, const std::string& text);
/// Shows on a terminal what was written, and leaves it in the present colours.
void EndLine(const Output& output);
void SetTitle(const Output& output, const std::string& title);
/// Clears the screen model, and the terminal if the stream is one.
void Clear(const Output& output);
/// Asks for the size of the window and of the buffer behind it. A terminal's window is its user's affair: the call that
/// sets it fails, and leaves its text in `LastFailure`.
void SetSizes(int screenX, int screenY, int bufferX, int bufferY);

const ScreenBuffer& Screen();

/// The text of the console call that failed last, for a debugger; nothing shows it.
KM_API const std::string& LastFailure();

}  // namespace KM::Console
