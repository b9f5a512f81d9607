#include "Utils/U_Parser/Indexers.h"

#include <gtest/gtest.h>

#include "Utils/U_Parser/Failures.h"
#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {
namespace {

using Test::MessageOf;

TEST(Indexers, ReadAndWriteElements) {
    ParsingSession session;
    EXPECT_EQ(session.ToDouble("AUX[3] = 5, AUX[3] + AUX[4]"), 5.0);
    EXPECT_EQ(session.doubles[3], 5.0);
    EXPECT_EQ(session.ToString("$AUX[2] = \"7b\", $AUX[2]"), "7b");
    EXPECT_EQ(session.strings[2], "7b");
    EXPECT_EQ(session.ToDouble("$AUX[2]"), 7.0);
    EXPECT_EQ(session.ToDouble("aux(3)"), 5.0);
    EXPECT_EQ(session.ToDouble("AUX[AUX[3] - 2.4]"), 5.0);
}

TEST(Indexers, RoundTheIndex) {
    ParsingSession session;
    session.doubles[0] = 10.0;
    session.doubles[1] = 11.0;
    EXPECT_EQ(session.ToDouble("AUX[0.4]"), 10.0);
    EXPECT_EQ(session.ToDouble("AUX[0.5]"), 11.0);
    EXPECT_EQ(session.ToDouble("AUX[0 - 0.5]"), 10.0);
}

TEST(Indexers, RefuseWhatIsOutOfRange) {
    ParsingSession session;
    const struct {
        const char* text;
        const char* index;
    } rows[] = {{"AUX[100]", "100"},          {"AUX[99.5]", "100"},        {"AUX[-1]", "-1"},
                {"AUX[]", "-2147483648"},     {"AUX[0/0]", "-2147483648"}, {"AUX[Inf] = 1", "-2147483648"},
                {"$AUX[100] = \"a\"", "100"}, {"$AUX[-1]", "-1"}};
    for (const auto& row : rows)
        EXPECT_EQ(MessageOf([&] { session.ToDouble(row.text); }),
                  std::string("In Indexed. Index: ") + row.index + " is out of range!");
}

TEST(Indexers, NeedOneOperand) {
    ParsingSession session;
    const std::string message = "In Indexed. The indexer has more than one sub expressions registered!";
    EXPECT_EQ(MessageOf([&] { session.factory["AUX"]->ToDouble(); }), message);
    EXPECT_EQ(MessageOf([&] { session.factory["$AUX"]->ToString(); }), message);
}

TEST(Indexers, TellWhatTheyHold) {
    ParsingSession session;
    const struct {
        const char* name;
        const char* className;
        const char* help;
        bool isText;
    } rows[] = {{"AUX", "DoublesIndexer", "Used to index doubles.", false},
                {"$AUX", "StringsIndexer", "Used to index strings.", true}};
    for (const auto& row : rows) {
        Expression& node = *session.factory[row.name];
        EXPECT_EQ(node.Name(), row.className);
        EXPECT_EQ(node.Help(), row.help);
        EXPECT_EQ(node.Parameters(), 1);
        EXPECT_EQ(node.IsStringHolder(), row.isText);
        EXPECT_EQ(node.IsDoubleHolder(), !row.isText);
        EXPECT_EQ(node.EvaluateAsString(), row.isText);
    }
    EXPECT_EQ(session.factory["$P"]->Name(), "ParametersIndexer");
    EXPECT_EQ(session.factory["$P"]->Help(), "Used to index parameters.");
    EXPECT_EQ(session.factory["$P"]->Parameters(), 1);
}

TEST(Indexers, ParametersExistInsideAFunctionOnly) {
    ParsingSession session;
    Expression* const node = session.CreateExpression("$P[0]");
    const std::string message = "In ParametersIndexer. There are no parameters outside a function!";
    EXPECT_EQ(MessageOf([&] { node->ToDouble(); }), message);
    EXPECT_EQ(MessageOf([&] { node->ToString(); }), message);
    EXPECT_EQ(MessageOf([&] { node->IsDoubleHolder(); }), message);
    EXPECT_EQ(MessageOf([&] { node->IsStringHolder(); }), message);
    EXPECT_EQ(MessageOf([&] { node->EvaluateAsString(); }), message);
    EXPECT_EQ(MessageOf([&] { node->Set(1.0); }), message);
    EXPECT_EQ(MessageOf([&] { node->Set("a"); }), message);
}

TEST(Indexers, ParametersAreThoseOfTheCall) {
    ParsingSession session;
    session.Process("#F{2, $P[0] * 10 + $P[1]}");
    EXPECT_EQ(session.ToDouble("F(1, 2)"), 12.0);
    session.Process("#G{1, $P[1]}");
    EXPECT_EQ(MessageOf([&] { session.ToDouble("G(1)"); }), "In Indexed. Index: 1 is out of range!");
}

TEST(Indexers, ParametersArePassedByName) {
    ParsingSession session;
    session.Process("#Set{2, $P[0] = $P[1]}, #Count{1, $P[0], $P[0]}");
    EXPECT_EQ(session.ToDouble("Set(X, 5), X"), 5.0);
    EXPECT_EQ(session.ToString("Set($S, \"a\"), $S"), "a");
    EXPECT_EQ(session.ToDouble("I = 0, Count(I += 1), I"), 2.0);
    EXPECT_EQ(session.ToDouble("#Text{1, $P[0] == \"b\"}, Text(\"b\")"), 1.0);
    EXPECT_EQ(session.ToDouble("#Both{2, Swap($P[0], $P[1])}, X = 1, Y = 2, Both(X, Y), X * 10 + Y"), 21.0);
}

TEST(Indexers, AParameterCannotBePassedOn) {
    ParsingSession session;
    session.Process("#Inner{1, $P[0]}, #Outer{1, Inner($P[0])}");
    EXPECT_EQ(MessageOf([&] { session.ToDouble("Outer(1)"); }),
              "In Function. Calls and parameters are nested deeper than 10000 levels!");
    EXPECT_EQ(session.ToDouble("Inner(Inner(5))"), 5.0);
}

}  // namespace
}  // namespace KM::Parsing
