#include "Utils/U_App/Arguments.h"

#include <gtest/gtest.h>

namespace KM::Application {
namespace {

TEST(Arguments, AreNoneUntilAToolHandsThemOver) { EXPECT_TRUE(Arguments().empty()); }

TEST(Arguments, AreOneListForTheProcess) {
    Arguments() = {"tool", "a.xml"};
    EXPECT_EQ(Arguments(), (std::vector<std::string>{"tool", "a.xml"}));
    Arguments().clear();
}

TEST(RedirectionShifting, IsZeroUntilAFileIsRead) {
    EXPECT_EQ(RedirectionShifting(), 0);
    RedirectionShifting(3);
    EXPECT_EQ(RedirectionShifting(), 3);
    RedirectionShifting(0);
}

}  // namespace
}  // namespace KM::Application
