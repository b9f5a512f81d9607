#include "Comparison.h"

#include <gtest/gtest.h>

#include "Support/Meshes.h"

namespace KM::Tool {
namespace {

TEST(Comparison, HasAColumnForEachReport) {
    EXPECT_EQ(Comparison({{"before", Measure(KM::Test::RightTriangle())}, {"after", Measure(KM::Test::Cube())}}),
              "                          before           after\n"
              "  nodes                        3               8\n"
              "  triangles                    1              12\n"
              "  boundaries                   1               0\n"
              "  boundary edges               3               0\n"
              "  solids                       1               1\n"
              "  closed solids                0               1\n"
              "  inside out                   0               0\n"
              "  non-manifold                 0               0\n"
              "  degenerate                   0               0\n"
              "  area                       0.5               6\n"
              "  volume                    open               1\n");
}

}  // namespace
}  // namespace KM::Tool
