#include "Distances.h"

#include <gtest/gtest.h>

#include "Failure.h"

namespace KM::Tool {
namespace {

using Doubles = std::vector<double>;

TEST(DistancesOf, ReadsLengthsAndShares) {
    EXPECT_EQ(DistancesOf("0", 8.0), Doubles{0.0});
    EXPECT_EQ(DistancesOf("0.25, 1e-3", 8.0), (Doubles{0.001, 0.25}));
    EXPECT_EQ(DistancesOf("50% 25%,1", 8.0), (Doubles{1.0, 2.0, 4.0}));
    EXPECT_EQ(DistancesOf(" ,, 3 ,", 8.0), Doubles{3.0});
}

TEST(DistancesOf, RefusesAllElse) {
    for (const char* text :
         {"", " , ", "x", "1x", "%", "-1", "-1%", "nan", "inf", "1e999", "0x10", "1 %", "1,5;2", "+1"}) {
        SCOPED_TRACE(text);
        EXPECT_THROW(DistancesOf(text, 1.0), Failure);
        EXPECT_NE(FaultOfDistances(text), "");
    }
    EXPECT_EQ(FaultOfDistances("1,2%"), "");
    EXPECT_EQ(FaultOfDistances("1,x"),
              "\"x\": is neither a length, such as 0.05, nor a share of the diagonal, such as 0.1%");
}

TEST(LengthOf, IsOneThatIsGreaterThanZero) {
    EXPECT_EQ(LengthOf("0.25", 8.0), 0.25);
    EXPECT_EQ(LengthOf(" 25% ", 8.0), 2.0);
    EXPECT_EQ(LengthOf("50%", 0.0), 0.0);
    for (const char* text : {"0", "0%", "1,2", "", "x", "-1", "nan"}) {
        SCOPED_TRACE(text);
        EXPECT_THROW(LengthOf(text, 1.0), Failure);
    }
    EXPECT_EQ(FaultOfLength("1e-9"), "");
    EXPECT_EQ(FaultOfLength("0.0"), "\"0.0\": is not greater than 0");
    EXPECT_EQ(FaultOfLength("1 2"), "\"1 2\": is more than one length");
}

}  // namespace
}  // namespace KM::Tool
