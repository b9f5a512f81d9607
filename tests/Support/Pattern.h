#pragma once

#include <string>

namespace KM::Test {

/// Whether the whole text matches an extended regular expression.
bool Matches(const std::string& text, const std::string& pattern);

/// The text with its first match replaced.
std::string Replaced(const std::string& text, const std::string& pattern, const std::string& by);

}  // namespace KM::Test
