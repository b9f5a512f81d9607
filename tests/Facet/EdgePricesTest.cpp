#include "Facet/EdgePrices.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;

/// A queue for a mesh, and its prices.
struct Prices {
    explicit Prices(PIN theMesh) : mesh(std::move(theMesh)), queue(mesh.edges.size(), std::vector<double>{0.1, 1.0}) {}

    int Start(int e) const { return mesh.edges[e].P0; }
    int End(int e) const { return mesh.edges[mesh.edges[e].NE].P0; }
    bool Waits(int e) const {
        CollapseQueue rest = queue;
        for (int bucket = 0; bucket < rest.BucketCount(); ++bucket)
            for (int oldest = rest.Oldest(bucket); oldest != -1; oldest = rest.Oldest(bucket)) {
                if (oldest == e) return true;
                rest.Remove(oldest);
            }
        return false;
    }

    PIN mesh;
    CollapseQueue queue;
    EdgePrices prices{mesh, queue};
};

/// The squared distances of a place from the planes of all triangles at a node.
double DistancesFrom(const PIN& mesh, int node, const P& place) {
    double sum = 0.0;
    for (std::size_t e = 0; e < mesh.edges.size(); ++e) {
        if (mesh.edges[e].P0 != node) continue;
        const int next = mesh.edges[e].NE;
        const P& a = mesh.points[node];
        const P& b = mesh.points[mesh.edges[next].P0];
        const P& c = mesh.points[mesh.edges[mesh.edges[next].NE].P0];
        const P normal = SafeUnit(Cross(b - a, c - a));
        sum += Dot(normal, place - a) * Dot(normal, place - a);
    }
    return sum;
}

TEST(EdgePrices, AreSumsOfSquaredDistancesFromThePlanesOfTheNodeThatGoes) {
    const Prices bumpy(BumpySphere(3));
    for (int e = 0; e < static_cast<int>(bumpy.mesh.edges.size()); ++e) {
        const double expected = DistancesFrom(bumpy.mesh, bumpy.Start(e), bumpy.mesh.points[bumpy.End(e)]);
        EXPECT_NEAR(bumpy.queue.Cost(e), expected, 1e-8 * (1.0 + expected)) << "edge " << e;
    }
}

TEST(EdgePrices, LetTheCheaperOfAPairWait) {
    const Prices bumpy(BumpySphere(3));
    int waiting = 0;
    for (int e = 0; e < static_cast<int>(bumpy.mesh.edges.size()); ++e) {
        EXPECT_EQ(bumpy.Waits(e), bumpy.queue.Cost(bumpy.mesh.edges[e].TE) > bumpy.queue.Cost(e)) << "edge " << e;
        waiting += bumpy.Waits(e);
    }
    EXPECT_GT(waiting, 0);
}

TEST(EdgePrices, OfABoundaryEdgeAreTheMeanOfBothWays) {
    const Prices triangle(RightTriangle());
    for (int e = 0; e < 3; ++e) {
        EXPECT_TRUE(triangle.Waits(e));
        // From the square corner: the other leg's plane is a whole edge away, at a weight of 10000. From the far end: the
        // plane on the hypotenuse is half a diagonal away.
        const bool isLeg = triangle.Start(e) == 0 || triangle.End(e) == 0;
        EXPECT_NEAR(triangle.queue.Cost(e), isLeg ? 7500.0 : 10000.0, 1e-6);
        if (isLeg) {
            EXPECT_EQ(triangle.queue.KeepsStart(e), triangle.Start(e) == 0);
        }
    }
}

TEST(EdgePrices, OfAFlatPatchAreEqualBothWaysAndLetNeitherWait) {
    const Prices grid(Grid(4));
    int inner = 0;
    for (int e = 0; e < static_cast<int>(grid.mesh.edges.size()); ++e) {
        const int twin = grid.mesh.edges[e].TE;
        if (twin == -1 || grid.queue.Cost(e) != grid.queue.Cost(twin)) continue;
        ++inner;
        EXPECT_FALSE(grid.Waits(e)) << "edge " << e;
    }
    EXPECT_GT(inner, 0);
}

TEST(EdgePrices, AMergedNodeStandsForThePlanesOfBoth) {
    Prices bumpy(BumpySphere(3));
    const int e = 0;
    const int twin = bumpy.mesh.edges[e].TE;
    const int removed = static_cast<int>(bumpy.mesh.points.size()) - 1;
    const P& end = bumpy.mesh.points[bumpy.End(e)];
    const double own = DistancesFrom(bumpy.mesh, bumpy.Start(e), end);
    const double merged = own + DistancesFrom(bumpy.mesh, removed, end);
    const double back = bumpy.queue.Cost(twin);
    bumpy.prices.Merge(removed, bumpy.Start(e));
    bumpy.prices.Reprice(e, false);
    EXPECT_NEAR(bumpy.queue.Cost(e), merged, 1e-8 * merged);
    EXPECT_GT(merged, back);
    EXPECT_EQ(bumpy.queue.Cost(twin), back);
    EXPECT_TRUE(bumpy.Waits(twin));
    EXPECT_FALSE(bumpy.Waits(e));
}

TEST(EdgePrices, AForcedPriceIsThatOfTheTwinToo) {
    Prices bumpy(BumpySphere(3));
    const int e = 0;
    const int twin = bumpy.mesh.edges[e].TE;
    const int removed = static_cast<int>(bumpy.mesh.points.size()) - 1;
    const double before = bumpy.queue.Cost(twin);
    bumpy.prices.Merge(removed, bumpy.End(e));
    bumpy.prices.Reprice(e, false);
    EXPECT_EQ(bumpy.queue.Cost(twin), before);
    bumpy.prices.Reprice(e, true);
    EXPECT_GT(bumpy.queue.Cost(twin), before);
    EXPECT_TRUE(bumpy.Waits(e));
    EXPECT_FALSE(bumpy.Waits(twin));
}

}  // namespace
}  // namespace KM
