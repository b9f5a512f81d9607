#include "Output.h"

#include <gtest/gtest.h>

namespace KM::Tool {
namespace {

TEST(Format, WritesTextsOfAnyLength) {
    EXPECT_EQ(Format("%s", ""), "");
    EXPECT_EQ(Format("%d of %.3g", 3, 0.5), "3 of 0.5");
    EXPECT_EQ(Format("%5000s", "x").size(), 5000u);
}

TEST(Count, KnowsOneFromMany) {
    EXPECT_EQ(Count(0, "edge"), "0 edges");
    EXPECT_EQ(Count(1, "edge"), "1 edge");
    EXPECT_EQ(Count(3000000000, "edge"), "3000000000 edges");
}

TEST(Complain, IsOneLineWhateverTheText) {
    testing::internal::CaptureStderr();
    Complain("a\nb\x1b[31m");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "kmmesh: a?b?[31m\n");
}

TEST(Tell, IsSilentOnceQuiet) {
    testing::internal::CaptureStdout();
    Tell("told\n");
    BeQuiet();
    Tell("not told\n");
    Print("printed\n");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "told\nprinted\n");
}

}  // namespace
}  // namespace KM::Tool
