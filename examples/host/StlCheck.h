#pragma once

#include <string>

/// The reader of the library takes a file as far as it goes; a host that shows a part wants to know whether it has the whole
/// of it. So this looks at the file first: a binary one must be as long as its header says, and a text one must end with
/// "endsolid" and a name.
///
/// @throws std::runtime_error with one line that says what is wrong
void CheckIsWholeStl(const std::string& file);
