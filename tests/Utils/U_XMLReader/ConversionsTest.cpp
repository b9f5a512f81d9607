#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <limits>
#include <random>

#include "Utils/U_XMLReader/Element.h"

namespace KM::XML {
namespace {

int Integer(const std::string& text) { return Element("e", text).ToInt(); }
double Real(const std::string& text) { return Element("e", text).ToDouble(); }

constexpr int MaxInt = std::numeric_limits<int>::max();
constexpr int MinInt = std::numeric_limits<int>::min();
constexpr double Infinity = std::numeric_limits<double>::infinity();

TEST(ToInt, FollowsTheNotationsOfSettings) {
    const struct {
        const char* text;
        int value;
    } cases[] = {
        // switches
        {"", 1},
        {"ON", 1},
        {"on", 1},
        {"On", 1},
        {"TRUE", 1},
        {"true", 1},
        {"Yes", 1},
        {"y", 1},
        {"Y2", 1},
        {"yonder", 1},
        {"OFF", 0},
        {"off", 0},
        {"FALSE", 0},
        {"False", 0},
        {"no", 0},
        {"N/A", 0},
        {"n", 0},
        {"ONE", 0},
        {"TRUELY", 0},
        {"OFFSET", 0},
        {" YES", 0},
        // binary
        {"b0111", 7},
        {"B0111", 7},
        {"B", 0},
        {"b", 0},
        {"b1", 1},
        {"b102", 2},
        {"b 11", 3},
        {"b-1", -1},
        {"b2", 0},
        {"b0b11", 0},
        {"b1111111111111111111111111111111", MaxInt},
        {"b11111111111111111111111111111111", MaxInt},
        // hexadecimal
        {"0x10", 16},
        {"0X10", 16},
        {"0xff", 255},
        {"0xFfFfFfF", 0xFFFFFFF},
        {"0x", 0},
        {"0xg", 0},
        {"0x1g", 1},
        {"0x12345678", 305419896},
        {"0xFFFFFFFF", -1},
        {"0x80000000", MinInt},
        {"0x123456789", 305419896},
        {"0x12345678trailing", 305419896},
        {"0x0000000g", 0},
        {"0xgggg0001", 1},
        {"0x0001gggg", 65536},
        // decimal
        {"0", 0},
        {"5", 5},
        {"-5", -5},
        {"+5", 5},
        {" \t\n\v\f\r12", 12},
        {"12abc", 12},
        {"1e3", 1},
        {"3.9", 3},
        {"007", 7},
        {"abc", 0},
        {"-", 0},
        {"+-5", 0},
        {"- 5", 0},
        {" ", 0},
        {"-0x10", 0},
        {"%1", 0},
        {"2147483647", MaxInt},
        {"2147483648", MaxInt},
        {"-2147483648", MinInt},
        {"-2147483649", MinInt},
        {"99999999999999999999999999", MaxInt},
        {"-99999999999999999999999999", MinInt},
    };
    for (const auto& c : cases) EXPECT_EQ(Integer(c.text), c.value) << '"' << c.text << '"';
}

TEST(ToInt, OfAMissingPathIsOne) {
    const Element root("root", "5");
    EXPECT_EQ(root.ToInt("no.such"), 1);
    EXPECT_EQ(root.ToInt(""), 5);
}

TEST(ToInt, ReadsEachIntegerBack) {
    std::mt19937 random(1);
    for (int i = 0; i < 5000; ++i) {
        const int value = static_cast<int>(random());
        EXPECT_EQ(Integer(std::to_string(value)), value);
        char hexadecimal[16];
        std::snprintf(hexadecimal, sizeof hexadecimal, "0x%08X", static_cast<unsigned>(value));
        EXPECT_EQ(Integer(hexadecimal), value) << hexadecimal;
    }
}

TEST(ToInt, NeverFailsOnHostileText) {
    for (unsigned seed = 0; seed < 5000; ++seed) {
        std::mt19937 random(seed);
        std::string text(random() % 14, ' ');
        for (char& c : text) c = "0xXbB19-+ \t.eEyn\0\xff"[random() % 19];
        EXPECT_NO_THROW(Integer(text)) << "seed " << seed;
        EXPECT_NO_THROW(Real(text)) << "seed " << seed;
    }
}

TEST(ToDouble, ReadsTheDecimalNumberAtTheStart) {
    const struct {
        const char* text;
        double value;
    } cases[] = {
        {"", 0},
        {"0.5", 0.5},
        {".5", 0.5},
        {"5.", 5},
        {"-1.25e2", -125},
        {"+3.5", 3.5},
        {" \t\n3", 3},
        {"1e20", 1e20},
        {"1.5abc", 1.5},
        {"1e", 1},
        {"1e+", 1},
        {"1,5", 1},
        {"abc", 0},
        {".", 0},
        {"-", 0},
        {" -x", 0},
        {"-0", -0.0},
        {"+-5", 0},
        {"--5", 0},
        {"Yes", 0},
        {"0x10", 0},
        {"5000", 5000},
        {"4.9406564584124654e-324", DBL_TRUE_MIN},
        {"1.7976931348623157e308", DBL_MAX},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Real(c.text), c.value) << '"' << c.text << '"';
        EXPECT_EQ(std::signbit(Real(c.text)), std::signbit(c.value)) << '"' << c.text << '"';
    }
    EXPECT_EQ(Element("root").ToDouble("no.such"), 0.0);
}

TEST(ToDouble, SaturatesBeyondTheRange) {
    const std::string zeros(400, '0');
    EXPECT_EQ(Real("1e400"), Infinity);
    EXPECT_EQ(Real("-1e400"), -Infinity);
    EXPECT_EQ(Real("1" + zeros), Infinity);
    EXPECT_EQ(Real("0.001e999999999999999999999"), Infinity);
    EXPECT_EQ(Real("1e-400"), 0.0);
    EXPECT_TRUE(std::signbit(Real("-1e-400")));
    EXPECT_EQ(Real("0." + zeros + "1"), 0.0);
    EXPECT_EQ(Real("1" + zeros + "e-800"), 0.0);
    EXPECT_EQ(Real("0." + zeros + "1e800"), Infinity);
    EXPECT_EQ(Real("1" + zeros + "e-400"), 1.0);
    EXPECT_EQ(Real("9e-999999999999999999999"), 0.0);
}

TEST(ToDouble, UnderstandsInfinitiesAndNotANumber) {
    EXPECT_EQ(Real("inf"), Infinity);
    EXPECT_EQ(Real("-Infinity"), -Infinity);
    EXPECT_TRUE(std::isnan(Real("nan")));
}

TEST(ToDouble, ReadsEachDoubleBack) {
    std::mt19937_64 random(2);
    for (int i = 0; i < 5000; ++i) {
        const double value = std::ldexp(static_cast<double>(random()), static_cast<int>(random() % 1900) - 1100);
        char text[40];
        std::snprintf(text, sizeof text, "%.17g", value);
        EXPECT_EQ(Real(text), value) << text;
    }
}

TEST(ToDouble, KnowsOnePointInEveryLocale) {
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C.UTF-8"}) {
        const char* before = std::setlocale(LC_ALL, nullptr);
        const std::string kept = before;
        std::setlocale(LC_ALL, name);  // whether or not this machine has it, the result is the same
        EXPECT_EQ(Real("1.5"), 1.5) << name;
        EXPECT_EQ(Real("1,5"), 1.0) << name;
        std::setlocale(LC_ALL, kept.c_str());
    }
}

}  // namespace
}  // namespace KM::XML
