#pragma once

#include <sstream>
#include <string>

namespace KM::Test {

/// A call as a line of text: what was called, then each argument behind a space.
template <class... Values>
std::string CallLine(const char* what, Values... values) {
    std::ostringstream line;
    line << what;
    ((line << ' ' << values), ...);
    return line.str();
}

}  // namespace KM::Test
