#pragma once

#include <charconv>
#include <string>

namespace KM {

/// A number as a stream writes it that nobody has told otherwise: six significant digits, and "." whatever the locale.
inline std::string NumberText(double number) {
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::general, 6).ptr;
    return std::string(text, end);
}

}  // namespace KM
