#include "ProgressLine.h"

#include <gtest/gtest.h>

namespace KM::Tool {
namespace {

std::string Filled(std::string line, std::size_t columns) {
    line.resize(columns, ' ');
    return line;
}

TEST(ProgressLine, IsDrawnToScale) {
    EXPECT_EQ(ProgressLine::Drawn(0.0, "", 79), Filled("[..............................]   0 %", 79));
    EXPECT_EQ(ProgressLine::Drawn(0.5, "Reading", 79), Filled("[###############...............]  50 %  Reading", 79));
    EXPECT_EQ(ProgressLine::Drawn(1.0, "A.B", 79), Filled("[##############################] 100 %  A.B", 79));
}

TEST(ProgressLine, StaysWithinItsBoundsAndTheTerminal) {
    EXPECT_EQ(ProgressLine::Drawn(1.7, "", 79), ProgressLine::Drawn(1.0, "", 79));
    EXPECT_EQ(ProgressLine::Drawn(-1.0, "", 79), ProgressLine::Drawn(0.0, "", 79));
    for (std::size_t columns = 0; columns < 60; ++columns)
        EXPECT_EQ(ProgressLine::Drawn(0.3, "Reading", static_cast<int>(columns)).size(), columns);
}

}  // namespace
}  // namespace KM::Tool
