#include "Utils/U_App/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <locale>
#include <random>
#include <sstream>

namespace KM {
namespace {

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
    std::mt19937 random(1);
    for (int i = 0; i < 1000; ++i) {
        const double number = static_cast<double>(random()) / 4294967296.0;
        EXPECT_EQ(NumberText(number), ByStream(number));
    }
}

}  // namespace
}  // namespace KM
