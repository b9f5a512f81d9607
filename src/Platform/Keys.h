#pragma once

namespace KM::Platform {

/// True when standard input is a terminal, unless this process is in the background there.
bool IsKeyboardThere();

/// The next key that waits on the keyboard, taken without blocking and without echo; -1 when none waits. Standard input that
/// is no terminal never has one.
int TakeKey();

/// Puts the terminal as it was before a look that goes on at this moment. For signal handlers that end the process.
void RestoreKeyboard();

}  // namespace KM::Platform
