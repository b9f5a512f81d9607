#include "Utils/U_Caching/Key.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <string>

#include "Support/Numbers.h"

namespace KM::Caching {
namespace {

using Test::Infinity;
using Test::NaN;
using Test::Numbers;
using Test::SameBits;

Key<6> KeyOf(double value) {
    Key<6> key;
    Mix(key, value);
    return key;
}

Key<6> KeyOf(std::string_view bytes) {
    Key<6> key;
    Mix(key, bytes);
    return key;
}

Key<6> Filled(double number) {
    Key<6> key;
    key.k.fill(number);
    return key;
}

bool AreSame(const Key<6>& a, const Key<6>& b) {
    bool same = SameBits(a.count, b.count);
    for (int j = 0; j < 6; ++j) same = same && SameBits(a.k[j], b.k[j]);
    return same;
}

TEST(Key, StartsAtTen) {
    const Key<6> key;
    EXPECT_EQ(key.count, 10.0);
    for (const double number : key.k) EXPECT_TRUE(SameBits(number, 0.0));
    EXPECT_EQ(KeyText(key), "000000");
}

TEST(Key, MixesAByteByItsLogarithm) {
    const Key<6> key = KeyOf("A");
    EXPECT_EQ(key.count, 11.0);
    for (int j = 0; j < 6; ++j) EXPECT_TRUE(SameBits(key.k[j], (j + 1) / std::log(65.0) / std::log(11.0)));
}

TEST(Key, Alternates) {
    const Key<6> one = KeyOf("A");
    const Key<6> two = KeyOf("AA");
    EXPECT_EQ(two.count, 12.0);
    for (int j = 0; j < 6; ++j) EXPECT_TRUE(SameBits(two.k[j], one.k[j] - (j + 1) / std::log(65.0) / std::log(12.0)));
}

TEST(Key, TakesBytesWithSign) {
    for (const int byte : {-128, -1, 0, 1, 2, 127}) {
        const char c = static_cast<char>(byte);
        const double v = byte < 1.1 ? 2.3456789 - byte : byte;
        EXPECT_TRUE(SameBits(KeyOf(std::string_view(&c, 1)).k[0], 1 / std::log(v) / std::log(11.0))) << byte;
    }
}

TEST(Key, TakesAllBytesOfAText) {
    const std::string text("a\0b\xff", 4);
    Key<6> key;
    for (const double byte : {97.0, 0.0, 98.0, -1.0}) Mix(key, byte);
    EXPECT_TRUE(AreSame(KeyOf(text), key));
    EXPECT_TRUE(AreSame(KeyOf(""), Key<6>()));
}

// The expected texts come from a few lines of Python, which know nothing of this code.
TEST(Key, OfNumbersIsWhatItAlwaysWas) {
    const struct {
        double value;
        const char* text;
    } known[] = {
        {0.0, "1gf1j3k5is1b4s7am136092gv78auan8gcm4"},          {-0.0, "1gf1j3k5is1b4s7am136092gv78auan8gcm4"},
        {5e-324, "1gf1j3k5is1b4s7am136092gv78auan8gcm4"},       {1.1, "d0w10iqv0cj9k9iz20do1l1jsb4jb12j4j1y"},
        {1.09999, "5nd1bhhne9zpog3unxv8tfc621j0e8u8l"},         {-3.5, "pb71xrjtb51x4roz61whzkn71vv7gb81v8fbz9"},
        {123456.78915, "3t8143dp8m1o52jux95nci5t7c74g1d911qr"}, {1e10, "1xvutbl961a7zdvr1pmn6ic606x5tleupse"},
        {-1e10, "1xvutbl951a7zdvq1pmn6ib606x5sleupsd"},         {1.0000001e10, "9og41uu4862s96c83po8ga4n3akc5kico"},
        {Infinity, "9og41uu4862s96c83po8ga4n3akc5kico"},        {-2e10, "9np1wqijiy1vl7saw1ufx12t1tam9uq1s5bimo"},
        {-Infinity, "9np1wqijiy1vl7saw1ufx12t1tam9uq1s5bimo"},  {NaN, "9mz1qh8ly91m7avxt1hxd5xe1dnffwy19dhpwj"},
        {-NaN, "9mz1qh8ly91m7avxt1hxd5xe1dnffwy19dhpwj"},
    };
    for (const auto& [value, text] : known) EXPECT_EQ(KeyText(KeyOf(value)), text) << value;
}

TEST(Key, OfTextsIsWhatItAlwaysWas) {
    EXPECT_EQ(KeyText(KeyOf("A")), "apf10zqwh81jhmcpu2ydqzdlg977z13y4ngl");
    EXPECT_EQ(KeyText(KeyOf("B")), "ao0oy90ka11fdiuf1dwi14k1qdmjep3tmzpr");
    EXPECT_EQ(KeyText(KeyOf("AA")), "dhu18ocinxvhyr0cibkzcr5577p61qzxi0p");
    EXPECT_EQ(KeyText(KeyOf("Bracket")), "9wp3rfig9155pany7iv0wj18x4t47baajcs");
    EXPECT_EQ(KeyText(KeyOf(std::string("\xff\x80\0 ", 4))), "1tfp0amas11ifxg61e0l8lk1qiqjqz3zrsx9");
    EXPECT_EQ(KeyText(KeyOf("The quick brown fox jumps over the lazy dog")), "18wtragvm94dobw1nikxr912vo57ji8rcns");
}

TEST(Key, MixesAKeyDividedByTheLogarithmOfTheCount) {
    const Key<6> other = KeyOf("other");
    const Key<6> before = KeyOf("A");
    Key<6> key = before;
    Mix(key, other);
    EXPECT_EQ(key.count, 12.0);
    for (int j = 0; j < 6; ++j) EXPECT_TRUE(SameBits(key.k[j], before.k[j] - other.k[j] / std::log(12.0)));
}

TEST(Key, MixesItself) {
    const Key<6> copy = KeyOf("Self");
    Key<6> key = copy;
    Mix(key, key);
    Key<6> expected = copy;
    Mix(expected, copy);
    EXPECT_TRUE(AreSame(key, expected));
    EXPECT_EQ(KeyText(key), "18zujdignaai8pf1p2r0xb14tvr63kl0hev");
}

TEST(Key, AlternatesBehindEveryInteger) {
    for (const double count : {2147483646.0, 2147483647.0, 4294967295.0, 9007199254740990.0}) {
        Key<6> key;
        key.count = count;
        Mix(key, 65.0);
        EXPECT_EQ(std::signbit(key.k[0]), std::fmod(count, 2.0) != 0.0) << count;
    }
}

TEST(Key, EndsForCountsThatCannotBeMeant) {
    for (const double count : {NaN, Infinity, -Infinity, -1e300, 1e300, -1.0, 0.0}) {
        Key<6> key;
        key.count = count;
        Mix(key, 65.0);
        Mix(key, Key<6>(key));
        EXPECT_LE(KeyText(key).size(), 38u);
    }
}

TEST(KeyText, CutsNumbersOffAndKeepsTheirLowBits) {
    EXPECT_EQ(KeyText(Filled(3.7)), "b0ixmhmv4xmhmv4xmhmv4xmhmv4xmhmv4");
    EXPECT_EQ(KeyText(Filled(-3.7)), KeyText(Filled(3.7)));
    EXPECT_EQ(KeyText(Filled(0.009589934591999999)), "10zgjdgxrgjdgxrgjdgxrgjdgxrgjdgxr");
    EXPECT_EQ(KeyText(Filled(858.993459)), "1z11z0zrnk1z0zrnk1z0zrnk1z0zrnk1z0zrnk");
    EXPECT_EQ(KeyText(Filled(858.9934592)), "000000");  // 2^32 and 200000 times 2^32
}

TEST(KeyText, HasTwoDigitsLowestFirst) {
    EXPECT_EQ(KeyText(Filled(7e-6)), "z4618g4618g4618g4618g4618g");
    EXPECT_EQ(KeyText(Filled(7.2e-6)).substr(0, 2), "01");
    EXPECT_EQ(KeyText(Filled(0.000259)).substr(0, 2), "zz");
    EXPECT_EQ(KeyText(Filled(0.0002592)).substr(0, 3), "100");
}

TEST(KeyText, IsDefinedForAllNumbers) {
    for (const double number : {1e300, Infinity, -Infinity, NaN}) EXPECT_EQ(KeyText(Filled(number)), "000000");
    // The product is 2^64 + 2^33 + 2^12; what is between the powers does not fit in a double.
    const Key<6> key = [] {
        Key<6> k;
        k.k[0] = (18446744073709551616.0 + 8589934592.0 + 4096.0) / 5000000.0;
        return k;
    }();
    EXPECT_EQ(KeyText(key), "35s00000");
}

TEST(KeyText, IsAtMostThirtyEightLong) {
    Numbers next(1);
    for (int i = 0; i < 20000; ++i) {
        Key<6> key;
        for (double& number : key.k) number = next.Hostile();
        const std::string text = KeyText(key);
        EXPECT_LE(text.size(), 38u);
        EXPECT_GE(text.size(), 6u);
        EXPECT_EQ(text.find_first_not_of("0123456789abcdefghijklmnopqrstuvwxyz"), std::string::npos);
    }
}

class Decoration : public testing::Test {
protected:
    ~Decoration() override {
        SetPrefixStr("");
        SetPostfixStr("");
        SetSeparatorStr("-");
    }
};

TEST_F(Decoration, StartsEmpty) {
    EXPECT_EQ(AskPrefixStr(), "");
    EXPECT_EQ(AskPostfixStr(), "");
    EXPECT_EQ(AskSeparatorStr(), "-");
}

TEST_F(Decoration, SurroundsTheDigits) {
    SetPrefixStr("v2_");
    SetPostfixStr("_x64");
    SetSeparatorStr("+");
    EXPECT_EQ(KeyText(Key<6>()), "v2_000000_x64");
    EXPECT_EQ(AskSeparatorStr(), "+");
}

}  // namespace
}  // namespace KM::Caching
