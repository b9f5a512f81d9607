#include "Utils/U_Console/ScreenBuffer.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>

namespace KM::Console {
namespace {

using Rows = std::deque<std::string>;

void Put(ScreenBuffer& screen, const std::string& text) {
    for (const char c : text) screen.Put(c);
}

Rows RowsAfter(const std::string& text, int columns = 10, int rows = 5) {
    ScreenBuffer screen(columns, rows);
    Put(screen, text);
    return screen.Rows();
}

TEST(ScreenBuffer, HasOneEmptyRowAtFirst) { EXPECT_EQ(RowsAfter(""), Rows{""}); }

TEST(ScreenBuffer, GoesOnInTheNextRow) {
    EXPECT_EQ(RowsAfter("ab\ncd\n"), (Rows{"ab", "cd", ""}));
    EXPECT_EQ(RowsAfter("abcd", 3), (Rows{"abc", "d"}));
    EXPECT_EQ(RowsAfter("abc", 3), Rows{"abc"});  // not before there is something to put there
}

TEST(ScreenBuffer, DropsTheOldestRow) { EXPECT_EQ(RowsAfter("a\nb\nc\nd", 10, 3), (Rows{"b", "c", "d"})); }

TEST(ScreenBuffer, WritesOverWhatIsThere) {
    EXPECT_EQ(RowsAfter("abc\rX"), Rows{"Xbc"});
    EXPECT_EQ(RowsAfter("abc\b\bX"), Rows{"aXc"});
    EXPECT_EQ(RowsAfter("\b\bX"), Rows{"X"});
}

TEST(ScreenBuffer, TabulatorsReachTheNextStop) {
    EXPECT_EQ(RowsAfter("a\tb"), Rows{"a       b"});
    EXPECT_EQ(RowsAfter("12345678\tb", 20), Rows{"12345678        b"});
    EXPECT_EQ(RowsAfter("a\tb", 5), (Rows{"a    ", "b"}));
}

TEST(ScreenBuffer, DropsControlBytesAndKeepsHighOnes) {
    EXPECT_EQ(RowsAfter(std::string("a\x1b\x07") + '\0' + "b"), Rows{"ab"});
    EXPECT_EQ(RowsAfter("\xc3\xa4\x7f"), Rows{"\xc3\xa4\x7f"});
}

TEST(ScreenBuffer, ResizeKeepsTheNewestRowsCut) {
    ScreenBuffer screen(10, 5);
    Put(screen, "old\nlonger\nab");
    screen.Resize(4, 2);
    EXPECT_EQ(screen.Rows(), (Rows{"long", "ab"}));
    Put(screen, "cd");
    EXPECT_EQ(screen.Rows(), (Rows{"long", "abcd"}));
    screen.Resize(2, 2);
    Put(screen, "e");
    EXPECT_EQ(screen.Rows(), (Rows{"ab", "e"}));
}

TEST(ScreenBuffer, TakesNoSizeThatMakesNoSense) {
    ScreenBuffer screen(-5, 0);
    EXPECT_EQ(screen.Columns(), 1);
    EXPECT_EQ(screen.Capacity(), 1);
    Put(screen, "ab\t");
    EXPECT_EQ(screen.Rows(), Rows{" "});
    screen.Resize(100000, 100000);
    EXPECT_EQ(screen.Columns(), 32767);
    EXPECT_EQ(screen.Capacity(), 32767);
}

TEST(ScreenBuffer, ClearStartsAnew) {
    ScreenBuffer screen(10, 5);
    Put(screen, "a\nbc");
    screen.Clear();
    Put(screen, "d");
    EXPECT_EQ(screen.Rows(), Rows{"d"});
}

}  // namespace
}  // namespace KM::Console
