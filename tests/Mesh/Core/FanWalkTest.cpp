#include "Mesh/Core/FanWalk.h"

#include <gtest/gtest.h>

#include <vector>

#include "Support/Meshes.h"

namespace KM {
namespace {

using namespace Test;

TEST(FanWalk, VisitsAnOpenFanFromItsOpenEnd) {
    const PIN mesh = UnitSquare();
    std::vector<int> met;
    for (const int e : FanWalk(mesh, 1)) met.push_back(e);
    EXPECT_EQ(met, (std::vector<int>{1, 3}));
    EXPECT_EQ(FanWalk(mesh, 1).First(), 1);
    EXPECT_EQ(FanWalk(mesh, 1).Count(), 2u);
}

TEST(FanWalk, ThroughAnEdgeVisitsTheFanOfThatEdge) {
    const PIN mesh = BowTie();  // node 1 has the edges 1 and 3, each a fan of its own
    for (const int edge : {1, 3}) {
        const auto fan = FanWalk<PIN>::Through(mesh, edge);
        EXPECT_EQ(fan.First(), edge);
        EXPECT_EQ(fan.Count(), 1u);
    }
    EXPECT_EQ(FanWalk<PIN>::Through(mesh, -1).Count(), 0u);
}

TEST(FanWalk, OfADeadOrMissingNodeHasNoEdges) {
    PIN mesh = UnitSquare();
    mesh.p2e[2] = -1;
    for (const int node : {-1, 2, 4}) {
        EXPECT_EQ(FanWalk(mesh, node).First(), -1);
        EXPECT_EQ(FanWalk(mesh, node).Count(), 0u);
    }
}

TEST(FanWalk, ServesTheSinglePrecisionMesh) {
    SPIN mesh;
    mesh.edges = UnitSquare().edges;
    mesh.p2e = UnitSquare().p2e;
    EXPECT_EQ(FanWalk(mesh, 1).Count(), 2u);
}

TEST(NextInFan, IsTakenBackByPreviousInFan) {
    const PIN mesh = Dissolved(Sphere(6), 1, 60);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        if (!IsAliveEdge(mesh, e)) continue;
        EXPECT_EQ(PreviousInFan(mesh, NextInFan(mesh, e)), e);
        EXPECT_EQ(NextInFan(mesh, PreviousInFan(mesh, e)), e);
        EXPECT_EQ(mesh.edges[NextInFan(mesh, e)].P0, mesh.edges[e].P0);
    }
}

TEST(NextInFan, IsMinusOneWhereTheFanEnds) {
    const PIN mesh = UnitSquare();
    EXPECT_EQ(NextInFan(mesh, 3), -1);
    EXPECT_EQ(PreviousInFan(mesh, 1), -1);
}

TEST(NextInFan, TakesALinkToADeadRecordForTheEnd) {
    PIN mesh = UnitSquare();
    mesh.edges[3].NE = -1;
    EXPECT_EQ(NextInFan(mesh, 1), -1);
    mesh.edges[5].NE = 77;
    EXPECT_EQ(NextInFan(mesh, 1), -1);
    mesh.edges[1].TE = 77;
    EXPECT_EQ(NextInFan(mesh, 1), -1);
}

TEST(EndNode, IsMinusOneWhereNELeadsNowhere) {
    PIN mesh = RightTriangle();
    EXPECT_EQ(EndNode(mesh, 0), 1);
    mesh.edges[0].NE = 3;
    EXPECT_EQ(EndNode(mesh, 0), -1);
}

}  // namespace
}  // namespace KM
