#include "Geometry/VertexTree.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "Support/HostilePoints.h"

namespace KM {
namespace {

using Test::HostilePoints;

TEST(VertexTree, FindsABlockerWhereThereIsOne) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        HostilePoints random(seed % 3);  // anywhere, on a lattice, and with near copies
        const int count = 1 + static_cast<int>(seed * 7 % 900);
        std::vector<TPoint<double>> points;
        std::vector<VertexTree::Vertex> vertices;
        for (int i = 0; i < count; ++i) {
            points.push_back(random());
            vertices.push_back({points[i].X, points[i].Y, i});
        }
        VertexTree tree(vertices, count + 1);
        tree.Remove(count);  // is not in it
        std::vector<char> isAlive(points.size(), 1);
        for (int i = 0; i < 200; ++i) {
            const int tip = random.Below(count);
            const auto& A = points[random.Below(count)];
            const auto& B = points[tip];
            const auto& C = points[random.Below(count)];
            const PlaneBox box = Union(Union(At(A), At(B)), At(C));
            const PlaneBox wide = {box.minX - 0.1, box.minY - 0.1, box.maxX + 0.1, box.maxY + 0.1};
            const EarRegion region(A, B, C);
            const auto blocks = [&](int v) {
                return v != tip && isAlive[v] && region.Contains(points[v].X, points[v].Y);
            };
            bool isBlocked = false;
            for (int v = 0; v < count; ++v) isBlocked = isBlocked || (wide.Meets(At(points[v])) && blocks(v));
            const int blocker = tree.FindBlocker({region, wide, tip});
            ASSERT_EQ(blocker != -1, isBlocked);
            ASSERT_TRUE(blocker == -1 || blocks(blocker));
            const int removed = random.Below(count);
            tree.Remove(removed);
            isAlive[removed] = 0;
        }
    }
}

TEST(VertexTree, CanBeEmpty) {
    const VertexTree tree({}, 0);
    const TPoint<double> p;
    EXPECT_EQ(tree.FindBlocker({EarRegion(p, p, p), {-1, -1, 1, 1}, 0}), -1);
}

}  // namespace
}  // namespace KM
