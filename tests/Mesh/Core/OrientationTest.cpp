#include "Mesh/Core/Orientation.h"

#include <gtest/gtest.h>

#include <random>

#include "Mesh/Core/Construction.h"
#include "Mesh/Core/PlainBuild.h"
#include "Support/BrokenMeshes.h"
#include "Support/MeshChecks.h"
#include "Support/Meshes.h"
#include "Support/RecordingVisitor.h"

namespace KM {
using namespace Test;

namespace {

using Reports = std::vector<std::string>;
using Recorder = RecordingVisitor<PIN>;

/// Turns the triangle of `e` round and leaves the twins: the neighbours then run the same way along it.
void Turn(PIN& mesh, int e) {
    const int ne = mesh.edges[e].NE;
    const int pe = mesh.edges[ne].NE;
    const Edge oldE = mesh.edges[e], oldNe = mesh.edges[ne], oldPe = mesh.edges[pe];
    mesh.edges[e] = {pe, oldE.TE, oldNe.P0};
    mesh.edges[ne] = {e, oldNe.TE, oldPe.P0};
    mesh.edges[pe] = {ne, oldPe.TE, oldE.P0};
}

PIN WithTurnedTriangles(PIN mesh, unsigned seed) {
    std::mt19937 random(seed);
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); e += 3)
        if (random() % 2 == 0) Turn(mesh, e);
    return mesh;
}

TEST(FixOrientation, LeavesAnOrientedMeshAloneAndNamesTheHighestEdges) {
    PIN mesh = UnitSquare();
    std::fill(mesh.p2e.begin(), mesh.p2e.end(), -1);
    Recorder recorder;
    FixOrientation(mesh, recorder);
    EXPECT_TRUE(recorder.reports.empty());
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 3, 4, 5}));
}

TEST(FixOrientation, TurnsTheNeighbourOfTheFirstFaceAndReportsEachStep) {
    // Edges 0, 1, 2 run 0-1-3; the twin of edge 1 (1 to 3) is edge 3, which is turned here to run 1 to 3 as well.
    PIN mesh = UnitSquare();
    ASSERT_EQ(mesh.edges[1].TE, 5);
    Turn(mesh, 3);
    Recorder recorder;
    FixOrientation(mesh, recorder);
    // The flood enters over edge 5: e = 5, ne = 4, pe = 3.
    EXPECT_EQ(recorder.reports,
              (Reports{"SetNE 4 3 5", "SetP0 3 2 1", "SetNE 3 5 4", "SetP0 5 1 3", "SetNE 5 4 3", "SetP0 4 3 2"}));
    EXPECT_TRUE(SameRecords(mesh, UnitSquare()));
}

TEST(FixOrientation, KeepsTheFirstFaceOfEachPieceAndTurnsTheRest) {
    for (unsigned seed = 0; seed < 100; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = WithTurnedTriangles(Sphere(4), seed);
        PIN plain = mesh;
        const int first = mesh.edges[mesh.edges[0].NE].P0;
        Recorder recorder, plainRecorder;
        FixOrientation(mesh, recorder);
        Plain::FixOrientation(plain, plainRecorder);
        ASSERT_EQ(recorder.reports, plainRecorder.reports);
        ASSERT_TRUE(SameRecords(mesh, plain));
        ExpectSound(mesh);
        EXPECT_EQ(OrphanCount(mesh), 0);
        EXPECT_EQ(mesh.edges[mesh.edges[0].NE].P0, first);
    }
}

/// A band of `n` quads, closed with half a turn.
PIN MoebiusBand(int n) {
    std::vector<TPoint<double>> points(static_cast<std::size_t>(2 * n));
    std::vector<int> triples;
    for (int i = 0; i < n; ++i) {
        const int a = 2 * i, b = 2 * i + 1;
        const int c = i + 1 < n ? a + 2 : 1, d = i + 1 < n ? b + 2 : 0;
        triples.insert(triples.end(), {a, c, b, b, c, d});
    }
    PIN mesh;
    AddTriangles_3(mesh, points, triples);
    return mesh;
}

TEST(FixOrientation, CutsASurfaceThatCannotBeOriented) {
    PIN mesh = MoebiusBand(5);
    // The seam was left open, since both sides run the same way; twins that run the same way are laid on by hand.
    int sides[2] = {-1, -1}, found = 0;
    for (int e = 0; e < static_cast<int>(mesh.edges.size()); ++e) {
        const int a = mesh.edges[e].P0, b = mesh.edges[mesh.edges[e].NE].P0;
        if (a + b == 1 && mesh.edges[e].TE == -1) sides[found++] = e;
    }
    ASSERT_EQ(found, 2);
    const PIN open = mesh;
    mesh.edges[sides[0]].TE = sides[1];
    mesh.edges[sides[1]].TE = sides[0];
    PIN plain = mesh;
    Recorder recorder, plainRecorder;
    FixOrientation(mesh, recorder);
    Plain::FixOrientation(plain, plainRecorder);
    EXPECT_EQ(recorder.reports, plainRecorder.reports);
    EXPECT_TRUE(SameRecords(mesh, plain));
    ExpectSound(mesh);
    EXPECT_GT(OrphanCount(mesh), 10);
    ASSERT_GE(recorder.reports.size(), 2u);
    EXPECT_EQ(recorder.reports.back().substr(0, 5), "SetTE");
}

TEST(FixOrientation, MatchesThePlainRulesOnTwinsLaidAtRandom) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = WithTurnedTriangles(RandomMesh(seed, 60), seed);
        std::mt19937 random(seed);
        for (int k = 0; k < 20 && !mesh.edges.empty(); ++k) {
            const int a = static_cast<int>(random() % mesh.edges.size()),
                      b = static_cast<int>(random() % mesh.edges.size());
            if (a == b || mesh.edges[a].TE != -1 || mesh.edges[b].TE != -1) continue;
            mesh.edges[a].TE = b;
            mesh.edges[b].TE = a;
        }
        PIN plain = mesh;
        Recorder recorder, plainRecorder;
        FixOrientation(mesh, recorder);
        Plain::FixOrientation(plain, plainRecorder);
        ASSERT_EQ(recorder.reports, plainRecorder.reports);
        ASSERT_TRUE(SameRecords(mesh, plain));
    }
}

TEST(FixOrientation, CutsButNeverTurnsALongerLoop) {
    PIN mesh = RightTriangle();
    mesh.points.resize(5);
    AddPolygon(mesh, {0, 1, 3, 4}, {0, -1, -1, -1});  // runs along edge 0 the same way
    VisitorOf<PIN> nobody;
    FixOrientation(mesh, nobody);
    EXPECT_EQ(mesh.edges[0].TE, -1);
    EXPECT_EQ(mesh.edges[3], (Edge{4, -1, 0}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{3, 4, 2, 5, 6}));
    ExpectSound(mesh);
}

TEST(FixOrientation, ResizesTheNodeEdges) {
    PIN mesh = RightTriangle();
    mesh.p2e = {9, 9, 9, 9, 9};
    VisitorOf<PIN> nobody;
    FixOrientation(mesh, nobody);
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2}));
    mesh.points.resize(4);
    mesh.p2e.clear();
    FixOrientation(mesh, nobody);
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2, -1}));
}

TEST(FixOrientation, EndsOnBrokenLinks) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        PIN mesh = Broken(WithTurnedTriangles(Sphere(2), seed), seed);
        VisitorOf<PIN> nobody;
        FixOrientation(mesh, nobody);
        EXPECT_EQ(mesh.p2e.size(), mesh.points.size());
    }
}

}  // namespace
}  // namespace KM
