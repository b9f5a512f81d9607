#include "Facet/EdgeCollapse.h"

#include <gtest/gtest.h>

#include "Facet/PlainLevels.h"
#include "Support/MeshChecks.h"

namespace KM {
namespace {

using namespace KM::Test;

PIN Linked(std::vector<Edge> edges) {
    PIN mesh;
    mesh.points.resize(10);
    mesh.edges = std::move(edges);
    return mesh;
}

CollapsedEdge Collapse(PIN& mesh, int edge, bool keepsStart = false) {
    CollapseQueue queue(mesh.edges.size(), std::vector<double>{1.0});
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e)
        if (mesh.edges[e].NE != -1) queue.Move(e, 0.0);
    const CollapsedEdge result = CollapseEdge(mesh, queue, edge, keepsStart);
    for (int e = queue.Oldest(0); e != -1; e = queue.Oldest(0)) {
        EXPECT_NE(mesh.edges[e].NE, -1) << "a dead edge waits";
        queue.Remove(e);
    }
    return result;
}

bool IsDead(const PIN& mesh, int e) { return mesh.edges[e].NE == -1 && mesh.edges[e].P0 == -1; }

// Two triangles on 0-1, with a neighbour on each of the four other sides.
PIN Diamond() {
    return PlainFacetMesh({std::vector<TPoint<double>>(8), {0, 1, 2, 1, 0, 3, 2, 1, 4, 0, 2, 5, 3, 0, 6, 1, 3, 7}});
}

TEST(CollapseEdge, JoinsTheTwinsOfBothTriangles) {
    PIN mesh = Diamond();
    const int o1 = mesh.edges[1].TE, o2 = mesh.edges[2].TE, p1 = mesh.edges[4].TE, p2 = mesh.edges[5].TE;
    const CollapsedEdge result = Collapse(mesh, 0);
    EXPECT_EQ(mesh.edges[o1].TE, o2);
    EXPECT_EQ(mesh.edges[o2].TE, o1);
    EXPECT_EQ(mesh.edges[p1].TE, p2);
    EXPECT_EQ(mesh.edges[p2].TE, p1);
    for (int e = 0; e < 6; ++e) EXPECT_TRUE(IsDead(mesh, e));
    EXPECT_EQ(mesh.edges[0].TE, 3);  // dead records keep their twin
    EXPECT_EQ(result.survivor, 1);
    EXPECT_EQ(result.anchor, p2);
    EXPECT_EQ(result.sectorFirst, p2);
    EXPECT_EQ(result.sectorLast, mesh.edges[mesh.edges[mesh.edges[o2].NE].NE].TE);
}

TEST(CollapseEdge, OnTheBoundaryKeepsEitherEnd) {
    for (const bool keepsStart : {false, true}) {
        PIN mesh = PlainFacetMesh({std::vector<TPoint<double>>(5), {0, 1, 2, 2, 1, 3, 0, 2, 4}});
        const CollapsedEdge result = Collapse(mesh, 0, keepsStart);
        EXPECT_EQ(mesh.edges[3].TE, 6);
        EXPECT_EQ(mesh.edges[6].TE, 3);
        EXPECT_EQ(result.survivor, keepsStart ? 0 : 1);
        EXPECT_EQ(result.anchor, 6);
        EXPECT_EQ(result.sectorFirst, keepsStart ? 6 : -1);
        EXPECT_EQ(result.sectorLast, -1);
    }
}

TEST(CollapseEdge, OfALoneTriangleLeavesNothing) {
    PIN mesh = RightTriangle();
    EXPECT_EQ(Collapse(mesh, 0).anchor, -1);
    for (int e = 0; e < 3; ++e) EXPECT_TRUE(IsDead(mesh, e));
}

TEST(CollapseEdge, OfAPillowLeavesNothing) {
    PIN mesh = PlainFacetMesh({std::vector<TPoint<double>>(3), {0, 1, 2, 1, 0, 2}});
    EXPECT_EQ(Collapse(mesh, 0).anchor, -1);
    for (int e = 0; e < 6; ++e) EXPECT_TRUE(IsDead(mesh, e));
}

TEST(CollapseEdge, WithTwoTrianglesRoundTheStartJoinsTheOuterSides) {
    // (0,1,2) and (0,2,1) share 0-1 and 0-2. By numbers their third sides would pair too; instead, each has a
    // neighbour.
    PIN mesh = PlainFacetMesh({std::vector<TPoint<double>>(5), {0, 1, 2, 0, 2, 1, 2, 1, 3, 1, 2, 4}});
    mesh.edges[1].TE = 6;
    mesh.edges[6].TE = 1;
    mesh.edges[4].TE = 9;
    mesh.edges[9].TE = 4;
    const CollapsedEdge result = Collapse(mesh, 0);
    EXPECT_EQ(mesh.edges[6].TE, 9);
    EXPECT_EQ(mesh.edges[9].TE, 6);
    EXPECT_EQ(result.survivor, 1);
    EXPECT_EQ(result.anchor, 9);
    EXPECT_EQ(result.sectorFirst, -1);
    EXPECT_EQ(result.sectorLast, -1);
}

TEST(CollapseEdge, OfAFoldedTriangleOrphansWhatIsBehind) {
    // Edge 0 and its previous edge are twins; the third side has a neighbour.
    PIN mesh = Linked({{1, 2, 0}, {2, 3, 1}, {0, 0, 1}, {4, 1, 1}, {5, -1, 1}, {3, -1, 2}});
    const CollapsedEdge result = Collapse(mesh, 0);
    EXPECT_EQ(mesh.edges[3].TE, -1);
    EXPECT_EQ(result.anchor, 3);
    EXPECT_EQ(result.sectorFirst, -1);
    EXPECT_EQ(result.sectorLast, -1);
}

TEST(CollapseEdge, OfATriangleFoldedAtItsEndLeavesAnEdgeThatIsItsOwnTwin) {
    PIN mesh = Linked({{1, 1, 0}, {2, 0, 1}, {0, 3, 0}, {4, 2, 0}, {5, -1, 0}, {3, -1, 2}});
    const CollapsedEdge result = Collapse(mesh, 0);
    EXPECT_EQ(mesh.edges[3].TE, 3);
    EXPECT_EQ(result.sectorFirst, 4);
    EXPECT_EQ(result.sectorLast, 3);
    // Such an edge counts as boundary for the next collapse beside it.
    Collapse(mesh, 4);
    for (int e = 0; e < 6; ++e) EXPECT_TRUE(IsDead(mesh, e));
}

}  // namespace
}  // namespace KM
