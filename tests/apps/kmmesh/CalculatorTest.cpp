#include "Calculator.h"

#include <gtest/gtest.h>

#include "FailureInText.h"
#include "Utils/U_Settings/Settings.h"

namespace KM::Tool {
namespace {

/// What is printed for these texts, one after the other, in one session.
std::string Printed(const std::vector<std::string>& texts, bool isExact = false) {
    Calculator calculator(isExact);
    testing::internal::CaptureStdout();
    for (const std::string& text : texts) try {
            calculator.Evaluate(text, "text");
        } catch (const FailureInText& failure) {
            std::cout << "fails: " << failure.what() << '\n';
        }
    return testing::internal::GetCapturedStdout();
}

TEST(Calculator, PrintsNumbersAndTexts) {
    EXPECT_EQ(Printed({"1 + 2 * 3"}), "7\n");
    EXPECT_EQ(Printed({"\"a\" + 1", "1 + \"2\"", "ToString(0, 2, Pi)"}), "a1\n3\n3.14\n");
    EXPECT_EQ(Printed({"\"\""}), "\n") << "an empty text is a value";
    EXPECT_EQ(Printed({"1 / 0", "Automatic"}), "inf\n1e+20\n");
}

TEST(Calculator, PrintsAllDigitsWhenExact) {
    EXPECT_EQ(Printed({"Pi", "1234567.8", "0.1"}), "3.14159\n1.23457e+06\n0.1\n");
    EXPECT_EQ(Printed({"Pi", "1234567.8", "0.1", "\"a\" + Pi"}, true), "3.141592653589793\n1234567.8\n0.1\na3.14159\n");
}

TEST(Calculator, KeepsVariablesAndFunctions) {
    EXPECT_EQ(Printed({"X = 2", "X += 1, X * X", "#F{1, $P[0] + X}", "F(1)"}), "2\n9\n4\n");
}

TEST(Calculator, EvaluatesOnce) {
    EXPECT_EQ(Printed({"X = 0", "X += 1", "X"}), "0\n1\n1\n");
    EXPECT_EQ(Printed({"X += 1, \"a\" + X", "{X += 1, {X += 1, \"b\" + X}}", "X"}), "a1\nb3\n3\n");
}

TEST(Calculator, PrintsNoValueForWhatHasNone) {
    for (const char* text : {"{}", "#A{0, 1}", "$S = \"a\"", "$S = \"a\", $S += \"b\"", "If(1, X = 2)", "If2(1, X = 2)",
                             "If3(1, X = 2, X = 3)", "A = 1, B = 2, Swap(A, B)", "// nothing", "Dump(1)",
                             "#B{0, If(1, X = 2)}, B()", "{X = 1, {}}"})
        EXPECT_EQ(Printed({text}), "") << text;
    EXPECT_EQ(Printed({"X = 1"}), "1\n");
    EXPECT_EQ(Printed({"#C{0, 5}, C()"}), "5\n");
}

TEST(Calculator, WritesLines) {
    EXPECT_EQ(Printed({"WriteLine(\"a\")", "WriteLine(1 + 1), WriteLine(\"\"), WriteLine(\"c\"), 5"}),
              "a\n2\n\nc\n5\n");
    EXPECT_EQ(Printed({"WriteLine(\"a\"), Aux[100]", "1"}),
              "a\nfails: text: In Indexed. Index: 100 is out of range!\n1\n");
    EXPECT_EQ(Printed({"#W{1, WriteLine(\"<\" + $P[0] + \">\")}", "W(3)"}), "<3>\n");
}

TEST(Calculator, ReadsSettings) {
    Settings::ToXMLElement("Calculator.Number").SetAttribute("Type", "Real64");
    Settings::ToXMLElement("Calculator.Number").V("2.5");
    Settings::ToXMLElement("Calculator.Text").SetAttribute("Type", "String");
    Settings::ToXMLElement("Calculator.Text").V("2.5");
    EXPECT_EQ(Printed({"XMLValue(\"Calculator.Number\") * 2", "XMLValue(\"Calculator.Text\") + 1"}), "5\n2.51\n");
    EXPECT_EQ(Printed({"$K = \"Calculator.Text\", XMLValue($K)"}), "2.5\n") << "the key is assigned just ahead";
    EXPECT_EQ(Printed({"XMLValue(\"Calculator\")"}),
              "fails: text: In XMLValue. Found an undefined type when accessing key: Calculator.\n");
}

TEST(Calculator, TellsWhereATextFails) {
    EXPECT_EQ(Printed({"1 +\n(2", "1"}),
              "fails: text:2:1: In ToPostFixConverter. Found orphan opening paranthesis of type: \"(\".\n1\n");
}

TEST(Calculator, ListsWhatItKnows) {
    Calculator calculator(false);
    calculator.Evaluate("#Area{2, $P[0] * $P[1]}, X = 1, {}", "text");
    const std::string table = calculator.Catalogue();
    EXPECT_TRUE(table.starts_with("name            operands  help\n")) << table;
    for (const char* row :
         {"\nMorph                  3  Linear interpolation. (min, max, t). Function call format(prefixed).\n",
          "\n||                     2  Infix operator ||.\n", "\nXMLValue               1  Used to get XMLValue.\n",
          "\nWriteLine              1  Used to write a line to a file.\n",
          "\n$Aux                   1  Used to index strings.\n", "\n$ToString              3\n",
          "\nAREA                   2  Used to hold a Function call.\n",
          "\nX                      0  Used to wrap a double changer.\n"})
        EXPECT_NE(table.find(row), std::string::npos) << row << table;
    EXPECT_EQ(table.find("_OPEN_"), std::string::npos);
}

TEST(Calculator, TakesAnyBytes) {
    unsigned state = 1;
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (int i = 0; i < 40; ++i) {
            state = state * 1664525u + 1013904223u;
            const unsigned pick = state >> 24;
            text += pick < 192 ? "()[]{}+-*/=<>&|,;\"$#_.1Aa \n"[pick % 27] : static_cast<char>(pick);
        }
        SCOPED_TRACE(round);
        Printed({text, text});
    }
    EXPECT_TRUE(Printed({std::string(100'000, '(')}).starts_with("fails: "));
    EXPECT_TRUE(Printed({"1" + std::string(200'000, '+') + "1"}).size() > 0);
}

}  // namespace
}  // namespace KM::Tool
