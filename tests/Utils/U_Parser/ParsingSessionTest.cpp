#include "Utils/U_Parser/ParsingSession.h"

#include <gtest/gtest.h>

#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include "Support/LogCapture.h"
#include "Utils/U_Parser/Blocks.h"
#include "Utils/U_Parser/Failures.h"
#include "Utils/U_Parser/Values.h"

namespace KM::Parsing {
namespace {

using Test::LogCapture;
using Test::MessageOf;
using Verbose::EMessageType;

/// A function of a host: throws what a file reader of an older kind throws.
class Throwing : public Expression {
public:
    Expression* Clone() const override { return new Throwing(*this); }
    double ToDouble() const override { throw Exception{"Type", "File.cpp", 12}; }
    std::string Name() const override { return "Throwing"; }
};

TEST(ParsingSession, Evaluates) {
    ParsingSession session;
    EXPECT_EQ(session.ToDouble("1 + 2 * 3"), 7.0);
    EXPECT_EQ(session.ToDouble(""), 0.0);
    EXPECT_EQ(session.ToDouble("X = 2, X + 1"), 3.0);
    EXPECT_EQ(session.ToDouble("1, 2"), 2.0);
    EXPECT_EQ(session.ToDouble("NEW"), 0.0);
    EXPECT_EQ(session.ToString("1 / 3"), "0.333333");
    EXPECT_EQ(session.ToString("\"a\""), "a");
    EXPECT_EQ(session.ToString("1, \"b\""), "b");
    EXPECT_EQ(session.Execute("X + 1"), 3.0);
    EXPECT_EQ(session.Process("1 = 2"), 2.0);
    EXPECT_EQ(session.ToDouble("a b"), 0.0);
}

TEST(ParsingSession, StatementsWithoutSeparatorRunBackwards) {
    ParsingSession session;
    EXPECT_EQ(session.ToDouble("X = 1, Y = 2, X Y"), 1.0);
    EXPECT_EQ(session.ToDouble("X = 1, Y = 2, X, Y"), 2.0);
}

TEST(ParsingSession, KeepsVariables) {
    ParsingSession session;
    session.Process("X = 1, $S = \"a\"");
    EXPECT_EQ(session.Process("X + 1"), 2.0);
    EXPECT_EQ(session.Process_("x = x + 2"), 3.0);
    EXPECT_EQ(session.ToString("$s + x"), "a3");
}

TEST(ParsingSession, ATreeIsEvaluatedAnewEachTime) {
    ParsingSession session;
    const Expression* const next = session.CreateExpression("I += 1");
    for (int i = 1; i < 10; ++i) EXPECT_EQ(next->ToDouble(), i);
}

TEST(ParsingSession, SharesNothingWithAnother) {
    ParsingSession one, other;
    one.Process("X = 5, AUX[0] = 5, #F{1, 5}");
    EXPECT_EQ(other.ToDouble("X"), 0.0);
    EXPECT_EQ(other.ToDouble("AUX[0]"), 0.0);
    EXPECT_FALSE(other.factory.contains("F"));
    EXPECT_EQ(one.doubles[0], 5.0);
}

TEST(ParsingSession, HasArraysOfFixedSize) {
    ParsingSession session;
    EXPECT_EQ(session.doubles.size(), 100u);
    EXPECT_EQ(session.strings.size(), 100u);
    session.doubles[99] = 3.5;
    EXPECT_EQ(session.ToDouble("AUX[99]"), 3.5);
    EXPECT_EQ(MessageOf([&] { session.ToDouble("AUX[100]"); }), "In Indexed. Index: 100 is out of range!");
    ParsingSession small(2, 0);
    EXPECT_EQ(small.ToDouble("AUX[1] = 4, AUX[1]"), 4.0);
    EXPECT_EQ(MessageOf([&] { small.ToDouble("$AUX[0]"); }), "In Indexed. Index: 0 is out of range!");
}

TEST(ParsingSession, RefusesArraysThatCannotBe) {
    EXPECT_EQ(MessageOf([] { ParsingSession(-1, 5); }), "In ParsingSession. An array can't have -1 elements!");
    EXPECT_EQ(MessageOf([] { ParsingSession(5, 2000000000); }),
              "In ParsingSession. An array can't have 2000000000 elements!");
}

TEST(ParsingSession, AddsNamesInAnyCase) {
    ParsingSession session;
    double target = 7.0;
    DoubleChanger changer(&target);
    DoubleConst other(1.0);
    session.Add("Host.Value", &changer);
    session.Add("host.value", &other);  // stays as it was
    session.Add("Nothing", nullptr);
    EXPECT_EQ(session.ToDouble("HOST.value = HOST.VALUE + 1"), 8.0);
    EXPECT_EQ(target, 8.0);
    EXPECT_FALSE(session.factory.contains("NOTHING"));
}

TEST(ParsingSession, ExecuteDeletesTheRootAlone) {
    ParsingSession session;
    EXPECT_EQ(session.Execute(""), 0.0);
    EXPECT_EQ(session.Execute("{}"), 0.0);
    EXPECT_EQ(session.Execute("#F{1, $P[0] * 2}"), 0.0);
    EXPECT_EQ(session.Execute("F(4)"), 8.0);
    EXPECT_EQ(session.Execute("4"), 4.0);
    EXPECT_EQ(session.Execute("1, VOID"), 0.0);
    EXPECT_EQ(session.Execute("X = 4"), 4.0);
    EXPECT_EQ(session.ToDouble("X, F(X)"), 8.0);
    EXPECT_EQ(session.ToDouble("{}"), 0.0);
}

TEST(ParsingSession, ReportsItsEnd) {
    const LogCapture log;
    std::size_t expressions = 0;
    {
        ParsingSession session;
        session.Process("X = 1, $S = \"\", $T = $S");
        expressions = session.expressionsToDeallocate.size();
    }
    const std::vector<std::string> texts = {"Destroy: " + std::to_string(expressions) + " expressions;",
                                            "Destroy: 2 strings;", "Destroy: 2 doubles;"};
    EXPECT_EQ(log.Texts(EMessageType::Info), texts);
    ASSERT_EQ(log.Lines().size(), 6u);
    EXPECT_EQ(log.Lines()[0], "<ParsingSession.Destroy>");
    EXPECT_EQ(log.Lines()[5], "</ParsingSession.Destroy>");
}

TEST(ParsingSession, TakesWhatIsLeftToItTwice) {
    ParsingSession session;
    auto* const value = new double(2.0);
    EXPECT_EQ(session.AddToDeallocDouble(session.AddToDeallocDouble(value)), value);
    auto* const text = new std::string("a");
    EXPECT_EQ(session.AddToDeallocString(session.AddToDeallocString(text)), text);
    EXPECT_EQ(session.AddToDeallocDouble(nullptr), nullptr);
    EXPECT_EQ(session.AddToDealloc(nullptr), nullptr);
    Expression* const node = session.AddToDealloc(session.AddToDealloc(new DoubleChanger(value)));
    EXPECT_EQ(node->ToDouble(), 2.0);
    delete node;
}

TEST(ParsingSession, ACopySharesVariablesAndFunctions) {
    std::optional<ParsingSession> original(std::in_place);
    original->Process("X = 1, $S = \"a\", #F{1, $P[0] + X}");
    ParsingSession copy(*original);
    copy.Process("X = 5, NEW = 3");
    EXPECT_EQ(original->ToDouble("X"), 5.0);
    EXPECT_FALSE(original->factory.contains("NEW"));
    EXPECT_EQ(copy.ToDouble("F(2)"), 7.0);
    original.reset();
    EXPECT_EQ(copy.ToDouble("X + NEW"), 8.0);
    EXPECT_EQ(copy.ToString("$S"), "a");
}

TEST(ParsingSession, ArraysOfACopyAreThoseOfTheOriginal) {
    std::optional<ParsingSession> original(std::in_place);
    original->Process("AUX[0] = 1, #F{1, $P[0]}");
    ParsingSession copy(*original);
    EXPECT_EQ(copy.doubles[0], 1.0);
    copy.Process("AUX[0] = 2");
    EXPECT_EQ(original->doubles[0], 2.0);
    EXPECT_EQ(copy.doubles[0], 1.0);
    original.reset();
    const std::string message = "In Session. The session of this expression has ended!";
    EXPECT_EQ(MessageOf([&] { copy.ToDouble("AUX[0]"); }), message);
    EXPECT_EQ(MessageOf([&] { copy.ToDouble("$AUX[0]"); }), message);
    EXPECT_EQ(MessageOf([&] { copy.ToDouble("F(1)"); }), message);
}

TEST(ParsingSession, AssignmentKeepsOldTreesAlive) {
    ParsingSession session(3, 3), other(5, 5);
    other.Process("Y = 2");
    Expression* const tree = session.CreateExpression("X = 9, X");
    session = other;
    EXPECT_EQ(tree->ToDouble(), 9.0);
    EXPECT_EQ(session.ToDouble("Y"), 2.0);
    EXPECT_EQ(session.doubles.size(), 5u);
    EXPECT_FALSE(session.factory.contains("X"));
    const ParsingSession& self = session;
    session = self;
    EXPECT_EQ(session.ToDouble("Y"), 2.0);
}

TEST(ParsingSession, ProcessShowsAnException) {
    ParsingSession session;
    session.Add("Throw", session.AddToDealloc(new Throwing));
    const LogCapture log;
    EXPECT_EQ(session.Process("1 + Throw"), 0.0);
    const std::string rule = "\n==========================================";
    const std::vector<std::string> texts = {rule,
                                            "\nException detected! The Info is:",
                                            "\nExpression    : `C14`1 + Throw",
                                            "\nException Type: \"`C14`Type`C14`\"",
                                            "\nException File: \"`C14`File.cpp`C14`\"",
                                            "\nException Line: `C14`12",
                                            rule};
    EXPECT_EQ(log.Texts(EMessageType::Error), texts);
    EXPECT_THROW(session.Process_("Throw"), Exception);
    EXPECT_THROW(session.Process("&"), KmException);
    DumpErrorMessage({"", "", 0}, "");
    EXPECT_EQ(log.Count(EMessageType::Error), 7 + 6);
}

/// What goes to the standard output meanwhile.
class OutputCapture {
public:
    OutputCapture() : before_(std::cout.rdbuf(text_.rdbuf())) {}
    ~OutputCapture() { std::cout.rdbuf(before_); }
    OutputCapture(const OutputCapture&) = delete;
    OutputCapture& operator=(const OutputCapture&) = delete;
    std::string Text() const { return text_.str(); }

private:
    std::ostringstream text_;
    std::streambuf* before_;
};

TEST(ParsingSession, ListsItsNames) {
    const OutputCapture output;
    ParsingSession session;
    DumpFactoryContent(session);
    const std::string text = output.Text();
    EXPECT_TRUE(text.starts_with("\nFactory{\n  Key = "));
    EXPECT_TRUE(text.ends_with("\n}//Factory"));
    EXPECT_NE(text.find("\n  Key = $AUX, Name = StringsIndexer, OpP = 0\n"), std::string::npos);
    EXPECT_NE(text.find("\n  Key = *, Name = *, OpP = 5\n"), std::string::npos);
    EXPECT_NE(text.find("\n  Key = IF2, Name = If2, OpP = 0\n"), std::string::npos);
    std::string before;
    for (std::size_t at = 0; (at = text.find("Key = ", at)) != std::string::npos; ++at) {
        const std::string key = text.substr(at + 6, text.find(',', at) - at - 6);
        EXPECT_LT(before, key);
        before = key;
    }
}

TEST(ParsingSession, AFailureLeavesItUsable) {
    ParsingSession session;
    for (const char* text : {"(", ")", "&", "#F", "AUX[100]", "$P[0]", "Swap(1, \"a\")", "\"", "a*/b", "Sin(1) = 2"})
        EXPECT_THROW(session.Process(text), KmException) << text;
    EXPECT_EQ(session.ToDouble("1 + 1"), 2.0);
}

}  // namespace
}  // namespace KM::Parsing
