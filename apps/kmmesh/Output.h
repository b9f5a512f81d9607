#pragma once

#include <string>

/// What a verb says to people. Where the log is on, the lines go into the log, so that both stay readable.
namespace KM::Tool {

/// Drops what `Tell` is given.
void BeQuiet();

/// Prints what was asked for, line by line, to standard output.
void Print(const std::string& lines);

/// The same for what is good to know and was not asked for, as the names of files that were written.
void Tell(const std::string& lines);

/// One line on standard error of what is good to know, behind the name of the tool; so standard output is the same with
/// and without. `BeQuiet` drops it.
void Note(const std::string& line);

/// One line on standard error, behind the name of the tool; red where it is a terminal that takes colours.
/// @param below  whole lines that are shown below it as they are
void Complain(const std::string& line, const std::string& below = "");

/// The text with a question mark for each byte that would move the cursor. Names of files, for instance, hold any byte.
std::string OnOneLine(std::string text);

/// `printf` into a text.
[[gnu::format(printf, 1, 2)]] std::string Format(const char* format, ...);

/// "1 file", "2 files".
std::string Count(long long count, const std::string& one);

}  // namespace KM::Tool
