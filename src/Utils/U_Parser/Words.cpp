#include "Utils/U_Parser/Words.h"

#include <algorithm>
#include <array>

namespace KM::Parsing {
namespace {

constexpr std::array<std::string_view, 19> Operators = {
    "+", "-", "*", "/", "&", "|", "&&", "||", "+=", "-=", "*=", "/=", "<", ">", ">=", "<=", "=", "==", "!="};

}  // namespace

bool IsOperator(std::string_view token) {
    return std::find(Operators.begin(), Operators.end(), token) != Operators.end();
}

bool IsNumber(std::string_view token) {
    return token.find_first_not_of("0123456789.+-") == std::string_view::npos && !IsOperator(token);
}

bool IsString(std::string_view token) { return token.starts_with('"') && token.ends_with('"'); }

void ToUpper(std::string& text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
}

}  // namespace KM::Parsing
