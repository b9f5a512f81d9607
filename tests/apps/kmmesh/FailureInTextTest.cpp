#include "FailureInText.h"

#include <gtest/gtest.h>

#include "Utils/U_Parser/ParsingSession.h"

namespace KM::Tool {
namespace {

using Parsing::ParsingException;

/// Message and excerpt of a failure at this byte.
std::string Shown(const std::string& text, std::size_t position, const std::string& message = "In Stage. Bad.") {
    const FailureInText failure("a.km", text, ParsingException(message, 1, position));
    return failure.what() + std::string("\n") + failure.Excerpt();
}

TEST(FailureInText, PointsAtTheTokenOfASingleLine) {
    EXPECT_EQ(Shown("1 + (2", 4), "a.km: In Stage. Bad.\n  1 + (2\n      ^\n");
    EXPECT_EQ(Shown("1", 0), "a.km: In Stage. Bad.\n  1\n  ^\n");
    EXPECT_EQ(Shown("1\n", 0), "a.km: In Stage. Bad.\n  1\n  ^\n") << "a line feed at the end makes no second line";
    EXPECT_EQ(Shown("ab", 2), "a.km: In Stage. Bad.\n  ab\n    ^\n") << "at the end";
    EXPECT_EQ(Shown("", 0), "a.km: In Stage. Bad.\n  \n  ^\n");
}

TEST(FailureInText, TellsLineAndColumnOfSeveralLines) {
    EXPECT_EQ(Shown("1,\n  (2,\n3", 5), "a.km:2:3: In Stage. Bad.\n    (2,\n    ^\n");
    EXPECT_EQ(Shown("1,\r\n(2\r\n3", 4), "a.km:2:1: In Stage. Bad.\n  (2\n  ^\n");
    EXPECT_EQ(Shown("1\n2", 0), "a.km:1:1: In Stage. Bad.\n  1\n  ^\n");
    EXPECT_EQ(Shown("1\n2", 1), "a.km:1:2: In Stage. Bad.\n  1\n   ^\n");
    EXPECT_EQ(Shown("1\n\n2", 2), "a.km:2:1: In Stage. Bad.\n  \n  ^\n");
}

TEST(FailureInText, CountsCharacters) {
    EXPECT_EQ(Shown("1\n\xC3\xA4\xE2\x82\xAC)", 7), "a.km:2:3: In Stage. Bad.\n  \xC3\xA4\xE2\x82\xAC)\n    ^\n");
}

TEST(FailureInText, DropsTheLineThatTheLanguageCounts) {
    const std::string message = "In Stage. Bad on line: 0.";
    EXPECT_EQ(Shown("1", 0, message), "a.km: " + message + "\n  1\n  ^\n");
    EXPECT_EQ(Shown("1\n2", 2, message), "a.km:2:1: In Stage. Bad.\n  2\n  ^\n");
    EXPECT_EQ(Shown("1\n2", 2, "In Stage. No! On line: 0."), "a.km:2:1: In Stage. No!\n  2\n  ^\n");
    EXPECT_EQ(Shown("1\n2", 2, "In Stage. Bad on line: 3."), "a.km:2:1: In Stage. Bad on line: 3.\n  2\n  ^\n");
}

TEST(FailureInText, ShowsASingleLineWithoutAPlace) {
    EXPECT_EQ(Shown(" Sin(1)\n", ParsingException::NoPosition), "a.km: In Stage. Bad.\n   Sin(1)\n");
    EXPECT_EQ(Shown("1\n2", ParsingException::NoPosition), "a.km: In Stage. Bad.\n");
    EXPECT_EQ(Shown("\n", ParsingException::NoPosition), "a.km: In Stage. Bad.\n");
}

TEST(FailureInText, ShowsBytesThatMoveTheCursorAsMarks) {
    EXPECT_EQ(Shown(std::string("\x1b\t\0)", 4), 3), "a.km: In Stage. Bad.\n  ? ?)\n     ^\n");
}

TEST(FailureInText, CutsLongLines) {
    const std::string excerpt = Shown(std::string(1000, 'a') + ')' + std::string(1000, 'b'), 1000);
    EXPECT_EQ(excerpt, "a.km: In Stage. Bad.\n  ..." + std::string(40, 'a') + ')' + std::string(29, 'b') + "...\n" +
                           std::string(45, ' ') + "^\n");
}

// The truth is a count by hand from the start of the text.
TEST(FailureInText, IsRightAtEachByteOfAnyText) {
    const std::string text("a\n\n\xC3\xA4 \xFF\x80\r\n(\t\0[\n\x80", 16);
    for (std::size_t position = 0; position <= text.size(); ++position) {
        SCOPED_TRACE(position);
        int line = 1;
        int column = 1;
        for (const char c : text.substr(0, position)) {
            if ((c & 0xC0) != 0x80) ++column;
            if (c == '\n') column = 1, ++line;
        }
        const std::string place = "a.km:" + std::to_string(line) + ':' + std::to_string(column) + ": ";
        EXPECT_TRUE(Shown(text, position).starts_with(place)) << Shown(text, position);
    }
}

TEST(FailureInText, TakesThePlaceFromTheLanguage) {
    Parsing::ParsingSession session;
    const std::string text = "X = 1,\nY = [2)";
    try {
        session.CreateExpression(text);
        FAIL();
    } catch (const ParsingException& failure) {
        EXPECT_STREQ(FailureInText("a", text, failure).what(),
                     "a:2:7: In ToPostFixConverter. Found diferent type of closing paranthesis.");
    }
}

}  // namespace
}  // namespace KM::Tool
