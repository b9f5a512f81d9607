#pragma once

#include "KmApi.h"

namespace KM::Console {

// The text console of the process. Colours have four bits, BRGB from high to low, as in "b0111". Nothing touches the
// console while output is not enabled. On a terminal colours are SGR sequences; where output is no terminal, or
// NO_COLOR is set to any text, no escape byte is written.

/// The one switch for all output to console and log; off at start.
KM_API void IsDumpEnabled(bool enabled);
KM_API bool IsDumpEnabled();

/// Puts colours and sizes from the settings `Console.*` and clears the screen, if output is enabled and "Console.Init"
/// is set.
KM_API void Init();

/// The foreground colour. The first call gives the whole attribute word of the console, background bits and all.
KM_API int GetForeground();
/// The background colour. The first call gives what the attribute word of the console holds above its low four bits.
KM_API int GetBackground();
KM_API void SetForeground(int color);
KM_API void SetBackground(int color);

}  // namespace KM::Console
