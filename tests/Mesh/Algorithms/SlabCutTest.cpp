#include "Mesh/Algorithms/SlabCut.h"

#include <gtest/gtest.h>

#include "Support/Numbers.h"

namespace KM {
namespace {

using namespace Test;

using P = TPoint<double>;
using Outline = std::vector<P>;

Outline Cut(const AscendingCorners& triangle, double lo, double hi) {
    Outline polygon{P(9, 9, 9)};  // it goes
    CutToSlab(&P::X, triangle, {lo, hi}, polygon);
    return polygon;
}

AscendingCorners Sorted(Axis axis, const AscendingCorners& corners) {
    std::vector<double> nine;
    for (const P& p : corners) nine.insert(nine.end(), {p.X, p.Y, p.Z});
    return SortedAlong(axis, nine.data());
}

//        B          in X and Y; C lies beyond the middle, so that levels cut AB and BC in turn
//      /   \        .
//    A ------- C
const AscendingCorners Roof{P(0, 0, 0), P(4, 4, 8), P(8, 0, 16)};

TEST(SlabCut, SortsAlongItsAxisAndKeepsTheOrderOfEquals) {
    const P one(1, 5, 0), two(2, 5, 1), three(3, 4, 1);
    const struct {
        Axis axis;
        AscendingCorners corners, sorted;
    } cases[] = {{&P::X, {three, two, one}, {one, two, three}}, {&P::X, {two, three, one}, {one, two, three}},
                 {&P::Y, {one, two, three}, {three, one, two}}, {&P::Y, {two, three, one}, {three, two, one}},
                 {&P::Z, {three, two, one}, {one, three, two}}, {&P::Z, {two, one, three}, {one, two, three}},
                 {&P::X, {one, three, two}, {one, two, three}}, {&P::X, {three, one, two}, {one, two, three}},
                 {&P::Z, {one, three, two}, {one, three, two}}};
    for (const auto& c : cases) {
        EXPECT_EQ(Sorted(c.axis, c.corners), c.sorted);
    }
}

TEST(SlabCut, KeepsTheLowerEnd) {
    EXPECT_EQ(Cut(Roof, -1, 2), (Outline{{2, 0, 4}, {2, 2, 4}, {0, 0, 0}, {2, 0, 4}}));
    EXPECT_EQ(Cut(Roof, 0, 6), (Outline{{6, 0, 12}, {6, 2, 12}, {4, 4, 8}, {0, 0, 0}, {6, 0, 12}}));
    // The level of the middle corner belongs to the lower side.
    EXPECT_EQ(Cut(Roof, 0, 4), (Outline{{4, 0, 8}, {4, 4, 8}, {0, 0, 0}, {4, 0, 8}}));
}

TEST(SlabCut, KeepsTheUpperEnd) {
    EXPECT_EQ(Cut(Roof, 6, 9), (Outline{{6, 0, 12}, {8, 0, 16}, {6, 2, 12}, {6, 0, 12}}));
    EXPECT_EQ(Cut(Roof, 2, 9), (Outline{{2, 0, 4}, {8, 0, 16}, {4, 4, 8}, {2, 2, 4}, {2, 0, 4}}));
    EXPECT_EQ(Cut(Roof, 4, 9), (Outline{{4, 0, 8}, {8, 0, 16}, {4, 4, 8}, {4, 4, 8}, {4, 0, 8}}));
}

TEST(SlabCut, KeepsTheMiddle) {
    EXPECT_EQ(Cut(Roof, 1, 2), (Outline{{1, 0, 2}, {2, 0, 4}, {2, 2, 4}, {1, 1, 2}, {1, 0, 2}}));
    EXPECT_EQ(Cut(Roof, 2, 6), (Outline{{2, 0, 4}, {6, 0, 12}, {6, 2, 12}, {4, 4, 8}, {2, 2, 4}, {2, 0, 4}}));
    EXPECT_EQ(Cut(Roof, 5, 6), (Outline{{5, 0, 10}, {6, 0, 12}, {6, 2, 12}, {5, 3, 10}, {5, 0, 10}}));
    // A corner on a limit is met by the side alone.
    EXPECT_EQ(Cut(Roof, 4, 6), (Outline{{4, 0, 8}, {6, 0, 12}, {6, 2, 12}, {4, 4, 8}, {4, 0, 8}}));
    // The upper limit through the far corner: both sides end there, and the first and the last point differ all the same.
    EXPECT_EQ(Cut(Roof, 6, 8), (Outline{{6, 0, 12}, {8, 0, 16}, {8, 0, 16}, {6, 2, 12}, {6, 0, 12}}));
}

TEST(SlabCut, TouchedByACornerHasNoArea) {
    EXPECT_EQ(Cut(Roof, 8, 9), (Outline{{8, 0, 16}, {8, 0, 16}, {8, 0, 16}}));  // closed already
    EXPECT_EQ(Cut(Roof, -1, 0), Outline{});                                     // the lowest corner is no crossing
}

TEST(SlabCut, FirstPointThatIsTheLastIsNotDoubled) {
    const AscendingCorners flat{P(0, 0, 0), P(2, 0, 0), P(4, 0, 0)};
    EXPECT_EQ(Cut(flat, 1, 3), (Outline{{1, 0, 0}, {3, 0, 0}, {3, 0, 0}, {2, 0, 0}, {1, 0, 0}}));
}

TEST(SlabCut, ServesEachAxis) {
    Outline polygon;
    CutToSlab(&P::Z, Roof, {-1, 4}, polygon);
    EXPECT_EQ(polygon, (Outline{{2, 0, 4}, {2, 2, 4}, {0, 0, 0}, {2, 0, 4}}));
}

TEST(SlabCut, TakesAnyNumbers) {
    for (unsigned seed = 0; seed < 20000; ++seed) {
        Numbers next(seed);
        const AscendingCorners t = Sorted(&P::Y, {next.HostilePoint(), next.HostilePoint(), next.HostilePoint()});
        const double lo = next.Hostile();
        const double hi = next.Hostile();
        Outline polygon;
        CutToSlab(&P::Y, t, {lo, hi}, polygon);
        ASSERT_LE(polygon.size(), 6u) << "seed " << seed;
    }
}

}  // namespace
}  // namespace KM
