#include "Utils/U_Parser/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>

#include "Support/CommaLocale.h"

namespace KM::Parsing {
namespace {

using Test::CommaLocale;

double RandomDouble(std::mt19937_64& random) {
    switch (random() % 3) {
        case 0:
            return std::bit_cast<double>(random());
        case 1:
            return static_cast<double>(static_cast<std::int64_t>(random() % 2000001) - 1000000) / 1000.0;
        default:
            return static_cast<double>(static_cast<std::int64_t>(random()));
    }
}

std::string ByPrintf(int width, int precision, double value) {
    char text[2000];
    std::snprintf(text, sizeof text, "%*.*f", width, precision, value);
    return text;
}

TEST(NumberText, WritesFixedTextAsPrintfDoes) {
    std::mt19937_64 random(2);
    for (int i = 0; i < 20000; ++i) {
        const double value = RandomDouble(random);
        const int width = static_cast<int>(random() % 60) - 30;
        const int precision = static_cast<int>(random() % 20) - 3;
        EXPECT_EQ(FixedText(width, precision, value), ByPrintf(width, precision, value));
    }
}

TEST(NumberText, BoundsWidthAndPrecision) {
    EXPECT_EQ(FixedText(4096, 0, 1.0).size(), 4096u);
    EXPECT_EQ(FixedText(INT_MAX, 0, 1.0), std::string(4095, ' ') + "1");
    EXPECT_EQ(FixedText(INT_MIN, 0, 1.0), "1" + std::string(4095, ' '));
    EXPECT_EQ(FixedText(0, INT_MAX, 1.0), "1." + std::string(4096, '0'));
    EXPECT_EQ(FixedText(0, INT_MIN, 1.0), "1.000000");
    EXPECT_EQ(FixedText(0, INT_MAX, -1.7976931348623157e308).size(), 310u + 1u + 4096u);
}

TEST(NumberText, ReadsAsAtofDoes) {
    for (const char* text : {"",
                             "abc",
                             "12abc",
                             "  -1.5",
                             "\v\f+2",
                             "1.2.3",
                             "+-5",
                             "--5",
                             "-",
                             "+",
                             " -x",
                             "- 5",
                             "-.",
                             "-e5",
                             "-0",
                             "-0x",
                             "1e+-5",
                             "0x1p+-3",
                             "0xAP+-3",
                             ".5",
                             "5.",
                             ".",
                             "1e5",
                             "1e",
                             "1e+",
                             "-.5e-3",
                             "inf",
                             "-INF",
                             "nan",
                             "infinit",
                             "0x10",
                             "0X1F",
                             "-0x.8",
                             "0x1p3",
                             "0x1.8p1",
                             "0x",
                             "0xg",
                             "0x.",
                             "0x1P-2",
                             "1e999",
                             "-1e999",
                             "1e-999",
                             "0x1p99999",
                             "-0x1p-99999",
                             "123456789012345678901234567890"}) {
        const double expected = std::atof(text);
        const double value = NumberOf(text);
        if (std::isnan(expected)) EXPECT_TRUE(std::isnan(value)) << text;
        else EXPECT_EQ(std::bit_cast<std::uint64_t>(value), std::bit_cast<std::uint64_t>(expected)) << text;
    }
}

TEST(NumberText, HasAPointInEveryLocale) {
    const CommaLocale comma;
    EXPECT_EQ(NumberOf("1.5"), 1.5);
    EXPECT_EQ(FixedText(0, 2, 1.5), "1.50");
}

TEST(NumberText, TruncatesWhatFitsInAnInt) {
    EXPECT_EQ(TruncateToInt(2.9), 2);
    EXPECT_EQ(TruncateToInt(-2.9), -2);
    EXPECT_EQ(TruncateToInt(2147483647.9), INT_MAX);
    EXPECT_EQ(TruncateToInt(-2147483648.9), INT_MIN);
    for (const double value : {2147483648.0, -2147483649.0, 1e20, -1e20, HUGE_VAL, -HUGE_VAL, std::nan("")})
        EXPECT_EQ(TruncateToInt(value), INT_MIN) << value;
}

}  // namespace
}  // namespace KM::Parsing
