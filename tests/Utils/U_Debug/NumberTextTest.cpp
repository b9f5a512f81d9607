#include "Utils/U_Debug/NumberText.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>

#include "Support/CommaLocale.h"

namespace KM {
namespace {

using Test::CommaLocale;

std::string ByStream(double number) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << number;
    return text.str();
}

TEST(NumberText, IsWhatAStreamWrites) {
    for (const double number : {0.0, -0.0, 0.1, 0.6, 1.0, 1.0 / 3.0, 100000.0, 1e6, 1234567.0, 1e-5, 5e-324, -2.5,
                                1e300, std::numeric_limits<double>::max(), HUGE_VAL, -HUGE_VAL})
        EXPECT_EQ(NumberText(number), ByStream(number));
    std::mt19937_64 random(1);
    for (int i = 0; i < 20000; ++i)
        for (const double number :
             {std::bit_cast<double>(random()), static_cast<double>(random()) / 18446744073709551616.0})
            EXPECT_EQ(NumberText(number), ByStream(number));
}

TEST(NumberText, HasAPointInEveryLocale) {
    const CommaLocale comma;
    EXPECT_EQ(NumberText(1.5), "1.5");
}

}  // namespace
}  // namespace KM
