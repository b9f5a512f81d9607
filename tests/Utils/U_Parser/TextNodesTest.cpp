#include "Utils/U_Parser/TextNodes.h"

#include <gtest/gtest.h>

#include "Utils/U_Parser/Failures.h"
#include "Utils/U_Parser/ParsingSession.h"
#include "Utils/U_Parser/Values.h"

namespace KM::Parsing {
namespace {

using Test::Nested;

TEST(AddType, AddsNumbersAndJoinsTexts) {
    ParsingSession session;
    session.Process("$A = \"2x\"");
    const struct {
        const char* text;
        double number;
        const char* joined;
        bool isText;
    } rows[] = {
        {"1 + 2", 3.0, "3", false},        {"$A + 1", 0.0, "2x1", true},
        {"1 + $A", 3.0, "12x", false},     {"$A + $A", 0.0, "2x2x", true},
        {"$A + 1 + 2", 0.0, "2x12", true}, {"1 + 2 + $A", 5.0, "32x", false},
        {"1 + (2 + $A)", 5.0, "5", false}, {"1 / 3 + \"\"", 1.0 / 3, "0.333333", false},
        {"$A +", 0.0, "2x-1e+20", true},
    };
    for (const auto& row : rows) {
        Expression* const sum = session.CreateExpression(row.text);
        EXPECT_EQ(sum->ToDouble(), row.number) << row.text;
        EXPECT_EQ(sum->ToString(), row.joined) << row.text;
        EXPECT_EQ(sum->EvaluateAsString(), row.isText) << row.text;
    }
}

TEST(AddType, EvaluatesATextSumForItsEffects) {
    ParsingSession session;
    EXPECT_EQ(session.ToDouble("\"a\" + (X = 3), X"), 3.0);
    EXPECT_EQ(session.ToDouble("(X = 1) + (X = 5), X"), 5.0);
}

TEST(AddType, WorksWithoutTheCompiler) {
    StringConst a("a"), b("b");
    AddType inner, sum;
    EXPECT_EQ(sum.ToDouble(), -2e20);
    inner.subExpressions = {&a, &b};
    sum.subExpressions = {&inner, &b};
    EXPECT_TRUE(sum.EvaluateAsString());
    EXPECT_EQ(sum.ToString(), "abb");
    EXPECT_EQ(sum.ToDouble(), 0.0);
}

TEST(AddType, LooksAtItsOperandsAgainWhenAsked) {
    ParsingSession session;
    Expression* const sum = session.CreateExpression("1 + 2");
    EXPECT_EQ(sum->ToString(), "3");
    StringConst text("a");
    sum->subExpressions[0] = &text;
    sum->OnOperands();
    EXPECT_TRUE(sum->EvaluateAsString());
    EXPECT_EQ(sum->ToString(), "a2");
    AddType withoutOperands;
    withoutOperands.OnOperands();
    EXPECT_EQ(withoutOperands.ToDouble(), -2e20);
}

TEST(AddType, TellsAboutItself) {
    const AddType sum;
    EXPECT_EQ(sum.Name(), "AddType");
    EXPECT_EQ(sum.Help(), "Add opperator. Works on all types. For strings append strings. Infix format.");
    EXPECT_EQ(sum.Parameters(), 2);
    EXPECT_EQ(sum.OpPrecedence(), 6);
}

TEST(AddType, ALongSumTakesTimeByItsLength) {
    ParsingSession session;
    session.Process("#F{1, $P[0]}");
    for (const char* first : {"1", "F(1)"}) {
        const Expression* const sum = session.CreateExpression(first + Nested(9000, "+1", "", ""));
        for (int i = 0; i < 100; ++i) EXPECT_EQ(sum->ToDouble(), 9001.0);  // minutes if each level asked all below it
    }
}

TEST(ToStringType, WritesANumber) {
    ParsingSession session;
    const struct {
        const char* text;
        const char* written;
    } rows[] = {{"ToString(8, 3, Pi)", "   3.142"},
                {"$ToString(0, 2, 1.5)", "1.50"},
                {"ToString(-8, 0, 2.4) + \"|\"", "2       |"},
                {"\"Size: \" + ToString(0, 2, 1.5)", "Size: 1.50"},
                {"ToString(5.4, 0.6, 1.25)", "  1.2"},
                {"ToString(0, (-1), 1)", "1.000000"},
                {"ToString(0, 0, 0 / 0) == \"1\"", "0"}};
    for (const auto& row : rows) EXPECT_EQ(session.ToString(row.text), row.written) << row.text;
    EXPECT_EQ(session.ToDouble("ToString(8, 3, Pi)"), 3.141592653589793);
    EXPECT_EQ(session.ToString("ToString(999999999, 999999999, 1)").size(), 4098u);
    EXPECT_EQ(session.ToString("ToString(Inf, 0, 1)").size(), 4096u);
}

TEST(ToStringType, EvaluatesTheValueFirst) {
    ParsingSession session;
    EXPECT_EQ(session.ToString("N = 0, ToString((N = N * 10 + 1) * 0, (N = N * 10 + 2) * 0, N = 3)"), "3");
    EXPECT_EQ(session.ToDouble("N"), 321.0);
}

TEST(ToStringType, TellsAboutItself) {
    ToStringType node;
    EXPECT_EQ(node.Name(), "ToStringType");
    EXPECT_EQ(node.Help(), "");
    EXPECT_EQ(node.Parameters(), 3);
    EXPECT_TRUE(node.EvaluateAsString());
}

}  // namespace
}  // namespace KM::Parsing
