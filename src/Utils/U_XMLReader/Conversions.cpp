#include "Utils/U_XMLReader/Conversions.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace KM::XML {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Case by hand: what a configuration means must not hang on the locale of the host.
char UpperCase(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string_view SkipWhitespace(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    return text;
}

// A sign, and ahead of base 16 a "0X", may stand before the digits.
int ReadInteger(std::string_view text, int base) {
    text = SkipWhitespace(text);
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+')) text.remove_prefix(1);
    if (base == 16 && text.starts_with("0X")) text.remove_prefix(2);

    unsigned long long magnitude = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
    if (error == std::errc::result_out_of_range) magnitude = std::numeric_limits<unsigned long long>::max();
    const long long limit = isNegative ? -static_cast<long long>(std::numeric_limits<int>::min())
                                       : static_cast<long long>(std::numeric_limits<int>::max());
    const auto clamped = static_cast<long long>(std::min(magnitude, static_cast<unsigned long long>(limit)));
    return static_cast<int>(isNegative ? -clamped : clamped);
}

// "0X" and eight digits or more: two groups of 16 bits, so that all 32 bits can be given without a sign.
int ReadWord(std::string_view text) {
    const auto high = static_cast<unsigned>(ReadInteger(text.substr(2, 4), 16));
    const auto low = static_cast<unsigned>(ReadInteger(text.substr(6, 4), 16));
    return static_cast<int>(high << 16 | low);
}

// For the digits of a number that no double holds: whether it is too large, not too small.
bool IsHuge(std::string_view digits) {
    long long order = 0;  // decimal places from the point to the first digit that counts
    bool isBehindPoint = false;
    bool hasBegun = false;
    std::size_t at = 0;
    for (; at < digits.size() && (IsDigit(digits[at]) || digits[at] == '.'); ++at) {
        if (digits[at] == '.') {
            isBehindPoint = true;
            continue;
        }
        hasBegun = hasBegun || digits[at] != '0';
        if (hasBegun && !isBehindPoint) ++order;
        if (!hasBegun && isBehindPoint) --order;
    }
    const bool hasExponent = at < digits.size() && (digits[at] == 'e' || digits[at] == 'E');
    return order + (hasExponent ? ReadInteger(digits.substr(at + 1), 10) : 0) > 0;
}

}  // namespace

int ToInteger(const std::string& text) {
    if (text.empty()) return 1;
    std::string upper = text;
    std::transform(upper.begin(), upper.end(), upper.begin(), UpperCase);
    if (upper == "ON" || upper == "TRUE" || upper.front() == 'Y') return 1;
    if (upper == "OFF" || upper == "FALSE" || upper.front() == 'N') return 0;
    if (upper.front() == 'B') return ReadInteger(std::string_view(upper).substr(1), 2);
    if (upper.starts_with("0X")) return upper.size() >= 10 ? ReadWord(upper) : ReadInteger(upper, 16);
    return ReadInteger(upper, 10);
}

double ToReal(const std::string& text) {
    std::string_view number = SkipWhitespace(text);
    const bool isNegative = number.starts_with('-');
    if (isNegative || number.starts_with('+')) number.remove_prefix(1);
    if (number.starts_with('-')) return 0.0;  // a second sign is text

    double value = 0.0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (error == std::errc::invalid_argument) return 0.0;  // a sign alone makes no minus zero
    if (error == std::errc::result_out_of_range) value = IsHuge(number) ? std::numeric_limits<double>::infinity() : 0.0;
    return isNegative ? -value : value;
}

}  // namespace KM::XML
