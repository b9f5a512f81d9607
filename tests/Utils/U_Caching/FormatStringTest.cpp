#include "Utils/U_Caching/FormatString.h"

#include <gtest/gtest.h>

#include <string>

namespace KM::Caching {
namespace {

TEST(FormatString, CopiesOtherBytes) {
    std::string bytes;
    for (int c = 0; c < 256; ++c)
        if (std::string(" ([{)]},=").find(static_cast<char>(c)) == std::string::npos) bytes += static_cast<char>(c);
    EXPECT_EQ(FormatString(bytes), bytes);
    EXPECT_EQ(FormatString(""), "");
}

TEST(FormatString, DropsBlanks) { EXPECT_EQ(FormatString("  a b\tc "), "ab\tc"); }

TEST(FormatString, SpacesEqualSigns) {
    EXPECT_EQ(FormatString("a=b"), "a = b");
    EXPECT_EQ(FormatString("=="), " =  = ");
}

TEST(FormatString, PutsBracketsOnLinesOfTheirOwn) {
    EXPECT_EQ(FormatString("f(x)"), "f\n(\n  x\n)\n");
    EXPECT_EQ(FormatString("[{a}]"), "\n[\n  \n  {\n    a\n  }\n]\n");
    EXPECT_EQ(FormatString("()"), "\n(\n  \n)\n");
    EXPECT_EQ(FormatString("\n(a"), "\n(\n  a");
}

TEST(FormatString, EndsLinesAtCommas) {
    EXPECT_EQ(FormatString("a,b"), "a,\nb");
    EXPECT_EQ(FormatString("(a,b)"), "\n(\n  a,\n  b\n)\n");
    EXPECT_EQ(FormatString("(a),b"), "\n(\n  a\n),\nb");
}

TEST(FormatString, DropsCommasThatOpenALine) {
    EXPECT_EQ(FormatString("a,,b"), "a,\nb");
    EXPECT_EQ(FormatString("(,a"), "\n(\n  a");
    EXPECT_EQ(FormatString("a,=,b"), "a,\n = b");
    EXPECT_EQ(FormatString(","), ",\n");
}

TEST(FormatString, TakesBracketsThatDoNotMatch) {
    EXPECT_EQ(FormatString(")a(b"), "\n)\na\n(\nb");
    EXPECT_EQ(FormatString("))(("), "\n)\n)\n(\n(\n");
    EXPECT_EQ(FormatString("(]"), "\n(\n  \n]\n");
}

TEST(FormatString, LaysOutADescription) {
    EXPECT_EQ(FormatString("B{K=1,CachedDependencies[A{K=2,}], OtherDependencies[, x=3]}"),
              "B\n{\n  K = 1,\n  CachedDependencies\n  [\n    A\n    {\n      K = 2,\n      \n    }\n  ],\n"
              "  OtherDependencies\n  [\n    x = 3\n  ]\n}\n");
}

TEST(FormatString, OfBracketsWithoutEndStaysBounded) {
    const std::string text = FormatString(std::string(200'000, '['));
    EXPECT_GT(text.size(), std::size_t{64} << 20);
    EXPECT_LT(text.size(), std::size_t{65} << 20);
    EXPECT_EQ(FormatString(std::string(200'000, ']')).size(), 400'001u);
}

}  // namespace
}  // namespace KM::Caching
