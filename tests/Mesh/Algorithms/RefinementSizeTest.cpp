#include "Mesh/Algorithms/RefinementSize.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Mesh/Algorithms/Refinement.h"
#include "Mesh/Algorithms/RefinementRounds.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;

RefinementSize SizeOf(PIN mesh, double maxLength) {
    return SizeOfRefinement(mesh, RefinementRounds(mesh, maxLength).Queue(), maxLength);
}

TEST(SizeOfRefinement, CountsAreas) {
    const double height = std::sqrt(3.0) / 2.0;
    const PIN equilateral = OneLoop({P(0, 0, 0), P(10, 0, 0), P(5, 10 * height, 0)});
    const RefinementSize size = SizeOf(equilateral, 1.0);
    EXPECT_NEAR(size.leastTriangles, 99.0, 1e-9);
    EXPECT_EQ(size.halvings, 4.0);
}

TEST(SizeOfRefinement, CountsLengths) {
    const RefinementSize size = SizeOf(OneLoop({P(0, 0, 0), P(10, 0, 0), P(16, 0, 0)}), 1.0);
    EXPECT_NEAR(size.leastTriangles, 9.0 + 5.0 + 15.0, 1e-9);
    EXPECT_EQ(size.halvings, 4.0);
}

TEST(SizeOfRefinement, IsBeyondNumbersWithoutALength) {
    EXPECT_FALSE(SizeOf(RightTriangle(), 0.0).leastTriangles <= 1e300);
    EXPECT_FALSE(SizeOf(RightTriangle(), 1e-300).leastTriangles <= 1e300);
}

TEST(SizeOfRefinement, IsNeverMoreThanComes) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        Numbers next(seed);
        PIN mesh = Grid(2);
        for (P& p : mesh.points) p = next.PointBetween(-1.0, 1.0) * (seed % 3 == 0 ? 10.0 : 1.0);
        if (seed % 2 == 0)
            for (P& p : mesh.points) p.Y *= 1e-3;
        const double limit = next.Between(0.1, 2.0);
        const double least = SizeOf(mesh, limit).leastTriangles;
        const std::size_t before = mesh.edges.size();
        Refine(mesh, limit);
        const double added = static_cast<double>(mesh.edges.size() - before) / 3.0;
        ASSERT_LE(least, added * (1.0 + 1e-9)) << seed;
        if (least > 500.0) {
            EXPECT_LT(added, 12.0 * least) << seed;
        }
    }
}

}  // namespace
}  // namespace KM
