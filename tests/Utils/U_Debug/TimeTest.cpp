#include "Utils/U_Debug/Time.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <string>

#include "Support/Pattern.h"
#include "Utils/U_Debug/TimeText.h"

namespace KM {
namespace {

/// Local time counted from Greenwich, for its life time.
class Greenwich {
public:
    Greenwich() { Zone("UTC0"); }
    Greenwich(const Greenwich&) = delete;
    Greenwich& operator=(const Greenwich&) = delete;
    ~Greenwich() {
        unsetenv("TZ");
        tzset();
    }
    static void Zone(const char* zone) {
        setenv("TZ", zone, 1);
        tzset();
    }
};

constexpr long long SeventhOfMarch = 1583571909LL * 1000;  // 2020-03-07 09:05:09 in Greenwich

TEST(Time, GetCountsSecondsInMilliseconds) {
    using namespace std::chrono;
    const auto now = [] { return duration<double>(system_clock::now().time_since_epoch()).count(); };
    const double before = now();
    const double time = Time::Get();
    EXPECT_GE(time, before - 0.0011);
    EXPECT_LE(time, now());
    const double milliseconds = time * 1000;
    EXPECT_NEAR(milliseconds, std::round(milliseconds), 1e-2);
}

TEST(Time, SleepTakesItsTime) {
    const double before = Time::Get();
    Time::Sleep(20);
    EXPECT_GE(Time::Get() - before, 0.018);
    Time::Sleep(0);
}

TEST(Time, TextsOfAMoment) {
    const Greenwich here;
    const auto text = [](bool tagged, bool withMilliseconds, int milliseconds = 0) {
        return Time::TextOf(SeventhOfMarch + milliseconds, tagged, withMilliseconds, "", "");
    };
    EXPECT_EQ(text(true, false), "Y2020M03D07H09M05S09");
    EXPECT_EQ(text(true, true, 7), "Y2020M03D07H09M05S09MS007");
    EXPECT_EQ(text(true, true, 999), "Y2020M03D07H09M05S09MS999");
    EXPECT_EQ(text(false, false), "2020/03/0709:05:09");
    EXPECT_EQ(text(false, true, 7), "2020/03/0709:05:09");
    EXPECT_EQ(Time::TextOf(SeventhOfMarch, true, true, "<", ">"), "<Y2020M03D07H09M05S09MS000>");
    EXPECT_EQ(Time::TextOf(SeventhOfMarch, false, false, "<", ">"), "<2020/03/0709:05:09>");
}

TEST(Time, TextsAreInLocalTime) {
    const Greenwich here;
    Greenwich::Zone("XYZ-5:30");
    EXPECT_EQ(Time::TextOf(SeventhOfMarch, false, false, "", ""), "2020/03/0714:35:09");
}

TEST(Time, TextsOfTheEnds) {
    const Greenwich here;
    EXPECT_EQ(Time::TextOf(0, true, false, "", ""), "Y1970M01D01H00M00S00");
    EXPECT_EQ(Time::TextOf(1609459199LL * 1000, false, false, "", ""), "2020/12/3123:59:59");
    EXPECT_EQ(Time::TextOf(253402300800LL * 1000, true, false, "", ""), "Y10000M01D01H00M00S00");
}

TEST(Time, TextOfNow) {
    const std::string form = "aY[0-9]{4}M[01][0-9]D[0-3][0-9]H[0-2][0-9]M[0-5][0-9]S[0-6][0-9]MS[0-9]{3}b";
    EXPECT_TRUE(KM::Test::Matches(Time::ToString(true, true, "a", "b"), form));
    const std::string plain = "[0-9]{4}/[01][0-9]/[0-3][0-9][0-2][0-9]:[0-5][0-9]:[0-6][0-9]";
    EXPECT_TRUE(KM::Test::Matches(Time::ToString(false, true, "", ""), plain));
}

}  // namespace
}  // namespace KM
