#include "Utils/U_Parser/HostNodes.h"

#include <gtest/gtest.h>

#include <sstream>

#include "Support/InChild.h"
#include "Utils/U_Parser/Failures.h"
#include "Utils/U_Parser/ParsingSession.h"
#include "Utils/U_XMLReader/Element.h"

namespace KM::Parsing {
namespace {

using Test::InChild;
using Test::MessageOf;

class XMLValue : public testing::Test {
protected:
    XMLValue() {
        Put("Debug.Level", "Int32", "4 of 6");
        Put("Debug.Path", "String", "/tmp");
        Put("Quoted", "String", "\" a b \"");
        Put("HalfQuoted", "String", "\"");
        Put("Empty", "Real64", "");
        tree["Untyped"].V("1");
        session.Add("XMLValue", session.AddToDealloc(new XMLValueConst(tree)));
    }

    void Put(const std::string& key, const std::string& type, const std::string& value) {
        tree[key].V(value);
        tree[key].SetAttribute("Type", type);
    }

    XML::Element tree{"Settings"};
    ParsingSession session;
};

TEST_F(XMLValue, ReadsSettings) {
    EXPECT_EQ(session.ToDouble("XMLValue(\"Debug.Level\") + 1"), 5.0);
    EXPECT_EQ(session.ToString("XMLValue(\"Debug.Level\")"), "4 of 6");
    EXPECT_EQ(session.ToString("XMLValue(\"Debug.Path\") + \"/a\""), "/tmp/a");
    EXPECT_EQ(session.ToString("XMLValue(\"Quoted\")"), " a b ");
    EXPECT_EQ(session.ToString("XMLValue(\"HalfQuoted\")"), "");
    EXPECT_EQ(session.ToDouble("XMLValue(\"Empty\")"), 0.0);
    EXPECT_EQ(session.ToDouble("$K = \"Debug\", XMLValue($K + \".Level\")"), 4.0);
    EXPECT_EQ(session.ToDouble("XMLValue(\"Debug.Path\") == \"/tmp\""), 1.0);
}

TEST_F(XMLValue, TakesTheValueOnce) {
    Expression* const node = session.CreateExpression("XMLValue(\"Debug.Level\")");
    EXPECT_FALSE(node->EvaluateAsString());
    tree["Debug.Level"].V("9");
    EXPECT_EQ(node->ToDouble(), 4.0);
    EXPECT_EQ(session.ToDouble("XMLValue(\"Debug.Level\")"), 9.0);
}

TEST_F(XMLValue, NeedsATypedSetting) {
    Expression* const node = session.CreateExpression("XMLValue(\"Untyped\")");
    const std::string message = "In XMLValue. Found an undefined type when accessing key: Untyped.";
    EXPECT_EQ(MessageOf([&] { node->IsDoubleHolder(); }), message);
    EXPECT_EQ(node->ToDouble(), 0.0);  // only the first use looks
    EXPECT_EQ(MessageOf([&] { session.ToDouble("XMLValue(\"Nobody\")"); }),
              "In XMLValue. Found an undefined type when accessing key: Nobody.");
    EXPECT_EQ(MessageOf([&] { session.CreateExpression("XMLValue(\"Untyped\")")->IsStringHolder(); }), message);
}

TEST_F(XMLValue, NeedsAKeyAndATree) {
    const std::string message = "In XMLValue. XMLValue should be called with exactly one parameter!";
    EXPECT_EQ(MessageOf([&] { XMLValueConst(tree).Update(); }), message);
    session.Add("Lost", session.AddToDealloc(new XMLValueConst(static_cast<XML::Element*>(nullptr))));
    EXPECT_EQ(MessageOf([&] { session.ToDouble("Lost(\"a\")"); }), message);
}

TEST_F(XMLValue, CannotBeSet) {
    XMLValueConst node(&tree);
    const std::string message = "In XMLValueConst. Try to set an const object!";
    EXPECT_EQ(MessageOf([&] { node.Set(1.0); }), message);
    EXPECT_EQ(MessageOf([&] { node.Set("a"); }), message);
    EXPECT_EQ(MessageOf([&] { session.ToDouble("XMLValue(\"Debug.Level\") = 3"); }),
              "In EqualFunc. Isn't possible to cast first expression to doubles or string holder!");
    EXPECT_EQ(node.Name(), "XMLValueConst");
    EXPECT_EQ(node.Help(), "Used to get XMLValue.");
    EXPECT_EQ(node.Parameters(), 1);
}

// Each in a process of its own: the first line of a process has no line end ahead.

TEST(WriteLineType, WritesLines) {
    EXPECT_EQ(InChild([] {
                  std::ostringstream out, other;
                  ParsingSession session;
                  session.Add("WriteLine", session.AddToDealloc(new WriteLineType(out, true)));
                  session.Add("WriteOther", session.AddToDealloc(new WriteLineType(other, true)));
                  session.Process("WriteLine(\"a\"), WriteLine(1 / 2), WriteOther(\"b\")");
                  session.Process("WriteLine()");
                  return out.str() + "|" + other.str();
              }),
              "a\n0.5\n-1e+20|\nb");
}

TEST(WriteLineType, DoesNothingIfDisabled) {
    EXPECT_EQ(InChild([] {
                  std::ostringstream out;
                  ParsingSession session;
                  session.Add("Off", session.AddToDealloc(new WriteLineType(out, false)));
                  session.Add("On", session.AddToDealloc(new WriteLineType(out, true)));
                  session.Process("Off(X = 1), On(X)");
                  return out.str();
              }),
              "0");
}

TEST(WriteLineType, TellsAboutItself) {
    std::ostringstream out;
    const WriteLineType node(out, true);
    EXPECT_EQ(node.Name(), "WriteLineType");
    EXPECT_EQ(node.Help(), "Used to write a line to a file.");
    EXPECT_EQ(node.Parameters(), 1);
}

}  // namespace
}  // namespace KM::Parsing
