#include "Mesh/Editing/EdgeSplits.h"

#include <gtest/gtest.h>

#include <climits>

#include "Geometry/Distances.h"
#include "Mesh/Core/Compaction.h"
#include "Mesh/Core/Construction.h"
#include "Mesh/Core/Loops.h"
#include "Mesh/Editing/PlainEdits.h"
#include "Support/DumpCapture.h"
#include "Support/LogCapture.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/Numbers.h"

namespace KM {
using namespace Test;

namespace {

using P = TPoint<double>;
using Edges = std::vector<Edge>;
using Indices = std::vector<int>;
using Triangles = std::vector<std::array<int, 3>>;

// UnitSquare(): 0 runs 0-1, 1 runs 1-3, 2 runs 3-0; 3 runs 1-2, 4 runs 2-3, 5 runs 3-1. Edges 1 and 5 are twins.

PIN WithNode(PIN mesh, const P& point = P(0.5, 0.5, 0)) {
    AddPoint(mesh, point);
    return mesh;
}

/// Calls `edit(mesh, e)` for each edge that is none, and for a dead one, and expects that nothing happens.
template <class Edit>
void ExpectRefusals(Edit edit) {
    PIN before = WithNode(UnitSquare());
    before.edges[0].NE = before.edges[0].P0 = -1;
    for (const int e : {-1, -2, INT_MIN, INT_MAX, 6, 0, 1}) {  // 1 lies on the loop of the dead one
        SCOPED_TRACE(e);
        PIN mesh = before;
        edit(mesh, e);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(SplitEdge, OfAnOrphanAppendsThreeEdges) {
    PIN mesh = RightTriangle();
    SplitEdge(mesh, 0, P(0.25, 0, 0));
    EXPECT_EQ(mesh.edges, (Edges{{4, -1, 0}, {5, -1, 1}, {0, -1, 2}, {1, -1, 3}, {2, 5, 3}, {3, 4, 2}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 1, 2, 3}));
    EXPECT_EQ(mesh.points.back(), P(0.25, 0, 0));
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 3, 2}, {1, 2, 3}}));
    EXPECT_EQ(OrphanCount(mesh), 4);
    ExpectCompact(mesh);
}

TEST(SplitEdge, OfAPairAppendsSixEdges) {
    PIN mesh = UnitSquare();
    SplitEdge(mesh, 1, P(0.5, 0.5, 0));
    EXPECT_EQ(mesh.edges, (Edges{{1, -1, 0},
                                 {7, 5, 1},
                                 {8, -1, 3},
                                 {10, -1, 1},
                                 {9, -1, 2},
                                 {3, 1, 4},
                                 {2, 9, 4},
                                 {0, 8, 4},
                                 {6, 7, 0},
                                 {11, 6, 3},
                                 {5, 11, 2},
                                 {4, 10, 4}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 3, 4, 9, 5}));  // node 3 had the twin, which now starts at the new node
    EXPECT_EQ(mesh.points.size(), 5u);
    EXPECT_EQ(TrianglesOf(mesh).size(), 4u);
    ExpectCompact(mesh);
}

TEST(SplitEdge, LeavesANodeEdgeThatIsNotTheTwin) {
    PIN mesh = UnitSquare();
    mesh.p2e[3] = 2;
    SplitEdge(mesh, 1, P());
    EXPECT_EQ(mesh.p2e, (Indices{0, 3, 4, 2, 5}));
}

TEST(SplitEdge, TakesAPositionOutOfTheMesh) {
    PIN mesh = RightTriangle();
    mesh.points.shrink_to_fit();
    SplitEdge(mesh, 0, mesh.points[1]);
    EXPECT_EQ(mesh.points[3], mesh.points[1]);
}

TEST(SplitEdge, LeavesNodeEdgesThatWaitForCompactionAlone) {
    PIN mesh = UnitSquare();
    mesh.p2e.clear();
    SplitEdge(mesh, 1, P(0.5, 0.5, 0));
    SplitEdge(mesh, 0, P(0.5, 0, 0));
    SplitFace(mesh, 4, P(0.7, 0.7, 0));
    EXPECT_TRUE(mesh.p2e.empty());
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    EXPECT_EQ(mesh.points.size(), 7u);
    ExpectCompact(mesh);
}

TEST(SplitEdge, RefusesWhatIsNoTriangle) {
    const auto split = [](PIN& mesh, int e) { SplitEdge(mesh, e, P(1, 2, 3)); };
    ExpectRefusals(split);
    PIN before;
    before.points.resize(4);
    before.p2e.resize(4, -1);
    AddPolygon(before, {0, 1, 2, 3}, {-1, -1, -1, -1});
    AddPolygon(before, {0, 1}, {-1, -1});
    AddPolygon(before, {2}, {-1});
    const Indices triangle = AddPolygon(before, {1, 0, 3}, {0, -1, -1});  // the loop of four is beyond its edge
    before.edges[triangle[1]].TE = triangle[2];                           // and two of its edges are each other's twins
    before.edges[triangle[2]].TE = triangle[1];
    for (int e = 0; e < static_cast<int>(before.edges.size()); ++e) {
        SCOPED_TRACE(e);
        PIN mesh = before;
        split(mesh, e);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(SplitEdge, IsLikeThePlainFormOnAllMeshes) {
    for (unsigned seed = 0; seed < 40; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN before = seed % 2 == 0 ? RandomMesh(seed, 30) : Grid(2 + static_cast<int>(seed) % 3);
        for (int e = 0; e < static_cast<int>(before.edges.size()); ++e) {
            PIN mesh = before, plain = before;
            SplitEdge(mesh, e, P(seed, e, 1));
            Plain::SplitEdge(plain, e, P(seed, e, 1));
            ASSERT_TRUE(SameRecords(mesh, plain)) << "edge " << e;
            ASSERT_EQ(FirstUnsoundness(mesh), "") << "edge " << e;
            ASSERT_EQ(EulerCharacteristic(mesh), EulerCharacteristic(before)) << "edge " << e;
        }
    }
}

// --- with a value for each node

TEST(SplitEdgeWithValues, SplitsBetweenTheFeetOfTheOppositeNodes) {
    // The edge runs 0-1 along X; node 2 stands 2 above its quarter, node 3 stands 6 below its end.
    PIN mesh;
    AddTriangles_3(mesh, {P(0, 0, 0), P(8, 0, 0), P(2, 2, 0), P(8, -6, 0)}, {0, 1, 2, 1, 0, 3});
    std::vector<double> values = {0, 0, 10, 30};
    DumpCapture dump;
    SplitEdge(mesh, values, 0);
    EXPECT_EQ(mesh.points.back(), P(3.5, 0, 0));  // 2 / (2 + 6) of the way from 2 to 8
    EXPECT_EQ(values, (std::vector<double>{0, 0, 10, 30, 15}));
    EXPECT_EQ(dump.Text(), "\n10, 30");
    EXPECT_EQ(mesh.edges.size(), 12u);
    ExpectCompact(mesh);
}

TEST(SplitEdgeWithValues, TellsOfAnOrphanAndLeavesAll) {
    PIN mesh = UnitSquare();
    std::vector<double> values = {1, 2, 3, 4};
    LogCapture log;
    DumpCapture dump;
    SplitEdge(mesh, values, 0);
    EXPECT_EQ(log.Texts(Verbose::EMessageType::Error), (std::vector<std::string>{"Try to insert on an orphan edge!"}));
    EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
    EXPECT_EQ(values, (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(dump.Text(), "");
}

TEST(SplitEdgeWithValues, RefusesQuietlyWhatIsNoEdge) {
    LogCapture log;
    DumpCapture dump;
    ExpectRefusals([](PIN& mesh, int e) {
        std::vector<double> values(mesh.points.size(), 1.0);
        SplitEdge(mesh, values, e);
        EXPECT_EQ(values.size(), mesh.points.size());
    });
    EXPECT_TRUE(log.Lines().empty());
    EXPECT_EQ(dump.Text(), "");
}

TEST(SplitEdgeWithValues, RefusesWhereAnOppositeNodeHasNoValue) {
    for (const std::size_t count : {0u, 1u, 2u}) {  // the opposite nodes are 0 and 2
        PIN mesh = UnitSquare();
        std::vector<double> values(count, 1.0);
        SplitEdge(mesh, values, 1);
        EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
        EXPECT_EQ(values.size(), count);
    }
}

TEST(SplitEdgeWithValues, FollowsTheFormulaToTheLastBit) {
    for (unsigned seed = 0; seed < 2000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        Numbers next(seed);
        const auto point = [&] { return seed % 4 == 0 ? next.HostilePoint() : next.PointBetween(-5, 5); };
        PIN mesh = UnitSquare();
        for (P& p : mesh.points) p = point();
        std::vector<double> values = {next.Hostile(), 1.0, next.Hostile(), 2.0};
        const std::vector<double> v = values;
        const P A = mesh.points[1], B = mesh.points[3];
        double t1 = 0.0, t2 = 0.0;
        const double d1 = DistPtLn(A, B, mesh.points[0], t1, true);
        const double d2 = DistPtLn(A, B, mesh.points[2], t2, true);
        const double r = d1 / (d2 + d1);
        SplitEdge(mesh, values, 1);
        ASSERT_TRUE(SameBits(mesh.points[4], A + (B - A) * (t1 + (t2 - t1) * r)));
        ASSERT_TRUE(SameBits(values[4], v[0] + (v[2] - v[0]) * r));
    }
}

// --- without new faces

TEST(SplitEdge2, OfAnOrphanAppendsOneEdge) {
    PIN mesh = WithNode(RightTriangle());
    EXPECT_EQ(SplitEdge2(mesh, 0, 3), 3);
    EXPECT_EQ(mesh.edges, (Edges{{3, -1, 0}, {2, -1, 1}, {0, -1, 2}, {1, -1, 3}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 1, 2, 3}));
    ExpectCompact(mesh);
}

TEST(SplitEdge2, OfAPairMakesTwoNewPairs) {
    PIN mesh = WithNode(UnitSquare());
    EXPECT_EQ(SplitEdge2(mesh, 1, 4), 6);
    EXPECT_EQ(mesh.edges,
              (Edges{{1, -1, 0}, {6, 7, 1}, {0, -1, 3}, {4, -1, 1}, {5, -1, 2}, {7, 6, 3}, {2, 5, 4}, {3, 1, 4}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 3, 4, 5, 6}));
    ExpectCompact(mesh);
}

TEST(AddAlong, OfAnOrphanAppendsOneEdge) {
    PIN mesh = WithNode(RightTriangle());
    EXPECT_EQ(AddAlong(mesh, 0, 3), 3);
    EXPECT_EQ(mesh.edges, (Edges{{3, -1, 0}, {2, -1, 1}, {0, -1, 2}, {1, -1, 3}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 1, 2, -1}));  // the caller's to set
}

TEST(AddAlong, OfAPairKeepsTheTwins) {
    PIN mesh = WithNode(UnitSquare());
    EXPECT_EQ(AddAlong(mesh, 1, 4), 6);
    EXPECT_EQ(mesh.edges,
              (Edges{{1, -1, 0}, {6, 5, 1}, {0, -1, 3}, {4, -1, 1}, {7, -1, 2}, {3, 1, 4}, {2, 7, 4}, {5, 6, 3}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 3, 4, 2, -1}));
    mesh.p2e[4] = 6;
    ExpectCompact(mesh);
}

/// Each loop as its start nodes, begun at the lowest, sorted.
std::vector<Indices> LoopsOf(const PIN& mesh) {
    std::vector<Indices> loops;
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        Indices nodes;
        for (const int x : Loop(mesh, e)) nodes.push_back(mesh.edges[x].P0);
        if (*std::min_element(nodes.begin(), nodes.end()) == nodes[0]) loops.push_back(nodes);
    }
    std::sort(loops.begin(), loops.end());
    return loops;
}

TEST(AddAlong, MakesTheSurfaceOfSplitEdge2) {
    PIN one = WithNode(UnitSquare());
    PIN other = one;
    SplitEdge2(one, 1, 4);
    AddAlong(other, 1, 4);
    EXPECT_EQ(LoopsOf(one), (std::vector<Indices>{{0, 1, 4, 3}, {1, 2, 3, 4}}));
    EXPECT_EQ(LoopsOf(other), LoopsOf(one));
    EXPECT_EQ(OrphanCount(one), 4);
    EXPECT_EQ(OrphanCount(other), 4);
}

TEST(SplitEdge2AndAddAlong, RefuseWhatDoesNotExist) {
    ExpectRefusals([](PIN& mesh, int e) {
        if (e == 1) return;  // an edge between two loops needs no triangles
        EXPECT_EQ(SplitEdge2(mesh, e, 4), -1);
        EXPECT_EQ(AddAlong(mesh, e, 4), -1);
    });
    for (const int node : {-1, 4, INT_MIN, INT_MAX}) {
        PIN mesh = UnitSquare();
        EXPECT_EQ(SplitEdge2(mesh, 1, node), -1);
        EXPECT_EQ(AddAlong(mesh, 1, node), -1);
        EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
    }
}

TEST(SplitEdge2AndAddAlong, WorkOnLoopsOfAnyLengthLikeThePlainForm) {
    for (unsigned seed = 0; seed < 30; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN before = WithNode(seed % 2 == 0 ? RandomMesh(seed, 20) : Dissolved(Sphere(3), seed, 20));
        const int node = static_cast<int>(before.points.size()) - 1;
        for (int e = 0; e < static_cast<int>(before.edges.size()); ++e) {
            if (before.edges[e].NE == -1 || before.edges[e].NE == before.edges[e].TE) continue;
            SCOPED_TRACE(testing::Message() << "edge " << e);
            PIN mesh = before, plain = before;
            ASSERT_EQ(SplitEdge2(mesh, e, node), Plain::SplitEdge2(plain, e, node));
            ASSERT_TRUE(SameRecords(mesh, plain));
            ASSERT_EQ(FirstUnsoundness(mesh), "");
            mesh = plain = before;
            const int n1 = AddAlong(mesh, e, node);
            ASSERT_EQ(n1, Plain::AddAlong(plain, e, node));
            ASSERT_TRUE(SameRecords(mesh, plain));
            mesh.p2e[node] = n1;
            ASSERT_EQ(FirstUnsoundness(mesh), "");
        }
    }
}

// --- faces and loops

TEST(SplitFace, AppendsSixEdges) {
    PIN mesh = RightTriangle();
    SplitFace(mesh, 0, P(0.25, 0.25, 0));
    EXPECT_EQ(
        mesh.edges,
        (Edges{{3, -1, 0}, {5, -1, 1}, {7, -1, 2}, {8, 4, 1}, {1, 3, 3}, {4, 6, 2}, {2, 5, 3}, {6, 8, 0}, {0, 7, 3}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 1, 2, 4}));
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 1, 3}, {0, 3, 2}, {1, 2, 3}}));
    ExpectCompact(mesh);
}

TEST(SplitFace, IsLikeThePlainFormOnAllMeshes) {
    for (unsigned seed = 0; seed < 10; ++seed) {
        const PIN before = seed % 2 == 0 ? RandomMesh(seed, 30) : Sphere(2);
        for (int e = 0; e < static_cast<int>(before.edges.size()); ++e) {
            PIN mesh = before, plain = before;
            SplitFace(mesh, e, P(1, 2, 3));
            Plain::SplitFace(plain, e, P(1, 2, 3));
            ASSERT_TRUE(SameRecords(mesh, plain)) << "seed " << seed << " edge " << e;
            ASSERT_EQ(FirstUnsoundness(mesh), "") << "seed " << seed << " edge " << e;
        }
    }
}

TEST(SplitFace, RefusesWhatIsNoTriangle) {
    ExpectRefusals([](PIN& mesh, int e) { SplitFace(mesh, e, P(1, 2, 3)); });
    PIN mesh;
    mesh.points.resize(4);
    mesh.p2e.resize(4, 0);
    AddPolygon(mesh, {0, 1, 2, 3}, {-1, -1, -1, -1});
    const PIN before = mesh;
    SplitFace(mesh, 0, P());
    EXPECT_TRUE(SameRecords(mesh, before));
}

PIN Polygon(int n) {
    PIN mesh;
    Indices nodes;
    for (int i = 0; i < n; ++i) nodes.push_back(AddPoint(mesh, P(std::cos(i), std::sin(i), 0)));
    mesh.p2e = AddPolygon(mesh, nodes, Indices(n, -1));
    return mesh;
}

TEST(SplitLoop, DividesALoopOfFourIntoTriangles) {
    PIN mesh = Polygon(4);
    EXPECT_EQ(SplitLoop(mesh, 0, 2), 5);
    EXPECT_EQ(mesh.edges, (Edges{{1, -1, 0}, {4, -1, 1}, {3, -1, 2}, {5, -1, 3}, {0, 5, 2}, {2, 4, 0}}));
    EXPECT_EQ(mesh.p2e, (Indices{0, 1, 2, 3}));
    EXPECT_EQ(TrianglesOf(mesh), (Triangles{{0, 1, 2}, {0, 2, 3}}));
    ExpectCompact(mesh);
}

TEST(SplitLoop, KeepsEachEdgeOnItsSide) {
    for (int n = 2; n <= 9; ++n)
        for (int e1 = 0; e1 < n; ++e1)
            for (int e2 = 0; e2 < n; ++e2) {
                if (e1 == e2) continue;
                SCOPED_TRACE(testing::Message() << n << " edges, chord from " << e1 << " to " << e2);
                PIN mesh = Polygon(n), plain = mesh;
                const int f2 = SplitLoop(mesh, e1, e2);
                ASSERT_EQ(f2, Plain::SplitLoop(plain, e1, e2));
                ASSERT_TRUE(SameRecords(mesh, plain));
                EXPECT_EQ(mesh.edges[f2].P0, e1);
                EXPECT_TRUE(AreOnSameLoop(mesh, e1, f2 - 1));
                EXPECT_TRUE(AreOnSameLoop(mesh, e2, f2));
                EXPECT_FALSE(AreOnSameLoop(mesh, e1, e2));
                ExpectSound(mesh);
            }
}

TEST(SplitLoop, OfTwoLoopsJoinsThem) {
    PIN mesh = UnitSquare();
    SplitLoop(mesh, 0, 4);
    EXPECT_TRUE(AreOnSameLoop(mesh, 0, 4));
    ExpectSound(mesh);
}

TEST(SplitLoop, RefusesWhatDoesNotExistAndAnEdgeWithItself) {
    ExpectRefusals([](PIN& mesh, int e) {
        EXPECT_EQ(SplitLoop(mesh, e, 4), -1);
        EXPECT_EQ(SplitLoop(mesh, 4, e), -1);
    });
    PIN mesh = UnitSquare();
    EXPECT_EQ(SplitLoop(mesh, 2, 2), -1);
    EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
}

}  // namespace
}  // namespace KM
