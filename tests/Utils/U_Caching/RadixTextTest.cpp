#include "Utils/U_Caching/RadixText.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace KM::Caching {
namespace {

TEST(RadixText, WritesDigits) {
    EXPECT_EQ(RadixText(0, 36), "0");
    EXPECT_EQ(RadixText(35, 36), "z");
    EXPECT_EQ(RadixText(1296, 36), "100");
    EXPECT_EQ(RadixText(4294967295u, 36), "1z141z3");
    EXPECT_EQ(RadixText(4294967295u, 2), std::string(32, '1'));
    EXPECT_EQ(RadixText(123456, 10), "123456");
}

TEST(RadixText, WritesTwoDigitsLowestFirst) {
    EXPECT_EQ(RadixText(36, 36), "01");
    EXPECT_EQ(RadixText(35 * 36 + 1, 36), "1z");
    EXPECT_EQ(RadixText(12, 10), "21");
    EXPECT_EQ(RadixText(2, 2), "01");
}

TEST(RadixText, IsReadBackInEachBase) {
    std::mt19937 random(1);
    for (std::uint32_t radix = 2; radix <= 36; ++radix)
        for (int i = 0; i < 200; ++i) {
            const std::uint32_t value = static_cast<std::uint32_t>(random()) >> (i % 32);
            std::string text = RadixText(value, radix);
            if (text.size() == 2) std::swap(text[0], text[1]);
            EXPECT_EQ(std::strtoul(text.c_str(), nullptr, static_cast<int>(radix)), value) << text << " " << radix;
        }
}

TEST(RadixText, WritesNothingInOtherBases) {
    for (const std::uint32_t radix : {0u, 1u, 37u, 4294967295u}) EXPECT_EQ(RadixText(7, radix), "");
}

}  // namespace
}  // namespace KM::Caching
