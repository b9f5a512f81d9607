#pragma once

namespace KM::Platform {

/// True when standard input is a terminal of which this process has the foreground.
bool IsKeyboardThere();

/// The next key that waits on the keyboard, taken without blocking and without echo; -1 when none waits. Standard input that
/// is no terminal never has one.
int TakeKey();

}  // namespace KM::Platform
