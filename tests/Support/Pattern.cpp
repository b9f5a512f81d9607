#include "Support/Pattern.h"

#include <regex.h>

namespace KM::Test {
namespace {

/// First match of the pattern: its begin and end, both -1 for none.
regmatch_t Find(const std::string& text, const std::string& pattern) {
    regex_t compiled{};
    regmatch_t match{-1, -1};
    if (regcomp(&compiled, pattern.c_str(), REG_EXTENDED) != 0) return match;
    if (regexec(&compiled, text.c_str(), 1, &match, 0) != 0) match = {-1, -1};
    regfree(&compiled);
    return match;
}

}  // namespace

bool Matches(const std::string& text, const std::string& pattern) {
    return Find(text, "^(" + pattern + ")$").rm_so == 0;
}

std::string Replaced(const std::string& text, const std::string& pattern, const std::string& by) {
    const regmatch_t match = Find(text, pattern);
    std::string result = text;
    if (match.rm_so >= 0)
        result.replace(static_cast<std::size_t>(match.rm_so), static_cast<std::size_t>(match.rm_eo - match.rm_so), by);
    return result;
}

}  // namespace KM::Test
