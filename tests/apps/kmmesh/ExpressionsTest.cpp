#include "Expressions.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "Failure.h"
#include "Support/TempFolder.h"

namespace KM::Tool {
namespace {

std::string Here(const std::string& name) {
    return '@' + (std::filesystem::current_path() / name).lexically_normal().string();
}

std::string FaultIn(const std::string& value) {
    try {
        ExpressionIn(value);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "";
}

TEST(ExpressionOf, KeepsWhatIsNoFile) {
    for (const char* text : {"1 + 2", "1.5", "X", ".5", "1/2", "\"a.km\"", "$S", "1.", "X.Y-1", "2*x.y", "f(a.b)",
                             "/**/", "1 + a.km", "%1", "-3", "a.b, c.d", "x._y", "a\nb"})
        EXPECT_EQ(ExpressionOf(text), text);
    EXPECT_EQ(ExpressionOf(" \t1 + 2\r\n"), "1 + 2");
    EXPECT_EQ(ExpressionOf(std::string("\0 1\0", 4)), "1");
}

TEST(ExpressionOf, MarksFiles) {
    EXPECT_EQ(ExpressionOf("formula.km"), Here("formula.km"));
    EXPECT_EQ(ExpressionOf("dir/a-b.1.txt"), Here("dir/a-b.1.txt"));
    EXPECT_EQ(ExpressionOf("\xC3\xA4.km"), Here("\xC3\xA4.km"));
    EXPECT_EQ(ExpressionOf("/a/b.km"), "@/a/b.km");
    EXPECT_EQ(ExpressionOf("@X"), Here("X"));
    EXPECT_EQ(ExpressionOf("@1 + 2"), Here("1 + 2"));
    const KM::Test::TempFolder folder;
    folder.Write("X", "1");
    EXPECT_EQ(ExpressionOf(folder / "X"), '@' + (folder / "X"));
}

TEST(ExpressionOf, RefusesWhatIsEmpty) {
    for (const std::string word : {"", " ", "\n\t", "@", " @ "}) EXPECT_THROW(ExpressionOf(word), Misuse) << word;
    EXPECT_NO_THROW(ExpressionOf(std::string(100'000, 'a'))) << "longer than any path";
}

TEST(ExpressionIn, TakesATextAsItIs) {
    EXPECT_EQ(ExpressionIn(" 1 ").text, " 1 ");
    EXPECT_EQ(ExpressionIn("formula.km").text, "formula.km");
    EXPECT_EQ(ExpressionIn("1").subject, "expression");
    EXPECT_EQ(FaultIn(""), "expression: holds no expression");
}

TEST(ExpressionIn, ReadsAFile) {
    const KM::Test::TempFolder folder;
    const std::string bytes("1 +\r\n\t\0 2\xFF\n", 12);
    folder.Write("a", bytes);
    folder.Write("marked", "\xEF\xBB\xBFX");
    EXPECT_EQ(ExpressionIn('@' + (folder / "a")).text, bytes);
    EXPECT_EQ(ExpressionIn('@' + (folder / "a")).subject, folder / "a");
    EXPECT_EQ(ExpressionIn('@' + (folder / "marked")).text, "X");
}

TEST(ExpressionIn, RefusesFilesThatHoldNone) {
    const KM::Test::TempFolder folder;
    folder.Write("empty", "");
    folder.Write("blank", " \r\n\t");
    folder.Write("longest", std::string(LongestExpression, '1'));
    folder.Write("long", std::string(LongestExpression + 1, '1'));
    EXPECT_EQ(FaultIn('@' + (folder / "nowhere")), (folder / "nowhere") + ": no such file");
    EXPECT_EQ(FaultIn('@' + (folder / "")), (folder / "") + ": is a folder");
    EXPECT_EQ(FaultIn('@' + (folder / "empty")), (folder / "empty") + ": holds no expression");
    EXPECT_EQ(FaultIn('@' + (folder / "blank")), (folder / "blank") + ": holds no expression");
    EXPECT_EQ(FaultIn('@' + (folder / "longest")), "");
    EXPECT_EQ(FaultIn('@' + (folder / "long")),
              (folder / "long") + ": holds more than 1000000 bytes, too many to evaluate");
    EXPECT_EQ(FaultIn("@/dev/zero"), "/dev/zero: holds more than 1000000 bytes, too many to evaluate");
    EXPECT_EQ(FaultIn("@"), ": no such file");
}

}  // namespace
}  // namespace KM::Tool
