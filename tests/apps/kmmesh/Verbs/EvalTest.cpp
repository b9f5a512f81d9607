#include <gtest/gtest.h>

#include <filesystem>

#include "ToolRun.h"

namespace KM::Test {
namespace {

using Words = std::vector<std::string>;

bool Has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

class Eval : public testing::Test, public ToolRun {
protected:
    using ToolRun::Run;

    std::string Printed(const Words& arguments, const std::string& input = "") const {
        Words all = {"eval"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const ToolResult result = Run(all, input);
        EXPECT_EQ(result.exitCode, 0) << result.errors;
        EXPECT_EQ(result.errors, "");
        return result.output;
    }

    void ExpectFails(const Words& arguments, const std::string& errors, const std::string& input = "",
                     int exitCode = 9) const {
        Words all = {"eval"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const ToolResult result = Run(all, input);
        EXPECT_EQ(result.exitCode, exitCode);
        EXPECT_EQ(result.errors, "kmmesh: " + errors);
    }
};

TEST_F(Eval, EvaluatesTheWordsInTheirOrder) {
    EXPECT_EQ(Printed({"1 + 2 * 3"}), "7\n");
    EXPECT_EQ(Printed({"X = 2", "X + 1", "-X", "[X, X * 5]", "{}"}), "2\n3\n-2\n10\n");
    EXPECT_EQ(Printed({"X = 2,\nX + 1"}), "3\n");
    EXPECT_EQ(Printed({"\"a\nb\""}), "a\nb\n");
    EXPECT_EQ(Printed({"Pi", "--exact"}), "3.141592653589793\n");
    EXPECT_EQ(Printed({"-q", "1", "--exact", "--", "-Pi"}), "1\n-3.141592653589793\n");
}

TEST_F(Eval, ReadsFiles) {
    folder.Write("area.km", "/* circle */\n#Area{1,\n  Pi * $P[0] * $P[0]}\n");
    folder.Write("X", "41 + 1");
    EXPECT_EQ(Printed({"area.km", "Area(2)"}), "12.5664\n");
    EXPECT_EQ(Printed({"X", "@X", "(X)"}), "42\n42\n0\n");
}

TEST_F(Eval, ReadsStandardInput) {
    EXPECT_EQ(Printed({}, "X = 2,\nX + 1\n"), "3\n");
    EXPECT_EQ(Printed({}, "WriteLine(\"a\"), WriteLine(\"b\")"), "a\nb\n");
    EXPECT_EQ(Printed({"1"}, "2"), "1\n");
    EXPECT_EQ(Printed({}, std::string("1\0+\xFF"
                                      "1",
                                      5)),
              "1\n")
        << "a byte above 127 is part of a name";
}

TEST_F(Eval, PointsAtWhatFails) {
    ExpectFails({"1 + (2 * 3"},
                "expression: In ToPostFixConverter. Found orphan opening paranthesis of type: \"(\" on line: 0.\n"
                "  1 + (2 * 3\n"
                "      ^\n");
    ExpectFails({"Sin(1) = 2"},
                "expression: In EqualFunc. Isn't possible to cast first expression to doubles or string holder!\n"
                "  Sin(1) = 2\n");
    folder.Write("bad.km", "X = 1,\nY = (X]\n");
    ExpectFails({"bad.km"}, (folder / "bad.km") +
                                ":2:7: In ToPostFixConverter. Found diferent type of closing paranthesis.\n"
                                "  Y = (X]\n"
                                "        ^\n");
    ExpectFails({},
                "standard input:1:5: In ExtractTokens. Found open comment without close comment!\n"
                "  1 + /* open\n"
                "      ^\n",
                "1 + /* open\n2");
}

TEST_F(Eval, PrintsWhatCameBeforeAFailure) {
    const ToolResult result = Run({"eval", "1", "WriteLine(\"a\"), Aux[100]", "2"});
    EXPECT_EQ(result.exitCode, 9);
    EXPECT_EQ(result.output, "1\na\n");
}

TEST_F(Eval, RefusesWhatIsNoExpression) {
    ExpectFails({"nowhere.km"}, (folder / "nowhere.km") + ": no such file\n");
    ExpectFails({"@nowhere"}, (folder / "nowhere") + ": no such file\n");
    std::filesystem::create_directory(folder / "sub");
    ExpectFails({"sub"}, (folder / "sub") + ": is a folder\n");
    ExpectFails({}, "standard input: holds no expression\n");
    ExpectFails({}, "standard input: holds no expression\n", " \n\t");
    ExpectFails({}, "standard input: holds more than 1000000 bytes, too many to evaluate\n",
                std::string(1'100'000, '1'));
    ExpectFails({""}, "\"\": is no expression\n", "", 4);
    ExpectFails({"@"}, "\"@\": names no file\n", "", 4);
    ExpectFails({"a[b[1]]>2,\nc"},
                "\"a[b[1]]>2,?c\": needs a blank ahead of each >, since no configuration can hold \"]]>\" in it\n", "",
                4);
    ExpectFails({"--bad"}, "--bad: not expected here; see kmmesh eval --help\n", "", 4);
    ExpectFails({"--exact=x", "1"}, "--exact: takes no value; see kmmesh eval --help\n", "", 4);
}

TEST_F(Eval, ListsTheCatalogue) {
    const std::string list = Printed({"--list"}, "not read");
    EXPECT_TRUE(list.starts_with("name            operands  help\n")) << list;
    EXPECT_TRUE(Has(list, "\nSqrt                   1  Square root. Function call format(prefixed).\n")) << list;
    EXPECT_TRUE(Has(list, "\nXMLValue "));
    const std::string more = Printed({"#Area{2, $P[0] * $P[1]}", "2 * 3", "--list"});
    EXPECT_TRUE(more.starts_with("6\nname ")) << more;
    EXPECT_TRUE(Has(more, "\nAREA                   2 "));
}

TEST_F(Eval, ReadsTheSettings) {
    EXPECT_EQ(Printed({"XMLValue(\"Actions.Execute\")"}), "Mesh.Eval\n");
    folder.Write("part.xml",
                 "<Settings><Part><Diameter Type=\"Real64\">12.5</Diameter></Part>"
                 "<Actions><Execute>Mesh.Eval</Execute></Actions></Settings>");
    const ToolResult result = Run({"part.xml"}, "XMLValue(\"Part.Diameter\") * 2");
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(Has(result.output, "\n  25\n")) << result.output;
}

TEST_F(Eval, IsKeptAndRepeated) {
    folder.Write("area.km", "#Area{2, $P[0] * $P[1]}");
    const Words words = {"area.km", "Area(2, 3)", "-7 + 1", "%1", "\"a\" + 1", "X = 1,\n  \"<\n>\""};
    Words all = {"eval", "--save", "job.xml"};
    all.insert(all.end(), words.begin(), words.end());
    EXPECT_EQ(Run(all).output, "6\n-6\n0\na1\n<\n>\n");
    const ToolResult again = Run({"job.xml", "unused.txt"});
    EXPECT_EQ(again.exitCode, 0) << again.errors;
    EXPECT_TRUE(Has(again.output, "\n  6\n  -6\n  0\n  a1\n  <\n  >\n")) << again.output;
    EXPECT_TRUE(Has(folder.Bytes("job.xml"), "<F1>@" + (folder / "area.km") + "</F1>"));
}

TEST_F(Eval, DumpsToTheLog) {
    EXPECT_EQ(Printed({"Dump(2)"}), "");
    EXPECT_TRUE(Has(Printed({"Dump(2)", "--verbose", "4"}), "DumpFunc: 2"));
}

class EvalOnATerminal : public testing::Test, public ToolRun {};

TEST_F(EvalOnATerminal, PromptsAndKeepsVariables) {
    TerminalRun run(*this, {"eval"});
    ASSERT_TRUE(run.ShowsSoon("> ")) << run.Shown();
    run.Type("X = 20 + 1\n");
    ASSERT_TRUE(run.ShowsSoon("\n21\r\n> ")) << run.Shown();
    run.Type("\n");
    ASSERT_TRUE(run.ShowsSoon("> \r\n> ")) << run.Shown();
    run.Type("\"twice: \" + X * 2\n");
    ASSERT_TRUE(run.ShowsSoon("\ntwice: 42\r\n> ")) << run.Shown();
    run.Type("\x04");
    EXPECT_EQ(run.Wait(), 0) << run.Shown();
    EXPECT_TRUE(run.Shown().ends_with("> \r\n")) << run.Shown();
}

TEST_F(EvalOnATerminal, GoesOnAfterAFailure) {
    environment.emplace("NO_COLOR", "1");
    TerminalRun run(*this, {"eval", "-q"});
    ASSERT_TRUE(run.ShowsSoon("> "));
    run.Type("1 + (2\n");
    ASSERT_TRUE(run.ShowsSoon("on line: 0.\r\n  1 + (2\r\n      ^\r\n> ")) << run.Shown();
    run.Type("Aux[100]\n");
    ASSERT_TRUE(run.ShowsSoon("out of range!\r\n  Aux[100]\r\n> ")) << run.Shown();
    run.Type("WriteLine(\"still \" + 6 * 7)\n");
    ASSERT_TRUE(run.ShowsSoon("\nstill 42\r\n> ")) << run.Shown();
    run.Type("\x04");
    EXPECT_EQ(run.Wait(), 0) << run.Shown();
}

// A look for Escape takes a key. Lines that wait must not lose any.
TEST_F(EvalOnATerminal, TakesSeveralLinesAtOnce) {
    TerminalRun run(*this, {"eval"});
    ASSERT_TRUE(run.ShowsSoon("> "));
    run.Type("Dump(1)\nDump(2)\nX = 100\nX + 11\n");
    EXPECT_TRUE(run.ShowsSoon("> 111\r\n> ")) << run.Shown();
}

TEST_F(EvalOnATerminal, EvaluatesALineThatTheEndOfInputCuts) {
    TerminalRun run(*this, {"eval"});
    ASSERT_TRUE(run.ShowsSoon("> "));
    run.Type("6 * 7\x04");
    run.Type("\x04");
    EXPECT_EQ(run.Wait(), 0);
    EXPECT_TRUE(Has(run.Shown(), "42\r\n")) << run.Shown();
}

// Typed at once when the prompt shows, often before the tool waits.
TEST_F(EvalOnATerminal, StopsOnCtrlC) {
    for (int round = 0; round < 20; ++round) {
        TerminalRun run(*this, {"eval"});
        ASSERT_TRUE(run.ShowsSoon("> ")) << run.Shown();
        run.Type("1 + \x03");
        ASSERT_TRUE(run.ShowsSoon("kmmesh: stopped")) << run.Shown();
        EXPECT_EQ(run.Wait(), 1) << run.Shown();
    }
    EXPECT_TRUE(std::filesystem::is_empty(home / "tmp"));
}

TEST_F(EvalOnATerminal, AsksForNothingWhereThereAreWords) {
    TerminalRun run(*this, {"eval", "-q", "1 + 1"});
    EXPECT_EQ(run.Wait(), 0);
    EXPECT_EQ(run.Shown(), "2\r\n");
}

}  // namespace
}  // namespace KM::Test
