#include "Utils/U_Parser/Blocks.h"

#include <gtest/gtest.h>

#include "Utils/U_Parser/Failures.h"
#include "Utils/U_Parser/ParsingSession.h"
#include "Utils/U_Parser/Values.h"

namespace KM::Parsing {
namespace {

using Test::MessageOf;
using Test::Nested;

constexpr const char* TooDeep = "In Function. Calls and parameters are nested deeper than 10000 levels!";

TEST(Agregate, IsItsLastStatement) {
    double number = 1.0;
    std::string text = "t";
    DoubleConst first(5.0);
    DoubleChanger numberNode(&number);
    StringChanger textNode(&text);
    Agregate block;
    block.subExpressions = {&first, &numberNode};
    EXPECT_EQ(block.ToDouble(), 1.0);
    EXPECT_TRUE(block.IsDoubleHolder());
    EXPECT_FALSE(block.IsStringHolder());
    EXPECT_FALSE(block.EvaluateAsString());
    block.Set(4.0);
    EXPECT_EQ(number, 4.0);
    block.subExpressions = {&numberNode, &textNode};
    EXPECT_EQ(block.ToString(), "t");
    EXPECT_TRUE(block.IsStringHolder());
    EXPECT_TRUE(block.EvaluateAsString());
    block.Set("u");
    EXPECT_EQ(text, "u");
    EXPECT_EQ(block.Parameters(), 0);
    EXPECT_EQ(block.Name(), "Agregate");
    EXPECT_EQ(block.Help(), "Used to hold an Agregate expression.");
}

TEST(Agregate, RunsAllStatements) {
    ParsingSession session;
    EXPECT_EQ(session.ToDouble("{I = 1, I += 2, I *= 5}"), 15.0);
    EXPECT_EQ(session.ToString("{I = 1, I += 2, \"x\"}"), "x");
    EXPECT_EQ(session.ToDouble("I"), 3.0);
    EXPECT_EQ(session.ToDouble("{1, X} = 8, X"), 8.0);
}

TEST(Agregate, MayBeEmpty) {
    Agregate block;
    block.Set(1.0);
    block.Set("a");
    EXPECT_EQ(block.ToDouble(), 0.0);
    EXPECT_EQ(block.ToString(), "");
    EXPECT_FALSE(block.IsDoubleHolder() || block.IsStringHolder() || block.EvaluateAsString());
}

TEST(AgregateBegin, IsAMark) {
    const AgregateBegin mark;
    EXPECT_EQ(mark.Name(), "_OPEN_");
    EXPECT_EQ(mark.Help(), "Used to hold a Open paranthesis.");
    EXPECT_EQ(mark.ToDouble(), 0.0);
}

TEST(Function, IsItsBody) {
    ParsingSession session;
    session.Process("#F{0, 1, 2 + 3}, #Text{0, \"a\"}, #Var{0, X}, #Call{1, $P[0] * $P[0]}");
    EXPECT_EQ(session.ToDouble("F()"), 5.0);
    EXPECT_EQ(session.ToDouble("F"), 5.0);
    EXPECT_EQ(session.ToString("Text() + 1"), "a1");
    EXPECT_EQ(session.ToDouble("Var() = 7, X"), 7.0);
    EXPECT_EQ(session.ToDouble("Call(Call(3))"), 81.0);
    EXPECT_EQ(session.ToDouble("Text() == \"a\""), 1.0);
    EXPECT_EQ(session.factory["F"]->Name(), "Function");
    EXPECT_EQ(session.factory["F"]->Help(), "Used to hold a Function call.");
}

TEST(Function, WithoutBodyIsNothing) {
    ParsingSession session;
    Function function(session.Link());
    function.Set(1.0);
    function.Set("a");
    EXPECT_EQ(function.ToDouble(), 0.0);
    EXPECT_EQ(function.ToString(), "0");
    EXPECT_FALSE(function.IsDoubleHolder() || function.IsStringHolder() || function.EvaluateAsString());
    EXPECT_EQ(function.parameterCount, -1);
}

TEST(Function, RestoresTheFrameOfItsCaller) {
    ParsingSession session;
    session.Process("#Inner{1, $P[0]}, #Outer{2, Inner(4), $P[1]}, #Fails{0, AUX[100]}");
    EXPECT_EQ(session.ToDouble("Outer(1, 2)"), 2.0);
    EXPECT_EQ(session.currentParameters, nullptr);
    EXPECT_NE(MessageOf([&] { session.ToDouble("Outer(Fails(), Fails())"); }), "no failure");
    EXPECT_EQ(session.currentParameters, nullptr);
    EXPECT_EQ(session.Link()->depth, 0);
}

TEST(Function, ThatCallsItselfEndsInAFailure) {
    ParsingSession session;
    Function function(session.Link());
    Agregate body;
    body.subExpressions = {&function};
    function.body = &body;
    EXPECT_EQ(MessageOf([&] { function.ToDouble(); }), TooDeep);
    EXPECT_EQ(MessageOf([&] { function.ToString(); }), TooDeep);
    EXPECT_EQ(MessageOf([&] { function.IsDoubleHolder(); }), TooDeep);
    EXPECT_EQ(MessageOf([&] { function.IsStringHolder(); }), TooDeep);
    EXPECT_EQ(MessageOf([&] { function.EvaluateAsString(); }), TooDeep);
    EXPECT_EQ(MessageOf([&] { function.Set(1.0); }), TooDeep);
    EXPECT_EQ(MessageOf([&] { function.Set("a"); }), TooDeep);
    EXPECT_EQ(session.Link()->depth, 0);
    EXPECT_EQ(session.currentParameters, nullptr);
}

TEST(Function, AParameterThatNamesItselfEndsInAFailure) {
    ParsingSession session;
    session.Process("#F{1, $P[0]}");
    for (const char* text : {"F($P[0])", "F($P[0] + 1)", "F(\"a\" + $P[0])", "F(Sin($P[0]))", "F(F($P[0]))"}) {
        EXPECT_EQ(MessageOf([&] { session.ToDouble(text); }), TooDeep) << text;
        EXPECT_EQ(MessageOf([&] { session.ToString(text); }), TooDeep) << text;
    }
    EXPECT_EQ(session.ToDouble("F(3)"), 3.0);
}

// As deep as evaluation can go at all: a full tree round calls that use up all levels.
TEST(Function, TheDeepestCallFitsOnTheStack) {
    ParsingSession session;
    session.Process("#F{1, $P[0]}");
    for (const char* open : {"\"a\" + (", "\"a\" < (", "If(1, ", "Aux["}) {
        const std::string text = Nested(9000, open, "F(\"a\" + $P[0])", std::string(open).back() == '[' ? "]" : ")");
        Expression* const tree = session.CreateExpression(text);
        EXPECT_EQ(MessageOf([&] { tree->ToString(); }), TooDeep) << open;
        EXPECT_EQ(MessageOf([&] { tree->ToDouble(); }), TooDeep) << open;
    }
}

TEST(Function, ManyCallsInARow) {
    ParsingSession session;
    session.Process("#F{1, N += $P[0]}");
    const Expression* const call = session.CreateExpression("F(1)");
    for (int i = 0; i < 20000; ++i) call->ToDouble();
    EXPECT_EQ(session.ToDouble("N"), 20000.0);
}

}  // namespace
}  // namespace KM::Parsing
