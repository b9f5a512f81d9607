#include "Mesh/Core/Pin.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "Mesh/Core/PinVisitor.h"

namespace KM {
namespace {

TEST(TPoint, IsThreeCoordinatesAndNothingElse) {
    static_assert(sizeof(TPoint<double>) == 24 && sizeof(TPoint<float>) == 12);
    static_assert(offsetof(TPoint<double>, X) == 0 && offsetof(TPoint<double>, Y) == 8 &&
                  offsetof(TPoint<double>, Z) == 16);
    static_assert(std::is_trivially_copyable_v<TPoint<double>>);
    EXPECT_EQ(TPoint<double>(), TPoint<double>(0, 0, 0));
}

TEST(Edge, IsThreeIntegersThatAreNoIndexAtFirst) {
    static_assert(offsetof(Edge, NE) == 0 && offsetof(Edge, TE) == 4 && offsetof(Edge, P0) == 8);
    EXPECT_EQ(Edge(), (Edge{-1, -1, -1}));
}

TEST(Pin, IsThreeVectors) {
    static_assert(sizeof(PIN) == 3 * sizeof(std::vector<int>) && sizeof(SPIN) == sizeof(PIN));
    const PIN empty;
    EXPECT_TRUE(empty.points.empty() && empty.edges.empty() && empty.p2e.empty());
}

TEST(Pin, CopiesItsVectors) {
    PIN a;
    a.points.push_back({1, 2, 3});
    PIN b = a;
    b.points[0].X = 7;
    EXPECT_EQ(a.points[0].X, 1);
}

TEST(PinManipulationVisitor, PlainOneTakesAllReports) {
    TPinManipulationVisitor<TPoint<float>> nobody;
    nobody.CreateNode(0);
    nobody.CreateEdge(0);
    nobody.PopEdge(Edge());
    nobody.MoveEdge(Edge(), 0, 1);
    nobody.MoveNode(TPoint<float>(), 0, 1);
    nobody.MergeNodes(0, 1);
    nobody.SetTE(0, 1, 2);
    nobody.SetNE(0, 1, 2);
    nobody.SetP0(0, 1, 2);
    nobody.Invalidate(Edge(), 0);
    static_assert(std::is_copy_constructible_v<TPinManipulationVisitor<TPoint<double>>>);
}

}  // namespace
}  // namespace KM
