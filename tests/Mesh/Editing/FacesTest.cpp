#include "Mesh/Editing/Faces.h"

#include "Mesh/Editing/FaceChecks.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;
using Faces = std::vector<Soup>;

Faces FacesOf(const PIN& mesh) {
    Faces faces = {{P(9, 9, 9)}};
    PinToFaces(mesh, faces);
    return faces;
}

/// The rule as plain as it can be written, for meshes whose links are sound.
Faces PlainFaces(const PIN& mesh) {
    Faces faces;
    for (int e = 0; e < EdgeCount(mesh); ++e) {
        if (mesh.edges[e].NE == -1) continue;
        const int nodes[] = {mesh.edges[e].P0, mesh.edges[mesh.edges[e].NE].P0, mesh.edges[PrevEdge(mesh, e)].P0};
        faces.push_back({mesh.points[nodes[0]], mesh.points[nodes[1]], mesh.points[nodes[2]]});
    }
    return faces;
}

TEST(PinToFaces, OfNothing) { EXPECT_TRUE(FacesOf(PIN()).empty()); }

TEST(PinToFaces, ListsATriangleOnceForEachEdge) {
    const P a(0, 0, 0), b(1, 0, 0), c(0, 1, 0);
    EXPECT_EQ(FacesOf(RightTriangle()), (Faces{{a, b, c}, {b, c, a}, {c, a, b}}));
}

TEST(PinToFaces, CutsEachCornerOffALongerLoop) {
    const P a(0, 0, 0), b(1, 0, 0), c(1, 1, 0), d(0, 1, 0);
    EXPECT_EQ(FacesOf(OneLoop({a, b, c, d})), (Faces{{a, b, d}, {b, c, a}, {c, d, b}, {d, a, c}}));
}

TEST(PinToFaces, LeavesOutDeadRecords) {
    PIN mesh = UnitSquare();
    for (const int e : {0, 1, 2}) mesh.edges[e] = Edge();
    mesh.edges[5].TE = -1;
    EXPECT_EQ(FacesOf(mesh).size(), 3u);
    mesh.edges[0].NE = -2;
    EXPECT_EQ(FacesOf(mesh).size(), 3u);
}

TEST(PinToFaces, LeavesOutWhatIsOnNoLoop) {
    PIN mesh = OneLoop({P(0, 0, 0), P(1, 0, 0), P(1, 1, 0), P(0, 1, 0), P(0, 2, 0)});
    mesh.edges[4].NE = 2;  // 0 and 1 are a tail that runs into 2, 3, 4
    EXPECT_EQ(FacesOf(mesh).size(), 3u);
    mesh.edges[3].P0 = 5;
    EXPECT_TRUE(FacesOf(mesh).empty());
}

TEST(PinToFaces, IsThePlainRuleOnRandomLoops) {
    for (unsigned seed = 0; seed < 200; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        const PIN mesh = RandomLoops(seed);
        EXPECT_EQ(FacesOf(mesh), PlainFaces(mesh));
    }
}

TEST(PinToFaces, CountsAreaThreeTimes) { EXPECT_DOUBLE_EQ(AreaOf(FacesOf(Grid(5))), 75.0); }

TEST(PinToFaces, TakesALongLoopInOnePass) {
    // A walk round the loop for each edge would take a minute here.
    Soup outline;
    for (int i = 0; i < 200000; ++i) outline.push_back(P(i, i % 7, 0));
    EXPECT_EQ(FacesOf(OneLoop(outline)).size(), outline.size());
}

TEST(PinToFaces, SurvivesBrokenLinks) {
    ExpectSurvivesBrokenLinks(
        [](PIN& mesh, int e) { EXPECT_TRUE(e != 0 || FacesOf(mesh).size() <= mesh.edges.size()); });
}

}  // namespace
}  // namespace KM
