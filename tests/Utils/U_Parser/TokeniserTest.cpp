#include "Utils/U_Parser/Tokeniser.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "Utils/U_Parser/Failures.h"

namespace KM::Parsing {
namespace {

using Test::FailureOf;
using Tokens = std::vector<std::string>;

constexpr const char* ClosingMessage = "In ExtractTokens. Found closing comment without open comment!";
constexpr const char* OpenMessage = "In ExtractTokens. Found open comment without close comment!";
constexpr const char* StringMessage = "In ExtractTokens. Found open string token without matching closing string!";

TEST(ExtractTokens, CutsAndMerges) {
    const struct {
        std::string text;
        Tokens tokens;
    } rows[] = {
        {"", {}},
        {" ", {""}},
        {"\r\n\t ", {""}},
        {"a", {"A"}},
        {"x.y", {"X.Y"}},
        {"A<=B", {"A", "<=", "B"}},
        {"A< =B", {"A", "<=", "B"}},
        {"A===B", {"A", "==", "=", "B"}},
        {"A<<B>>C", {"A", "<<", "B", ">>", "C"}},
        {"A<>B", {"A", "<", ">", "B"}},
        {"A&&B", {"A&&B"}},
        {"A && B", {"A", "&&", "B"}},
        {"A & & B | | C", {"A", "&&", "B", "||", "C"}},
        {"a+=b-=c*=d/=e!=f", {"A", "+=", "B", "-=", "C", "*=", "D", "/=", "E", "!=", "F"}},
        {"-A", {"0", "-", "A"}},
        {"(-A)", {"(", "0", "-", "A", ")"}},
        {"[-A]{-B}", {"[", "0", "-", "A", "]", "{", "0", "-", "B", "}"}},
        {"B-A", {"B", "-", "A"}},
        {"1,-2", {"1", ",", "-", "2"}},
        {"-=A", {"0", "-=", "A"}},
        {"+A", {"+", "A"}},
        {"1E-5", {"1E", "-", "5"}},
        {"a%b^c.d$e#f", {"A%B^C.D$E#F"}},
        {"\"abc\"", {"\"abc\""}},
        {"\"abc\"d", {"\"ABC\"D"}},
        {"d\"abc\"", {"D", "\"abc\""}},
        {"\"a b\t,;+\"", {"\"a b\t,;+\""}},
        {"\"a\"\"b\"", {"\"a\"", "\"b\""}},
        {"\"\"", {"\"\""}},
        {std::string("a\0b", 3), {"A", "B"}},
        {"_nl_ _Open_", {"_NL_", "_OPEN_"}},
        {"\xC3\xA4\xFF z", {"\xC3\xA4\xFF", "Z"}},
    };
    for (const auto& row : rows) EXPECT_EQ(ExtractTokens(row.text, false), row.tokens) << row.text;
}

TEST(ExtractTokens, CutsCommentsOut) {
    const struct {
        const char* text;
        Tokens tokens;
    } rows[] = {
        {"// all comment", {}},    {"/* all comment */", {}}, {"/*/", {}},
        {"A // B", {"A"}},         {"a // x\n b", {"A"}},     {"a/*x*/b", {"AB"}},
        {"a /*x*/ b", {"A", "B"}}, {"a/*/b", {"AB"}},         {"/*x*/-a", {"0", "-", "A"}},
        {"a/**/b", {"AB"}},        {"ab/*x*// c", {"A"}},  // the closing slash begins the next comment, and takes a byte with it
        {"ab/*x*/*y*/c", {"AC"}},  {"a/b", {"A", "/", "B"}},  {"/", {"/"}},
    };
    for (const auto& row : rows) EXPECT_EQ(ExtractTokens(row.text, false), row.tokens) << row.text;
}

TEST(ExtractTokens, DropsSeparatorsIfAsked) {
    EXPECT_EQ(ExtractTokens("A,B", true), (Tokens{"A", "B"}));
    EXPECT_EQ(ExtractTokens("A,B", false), (Tokens{"A", ",", "B"}));
    EXPECT_EQ(ExtractTokens("A;;B", true), (Tokens{"A", "B"}));
    EXPECT_EQ(ExtractTokens("A,", true), (Tokens{"A", ""}));
    EXPECT_EQ(ExtractTokens(",A", true), (Tokens{",", "A"}));
}

TEST(ExtractTokens, RefusesWhatIsNotClosed) {
    const struct {
        const char* text;
        const char* message;
        std::size_t position;
    } rows[] = {{"a*/b", ClosingMessage, 1},  {"a /*x*/ */", ClosingMessage, 8},
                {"/* a", OpenMessage, 0},     {"ab /*x*/ /* a", OpenMessage, 9},
                {"a /*", OpenMessage, 2},     {"a /* x // y */", OpenMessage, 2},
                {"\"abc", StringMessage, 0},  {"\"a//b\"", StringMessage, 0},
                {"a + \"", StringMessage, 4}, {"\"a\" \"b", StringMessage, 4}};
    for (const auto& row : rows) {
        const auto failure = FailureOf([&] { ExtractTokens(row.text, false); });
        EXPECT_EQ(failure.message, row.message) << row.text;
        EXPECT_EQ(failure.file, "src/Utils/U_Parser");
        EXPECT_EQ(failure.position, row.position) << row.text;
    }
}

// The passes as plain loops over the text.
class PlainTokens {
public:
    static Tokens Of(const std::string& text, bool dropSeparators) {
        const std::string buffer = WithoutComments(text);
        return buffer.empty() ? Tokens() : Merged(Cut(buffer, dropSeparators));
    }

private:
    static std::string WithoutComments(const std::string& text) {
        if (text.size() == 1) return text;
        std::string buffer;
        bool inComment = false;
        const auto drop = [&] {
            if (!inComment && !buffer.empty()) buffer.pop_back();
        };
        for (std::size_t i = 1; i < text.size(); ++i) {
            if (text[i - 1] == '/' && text[i] == '/') {
                drop();
                return buffer;
            }
            if (text[i - 1] == '/' && text[i] == '*') {
                drop();
                inComment = true;
                ++i;
            } else if (!inComment) {
                if (i == 1) buffer += text[0];
                buffer += text[i];
            }
            if (text[i - 1] == '*' && i < text.size() && text[i] == '/') {
                if (!inComment) throw std::string(ClosingMessage);
                inComment = false;
            }
        }
        if (inComment) throw std::string(OpenMessage);
        return buffer;
    }

    static bool IsOneOf(char c, const std::string& set) { return set.find(c) != std::string::npos; }
    static bool IsWhite(char c) { return c == '\0' || IsOneOf(c, " \t\r\n"); }
    static bool IsOperator(char c) { return IsOneOf(c, "+-*/<>=![](){}"); }

    static Tokens Cut(const std::string& buffer, bool dropSeparators) {
        Tokens tokens(1);
        bool inString = buffer[0] == '"';
        if (!IsWhite(buffer[0])) tokens.back() += buffer[0];
        for (std::size_t i = 1; i < buffer.size(); ++i) {
            const char c = buffer[i], p = buffer[i - 1];
            bool opening = false;
            if (!inString && c != '"') {
                if (IsWhite(c)) continue;
                if (!tokens.back().empty() &&
                    !(!IsWhite(p) && !IsOperator(p) && !IsOperator(c) && !IsOneOf(p, ",;") && !IsOneOf(c, ",;")))
                    tokens.emplace_back();
                if (IsOneOf(c, ",;") && dropSeparators) continue;
                tokens.back() += c;
                continue;
            }
            if (!inString && c == '"') {
                opening = inString = true;
                if (!tokens.back().empty()) tokens.emplace_back();
            }
            tokens.back() += c;
            if (inString && c == '"' && !opening) inString = false;
        }
        if (inString) throw std::string(StringMessage);
        return tokens;
    }

    static Tokens Merged(const Tokens& cut) {
        Tokens result;
        if (cut[0] == "-") result.push_back("0");
        result.push_back(cut[0]);
        for (std::size_t i = 1; i < cut.size(); ++i) {
            std::string& prev = result.back();
            const std::string& cur = cut[i];
            const bool single = prev.size() == 1 && cur.size() == 1;
            if (single && ((cur == "=" && IsOneOf(prev[0], "+-*/!=<>")) || (prev == cur && IsOneOf(cur[0], "<>&|")))) {
                prev += cur;
                continue;
            }
            if (prev.size() == 1 && IsOneOf(prev[0], "([{") && cur == "-") result.push_back("0");
            result.push_back(cur);
        }
        for (std::string& token : result)
            if (!token.empty() && !(token.front() == '"' && token.back() == '"'))
                for (char& c : token)
                    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
        return result;
    }
};

template <class Work>
Tokens TokensOrMessage(Work work) {
    try {
        return work();
    } catch (const std::string& message) {
        return {message};
    } catch (const KmException& failure) {
        return {failure.what()};
    }
}

TEST(ExtractTokens, FollowsThePlainRuleOnRandomText) {
    const std::string alphabet("//**\"\"--aB1.= \n\0,;<>!&|()[]{}+#$", 33);
    for (unsigned seed = 0; seed < 20000; ++seed) {
        std::mt19937 random(seed);
        std::string text(random() % 14, ' ');
        for (char& c : text) c = alphabet[random() % alphabet.size()];
        const bool drop = random() % 2 == 0;
        ASSERT_EQ(TokensOrMessage([&] { return ExtractTokens(text, drop); }),
                  TokensOrMessage([&] { return PlainTokens::Of(text, drop); }))
            << "seed " << seed << " \"" << text << '"';
    }
}

TEST(ExtractTokens, IsLinearInTheText) {
    EXPECT_EQ(ExtractTokens(std::string(300000, '('), false).size(), 300000u);
    EXPECT_EQ(ExtractTokens(std::string(300000, 'a'), false).size(), 1u);
}

TEST(ExtractLines, DropsIndentationAndBlankLines) {
    const struct {
        std::string text;
        Tokens lines;
    } rows[] = {
        {"", {""}},
        {"\n\n", {""}},
        {"a", {"a"}},
        {"a\n", {"a", ""}},
        {"a\n\n \n b c \r\nd", {"a", "b c \r", "d"}},
        {std::string("\0\t\r a\0b", 7), {std::string("a\0b", 3)}},
        {"a\r\n\r\n", {"a\r", ""}},
    };
    for (const auto& row : rows) EXPECT_EQ(ExtractLines(row.text), row.lines) << row.text;
}

TEST(ExtractDouble, ReadsNumbers) {
    const struct {
        const char* text;
        double value;
        int position;
    } rows[] = {
        {"", 0.0, 0},
        {"12", 12.0, 2},
        {"  -0.5;", -0.5, 6},
        {",;-1.5 x", -1.5, 6},
        {"1.5D2", 150.0, 5},
        {"2.5e3", 2500.0, 5},
        {"1D-3", 1.0 / 1000.0, 4},
        {"1d+3", 1000.0, 4},
        {"7E0", 7.0, 3},
        {"7e", 7.0, 2},
        {"1-2", -12.0, 3},
        {"+3", 3.0, 2},
        {"5.", 5.0, 2},
        {"5.e2", 500.0, 4},
        {"5.x", 5.0, 2},
        {".25", 0.25, 3},
        {"-2.25,", -2.25, 5},
        {"1.5-2", 1.0 - 52.0 / 100.0, 5},
        {"x", 0.0, 0},
        {"-", -0.0, 1},
        {"-0", -0.0, 2},
        {"-20000000000000000000", -0.0, 21},
        {"20000000000000000000", 2e19, 20},
        {"1e 5", 1e5, 4},
        {"3 4", 3.0, 1},
        {"1.0-0", 1.0 + -1e20 / 100.0, 5},
    };
    for (const auto& row : rows) {
        int position = 0;
        const double value = ExtractDouble(row.text, static_cast<int>(std::string(row.text).size()), position);
        EXPECT_EQ(value, row.value) << row.text;
        EXPECT_EQ(std::signbit(value), std::signbit(row.value)) << row.text;
        EXPECT_EQ(position, row.position) << row.text;
    }
}

TEST(ExtractDouble, ReadsOneNumberAfterTheOther) {
    const std::string text = "1, 2;3.5\n-4";
    int position = 0;
    for (const double value : {1.0, 2.0, 3.5, -4.0})
        EXPECT_EQ(ExtractDouble(text.data(), static_cast<int>(text.size()), position), value);
    EXPECT_EQ(position, static_cast<int>(text.size()));
}

double DoubleOf(const std::string& text) {
    int position = 0;
    return ExtractDouble(text.data(), static_cast<int>(text.size()), position);
}

TEST(ExtractDouble, TakesAnyCountOfDigits) {
    EXPECT_EQ(DoubleOf("1e99"), 1e99);
    EXPECT_EQ(DoubleOf("1e-99"), 1.0 / 1e99);
    EXPECT_EQ(DoubleOf("1e100"), 1e99 * 10);
    EXPECT_EQ(DoubleOf("1e99999999999999999999"), HUGE_VAL);
    EXPECT_EQ(DoubleOf("0e99999"), 0.0);
    EXPECT_EQ(DoubleOf("1e-99999999999999999999"), 0.0);
    EXPECT_EQ(DoubleOf("1." + std::string(500, '0') + "1"), 1.0);
    EXPECT_NEAR(DoubleOf("0." + std::string(500, '3')), 1.0 / 3.0, 1e-15);
    EXPECT_EQ(DoubleOf(std::string(400, '9')), HUGE_VAL);
}

TEST(ExtractDouble, LeavesAPositionOutsideAlone) {
    for (const int start : {-1, 3, 100}) {
        int position = start;
        EXPECT_EQ(ExtractDouble("123", 3, position), 0.0);
        EXPECT_EQ(ExtractString("123", 3, position), "");
        EXPECT_EQ(position, start);
    }
    int position = 0;
    EXPECT_EQ(ExtractDouble(nullptr, 3, position), 0.0);
    EXPECT_EQ(ExtractString(nullptr, 3, position), "");
    EXPECT_EQ(ExtractDouble("123", -3, position), 0.0);
    EXPECT_EQ(position, 0);
}

TEST(ExtractString, ReadsUpToASeparator) {
    const std::string text("  abc,\0;\"d e\"", 13);
    int position = 0;
    const auto next = [&] { return ExtractString(text.data(), static_cast<int>(text.size()), position); };
    EXPECT_EQ(next(), "abc");
    EXPECT_EQ(position, 5);
    EXPECT_EQ(next(), "\"d");
    EXPECT_EQ(next(), "e\"");
    EXPECT_EQ(next(), "");
    EXPECT_EQ(position, 13);
}

}  // namespace
}  // namespace KM::Parsing
