#pragma once

#include <algorithm>
#include <string>

namespace KM::XML {

/// A line feed, and the indent as many times as the depth says. A negative depth counts as 0. One above a thousand
/// counts as a thousand: else the blanks of a deep tree would outgrow it by far, with its depth times its size.
inline std::string NewLine(long long depth, const std::string& indent) {
    std::string text("\n");
    for (long long i = indent.empty() ? 0 : std::min(depth, 1000LL); i > 0; --i) text += indent;
    return text;
}

}  // namespace KM::XML
