#include <gtest/gtest.h>

#include <string>

#include "Utils/U_Parser/Failures.h"
#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {
namespace {

using Test::MessageOf;

double ValueOf(const std::string& text) { return ParsingSession().ToDouble(text); }
std::string TextOf(const std::string& text) { return ParsingSession().ToString(text); }

constexpr const char* NoHolder = "In EqualFunc. Isn't possible to cast first expression to doubles or string holder!";

TEST(Operators, Compute) {
    EXPECT_EQ(ValueOf("7 - 2 - 1"), 4.0);
    EXPECT_EQ(ValueOf("2 + 3 * 4"), 14.0);
    EXPECT_EQ(ValueOf("(2 + 3) * 4"), 20.0);
    EXPECT_EQ(ValueOf("8 / 4 / 2"), 1.0);
    // A minus behind an operator is no sign: "2 *" lacks an operand, and so does the difference.
    EXPECT_EQ(ValueOf("2 * -3"), 2.0 * -1e20 - 3.0);
    EXPECT_EQ(ValueOf("\"3\" * \"4\""), 12.0);
    EXPECT_EQ(ValueOf("\"3\" - 1"), 2.0);
}

TEST(Operators, EvaluateFromLeftToRight) {
    for (const char* op : {"+", "-", "*", "/", "<", "==", "&&"})
        EXPECT_EQ(ValueOf(std::string("X = 1, (X = X * 10) ") + op + " (X = X + 1), X"), 11.0) << op;
}

TEST(Comparison, OfNumbersIsExact) {
    const struct {
        const char* op;
        double less, equal, greater;
    } rows[] = {{"<", 1, 0, 0}, {"<=", 1, 1, 0}, {">", 0, 0, 1}, {">=", 0, 1, 1}, {"==", 0, 1, 0}, {"!=", 1, 0, 1}};
    for (const auto& row : rows) {
        const std::string op = std::string(" ") + row.op + " ";
        EXPECT_EQ(ValueOf("1" + op + "2"), row.less) << row.op;
        EXPECT_EQ(ValueOf("2" + op + "2"), row.equal) << row.op;
        EXPECT_EQ(ValueOf("2" + op + "1"), row.greater) << row.op;
        EXPECT_EQ(ValueOf("\"a\"" + op + "\"b\""), row.less) << row.op;
        EXPECT_EQ(ValueOf("\"b\"" + op + "\"b\""), row.equal) << row.op;
        EXPECT_EQ(ValueOf("\"b\"" + op + "\"a\""), row.greater) << row.op;
        EXPECT_EQ(ValueOf("0 / 0" + op + "1"), std::string(row.op) == "!=" ? 1.0 : 0.0) << row.op;
    }
    EXPECT_EQ(ValueOf("1 == 1.0000000000000002"), 0.0);
}

TEST(Comparison, IsOfTextsIfTheFirstIsOne) {
    EXPECT_EQ(ValueOf("1 == \"1.0\""), 1.0);
    EXPECT_EQ(ValueOf("\"1.0\" == 1"), 0.0);
    EXPECT_EQ(ValueOf("\"1\" == 1"), 1.0);
    EXPECT_EQ(ValueOf("\"10\" < \"9\""), 1.0);
    EXPECT_EQ(ValueOf("\"a\" < \"\xFF\""), 1.0);  // bytes count from 0 to 255
    EXPECT_EQ(ValueOf("\"a\" < \"aa\""), 1.0);
    EXPECT_EQ(ValueOf("\"a\" + \"b\" == \"ab\""), 1.0);
    EXPECT_EQ(ValueOf("\"A\" == \"a\""), 0.0);
}

TEST(Logic, EvaluatesNoMoreThanItNeeds) {
    ParsingSession session;
    session.Process("X = 3");
    const struct {
        const char* text;
        double value, x;
    } rows[] = {{"0 && Sqrt(X = 9)", 0, 3}, {"1 || (X = 9)", 1, 3}, {"1 && (X = 4)", 1, 4}, {"0 || (X = 5)", 1, 5},
                {"0.1 && 0.1", 1, 5},       {"0 || 0", 0, 5},       {"1 && 0", 0, 5},       {"0 / 0 && 1", 1, 5}};
    for (const auto& row : rows) {
        EXPECT_EQ(session.ToDouble(row.text), row.value) << row.text;
        EXPECT_EQ(session.ToDouble("X"), row.x) << row.text;
    }
}

TEST(Assignment, OfANumber) {
    EXPECT_EQ(ValueOf("X = 3"), 3.0);
    EXPECT_EQ(ValueOf("X = 3, X = Invalid, X"), 3.0);
    EXPECT_EQ(ValueOf("X = Invalid"), -1e20);
    EXPECT_EQ(ValueOf("X = Automatic, X"), 1e20);
    EXPECT_EQ(ValueOf("X = 3, X = 0 / 0, X"), 3.0);
    EXPECT_EQ(ValueOf("X = \"2\", X"), 2.0);
    EXPECT_EQ(ValueOf("1 = 2"), 2.0);
    EXPECT_EQ(ValueOf("X = 5, X += 2"), 7.0);
    EXPECT_EQ(ValueOf("X = 5, X -= 2"), 3.0);
    EXPECT_EQ(ValueOf("X = 5, X *= 2"), 10.0);
    EXPECT_EQ(ValueOf("X = 5, X /= 2, X"), 2.5);
    EXPECT_EQ(ValueOf("X = 5, X += Invalid, X"), -1e20);
}

TEST(Assignment, IsLeftAssociative) {
    // (A = B) = 3: the value of an assignment holds nothing.
    EXPECT_EQ(MessageOf([] { ValueOf("A = B = 3"); }), NoHolder);
    EXPECT_EQ(ValueOf("A = (B = 3), A + B"), 6.0);
}

TEST(Assignment, OfAText) {
    EXPECT_EQ(TextOf("$S = \"a\", $S += \"b\", $S"), "ab");
    EXPECT_EQ(ValueOf("$S = \"5\", $S += \"b\""), 0.0);
    EXPECT_EQ(ValueOf("$S = \"5\""), 0.0);
    EXPECT_EQ(TextOf("$S = 1, $S"), "1");
    EXPECT_EQ(TextOf("$S = 1 / 3, $S += 2, $S"), "0.3333332");
    EXPECT_EQ(TextOf("$S = \"7\", $S -= 2, $S"), "5");
    EXPECT_EQ(TextOf("$S = \"7\", $S *= 2, $S"), "14");
    EXPECT_EQ(TextOf("$S = \"7\", $S /= 2, $S"), "3.5");
    EXPECT_EQ(ValueOf("$S = \"7\", $S -= 2"), 0.0);
}

TEST(Assignment, NeedsAHolder) {
    for (const char* op : {"=", "+=", "-=", "*=", "/="})
        EXPECT_EQ(MessageOf([&] { ValueOf(std::string("Sin(1) ") + op + " 2"); }), NoHolder) << op;
    EXPECT_EQ(MessageOf([] { ValueOf("="); }), NoHolder);
    EXPECT_EQ(ValueOf("X ="), -1e20);
}

TEST(Assignment, EvaluatesTheRightSideOnlyForAHolderButWhereItComputesFirst) {
    ParsingSession session;
    for (const char* op : {"=", "+="}) {
        EXPECT_THROW(session.ToDouble(std::string("Sin(1) ") + op + " (X = 2)"), KmException);
        EXPECT_EQ(session.ToDouble("X"), 0.0) << op;
    }
    EXPECT_THROW(session.ToDouble("Sin(1) *= (X = 2)"), KmException);
    EXPECT_EQ(session.ToDouble("X"), 2.0);
}

}  // namespace
}  // namespace KM::Parsing
