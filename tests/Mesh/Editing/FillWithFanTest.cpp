#include "Mesh/Editing/FillWithFan.h"

#include <gtest/gtest.h>

#include "Mesh/Core/Construction.h"
#include "Mesh/Editing/PlainEdits.h"
#include "Support/MeshChecks.h"

namespace KM {
using namespace Test;

namespace {

using Edges = std::vector<Edge>;
using Indices = std::vector<int>;

/// A loop through the nodes 0 .. n - 1.
PIN Polygon(int n) {
    PIN mesh;
    mesh.points.resize(static_cast<std::size_t>(n));
    Indices nodes;
    for (int i = 0; i < n; ++i) nodes.push_back(i);
    mesh.p2e = AddPolygon(mesh, nodes, Indices(nodes.size(), -1));
    return mesh;
}

TEST(FillWithFan, LeavesATriangleAsItIs) {
    PIN mesh = Polygon(3);
    FillWithFan(mesh, {0, 1, 2});
    EXPECT_TRUE(SameRecords(mesh, Polygon(3)));
}

TEST(FillWithFan, AppendsAPairForEachChord) {
    PIN mesh = Polygon(5);
    FillWithFan(mesh, {1, 2, 3, 4, 0});
    EXPECT_EQ(
        mesh.edges,
        (Edges{
            {8, -1, 0}, {2, -1, 1}, {5, -1, 2}, {7, -1, 3}, {0, -1, 4}, {1, 6, 3}, {3, 5, 1}, {6, 8, 4}, {4, 7, 1}}));
    ExpectCompact(mesh);
}

TEST(FillWithFan, IsLikeThePlainFormForEachLength) {
    for (int n = 3; n < 20; ++n) {
        PIN mesh = Polygon(n), plain = mesh;
        const Indices loop = mesh.p2e;
        FillWithFan(mesh, loop);
        Plain::FillRing(plain, loop);
        EXPECT_EQ(mesh.edges, plain.edges) << n;
        EXPECT_EQ(TrianglesOf(mesh).size(), static_cast<std::size_t>(n - 2));
        ExpectCompact(mesh);
    }
}

}  // namespace
}  // namespace KM
