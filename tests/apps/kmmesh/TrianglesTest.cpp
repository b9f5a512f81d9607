#include "Triangles.h"

#include <gtest/gtest.h>

#include <array>

#include "Support/Meshes.h"

namespace KM::Tool {
namespace {

using Triangles = std::vector<std::array<int, 3>>;

Triangles TrianglesOf(const PIN& mesh) {
    Triangles triangles;
    ForEachTriangle(mesh, [&](int a, int b, int c) { triangles.push_back({a, b, c}); });
    return triangles;
}

TEST(ForEachTriangle, VisitsEachOnceInOrder) {
    EXPECT_TRUE(TrianglesOf(PIN()).empty());
    EXPECT_EQ(TrianglesOf(KM::Test::UnitSquare()), (Triangles{{0, 1, 3}, {1, 2, 3}}));
    EXPECT_EQ(TrianglesOf(KM::Test::Sphere(5)).size(), 200u);
}

TEST(ForEachTriangle, TakesLongerLoopsForFansAndPassesOverTheDead) {
    PIN loop = KM::Test::OneLoop({{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
    EXPECT_EQ(TrianglesOf(loop), (Triangles{{0, 1, 2}, {0, 2, 3}}));
    for (Edge& edge : loop.edges) edge = Edge();
    EXPECT_TRUE(TrianglesOf(loop).empty());
}

}  // namespace
}  // namespace KM::Tool
