#include "Utils/U_Parser/Tokeniser.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "Utils/U_Parser/ParsingException.h"
#include "Utils/U_Parser/Stages.h"

namespace KM::Parsing {
namespace {

bool IsWhiteSpace(char c) { return c == '\0' || c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool IsListSeparator(char c) { return c == ',' || c == ';'; }

bool IsOperatorCharacter(char c) {
    return c != '\0' && std::string_view("+-*/<>=![](){}").find(c) != std::string_view::npos;
}

/// A text without its comments. The bytes that are left remember their place.
class CommentFilter {
public:
    explicit CommentFilter(const std::string& text) : text_(text) {
        if (text.size() == 1) Keep(0);
        for (i_ = 1; i_ < text.size() && !hasEnded_; ++i_) Step();
        if (inComment_)
            throw ParsingException("In ExtractTokens. Found open comment without close comment!", __LINE__, opening_);
    }

    const std::string& Bytes() const { return bytes_; }
    std::size_t PositionOf(std::size_t byte) const { return positions_[byte]; }

private:
    bool Is(char first, char second) const {
        return text_[i_ - 1] == first && i_ < text_.size() && text_[i_] == second;
    }

    void Keep(std::size_t position) {
        bytes_ += text_[position];
        positions_.push_back(position);
    }

    /// Outside a comment the slash that begins one has been kept already.
    void DropSlash() {
        if (inComment_ || bytes_.empty()) return;
        bytes_.pop_back();
        positions_.pop_back();
    }

    void Step() {
        // Also inside a block comment: nothing behind it is read.
        if (Is('/', '/')) {
            DropSlash();
            hasEnded_ = true;
            return;
        }
        if (Is('/', '*')) Open();
        else if (!inComment_) KeepThis();
        if (Is('*', '/')) Close();
    }

    /// Goes on behind the star, which can be the first half of the closing mark.
    void Open() {
        DropSlash();
        if (!inComment_) opening_ = i_ - 1;
        inComment_ = true;
        ++i_;
    }

    void KeepThis() {
        if (i_ == 1) Keep(0);
        Keep(i_);
    }

    void Close() {
        if (!inComment_)
            throw ParsingException("In ExtractTokens. Found closing comment without open comment!", __LINE__, i_ - 1);
        inComment_ = false;
    }

    const std::string& text_;
    std::string bytes_;
    std::vector<std::size_t> positions_;
    std::size_t i_ = 0;
    std::size_t opening_ = 0;
    bool inComment_ = false;
    bool hasEnded_ = false;
};

/// Operator characters and separators alone, string literals whole, and runs of other bytes.
class Cutter {
public:
    Cutter(const CommentFilter& source, bool dropSeparators) : source_(source), dropSeparators_(dropSeparators) {
        const std::string& bytes = source.Bytes();
        StartToken();
        inString_ = bytes[0] == '"';
        if (!IsWhiteSpace(bytes[0])) Append(0);
        for (std::size_t i = 1; i < bytes.size(); ++i) Step(i);
        if (inString_)
            throw ParsingException("In ExtractTokens. Found open string token without matching closing string!",
                                   __LINE__, tokens_.back().position);
    }

    std::vector<Token> Take() { return std::move(tokens_); }

private:
    void StartToken() { tokens_.push_back({"", ParsingException::NoPosition}); }

    void LeaveToken() {
        if (!tokens_.back().text.empty()) StartToken();
    }

    void Append(std::size_t byte) {
        Token& token = tokens_.back();
        if (token.text.empty()) token.position = source_.PositionOf(byte);
        token.text += source_.Bytes()[byte];
    }

    void Step(std::size_t i) {
        const char c = source_.Bytes()[i];
        if (!inString_ && c != '"') return StepOutside(i);
        const bool isOpening = !inString_;
        if (isOpening) LeaveToken();
        Append(i);
        inString_ = isOpening || c != '"';
    }

    void StepOutside(std::size_t i) {
        const char before = source_.Bytes()[i - 1];
        const char c = source_.Bytes()[i];
        if (IsWhiteSpace(c)) return;
        const bool goesOn = !IsWhiteSpace(before) && !IsAlone(before) && !IsAlone(c);
        if (!goesOn) LeaveToken();
        if (!IsListSeparator(c) || !dropSeparators_) Append(i);
    }

    static bool IsAlone(char c) { return IsOperatorCharacter(c) || IsListSeparator(c); }

    const CommentFilter& source_;
    std::vector<Token> tokens_;
    bool dropSeparators_;
    bool inString_ = false;
};

/// Whether two tokens are one operator.
bool Merge(const std::string& first, const std::string& second) {
    if (first.size() != 1 || second.size() != 1) return false;
    const char a = first[0];
    const char b = second[0];
    if (b == '=') return std::string_view("+-*/!=<>").find(a) != std::string_view::npos;
    return a == b && (a == '<' || a == '>' || a == '&' || a == '|');
}

bool IsOpenBracket(const std::string& token) { return token == "(" || token == "[" || token == "{"; }

std::vector<Token> MergeOperators(std::vector<Token> cut) {
    std::vector<Token> result;
    result.reserve(cut.size() + 1);
    for (Token& token : cut) {
        if (!result.empty() && Merge(result.back().text, token.text)) {
            result.back().text += token.text;
            continue;
        }
        // All there is of a unary minus.
        if (token.text == "-" && (result.empty() || IsOpenBracket(result.back().text)))
            result.push_back({"0", token.position});
        result.push_back(std::move(token));
    }
    for (Token& token : result)
        if (!IsString(token.text)) ToUpper(token.text);
    return result;
}

bool IsSeparator(char c) { return IsWhiteSpace(c) || IsListSeparator(c); }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Exact up to 22, the nearest double above.
constexpr std::array<double, 100> PowersOfTen = {
    1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16,
    1e17, 1e18, 1e19, 1e20, 1e21, 1e22, 1e23, 1e24, 1e25, 1e26, 1e27, 1e28, 1e29, 1e30, 1e31, 1e32, 1e33,
    1e34, 1e35, 1e36, 1e37, 1e38, 1e39, 1e40, 1e41, 1e42, 1e43, 1e44, 1e45, 1e46, 1e47, 1e48, 1e49, 1e50,
    1e51, 1e52, 1e53, 1e54, 1e55, 1e56, 1e57, 1e58, 1e59, 1e60, 1e61, 1e62, 1e63, 1e64, 1e65, 1e66, 1e67,
    1e68, 1e69, 1e70, 1e71, 1e72, 1e73, 1e74, 1e75, 1e76, 1e77, 1e78, 1e79, 1e80, 1e81, 1e82, 1e83, 1e84,
    1e85, 1e86, 1e87, 1e88, 1e89, 1e90, 1e91, 1e92, 1e93, 1e94, 1e95, 1e96, 1e97, 1e98, 1e99};
constexpr int MaxPower = 99;
// Ten times this order leaves nothing of any double but zero and infinity.
constexpr int MaxExponent = 1000;

/// Reads numbers out of a text, byte by byte.
class NumberReader {
public:
    NumberReader(const char* text, int length, int& position) : text_(text), length_(length), position_(position) {}

    void SkipSeparators() {
        while (position_ < length_ && IsSeparator(text_[position_])) ++position_;
    }

    bool Take(std::string_view oneOf) {
        if (position_ >= length_ || oneOf.find(text_[position_]) == std::string_view::npos) return false;
        ++position_;
        return true;
    }

    bool IsAtDigit() const { return position_ < length_ && IsDigit(text_[position_]); }

    struct Digits {
        double value = 0.0;  // without sign
        int count = 0;
        bool isNegative = false;
    };

    /// Digits and signs up to anything else. What comes after `maxCount` digits is read and dropped.
    Digits ReadDigits(int maxCount) {
        Digits digits;
        bool hasBegun = false;
        for (; position_ < length_; ++position_) {
            const char c = text_[position_];
            if (IsSeparator(c) && !hasBegun) continue;
            if (!IsDigit(c) && c != '-' && c != '+') break;
            hasBegun = true;
            if (c == '-') digits.isNegative = true;
            if (!IsDigit(c) || digits.count == maxCount) continue;
            digits.value = digits.value * 10 + (c - '0');
            ++digits.count;
        }
        return digits;
    }

private:
    const char* text_;
    int length_;
    int& position_;
};

/// A number with its sign. Minus zero is known by a number that nobody writes.
double Signed(const NumberReader::Digits& digits) {
    if (!digits.isNegative) return digits.value;
    return digits.value == 0.0 ? Invalid : -digits.value;
}

double Scaled(double value, const NumberReader::Digits& exponent) {
    int order = static_cast<int>(std::min(exponent.value, static_cast<double>(MaxExponent)));
    const bool isDivided = exponent.isNegative || order == 0;
    for (; order > MaxPower; order -= MaxPower)
        value = isDivided ? value / PowersOfTen[MaxPower] : value * PowersOfTen[MaxPower];
    return isDivided ? value / PowersOfTen[order] : value * PowersOfTen[order];
}

bool IsInside(const char* text, int length, int position) {
    return text != nullptr && position >= 0 && position < length;
}

}  // namespace

std::vector<Token> CutTokens(const std::string& text, bool dropSeparators) {
    const CommentFilter filter(text);
    if (filter.Bytes().empty()) return {};
    return MergeOperators(Cutter(filter, dropSeparators).Take());
}

std::vector<std::string> ExtractTokens(const std::string& text, bool dropSeparators) {
    std::vector<std::string> result;
    for (Token& token : CutTokens(text, dropSeparators)) result.push_back(std::move(token.text));
    return result;
}

std::vector<std::string> ExtractLines(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char c : text) {
        if (c == '\n') {
            if (!lines.back().empty()) lines.emplace_back();
        } else if (!lines.back().empty() || !IsWhiteSpace(c)) {
            lines.back() += c;
        }
    }
    return lines;
}

double ExtractDouble(const char* text, int length, int& position) {
    if (!IsInside(text, length, position)) return 0.0;
    NumberReader reader(text, length, position);
    reader.SkipSeparators();
    double value = Signed(reader.ReadDigits(length));
    const bool isMinusZero = value <= InvalidLimit;
    if (isMinusZero) value = 0.0;
    if (reader.Take(".") && reader.IsAtDigit()) {
        const NumberReader::Digits digits = reader.ReadDigits(MaxPower);
        const double fraction = Signed(digits) / PowersOfTen[digits.count];
        value = value < 0.0 ? value - fraction : value + fraction;
    }
    if (reader.Take("eEdD")) value = Scaled(value, reader.ReadDigits(length));
    return isMinusZero ? value * -1.0 : value;
}

std::string ExtractString(const char* text, int length, int& position) {
    if (!IsInside(text, length, position)) return "";
    NumberReader(text, length, position).SkipSeparators();
    const int begin = position;
    while (position < length && !IsSeparator(text[position])) ++position;
    return {text + begin, text + position};
}

}  // namespace KM::Parsing
