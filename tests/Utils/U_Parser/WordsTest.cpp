#include "Utils/U_Parser/Words.h"

#include <gtest/gtest.h>

namespace KM::Parsing {
namespace {

TEST(Words, TellOperators) {
    for (const char* token :
         {"+", "-", "*", "/", "&", "|", "&&", "||", "+=", "-=", "*=", "/=", "<", ">", ">=", "<=", "=", "==", "!="})
        EXPECT_TRUE(IsOperator(token)) << token;
    for (const char* token : {"", "!", "<<", ">>", "(", "A", "---", "&&&", "%"})
        EXPECT_FALSE(IsOperator(token)) << token;
}

TEST(Words, TellNumbers) {
    for (const char* token : {"", "0", "12", ".", "1.2.3", "+5", "--", "1-2"}) EXPECT_TRUE(IsNumber(token)) << token;
    for (const char* token : {"+", "-", "1E", "x", " 1", "\"1\""}) EXPECT_FALSE(IsNumber(token)) << token;
}

TEST(Words, TellStrings) {
    for (const char* token : {"\"\"", "\"a\"", "\"", "\"a\"b\""}) EXPECT_TRUE(IsString(token)) << token;
    for (const char* token : {"", "a", "\"a", "a\"", "\"a\"B"}) EXPECT_FALSE(IsString(token)) << token;
}

TEST(Words, RaiseAsciiLettersOnly) {
    std::string text("azAZ09_\xE4\0z", 10);
    ToUpper(text);
    EXPECT_EQ(text, std::string("AZAZ09_\xE4\0Z", 10));
}

}  // namespace
}  // namespace KM::Parsing
