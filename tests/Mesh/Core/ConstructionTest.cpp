#include "Mesh/Core/Construction.h"

#include <gtest/gtest.h>

#include <array>
#include <climits>

#include "Mesh/Core/Compaction.h"
#include "Support/DumpCapture.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"

namespace KM {
using namespace Test;

namespace {

const char* const nonExistent = "PIN.AddEdge: Can't create edge between non-existent nodes";

TEST(AddPoint, AppendsADeadNode) {
    PIN mesh = RightTriangle();
    EXPECT_EQ(AddPoint(mesh, {0, 0, 0}), 3);  // equal to node 0, and yet a node of its own
    EXPECT_EQ(mesh.p2e.back(), -1);
    EXPECT_EQ(mesh.points.size(), 4u);
}

TEST(AddEdge, FilesAnEdgeAndPairsTheNextOne) {
    PIN mesh;
    EdgesMap map;
    EXPECT_EQ(AddEdge(mesh, 4, 7, map, false), 0);
    EXPECT_EQ(AddEdge(mesh, 7, 4, map, false), 1);
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{-1, 1, 4}, {-1, 0, 7}}));
    EXPECT_TRUE(mesh.p2e.empty());
}

TEST(AddEdge, RefusesANodeThatDoesNotExist) {
    const int refused[][2] = {{-1, 0}, {0, -1}, {-1, -1}, {INT_MIN, 3}};
    for (const auto& r : refused) {
        DumpCapture dump;
        SPIN mesh;
        EdgesMap map;
        EXPECT_EQ(AddEdge(mesh, r[0], r[1], map, true), -1);
        EXPECT_EQ(dump.Text(), nonExistent);
        EXPECT_TRUE(SameRecords(mesh, SPIN()));
    }
}

TEST(AddEdge, LeavesItsRecordWhenTheWaitingEdgeHasATwin) {
    PIN mesh;
    EdgesMap map;
    AddEdge(mesh, 0, 1, map, false);
    mesh.edges[0].TE = 5;
    EXPECT_EQ(AddEdge(mesh, 1, 0, map, true), -1);
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{-1, 5, 0}, {-1, -1, 1}}));
    EXPECT_TRUE(mesh.p2e.empty());
}

TEST(AddEdge, GrowsTheNodeEdgesWithItself) {
    PIN mesh;
    EdgesMap map;
    AddEdge(mesh, 0, 1, map, true);
    AddEdge(mesh, 3, 1, map, true);
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 1, 1}));
    AddEdge(mesh, 0, 2, map, true);
    EXPECT_EQ(mesh.p2e, (std::vector<int>{2, 1, 1, 1}));
}

TEST(AddEdge, TakesAnEdgeThatIsGoneForNone) {
    PIN mesh;
    EdgesMap map;
    map.AddEdge(99, 1, 0);
    EXPECT_EQ(AddEdge(mesh, 0, 1, map, false), 0);
    EXPECT_EQ(mesh.edges[0].TE, -1);
    EXPECT_EQ(AddEdge(mesh, 1, 0, map, false), 1);
    EXPECT_EQ(mesh.edges[0].TE, 1);
}

TEST(AddTriangle, LinksThreeEdges) {
    SPIN mesh;
    EdgesMap map;
    AddTriangle(mesh, 2, 0, 1, map, true);
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{1, -1, 2}, {2, -1, 0}, {0, -1, 1}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{1, 2, 0}));
}

TEST(AddTriangle, DoesNothingWithEqualNodes) {
    DumpCapture dump;
    PIN mesh;
    EdgesMap map;
    AddTriangle(mesh, 0, 0, 1, map, true);
    AddTriangle(mesh, 0, 1, 1, map, true);
    AddTriangle(mesh, 1, 0, 1, map, true);
    AddTriangle(mesh, -1, -1, 1, map, true);
    EXPECT_TRUE(SameRecords(mesh, PIN()));
    EXPECT_EQ(map.UseEdge(0, 1), -1);
    EXPECT_EQ(dump.Text(), "");
}

// The number of records that go is fixed, so one record of the triangle before goes where an edge was never appended.
TEST(AddTriangle, WithANegativeNodeTakesOneRecordTooMany) {
    const struct {
        int a, b, c;
        std::size_t left;
    } cases[] = {{-1, 4, 5, 2}, {4, -1, 5, 2}, {4, 5, -1, 2}};
    for (const auto& k : cases) {
        SCOPED_TRACE(testing::Message() << k.a << ' ' << k.b << ' ' << k.c);
        PIN mesh;
        EdgesMap map;
        AddTriangle(mesh, 0, 1, 2, map, false);
        AddTriangle(mesh, k.a, k.b, k.c, map, false);
        EXPECT_EQ(mesh.edges.size(), k.left);
    }
}

TEST(AddTriangle, WithANegativeNodeLeavesAnEmptyMeshEmpty) {
    PIN mesh;
    EdgesMap map;
    for (const auto& k : {std::array{-1, 1, 2}, {0, -1, 2}, {0, 1, -1}})
        AddTriangle(mesh, k[0], k[1], k[2], map, false);
    EXPECT_TRUE(mesh.edges.empty());
}

TEST(AddTriangle, TakesItselfBackWhenAWaitingEdgeHasATwin) {
    for (int failing = 0; failing < 3; ++failing) {
        SCOPED_TRACE(failing);
        PIN mesh;
        EdgesMap map;
        AddTriangle(mesh, 1, 0, 3, map, false);  // waits against the first edge
        AddTriangle(mesh, 2, 1, 4, map, false);  // against the second
        AddTriangle(mesh, 0, 2, 5, map, false);  // against the third
        const int waiting[] = {0, 3, 6};
        mesh.edges[waiting[failing]].TE = 8;
        const PIN before = mesh;
        AddTriangle(mesh, 0, 1, 2, map, false);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(AddTriangle, LeavesInTheMapWhatItFiled) {
    PIN mesh;
    EdgesMap map;
    AddTriangle(mesh, 0, 1, -1, map, false);
    EXPECT_EQ(map.UseEdge(1, 0), 0);
}

TEST(AddPolygon, LinksACycleAndItsTwins) {
    PIN mesh = RightTriangle();
    const std::vector<int> p2e = mesh.p2e;
    EXPECT_EQ(AddPolygon(mesh, {1, 0, 5, 6}, {0, -1, -1, -1}), (std::vector<int>{3, 4, 5, 6}));
    EXPECT_EQ(mesh.edges[0].TE, 3);
    EXPECT_EQ(std::vector<Edge>(mesh.edges.begin() + 3, mesh.edges.end()),
              (std::vector<Edge>{{4, 0, 1}, {5, -1, 0}, {6, -1, 5}, {3, -1, 6}}));
    EXPECT_EQ(mesh.p2e, p2e);
}

TEST(AddPolygon, OfOneNodeIsItsOwnNext) {
    PIN mesh;
    EXPECT_EQ(AddPolygon(mesh, {0}, {-1}), std::vector<int>{0});
    EXPECT_EQ(mesh.edges[0], (Edge{0, -1, 0}));
}

TEST(AddPolygon, FoldsOntoItsOwnEarlierEdges) {
    PIN mesh = RightTriangle();
    EXPECT_EQ(AddPolygon(mesh, {5, 6, 7}, {-1, 3, 3}), (std::vector<int>{3, 4, 5}));
    EXPECT_EQ(std::vector<Edge>(mesh.edges.begin() + 3, mesh.edges.end()),
              (std::vector<Edge>{{4, 5, 5}, {5, 3, 6}, {3, 3, 7}}));
}

TEST(AddPolygon, TakesNodesAsTheyCome) {
    PIN mesh;
    EXPECT_EQ(AddPolygon(mesh, {-1, 0, INT_MAX}, {-1, -1, -1}), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{1, -1, -1}, {2, -1, 0}, {0, -1, INT_MAX}}));
    VisitorOf<PIN> nobody;
    Compact(mesh, nobody);
    EXPECT_TRUE(SameRecords(mesh, PIN()));
}

TEST(AddPolygon, RefusesWhatItCannotLink) {
    const struct {
        std::vector<int> nodes, twins;
    } refused[] = {
        {{}, {}}, {{0, 1, 2}, {-1, -1}}, {{0, 1, 2}, {3, -1, -1}}, {{0, 1, 2}, {-1, 4, -1}}, {{0, 1, 2}, {-2, -1, -1}}};
    for (const auto& r : refused) {
        PIN mesh = RightTriangle();
        EXPECT_TRUE(AddPolygon(mesh, r.nodes, r.twins).empty());
        EXPECT_TRUE(SameRecords(mesh, RightTriangle()));
    }
}

}  // namespace
}  // namespace KM
