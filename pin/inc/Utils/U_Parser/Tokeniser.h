#pragma once

#include <string>
#include <vector>

#include "KmApi.h"

namespace KM::Parsing {

// White space is 0, blank, tab, CR and LF; a separator is white space, "," or ";".

/// Cuts an expression into tokens: names and operators in capitals, string literals as they stand with their quotes.
///
/// Comments go first, those inside string literals too. `//` ends the whole text, not just its line; a block comment
/// joins its neighbours. Numbers have no exponent: `1E-5` is three tokens. A minus at the start, or behind an opening
/// bracket, gets a "0" ahead of it. A text of white space alone gives one empty token, an empty text none.
///
/// @param dropSeparators  leaves "," and ";" out, unless the text begins with one
/// @throws ParsingException  for a comment or a string literal that is not closed, or a comment that was never opened
KM_API std::vector<std::string> ExtractTokens(const std::string& text, bool dropSeparators);

/// Cuts a text into lines without their indentation. Blank lines vanish; a CR at the end of a line stays; the last line
/// can be empty. At least one line.
KM_API std::vector<std::string> ExtractLines(const std::string& text);

/// Reads a number such as "12", "-1.5", "2.5e3" or "1D-3", behind separators.
///
/// A sign counts wherever it stands among the digits: "1-2" is -12. An integer part of -1e19 and below counts as -0.
/// Digits of a fraction beyond the 99th are dropped. No number gives 0.
/// @param length    bytes of `text` that may be read
/// @param position  where to begin; then the byte that ended the number. A position outside the text stays as it is
KM_API double ExtractDouble(const char* text, int length, int& position);

/// Reads the bytes up to the next separator, behind separators; empty at the end of the text. Arguments as above.
KM_API std::string ExtractString(const char* text, int length, int& position);

}  // namespace KM::Parsing
