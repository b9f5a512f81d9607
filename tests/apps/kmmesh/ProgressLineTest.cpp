#include "ProgressLine.h"

#include <gtest/gtest.h>

namespace KM::Tool {
namespace {

TEST(ProgressLine, IsDrawnToScale) {
    EXPECT_EQ(ProgressLine::Drawn(0.0, "", 80), "[..............................]   0 %");
    EXPECT_EQ(ProgressLine::Drawn(0.5, "Reading", 80), "[###############...............]  50 %  Reading");
    EXPECT_EQ(ProgressLine::Drawn(1.0, "A.B", 80), "[##############################] 100 %  A.B");
}

TEST(ProgressLine, StaysWithinItsBoundsAndTheTerminal) {
    EXPECT_EQ(ProgressLine::Drawn(1.7, "", 80), ProgressLine::Drawn(1.0, "", 80));
    EXPECT_EQ(ProgressLine::Drawn(-1.0, "", 80), ProgressLine::Drawn(0.0, "", 80));
    for (int columns = 0; columns < 60; ++columns)
        EXPECT_LE(ProgressLine::Drawn(0.3, "Reading", columns).size(), std::max(columns - 1, 0) + 0u);
}

}  // namespace
}  // namespace KM::Tool
