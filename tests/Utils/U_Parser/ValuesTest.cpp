#include "Utils/U_Parser/Values.h"

#include <gtest/gtest.h>

#include <memory>

#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Parsing {
namespace {

TEST(Values, ANumberCanBeAssignedTo) {
    DoubleConst node(1.5);
    EXPECT_EQ(node.ToDouble(), 1.5);
    EXPECT_EQ(node.ToString(), "1.5");
    EXPECT_TRUE(node.IsDoubleHolder());
    EXPECT_FALSE(node.IsStringHolder());
    EXPECT_FALSE(node.EvaluateAsString());
    node.Set(2.0);
    node.Set("7");
    EXPECT_EQ(node.ToDouble(), 2.0);
    EXPECT_EQ(node.Parameters(), 0);
    EXPECT_EQ(node.Name(), "DoubleConst");
    EXPECT_EQ(node.Help(), "Used to wrap a constant double.");
}

TEST(Values, ACloneOfANumberIsANumberOfItsOwn) {
    ParsingSession session;
    auto original = std::make_unique<DoubleConst>(1.0);
    session.Add("Number", original.get());
    const Expression* const sum = session.CreateExpression("Number + 1");
    original->Set(5.0);
    EXPECT_EQ(sum->ToDouble(), 2.0);
    original.reset();
    EXPECT_EQ(sum->ToDouble(), 2.0);
}

TEST(Values, ATextIsANumberAtItsStart) {
    StringConst node("2.5 km");
    EXPECT_EQ(node.ToDouble(), 2.5);
    EXPECT_EQ(node.ToString(), "2.5 km");
    EXPECT_TRUE(node.IsStringHolder());
    EXPECT_FALSE(node.IsDoubleHolder());
    EXPECT_TRUE(node.EvaluateAsString());
    node.Set("");
    node.Set(1.0);
    EXPECT_EQ(node.ToDouble(), 0.0);
    EXPECT_EQ(node.ToString(), "");
    EXPECT_EQ(node.Name(), "StringConst");
    EXPECT_EQ(node.Help(), "Used to wrap a constant string.");
}

TEST(Values, AVariableWritesItsTarget) {
    double number = 1.0;
    DoubleChanger changer(&number);
    const std::unique_ptr<DoubleChanger> clone(changer.Clone());
    clone->Set(3.0);
    EXPECT_EQ(number, 3.0);
    EXPECT_EQ(changer.ToDouble(), 3.0);
    EXPECT_TRUE(changer.IsDoubleHolder());
    EXPECT_FALSE(changer.EvaluateAsString());
    EXPECT_EQ(changer.Name(), "DoubleChanger");
    EXPECT_EQ(changer.Help(), "Used to wrap a double changer.");
}

TEST(Values, ATextVariableWritesItsTarget) {
    std::string text = "0x10";
    StringChanger changer(&text);
    EXPECT_EQ(changer.ToDouble(), 16.0);
    const std::unique_ptr<StringChanger> clone(changer.Clone());
    clone->Set("b");
    EXPECT_EQ(text, "b");
    EXPECT_EQ(changer.ToString(), "b");
    EXPECT_TRUE(changer.IsStringHolder());
    EXPECT_TRUE(changer.EvaluateAsString());
    EXPECT_EQ(changer.Name(), "StringChanger");
    EXPECT_EQ(changer.Help(), "Used to wrap a string changer.");
}

TEST(Values, VoidIsNothing) {
    const Void node;
    EXPECT_EQ(node.ToDouble(), 0.0);
    EXPECT_EQ(node.Name(), "Void");
    EXPECT_EQ(node.Help(), "");
}

}  // namespace
}  // namespace KM::Parsing
