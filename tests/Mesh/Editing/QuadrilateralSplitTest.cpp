#include "Mesh/Editing/QuadrilateralSplit.h"

#include <cmath>

#include "Geometry/Distances.h"
#include "Geometry/Lines.h"
#include "Geometry/Points.h"
#include "Mesh/Editing/EdgeSplits.h"
#include "Mesh/Editing/FaceChecks.h"
#include "Support/HostilePoints.h"
#include "Support/LogCapture.h"

namespace KM {
namespace {

using namespace Test;
using Values = std::vector<double>;

/// A 0, B 1, C 2, D 3: triangle (A, B, C) with edge 0 from A to B, and triangle (B, A, D) with its twin, edge 3.
PIN Quadrilateral(const P& a, const P& b, const P& c, const P& d) {
    return FromFacets({{a, b, c, d}, {0, 1, 2, 1, 0, 3}});
}

//  C --------- B
//  | P   .   ' |      4 by 2. The bisectors of C and A meet at (1, 1), of D and B at (3, 1), others further off
//  | .   '   Q |
//  A --------- D
PIN RectangleOfTwo() { return Quadrilateral(P(0, 0, 0), P(4, 2, 0), P(0, 2, 0), P(4, 0, 0)); }

TEST(SplitQuadrilateral, SplitsBothTrianglesAndTheEdgeBetween) {
    PIN mesh = RectangleOfTwo();
    Values values = {10, 20, 30, 40};
    SplitQuadrilateral(mesh, values, 0);

    ExpectSound(mesh);
    ASSERT_EQ(mesh.points.size(), 7u);
    const P expected[] = {P(1, 1, 0), P(3, 1, 0), P(2, 1, 0)};
    for (int i = 0; i < 3; ++i) EXPECT_LT(Length(mesh.points[4 + i] - expected[i]), 1e-12);
    EXPECT_EQ(EdgeCount(mesh), 24);
    ASSERT_EQ(values.size(), 7u);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(values[i], 10.0 * (i + 1));
    for (int i = 4; i < 7; ++i) EXPECT_NEAR(values[i], 1.0, 1e-12);
    for (const Soup& face : FaceOutlines(mesh)) EXPECT_GT(AreaOf(face), 0.1);
    EXPECT_NEAR(AreaOf(FaceOutlines(mesh)), 8.0, 1e-12);
}

TEST(SplitQuadrilateral, TakesTheEndOfTheEdgeThatIsNearer) {
    // Seen from the other side, the near end of the edge is its start for D and its end for C.
    PIN mesh = Quadrilateral(P(4, 2, 0), P(0, 0, 0), P(4, 0, 0), P(0, 2, 0));
    Values values(4, 0.0);
    SplitQuadrilateral(mesh, values, 0);
    EXPECT_LT(Length(mesh.points[4] - P(3, 1, 0)), 1e-12);
    EXPECT_LT(Length(mesh.points[5] - P(1, 1, 0)), 1e-12);
}

TEST(SplitQuadrilateral, RefusesAnOrphanWithAnError) {
    PIN mesh = RectangleOfTwo();
    const PIN before = mesh;
    Values values = {1, 2, 3, 4};
    LogCapture log;
    SplitQuadrilateral(mesh, values, 1);
    EXPECT_EQ(log.Texts(Verbose::EMessageType::Error), std::vector<std::string>{"Try to insert on an orphan edge!"});
    EXPECT_TRUE(SameRecords(mesh, before));
    EXPECT_EQ(values.size(), 4u);
}

//  Edge 0 runs on the boundary, from B to C; the edge between the triangles is 2, from A to B.
TEST(SplitQuadrilateral, SplitsEdgeZeroAndNoOther) {
    PIN mesh = FromFacets({{P(0, 0, 0), P(4, 2, 0), P(0, 2, 0), P(4, 0, 0)}, {1, 2, 0, 1, 0, 3}});
    Values values(4, 0.0);
    LogCapture log;
    SplitQuadrilateral(mesh, values, 2);
    EXPECT_EQ(log.Count(Verbose::EMessageType::Error), 1);
    ExpectSound(mesh);
    EXPECT_EQ(mesh.points.size(), 6u);
    EXPECT_EQ(EdgeCount(mesh), 18);
    EXPECT_EQ(values.size(), 6u);
}

TEST(SplitQuadrilateral, LeavesEdgeZeroAloneWithoutValues) {
    PIN mesh = RectangleOfTwo();
    Values values;
    SplitQuadrilateral(mesh, values, 0);
    ExpectSound(mesh);
    EXPECT_EQ(mesh.points.size(), 6u);
    EXPECT_EQ(values.size(), 2u);
}

/// The rule as plain as it can be written.
void PlainSplit(PIN& mesh, Values& values, int e) {
    const int t = mesh.edges[e].TE;
    const P A = mesh.points[mesh.edges[e].P0];
    const P B = mesh.points[mesh.edges[t].P0];
    const P C = mesh.points[mesh.edges[PrevEdge(mesh, e)].P0];
    const P D = mesh.points[mesh.edges[PrevEdge(mesh, t)].P0];
    const P bA = BisectorPoint(A, C, D);
    const P bB = BisectorPoint(B, C, D);
    const P bC = BisectorPoint(C, A, B);
    const P bD = BisectorPoint(D, A, B);
    const auto nearer = [](const P& from, const P& p, const P& q) {
        const P toP = p - from;
        const P toQ = q - from;
        return toP.X * toP.X + toP.Y * toP.Y < toQ.X * toQ.X + toQ.Y * toQ.Y ? p : q;
    };
    const P centre = nearer(C, IntLineLine(C, bC, A, bA), IntLineLine(C, bC, B, bB));
    const P other = nearer(D, IntLineLine(D, bD, A, bA), IntLineLine(D, bD, B, bB));
    SplitFace(mesh, e, centre);
    SplitFace(mesh, t, other);
    values.push_back(std::abs(DistPtLn(C, A, centre, false)));
    values.push_back(std::abs(DistPtLn(D, A, other, false)));
    SplitEdge(mesh, values, 0);
}

bool SameNumbers(const Values& a, const Values& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](double x, double y) { return SameBits(x, y); });
}

TEST(SplitQuadrilateral, IsThePlainRuleOnPointsOfAllKinds) {
    for (unsigned seed = 0; seed < 4000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        HostilePoints next(seed);
        const P corners[] = {next(), next(), next(), next()};
        PIN mesh = Quadrilateral(corners[0], corners[1], corners[2], corners[3]);
        PIN plain = mesh;
        Values values = {1, 2, 3, 4};
        Values plainValues = values;
        const int e = seed % 3 == 0 ? 3 : 0;
        SplitQuadrilateral(mesh, values, e);
        PlainSplit(plain, plainValues, e);
        EXPECT_TRUE(SameNumbers(values, plainValues));
        EXPECT_EQ(mesh.edges, plain.edges);
        EXPECT_EQ(mesh.p2e, plain.p2e);
        ASSERT_EQ(mesh.points.size(), plain.points.size());
        for (std::size_t i = 0; i < mesh.points.size(); ++i) EXPECT_TRUE(SameBits(mesh.points[i], plain.points[i]));
        ExpectSound(mesh);
    }
}

TEST(SplitQuadrilateral, RefusesQuietlyWhatIsNoEdgeBetweenTriangles) {
    LogCapture log;
    ExpectRefusesWhatIsNoEdge([](PIN& mesh, int e) {
        Values values(4, 0.0);
        SplitQuadrilateral(mesh, values, e);
        EXPECT_EQ(values.size(), 4u);
    });
    EXPECT_EQ(log.Count(Verbose::EMessageType::Error), 0);
}

TEST(SplitQuadrilateral, RefusesANodeThatDoesNotExist) {
    PIN mesh = RectangleOfTwo();
    mesh.edges[5].P0 = 4;
    const PIN before = mesh;
    Values values(4, 0.0);
    SplitQuadrilateral(mesh, values, 0);
    EXPECT_TRUE(SameRecords(mesh, before));
    EXPECT_EQ(values.size(), 4u);
}

TEST(SplitQuadrilateral, SurvivesBrokenLinks) {
    ExpectSurvivesBrokenLinks([](PIN& mesh, int e) {
        Values values(mesh.points.size(), 1.0);
        if (e % 7 == 0) SplitQuadrilateral(mesh, values, e);
    });
}

}  // namespace
}  // namespace KM
