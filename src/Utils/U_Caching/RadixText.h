#pragma once

#include <algorithm>
#include <cstdint>
#include <string>

namespace KM::Caching {

/// A number in base 2 to 36; nothing for any other base. Of two digits the low one comes first: files that were written
/// before are found by such names.
inline std::string RadixText(std::uint32_t value, std::uint32_t radix) {
    constexpr const char* digits = "0123456789abcdefghijklmnopqrstuvwxyz";
    std::string text;
    if (radix < 2 || radix > 36) return text;
    do text += digits[value % radix];
    while ((value /= radix) != 0);
    if (text.size() > 2) std::reverse(text.begin(), text.end());
    return text;
}

}  // namespace KM::Caching
