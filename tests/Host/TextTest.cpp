#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "KmTools.h"

namespace {

/// A buffer with a guard behind its end, and nothing in it that ends a text.
struct Buffer {
    char text[8];
    char guard;

    Buffer() : guard('#') { std::memset(text, '?', sizeof text); }
};

TEST(KmStrCpy, CopiesWhatFits) {
    Buffer to;
    EXPECT_EQ(KmStrCpy(to.text, "1234567", 8), 0);
    EXPECT_STREQ(to.text, "1234567");
    EXPECT_EQ(KmStrCpy(to.text, "", 8), 0);
    EXPECT_STREQ(to.text, "");
    EXPECT_EQ(to.guard, '#');
}

TEST(KmStrCpy, CutsTheRestAndEndsTheText) {
    Buffer to;
    EXPECT_NE(KmStrCpy(to.text, "12345678", 8), 0);
    EXPECT_STREQ(to.text, "1234567");
    EXPECT_EQ(to.guard, '#');
    EXPECT_NE(KmStrCpy(to.text, "x", 1), 0);
    EXPECT_STREQ(to.text, "");
}

TEST(KmStrCpy, NeverReadsBehindTheRoom) {
    const char endless[] = {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'};  // no NUL
    Buffer to;
    EXPECT_NE(KmStrCpy(to.text, endless, 8), 0);
    EXPECT_STREQ(to.text, "abcdefg");
}

TEST(KmStrCpy, RefusesNullAndNoRoom) {
    Buffer to;
    EXPECT_NE(KmStrCpy(to.text, "x", 0), 0);
    EXPECT_NE(KmStrCpy(to.text, "x", -5), 0);
    EXPECT_EQ(to.text[0], '?');
    EXPECT_NE(KmStrCpy(nullptr, "x", 8), 0);
    EXPECT_NE(KmStrCpy(to.text, nullptr, 8), 0);
    EXPECT_STREQ(to.text, "");
}

TEST(KmSprintf, PrintsWhatFits) {
    Buffer to;
    EXPECT_EQ(KmSprintf(to.text, 8, "v%d %s", 12, "ab"), 0);
    EXPECT_STREQ(to.text, "v12 ab");
    EXPECT_EQ(KmSprintf(to.text, 8, "%d", 1234567), 0);
    EXPECT_STREQ(to.text, "1234567");
}

TEST(KmSprintf, CutsTheRestAndEndsTheText) {
    Buffer to;
    // Through a variable: the compiler sees a cut that it can compute, and warns.
    const std::string longText(100, 'x');
    EXPECT_NE(KmSprintf(to.text, 8, "%s", longText.c_str()), 0);
    EXPECT_STREQ(to.text, "xxxxxxx");
    EXPECT_EQ(to.guard, '#');
}

TEST(KmSprintf, RefusesNullAndNoRoom) {
    Buffer to;
    const char* noFormat = nullptr;
    EXPECT_NE(KmSprintf(to.text, 0, "x"), 0);
    EXPECT_NE(KmSprintf(to.text, -1, "x"), 0);
    EXPECT_EQ(to.text[0], '?');
    EXPECT_NE(KmSprintf(nullptr, 8, "x"), 0);
    EXPECT_NE(KmSprintf(to.text, 8, noFormat, 1), 0);
    EXPECT_STREQ(to.text, "");
}

}  // namespace
