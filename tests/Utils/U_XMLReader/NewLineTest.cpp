#include "Utils/U_XMLReader/NewLine.h"

#include <gtest/gtest.h>

#include <climits>

namespace KM::XML {
namespace {

TEST(NewLine, Indents) {
    EXPECT_EQ(NewLine(0, "  "), "\n");
    EXPECT_EQ(NewLine(3, "ab"), "\nababab");
    EXPECT_EQ(NewLine(3, ""), "\n");
    EXPECT_EQ(NewLine(1000, "\t").size(), 1001u);
}

TEST(NewLine, WildDepthsAreBounded) {
    EXPECT_EQ(NewLine(-1, "  "), "\n");
    EXPECT_EQ(NewLine(INT_MIN, "  "), "\n");
    EXPECT_EQ(NewLine(1001, "\t").size(), 1001u);
    EXPECT_EQ(NewLine(INT_MAX, "\t").size(), 1001u);
}

}  // namespace
}  // namespace KM::XML
