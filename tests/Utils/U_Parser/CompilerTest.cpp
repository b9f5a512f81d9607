#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "Utils/U_Parser/Blocks.h"
#include "Utils/U_Parser/Failures.h"
#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {
namespace {

using Test::FailureOf;
using Test::MessageOf;
using Test::Nested;
using Tokens = std::vector<std::string>;

/// The tree as nested calls of node names.
std::string Shape(const Expression& node) {
    std::string text = node.Name();
    if (node.subExpressions.empty()) return text;
    text += "(";
    for (const Expression* operand : node.subExpressions) {
        if (text.back() != '(') text += " ";
        text += Shape(*operand);
    }
    return text + ")";
}

std::string ShapeOf(const std::string& text) { return Shape(*ParsingSession().CreateExpression(text)); }

TEST(Compiler, MakesTrees) {
    const struct {
        const char* text;
        const char* shape;
    } rows[] = {
        {"", "Void"},
        {" ", "DoubleConst"},
        {"1", "DoubleConst"},
        {"\"a\"", "StringConst"},
        {"1, 2", "Agregate(DoubleConst DoubleConst)"},
        {"{}", "Void"},
        {"{1}", "DoubleConst"},
        {"{1, X, Sin(X)}", "Agregate(DoubleConst DoubleChanger Sin(DoubleChanger))"},
        {"{1, {2, 3}}", "Agregate(DoubleConst Agregate(DoubleConst DoubleConst))"},
        {"A + B", "AddType(DoubleChanger DoubleChanger)"},
        {"Min(A, 2)", "Min(DoubleChanger DoubleConst)"},
        {"Min(1)", "Min(DoubleConst Invalid)"},
        {"Morph()", "Morph(Invalid Invalid Invalid)"},
        {"Min(A, -B)", "Min(-(DoubleChanger DoubleChanger) Invalid)"},
        {"Unknown(1)", "Agregate(DoubleConst DoubleChanger)"},
        {"1 2 +", "AddType(DoubleConst DoubleConst)"},
        {"#F{2, $P[0]}", "Void"},
        {"#F{2, $P[0]}; F(1)", "Function(Void DoubleConst)"},  // operands are what stands on the stack
        {"AUX[1] = 2", "=(DoublesIndexer(DoubleConst) DoubleConst)"},
        {"VOID", "Void"},
    };
    for (const auto& row : rows) EXPECT_EQ(ShapeOf(row.text), row.shape) << row.text;
}

TEST(Compiler, TakesPostfix) {
    ParsingSession session;
    EXPECT_EQ(session.Compile({"1", "2", "+"})->ToDouble(), 3.0);
    EXPECT_EQ(session.Compile({})->Name(), "Void");
    EXPECT_EQ(session.Compile({""})->ToDouble(), 0.0);
    EXPECT_EQ(session.Compile({"1.5.2"})->ToDouble(), 1.5);
    EXPECT_EQ(session.Compile({"-5"})->ToDouble(), -5.0);
    EXPECT_EQ(session.Compile({"\""})->ToString(), "");
    EXPECT_EQ(session.Compile({"\"\""})->ToString(), "");
    EXPECT_EQ(session.Compile({"\"a\"b\""})->ToString(), "a\"b");
    EXPECT_EQ(session.Compile({"_OPEN_", "_CLOSE_"})->Name(), "Void");
}

std::string NotEnough(const std::string& line) {
    return "In Compiler. Aren't enough parameters on the stack when trying to process: _CLOSE_ function on line: " +
           line + ".";
}

TEST(Compiler, RefusesWithAMessage) {
    const struct {
        Tokens postfix;
        std::string message;
    } rows[] = {
        {{"_CLOSE_"}, NotEnough("0")},
        {{"1", "_CLOSE_"}, NotEnough("0")},
        {{"1", "2", "_NL_", "_CLOSE_"}, NotEnough("1")},
        {{"1", "2", "3", "_CLOSE_"}, NotEnough("0")},
        {{"_OPEN_", "SIN", "_CLOSE_"}, NotEnough("0")},  // the mark becomes the operand
        {{"&"}, "In Compiler. Function: & not defined on line: 0."},
        {{"_NL_", "_NL_", "NOBODY"}, "In Compiler. Function: NOBODY not defined on line: 2."},
        {{"sin"}, "In Compiler. Function: sin not defined on line: 0."},
    };
    for (const auto& row : rows) EXPECT_EQ(MessageOf([&] { ParsingSession().Compile(row.postfix); }), row.message);
}

TEST(Compiler, PointsAtTheToken) {
    EXPECT_EQ(FailureOf([] { ParsingSession().CreateExpression("1 + 2, A & B"); }).position, 9u);
    EXPECT_EQ(FailureOf([] { ParsingSession().CreateExpression(" #F"); }).position, 1u);
    EXPECT_EQ(FailureOf([] { ParsingSession().CreateExpression("1, X _CLOSE_"); }).position, 5u);
    EXPECT_EQ(FailureOf([] { ParsingSession().Compile({"&"}); }).position, ParsingException::NoPosition);
}

TEST(Compiler, AFunctionNeedsABody) {
    EXPECT_EQ(
        MessageOf([] { ParsingSession().CreateExpression("#F"); }),
        "In Compiler. The Top of the stack is empty when looking for the number of arguments for a function call! "
        "Very probable is an empty function body that is invalid for function: \"F\"");
}

TEST(Compiler, TakesTheCountOfParametersFromTheBody) {
    const struct {
        const char* text;
        int count;
    } rows[] = {{"#F{2, 0}", 2},   {"#F{5}", 0},         {"#F{Sin(3)}", 3}, {"N = 4, #F{N, 1}", 0},
                {"#F{1.5, 0}", 2}, {"#F{0 - 3, 0}", -3}, {"#F{}", 0},       {"#F{1000, 0}", 1000}};
    for (const auto& row : rows) {
        ParsingSession session;
        session.CreateExpression(row.text);
        EXPECT_EQ(session.factory.at("F")->Parameters(), row.count) << row.text;
    }
}

// A single statement has no count: its own first operand is taken for one, however large.
TEST(Compiler, AFormulaAsBodyWorksAsOneWouldExpect) {
    ParsingSession session;
    session.Process("#F{5000 * $P[0]}, #Far{2000000000 * 2}");
    EXPECT_EQ(session.factory.at("F")->Parameters(), 5000);
    EXPECT_EQ(session.ToDouble("F(2)"), 10000.0);
    EXPECT_EQ(session.CreateExpression("F(2)")->subExpressions.size(), 5000u);
    EXPECT_EQ(session.factory.at("FAR")->Parameters(), 2000000000);
}

TEST(Compiler, BoundsTheOperandsThatItFillsIn) {
    const auto message = [](const std::string& name) {
        return "In Compiler. More than 1000000 operands are missing when trying to process: " + name +
               " function on line: 0.";
    };
    ParsingSession session;
    session.Process("#F{2000000000, 0}");
    session.Process("#G{400000, $P[399999]}");
    EXPECT_EQ(MessageOf([&] { session.CreateExpression("F()"); }), message("F"));
    EXPECT_EQ(session.ToDouble("G()"), -1e20);
    EXPECT_EQ(session.ToDouble("G() + G()"), -2e20);
    EXPECT_EQ(MessageOf([&] { session.CreateExpression("G() + G() + G()"); }), message("G"));
}

TEST(Compiler, TheCountIsTakenOnce) {
    ParsingSession session;
    session.Process("N = 2");
    session.Process("#F{N, N}");
    session.Process("N = 7");
    EXPECT_EQ(session.factory.at("F")->Parameters(), 2);
    EXPECT_EQ(session.ToDouble("F(1, 2)"), 7.0);
}

TEST(Compiler, TheNameInItsOwnBodyEndsTheDefinition) {
    ParsingSession session;
    EXPECT_EQ(session.ToDouble("#F{0, F(8)}"), 8.0);
    EXPECT_EQ(session.ToDouble("F()"), 8.0);
    EXPECT_EQ(MessageOf([] { ParsingSession().CreateExpression("#F{F()}"); }), NotEnough("0"));
}

TEST(Compiler, CountsWhatItMakes) {
    ParsingSession session;
    const auto made = [&session](const std::string& text) {
        const std::size_t before = session.expressionsToDeallocate.size();
        session.CreateExpression(text);
        return session.expressionsToDeallocate.size() - before;
    };
    EXPECT_EQ(made(""), 1u);
    EXPECT_EQ(made("1"), 1u);
    EXPECT_EQ(made("Sin(1)"), 1u);  // clones are not in the list
    EXPECT_EQ(made("1, 2"), 3u);
    EXPECT_EQ(made("X"), 1u);
    EXPECT_EQ(made("X"), 0u);
    EXPECT_THROW(made("_CLOSE_"), KmException);
    const std::size_t before = session.expressionsToDeallocate.size();
    EXPECT_THROW(session.Compile({"1", "_CLOSE_"}), KmException);
    EXPECT_EQ(session.expressionsToDeallocate.size(), before + 1);
    // A block that misses its opening mark has been made all the same.
    EXPECT_THROW(session.Compile({"1", "2", "_CLOSE_"}), KmException);
    EXPECT_EQ(session.expressionsToDeallocate.size(), before + 4);
}

TEST(Compiler, BoundsTheDepthOfTrees) {
    const std::string message = "In Compiler. The expression is nested deeper than 10000 levels on line: 0.";
    EXPECT_EQ(ParsingSession().ToDouble(Nested(9999, "Abs(", "7", ")")), 7.0);
    EXPECT_EQ(MessageOf([] { ParsingSession().CreateExpression(Nested(10000, "Abs(", "7", ")")); }), message);
    EXPECT_EQ(ParsingSession().ToDouble(Nested(9999, "1+", "1", "")), 10000.0);
    EXPECT_EQ(MessageOf([] { ParsingSession().CreateExpression(Nested(100000, "1+", "1", "")); }), message);
    EXPECT_EQ(MessageOf([] { ParsingSession().CreateExpression(Nested(10000, "{1,", "1", "}")); }), message);
    // Statements are no levels.
    EXPECT_EQ(ParsingSession().ToDouble(Nested(100000, "1,", "7", "")), 7.0);
}

// Every road through a tree of the greatest depth: the processor's stack must hold it.
TEST(Compiler, TreesOfFullDepthCanBeEvaluated) {
    const struct {
        std::string open, core, close;
    } rows[] = {{"If(1,", "X = 1", ")"},
                {"If3(0, 1,", "X = 1", ")"},
                {"{1,", "\"a\"", "}"},
                {"1 + \"a\" + (", "\"a\"", ")"},
                {"\"a\" + (", "\"a\"", ")"},
                {"\"a\" < (", "1", ")"},
                {"1 < (", "1", ")"},
                {"1 && (", "1", ")"},
                {"Max(1,", "1", ")"},
                {"Bound(1, 1,", "1", ")"},
                {"$ToString(0, 0, ", "1", ")"},
                {"AUX[", "0", "]"},
                {"$AUX[", "0", "]"},
                {"X += (", "1", ")"},
                {"$S += (", "\"a\"", ")"},
                {"$S *= (", "\"a\"", ")"},
                {"Mod(1,", "1", ")"},
                {"Dump(", "1", ")"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.open);
        ParsingSession session;
        Expression* const tree = session.CreateExpression(Nested(9000, row.open, row.core, row.close));
        tree->ToDouble();
        tree->ToString();
        tree->ToInt();
        tree->EvaluateAsString();
        tree->IsDoubleHolder();
        tree->IsStringHolder();
        tree->Set(1.0);
        tree->Set("a");
    }
}

// The same formula by the compiler of C++.
TEST(Compiler, EvaluatesAsCppDoes) {
    ParsingSession session;
    Expression* const tree = session.CreateExpression("A * Sin(B) + Min(C, D) / 2 - (A > B) * 3");
    for (unsigned i = 0; i < 1000; ++i) {
        const double a = i * 0.37 - 100, b = i * 1.7 - 900, c = 3.0 / (i + 1), d = i * 0.001;
        session.factory["A"]->Set(a);
        session.factory["B"]->Set(b);
        session.factory["C"]->Set(c);
        session.factory["D"]->Set(d);
        EXPECT_EQ(tree->ToDouble(), a * std::sin(b) + std::min(c, d) / 2 - (a > b ? 1.0 : 0.0) * 3);
    }
}

}  // namespace
}  // namespace KM::Parsing
