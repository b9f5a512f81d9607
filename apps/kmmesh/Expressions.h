#pragma once

#include <string>

namespace KM::Tool {

// An expression of the command line is a text, or the name of a file that holds one. In a configuration a file stands behind
// a mark, so that it stays one, wherever the run is repeated.

/// What a word stands for, as a configuration holds it: "@" and the absolute path of a file, or the text without white space
/// at its ends. A word is a file behind "@", if something has that name, or if it reads like one: "dir/formula.km".
/// @throws Misuse  for an empty word, and for "@" alone
std::string ExpressionOf(const std::string& word);

/// A text to evaluate, and what messages call it.
struct SourceText {
    std::string text;
    std::string subject;
};

/// What a value of a configuration stands for; a file is read.
/// @throws Failure  for a file that is missing or a folder, that is too long for an expression, or blank
SourceText ExpressionIn(const std::string& value);

/// The same text, if it can be one.
/// @throws Failure  if it is blank or too long
const std::string& CheckExpression(const std::string& text, const std::string& subject);

/// Bytes that a text may have. A token of few bytes becomes a node of some hundred.
constexpr std::size_t LongestExpression = 1'000'000;

/// Without white space at its ends.
std::string Trimmed(const std::string& text);

}  // namespace KM::Tool
