#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace KM::Parsing {

/// A token, and where it begins in the text, or `ParsingException::NoPosition`.
struct Token {
    std::string text;
    std::size_t position;
};

/// Marks that the stages exchange.
inline constexpr std::string_view NewLineMark = "_NL_";
inline constexpr std::string_view OpenMark = "_OPEN_";
inline constexpr std::string_view CloseMark = "_CLOSE_";

/// The tokens for which precedence counts. "&" and "|" are among them, although no session knows them.
bool IsOperator(std::string_view token);

/// Digits, points and signs, or nothing at all; no operator.
bool IsNumber(std::string_view token);

/// Whether quotes stand round it.
bool IsString(std::string_view token);

/// "C" rules whatever the locale: names must not depend on it.
void ToUpper(std::string& text);

}  // namespace KM::Parsing
