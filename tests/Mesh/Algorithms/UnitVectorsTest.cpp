#include "Mesh/Algorithms/UnitVectors.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "Support/Numbers.h"

namespace KM {
namespace {

using Test::SameBits;
using P = TPoint<double>;

constexpr double Infinity = std::numeric_limits<double>::infinity();

VectorBlock BlockOf(const std::vector<P>& vectors) {
    VectorBlock block{};
    for (std::size_t k = 0; k < vectors.size(); ++k) block.Set(k, vectors[k]);
    return block;
}

TEST(MakeSafeUnits, IsSafeUnitToTheBit) {
    const std::vector<P> vectors{P(3, 4, 0),        P(0, 0, 0),      P(-0.0, 0, -0.0),     P(1e-13, 0, 0),
                                 P(1e-200, 1, 0),   P(1e200, 1, 2),  P(1, 1, 1),           P(0, -7, 1e-9),
                                 P(Infinity, 0, 0), P(5e-324, 0, 0), P(0, std::nan(""), 1)};
    VectorBlock block = BlockOf(vectors);
    MakeSafeUnits(block, vectors.size());
    for (std::size_t k = 0; k < vectors.size(); ++k) EXPECT_TRUE(SameBits(block.Get(k), SafeUnit(vectors[k]))) << k;
}

TEST(MakeSafeUnits, FillsAWholeBlock) {
    std::vector<P> vectors;
    for (std::size_t k = 0; k < VectorBlock::Size; ++k) {
        const double i = static_cast<double>(k);
        vectors.push_back(P(0.1 * i - 2.0, 1.0 / (1.0 + i), i * i));
    }
    VectorBlock block = BlockOf(vectors);
    MakeSafeUnits(block, vectors.size());
    for (std::size_t k = 0; k < vectors.size(); ++k) EXPECT_TRUE(SameBits(block.Get(k), SafeUnit(vectors[k]))) << k;
}

TEST(UnitVectors, TouchNoMoreThanTheyAreToldTo) {
    const P rest(7, 8, 9);
    const double numbers[] = {2.0, 4.0};
    VectorBlock block = BlockOf({P(2, 4, 6), P(8, 0, -4), rest});
    Divide(block, numbers, 2);
    EXPECT_TRUE(SameBits(block.Get(0), P(1, 2, 3)));
    EXPECT_TRUE(SameBits(block.Get(1), P(2, 0, -1)));
    Multiply(block, numbers, 1);
    EXPECT_TRUE(SameBits(block.Get(0), P(2, 4, 6)));
    EXPECT_TRUE(SameBits(block.Get(1), P(2, 0, -1)));
    MakeSafeUnits(block, 2);
    EXPECT_TRUE(SameBits(block.Get(2), rest));
}

}  // namespace
}  // namespace KM
