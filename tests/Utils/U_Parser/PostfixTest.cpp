#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Utils/U_Parser/Failures.h"
#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {
namespace {

using Test::FailureOf;
using Test::MessageOf;
using Test::Nested;
using Tokens = std::vector<std::string>;

std::string Polish(const std::string& text) {
    std::string result;
    for (const std::string& token : ParsingSession().ToPolish(text)) result += (result.empty() ? "" : " ") + token;
    return result;
}

TEST(Postfix, BringsOperatorsBehindOperands) {
    const struct {
        const char* infix;
        const char* postfix;
    } rows[] = {
        {"", ""},
        {"SIN(X)", "X SIN"},
        {"2 * SIN(X + 1)", "2 X 1 + SIN *"},
        {"MIN(A, B)", "A B MIN"},
        {"min[a, b]", "A B MIN"},
        {"A B", "B A"},
        {"A, B", "A B"},
        {"A; B", "A B"},
        {"1 2 +", "1 2 +"},
        {"{A, B}", "_OPEN_ A B _CLOSE_"},
        {"{}", "_OPEN_ _CLOSE_"},
        {"A = B = 3", "A B = 3 ="},
        {"A + B * C", "A B C * +"},
        {"A * B + C", "A B * C +"},
        {"A - B - C", "A B - C -"},
        {"A / B * C", "A B / C *"},
        {"(A + B) * C", "A B + C *"},
        {"A < B && C < D", "A B < C D < &&"},
        {"A || B && C", "A B C && ||"},
        {"A == B <= C", "A B C <= =="},
        {"A += B + C", "A B C + +="},
        {"Min(A, -B)", "A B - MIN"},
        {"Unknown(1)", "1 UNKNOWN"},
        {"Sin()", "SIN"},
        {"PI()", "PI"},
        {"AUX[3] = 5", "3 AUX 5 ="},
        {"#F{ 2, $P[0] }", "_OPEN_ 2 0 $P _CLOSE_ F"},
        {"Sin(Cos(X))", "X COS SIN"},
        {"A _NL_ B", "_NL_ B A"},
        {"$S = \"a b\"", "$S \"a b\" ="},
        {"X (1) Y", "1 X Y"},
        {"1 , , 2", "1 2"},
        {"A & B", "A B &"},
    };
    for (const auto& row : rows) EXPECT_EQ(Polish(row.infix), row.postfix) << row.infix;
}

TEST(Postfix, TakesTokens) {
    ParsingSession session;
    EXPECT_EQ(session.ToPolish(Tokens{"2", "*", "PI"}), (Tokens{"2", "PI", "*"}));
    EXPECT_EQ(session.ToPolish(Tokens{""}), (Tokens{""}));
    EXPECT_EQ(session.ToPolish(Tokens{"-5", "+", "1"}), (Tokens{"-5", "1", "+"}));
    EXPECT_EQ(FailureOf([&] { session.ToPolish(Tokens{"(", "A"}); }).position, ParsingException::NoPosition);
}

TEST(Postfix, RefusesWithAMessageAndAPosition) {
    const struct {
        const char* text;
        const char* message;
        std::size_t position;
    } rows[] = {
        {"(A", "In ToPostFixConverter. Found orphan opening paranthesis of type: \"(\" on line: 0.", 0},
        {"1 + [A", "In ToPostFixConverter. Found orphan opening paranthesis of type: \"[\" on line: 0.", 4},
        {"_NL_ {A (B)", "In ToPostFixConverter. Found orphan opening paranthesis of type: \"{\" on line: 1.", 5},
        {"A)", "In ToPostFixConverter. Found orphan closing paranthesis of type: \")\" on line: 0.", 1},
        {"_NL_ _NL_ }", "In ToPostFixConverter. Found orphan closing paranthesis of type: \"}\" on line: 2.", 10},
        {"(A]", "In ToPostFixConverter. Found diferent type of closing paranthesis on line: 0.", 2},
        {"{(A}", "In ToPostFixConverter. Found diferent type of closing paranthesis on line: 0.", 3},
        {"1 + #F",
         "In ToPostFixConverter. Nested function definitions. Very probable you forgot some open paranthesis on line: "
         "0.",
         4},
        {"#sin{1}",
         "In ToPostFixConverter. Found multiple definitions for: SIN. Function overloading isn't supported! On line: "
         "0.",
         0},
        {"x; #x{1}",
         "In ToPostFixConverter. Found multiple definitions for: X. Function overloading isn't supported! On line: 0.",
         3},
        {"1 + A & B", "In OperatorPriority. Operator: & Not Found!", 6},
        {"A & B + 1", "In OperatorPriority. Operator: & Not Found!", 2},
    };
    for (const auto& row : rows) {
        const auto failure = FailureOf([&] { Polish(row.text); });
        EXPECT_EQ(failure.message, row.message);
        EXPECT_EQ(failure.file, "src/Utils/U_Parser");
        EXPECT_EQ(failure.position, row.position) << row.text;
    }
}

TEST(Postfix, PointsBehindComments) {
    EXPECT_EQ(FailureOf([] { Polish("/* a\n */ B /* c */ )"); }).position, 19u);
}

TEST(Postfix, AnOperatorNeedsAPrecedence) {
    ParsingSession session;
    session.factory["&"] = session.factory["SIN"];
    EXPECT_EQ(MessageOf([&] { session.ToPolish("1 + A & B"); }),
              "In OperatorPriority. Wrong operator precedence for: & operator!");
}

TEST(Postfix, DeclaresWhatItDoesNotKnow) {
    ParsingSession session;
    const std::size_t expressions = session.expressionsToDeallocate.size();
    session.ToPolish("a + $b, #f");
    EXPECT_EQ(session.factory.at("A")->Name(), "DoubleChanger");
    EXPECT_EQ(session.factory.at("A")->ToDouble(), 0.0);
    EXPECT_EQ(session.factory.at("$B")->Name(), "StringChanger");
    EXPECT_EQ(session.factory.at("$B")->ToString(), "");
    EXPECT_EQ(session.factory.at("F")->Name(), "Function");
    EXPECT_EQ(session.factory.at("F")->Parameters(), -1);
    EXPECT_EQ(session.factory.at("F")->ToDouble(), 0.0);
    EXPECT_EQ(session.expressionsToDeallocate.size(), expressions + 2);
    EXPECT_EQ(session.doublesToDeallocate.size(), 1u);
    EXPECT_EQ(session.stringsToDeallocate.size(), 1u);
}

TEST(Postfix, DeclaresTextsInQuotesToo) {
    ParsingSession session;
    session.ToPolish("\"a\" == \"a\"");
    EXPECT_EQ(session.doublesToDeallocate.size(), 2u);  // the name in capitals is not what is looked up
    EXPECT_TRUE(session.factory.contains("\"A\""));
}

TEST(Postfix, KeepsDeclarationsOfATextThatFails) {
    ParsingSession session;
    EXPECT_NE(MessageOf([&] { session.ToPolish("(NEW"); }), "no failure");
    EXPECT_TRUE(session.factory.contains("NEW"));
}

TEST(Postfix, BoundsBrackets) {
    EXPECT_EQ(ParsingSession().ToDouble(Nested(10000, "(", "7", ")")), 7.0);
    EXPECT_EQ(FailureOf([] { Polish(Nested(10001, "(", "7", ")")); }).position, 10000u);
    EXPECT_EQ(MessageOf([] { Polish(Nested(100000, "[", "7", "]")); }),
              "In ToPostFixConverter. Brackets are nested deeper than 10000 levels on line: 0.");
    // One behind the other they are as many as one likes.
    EXPECT_EQ(ParsingSession().ToPolish(Nested(50000, "(1),", "1", "")).size(), 50001u);
}

}  // namespace
}  // namespace KM::Parsing
