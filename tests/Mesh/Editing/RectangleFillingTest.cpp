#include "Mesh/Editing/RectangleFilling.h"

#include <algorithm>
#include <cmath>

#include "Mesh/Editing/EdgeSplits.h"
#include "Mesh/Editing/FaceChecks.h"
#include "Mesh/Editing/PolygonFilling.h"
#include "Support/HostilePoints.h"
#include "Support/Polygons.h"

namespace KM {
namespace {

using namespace Test;
using P = TPoint<double>;
using Chords = std::vector<std::array<int, 2>>;

/// The rectangle of 4 by 3 from (0, 0), counter-clockwise from there. Side i carries a node if `sides[i]` is 1.
Soup Rectangle(const std::array<int, 4>& sides) {
    const P corners[] = {P(0, 0, 0), P(4, 0, 0), P(4, 3, 0), P(0, 3, 0)};
    Soup outline;
    for (int i = 0; i < 4; ++i) {
        outline.push_back(corners[i]);
        if (sides[i] == 1) outline.push_back((corners[i] + corners[(i + 1) % 4]) * 0.5);
    }
    return outline;
}

/// The ends of the chords of a filled loop, in the order in which they were made, each as its second edge runs.
Chords ChordsOf(const PIN& mesh, std::size_t loopLength) {
    Chords chords;
    for (std::size_t f = loopLength; f + 1 < mesh.edges.size(); f += 2)
        chords.push_back({mesh.edges[f + 1].P0, mesh.edges[f].P0});
    return chords;
}

Chords ChordsOfFilling(const Soup& outline, int e = 0) {
    PIN mesh = OneLoop(outline);
    TriangulateRectangle(mesh, 0, e);
    ExpectSound(mesh);
    return ChordsOf(mesh, outline.size());
}

void ExpectSameAsPolygon(const Soup& outline, int clockwise, int e) {
    PIN mesh = OneLoop(outline);
    PIN polygon = mesh;
    TriangulateRectangle(mesh, clockwise, e);
    TriangulatePolygon(polygon, clockwise, e);
    EXPECT_TRUE(SameRecords(mesh, polygon));
}

// The table as plain as it can be written.

struct PlainRectangle {
    PIN& mesh;
    std::vector<int> L;
    int m = static_cast<int>(L.size());

    int S(int x, int y) { return SplitLoop(mesh, x, y); }
    int At(int i) const { return L[i % m]; }

    double Direction(int e) const {
        const P d = mesh.points[mesh.edges[mesh.edges[e].NE].P0] - mesh.points[mesh.edges[e].P0];
        return std::atan2(d.Y, d.X);
    }
    int NextSideNode(int start) const {
        for (int i = start + 1; i < m; ++i)
            if (std::cos(Direction(L[i]) - Direction(L[i - 1])) > 0.2) return i;
        return start;
    }

    void Fill(int clockwise) {
        const int a = NextSideNode(0);
        int b = NextSideNode(a);
        const int c = NextSideNode(b);
        if (m == 4) {
            S(L[0], L[2]);
        } else if (m == 5) {
            S(At(a), At(a + 3));
            S(At(a), At(a + 2));
        } else if (m == 6 && a != b) {
            FillSix(a, b);
        } else if (m == 7) {
            int p = b;
            if (b == a + 2) p = c == b + 2 ? a : c;
            S(At(p + 5), At(p));
            const int x = S(At(p + 4), At(p));
            const int y = S(At(p + 2), x);
            S(At(p), y);
        } else if (m == 8) {
            const int f = S(L[1], L[3]);
            S(L[3], L[5]);
            const int g = S(L[5], L[7]);
            S(L[7], f);
            S(f, g);
        } else {
            TriangulatePolygon(mesh, clockwise, L[0]);
        }
    }
    void FillSix(int a, int b) {
        if (b == a + 3) {
            S(At(a), At(a + 4));
            S(At(b), At(b + 4));
            S(At(a), At(b));
            return;
        }
        if (b == a + 4) std::swap(a, b);
        const int c = S(At(a), At(b));
        S(At(b), At(b + 2));
        S(c, At(b + 2));
    }
};

TEST(TriangulateRectangle, LeavesUpToThreeEdgesAlone) {
    for (int count = 1; count <= 3; ++count) {
        PIN mesh = OneLoop(Circle(count));
        const PIN before = mesh;
        TriangulateRectangle(mesh, 0, 0);
        EXPECT_TRUE(SameRecords(mesh, before));
    }
}

TEST(TriangulateRectangle, CutsFourFromTheEdge) {
    EXPECT_EQ(ChordsOfFilling(Rectangle({0, 0, 0, 0})), (Chords{{0, 2}}));
    EXPECT_EQ(ChordsOfFilling(Rectangle({0, 0, 0, 0}), 3), (Chords{{3, 1}}));
    // Whatever the lengths of the diagonals are.
    EXPECT_EQ(ChordsOfFilling({P(-50, 0, 0), P(0, -1, 0), P(50, 0, 0), P(0, 1, 0)}), (Chords{{0, 2}}));
}

TEST(TriangulateRectangle, WritesFourAsAPair) {
    PIN mesh = OneLoop(Rectangle({0, 0, 0, 0}));
    TriangulateRectangle(mesh, 0, 0);
    EXPECT_EQ(mesh.edges, (std::vector<Edge>{{1, -1, 0}, {4, -1, 1}, {3, -1, 2}, {5, -1, 3}, {0, 5, 2}, {2, 4, 0}}));
    EXPECT_EQ(mesh.p2e, (std::vector<int>{0, 1, 2, 3}));
}

TEST(TriangulateRectangle, CutsFiveFromTheSideNode) {
    EXPECT_EQ(ChordsOfFilling(Rectangle({1, 0, 0, 0})), (Chords{{1, 4}, {1, 3}}));
    EXPECT_EQ(ChordsOfFilling(Rectangle({0, 0, 0, 1})), (Chords{{4, 2}, {4, 1}}));
}

TEST(TriangulateRectangle, CutsSixByWhereTheSideNodesAre) {
    // On opposite sides.
    EXPECT_EQ(ChordsOfFilling(Rectangle({1, 0, 1, 0})), (Chords{{1, 5}, {4, 2}, {1, 4}}));
    EXPECT_EQ(ChordsOfFilling(Rectangle({0, 1, 0, 1})), (Chords{{2, 0}, {5, 3}, {2, 5}}));
    // Round one corner.
    EXPECT_EQ(ChordsOfFilling(Rectangle({1, 1, 0, 0})), (Chords{{1, 3}, {3, 5}, {1, 5}}));
    EXPECT_EQ(ChordsOfFilling(Rectangle({0, 0, 1, 1})), (Chords{{3, 5}, {5, 1}, {3, 1}}));
    // Round the corner where the count begins: they change places.
    EXPECT_EQ(ChordsOfFilling(Rectangle({1, 0, 0, 1})), (Chords{{5, 1}, {1, 3}, {5, 3}}));
}

TEST(TriangulateRectangle, CutsSevenByTheBareSide) {
    EXPECT_EQ(ChordsOfFilling(Rectangle({1, 1, 1, 0})), (Chords{{6, 1}, {5, 1}, {3, 5}, {1, 3}}));
    EXPECT_EQ(ChordsOfFilling(Rectangle({1, 1, 0, 1})), (Chords{{4, 6}, {3, 6}, {1, 3}, {6, 1}}));
    EXPECT_EQ(ChordsOfFilling(Rectangle({1, 0, 1, 1})), (Chords{{2, 4}, {1, 4}, {6, 1}, {4, 6}}));
    EXPECT_EQ(ChordsOfFilling(Rectangle({0, 1, 1, 1})), (Chords{{0, 2}, {6, 2}, {4, 6}, {2, 4}}));
}

TEST(TriangulateRectangle, CutsTheCornersOfEight) {
    EXPECT_EQ(ChordsOfFilling(Rectangle({1, 1, 1, 1})), (Chords{{1, 3}, {3, 5}, {5, 7}, {7, 1}, {1, 5}}));
}

TEST(TriangulateRectangle, MakesTrianglesOfEachPattern) {
    for (int mask = 0; mask < 16; ++mask) {
        const Soup outline = Rectangle({mask & 1, mask >> 1 & 1, mask >> 2 & 1, mask >> 3 & 1});
        SCOPED_TRACE(testing::Message() << "sides " << mask);
        PIN mesh = OneLoop(outline);
        TriangulateRectangle(mesh, 0, 0);
        ExpectSound(mesh);
        const std::vector<Soup> faces = FaceOutlines(mesh);
        EXPECT_EQ(faces.size(), outline.size() - 2);
        for (const Soup& face : faces) {
            EXPECT_EQ(face.size(), 3u);
            EXPECT_GT(AreaOf(face), 0.1);
        }
        EXPECT_DOUBLE_EQ(AreaOf(faces), 12.0);
    }
}

TEST(TriangulateRectangle, GoesToThePolygonFromNineOn) {
    for (int count = 9; count < 15; ++count) {
        ExpectSameAsPolygon(StarShaped(static_cast<unsigned>(count), count), 0, 3);
        ExpectSameAsPolygon(Reversed(StarShaped(static_cast<unsigned>(count), count)), 1, 2);
    }
}

//  4 - 3 - 2
//  |       |      counted from 0, a side node itself, one side node is found: the chord would go from 3 to 3
//  5 - 0 - 1
TEST(TriangulateRectangle, GoesToThePolygonWhereTheSideNodesOfSixAreNotFound) {
    const Soup fromSideNode = {P(2, 0, 0), P(4, 0, 0), P(4, 3, 0), P(2, 3, 0), P(0, 3, 0), P(0, 0, 0)};
    ExpectSameAsPolygon(fromSideNode, 0, 0);
    // Six corners, none of which goes on.
    const Soup corners = {P(0, 0, 0), P(2, 0, 0), P(2, 1, 0), P(1, 1, 0), P(1, 2, 0), P(0, 2, 0)};
    ExpectSameAsPolygon(corners, 0, 0);
}

TEST(TriangulateRectangle, LeavesALoopOfTwoWhereBothSideNodesAreOnOneSide) {
    PIN mesh = OneLoop({P(0, 0, 0), P(1, 0, 0), P(2, 0, 0), P(3, 0, 0), P(3, 3, 0), P(0, 3, 0)});
    TriangulateRectangle(mesh, 0, 0);
    ExpectSound(mesh);
    std::vector<std::size_t> lengths;
    for (const Soup& face : FaceOutlines(mesh)) lengths.push_back(face.size());
    std::sort(lengths.begin(), lengths.end());
    EXPECT_EQ(lengths, (std::vector<std::size_t>{2, 3, 3, 4}));
}

TEST(TriangulateRectangle, IsThePlainTableOnRandomLoops) {
    for (unsigned seed = 0; seed < 6000; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed);
        HostilePoints next(seed);
        Soup outline;
        for (unsigned i = 0; i < 4 + seed / 4 % 6; ++i) outline.push_back(next());
        PIN mesh = OneLoop(outline);
        PIN plain = mesh;
        const int e = static_cast<int>(seed % outline.size());
        TriangulateRectangle(mesh, seed % 2, e);
        PlainRectangle{plain, Loop(plain, e)}.Fill(seed % 2);
        EXPECT_TRUE(SameRecords(mesh, plain));
        ExpectSound(mesh);
        EXPECT_EQ(EulerCharacteristic(mesh), 1);
    }
}

TEST(TriangulateRectangle, RefusesWhatDoesNotExist) {
    ExpectRefusesWhatIsNoEdge([](PIN& mesh, int e) { TriangulateRectangle(mesh, 0, e); });
    PIN mesh = OneLoop(Rectangle({1, 0, 0, 0}));
    mesh.edges[2].P0 = -1;
    const PIN before = mesh;
    TriangulateRectangle(mesh, 0, 0);
    EXPECT_TRUE(SameRecords(mesh, before));
}

TEST(TriangulateRectangle, SurvivesBrokenLinks) {
    ExpectSurvivesBrokenLinks([](PIN& mesh, int e) { TriangulateRectangle(mesh, e % 2, e); });
}

}  // namespace
}  // namespace KM
