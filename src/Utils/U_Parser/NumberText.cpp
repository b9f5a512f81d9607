#include "Utils/U_Parser/NumberText.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <string_view>

#include "Utils/U_XMLReader/Conversions.h"

namespace KM::Parsing {
namespace {

constexpr int MaxDigits = 4096;

// Text and back by hand or by the character conversions: neither locale nor stream state may change a script.

bool IsHexadecimal(std::string_view number) {
    const bool isPrefixed = number.size() > 2 && number[0] == '0' && (number[1] == 'x' || number[1] == 'X');
    return isPrefixed && number.find_first_of("0123456789abcdefABCDEF", 2) <= (number[2] == '.' ? 3u : 2u);
}

double HexadecimalOf(std::string_view digits) {
    // An exponent has one sign; some libraries take "p+-3" for one too.
    digits = digits.substr(0, std::min(digits.find("p+-"), digits.find("P+-")));
    double value = 0.0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::hex);
    // Base 16 counts exponents in bits, so what is out of range is so by its own length, or not worth telling apart.
    const bool isHuge = error == std::errc::result_out_of_range && digits.find("p-") == std::string_view::npos &&
                        digits.find("P-") == std::string_view::npos;
    return isHuge ? std::numeric_limits<double>::infinity() : value;
}

}  // namespace

double NumberOf(const std::string& text) {
    const std::size_t begin = std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size());
    std::string_view number = std::string_view(text).substr(begin);
    const bool isNegative = number.starts_with('-');
    if (isNegative || number.starts_with('+')) number.remove_prefix(1);
    if (!IsHexadecimal(number)) return XML::ToReal(text);
    const double value = HexadecimalOf(number.substr(2));
    return isNegative ? -value : value;
}

std::string FixedText(int width, int precision, double value) {
    constexpr int longestInteger = std::numeric_limits<double>::max_exponent10 + 3;
    char digits[longestInteger + MaxDigits];
    const int places = precision < 0 ? 6 : std::min(precision, MaxDigits);
    const auto [end, error] = std::to_chars(digits, digits + sizeof digits, value, std::chars_format::fixed, places);
    std::string text(digits, end);
    const auto filled = static_cast<std::size_t>(std::clamp(width, -MaxDigits, MaxDigits) * (width < 0 ? -1 : 1));
    if (text.size() < filled) text.insert(width < 0 ? text.size() : 0, filled - text.size(), ' ');
    return text;
}

int TruncateToInt(double value) {
    if (value > -2147483649.0 && value < 2147483648.0) return static_cast<int>(value);
    return std::numeric_limits<int>::min();
}

}  // namespace KM::Parsing
